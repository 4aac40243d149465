#pragma once

#include <QHash>
#include <QMap>
#include <QStringList>

#include "import/ImportQuestions.h"
#include "platform/runtime/AppPaths.h"

namespace cli {

/// The questions of the exam import answered without a window: full marks from the flag and the
/// defaults file, the bad scores as a list on stderr.
class CliImportQuestions : public importing::ImportQuestions
{
public:
    /// `marks` are texts of the form "语文=150". Throws UsageError for any other.
    CliImportQuestions(const runtime::AppPaths& paths, const QStringList& marks);

    /// Says which full marks belong to no subject of the sheet. Throws UsageError if a subject is
    /// left without one; nothing has been written then.
    void fullMarks(importing::ImportState& state, const QString& label) override;
    void errorList(importing::ImportState& state) override;

    /// The full marks of the flag by subject.
    QHash<QString, float> givenMarks() const;

private:
    const runtime::AppPaths& m_paths;
    QMap<QString, QString> m_fullMarks;
};

} // namespace cli
