#pragma once

#include "export/ScoreExportRequest.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"
#include "workbooks/model/Application.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace exporting {

/// "导出成绩到Excel": a block of rows for each student, for printing. Its button only hides it, so
/// that what was chosen is there when it is shown again.
class FormDaoChu : public widgets::Screen
{
    Q_OBJECT

public:
    FormDaoChu(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
               excel::Applications& applications, QWidget* parent);

    /// Fills the lists from the open library. What was chosen before and is still there stays
    /// chosen.
    void Form_Load();

Q_SIGNALS:
    /// The user wants to choose the columns of a block: the item that the screen of columns shows,
    /// and the key that it saves under.
    void columnsRequested(const QString& item, const QString& key);

private:
    void build();
    void makeLists(QGridLayout* layout);
    QWidget* makeAverages();
    QWidget* makeLayouts();
    QWidget* makeButtons();
    QCheckBox* tickBox(const QString& name, const QString& caption, const QString& tip = {});
    QComboBox* examBox(const QString& name, const QString& spoken);
    void connectControls();
    void showWhatIsMissing();
    ScoreExportRequest request() const;
    void Command1_Click();
    void Command3_Click();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    excel::Applications& m_applications;
    QListWidget* ListKSMC = nullptr;
    QListWidget* ListKM = nullptr;
    QListWidget* ListBJ = nullptr;
    QCheckBox* CheckXxYH = nullptr;
    QCheckBox* CheckBJJF = nullptr;
    QComboBox* Combo1 = nullptr;
    QCheckBox* CheckNJJF = nullptr;
    QComboBox* Combo2 = nullptr;
    QCheckBox* CheckGradeExam = nullptr;
    QRadioButton* Option2 = nullptr;
    QLineEdit* TextKH = nullptr;
    QRadioButton* OptionZXT = nullptr;
    QCheckBox* CheckKeepBlocks = nullptr;
    QLabel* LabelXX = nullptr;
    QLabel* LabelMissing = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
};

} // namespace exporting
