#pragma once

#include "import/ExamImport.h"
#include "platform/widgets/ScreenProgress.h"

class QDialog;
class QWidget;

namespace importing {

/// The screens of the exam import as windows over the import screen.
class ScreenImportScreens : public ImportScreens
{
public:
    ScreenImportScreens(const runtime::AppPaths& paths, QWidget& screen,
                        widgets::ScreenProgress& progress);

    void showFullMarks(ImportState& state, const QString& label) override;
    /// The import screen is hidden meanwhile.
    void showErrorList(ImportState& state) override;

private:
    void ask(QDialog& screen);

    const runtime::AppPaths& m_paths;
    QWidget& m_screen;
    widgets::ScreenProgress& m_progress;
};

} // namespace importing
