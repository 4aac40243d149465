#pragma once

#include <memory>

#include <QDialog>
#include <QStringList>

#include <gtest/gtest.h>

#include "configuration/AnalysisSettings.h"
#include "import/ImportState.h"
#include "platform/widgets/ScreenDialogs.h"
#include "platform/widgets/ScreenProgress.h"
#include "support/TestLibrary.h"
#include "workbooks/model/Application.h"

namespace shell {
class AFormMain;
} // namespace shell

namespace support {

using namespace Qt::StringLiterals;

/// Every window of the program but the message boxes, each as it stands over a library with an
/// exam.
class Gallery : public testing::Test
{
protected:
    Gallery();
    ~Gallery() override;

    /// The windows that `open` knows: the main window with the workbench docked and floating, the
    /// floating workbench itself, every screen and the window of a workbook.
    static QStringList names();
    /// The screens alone, which nothing but their own buttons and their close box closes.
    static QStringList screenNames();

    /// Shows the window, makes it the active one and closes the one that was open before.
    QWidget& open(const QString& name);

private:
    // The real dialogs lie below the scripted ones, so that boxes reach the script.
    widgets::ScreenDialogs m_screenDialogs;

protected:
    TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};

private:
    using Maker = QWidget* (Gallery::*)();
    struct Entry
    {
        const char16_t* name;
        Maker make;
    };
    static const Entry entries[];

    library::ScoreLibrary m_closed{library.paths};

    QWidget* mainWindow();
    QWidget* mainWindowWithoutLibrary();
    QWidget* mainWindowWithoutPanel();
    QWidget* floatingPanel();
    QWidget* newLibrary();
    QWidget* subjects();
    QWidget* tidying();
    QWidget* examImport();
    QWidget* importPreview();
    QWidget* studentImport();
    QWidget* reclassing();
    QWidget* fullMarks();
    QWidget* errorList();
    QWidget* formulas();
    QWidget* customDisplay();
    QWidget* analysisSettings();
    QWidget* subjectConditions();
    QWidget* scoreExport();
    QWidget* individualAnalysis();
    QWidget* record();
    QWidget* scoreCorrection();
    QWidget* subjectRemoval();
    QWidget* teacherList();
    QWidget* teacherNames();
    QWidget* classStreams();
    QWidget* photos();
    QWidget* classChange();
    QWidget* studentMoves();
    QWidget* examDetails();
    QWidget* subjectAddition();
    QWidget* studentAddition();
    QWidget* conversionReport();
    QWidget* figureStudents();
    QWidget* copies();
    QWidget* explanation();
    QWidget* about();
    QWidget* progress();
    QWidget* workbook();

    void addExam();
    void addErrors();
    void closeAll();
    /// Keeps a window that nobody else owns.
    template <class Window> Window* keep(std::unique_ptr<Window> window)
    {
        Window* const made = window.get();
        m_window = std::move(window);
        return made;
    }

    excel::Applications m_applications;
    excel::Application m_spreadsheet;
    importing::ImportState m_state;
    configuration::AnalysisSettings m_settings{library.scores};
    configuration::SubjectConditions m_conditions{library.scores};
    std::unique_ptr<widgets::ScreenProgress> m_progress;
    std::unique_ptr<QWidget> m_window;
};

} // namespace support
