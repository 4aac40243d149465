#pragma once

#include "import/ImportQuestions.h"
#include "platform/runtime/AppPaths.h"
#include "platform/widgets/ScreenProgress.h"

class QDialog;
class QWidget;

namespace importing {

/// The questions of the exam import asked in windows over the import screen.
class ScreenImportQuestions : public ImportQuestions
{
public:
    ScreenImportQuestions(const runtime::AppPaths& paths, QWidget& screen,
                          widgets::ScreenProgress& progress);

    void fullMarks(ImportState& state, const QString& label) override;
    /// The import screen is hidden meanwhile.
    void errorList(ImportState& state) override;

private:
    void ask(QDialog& screen);

    const runtime::AppPaths& m_paths;
    QWidget& m_screen;
    widgets::ScreenProgress& m_progress;
};

} // namespace importing
