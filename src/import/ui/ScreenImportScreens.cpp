#include "import/ui/ScreenImportScreens.h"

#include "import/ui/FormShuRuMF.h"
#include "import/ui/Formgf.h"

namespace importing {

ScreenImportScreens::ScreenImportScreens(const runtime::AppPaths& paths, QWidget& screen,
                                         runtime::ScreenProgress& progress)
    : m_paths(paths), m_screen(screen), m_progress(progress)
{
}

void ScreenImportScreens::showFullMarks(ImportState& state, const QString& label)
{
    m_progress.stepAside();
    FormShuRuMF(state, m_paths, label, &m_screen).exec();
}

void ScreenImportScreens::showErrorList(ImportState& state)
{
    m_progress.stepAside();
    // A dialog's own hide() would end its exec(), and the import screen is to come back.
    m_screen.QWidget::setVisible(false);
    Formgf(state, m_screen.parentWidget()).exec();
    m_screen.QWidget::setVisible(true);
}

} // namespace importing
