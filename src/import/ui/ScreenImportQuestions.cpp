#include "import/ui/ScreenImportQuestions.h"

#include "import/ui/FormShuRuMF.h"
#include "import/ui/Formgf.h"

namespace importing {

ScreenImportQuestions::ScreenImportQuestions(const runtime::AppPaths& paths, QWidget& screen,
                                             widgets::ScreenProgress& progress)
    : m_paths(paths), m_screen(screen), m_progress(progress)
{
}

void ScreenImportQuestions::fullMarks(ImportState& state, const QString& label)
{
    FormShuRuMF screen(state, m_paths, label, &m_screen);
    ask(screen);
}

void ScreenImportQuestions::errorList(ImportState& state)
{
    // A dialog's own hide() would end its exec(), and the import screen is to come back.
    m_screen.QWidget::setVisible(false);
    Formgf screen(state, m_screen.parentWidget());
    ask(screen);
    m_screen.QWidget::setVisible(true);
}

/// The workbook stays usable: the answers stand in it.
void ScreenImportQuestions::ask(QDialog& screen)
{
    m_progress.stepAside();
    screen.setWindowModality(Qt::WindowModal);
    screen.exec();
}

} // namespace importing
