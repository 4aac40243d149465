#pragma once

#include <QMap>
#include <QStringList>

#include "import/ExamImport.h"
#include "platform/runtime/AppPaths.h"

namespace cli {

/// The screens of the exam import without a window: full marks from the flag and the defaults file,
/// the bad scores as a list on stderr.
class CliImportScreens : public importing::ImportScreens
{
public:
    /// `fullMarks` are texts of the form "语文=150". Throws UsageError for any other.
    CliImportScreens(const runtime::AppPaths& paths, const QStringList& fullMarks);

    /// Says which full marks belong to no subject of the sheet. Throws UsageError if a subject is
    /// left without one; nothing has been written then.
    void showFullMarks(importing::ImportState& state, const QString& label) override;
    void showErrorList(importing::ImportState& state) override;

private:
    const runtime::AppPaths& m_paths;
    QMap<QString, QString> m_fullMarks;
};

} // namespace cli
