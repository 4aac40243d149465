#pragma once

#include "library/NewLibrary.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QGridLayout;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace library {

/// The score libraries among the files of a dialog.
extern const QString LibFilter;

/// "新建成绩库": a new library from the subjects that are selected.
class FormNew : public widgets::Screen
{
    Q_OBJECT

public:
    FormNew(ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QWidget* parent);

Q_SIGNALS:
    /// A library was made; its students come next.
    void created();

private:
    void build();
    void makeLists(QGridLayout* layout);
    void init();
    void List1_Click();
    void Command1_Click();
    void Command3_Click();

    NewLibrary m_newLibrary;
    ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    QListWidget* List1 = nullptr;
    QListWidget* List2 = nullptr;
    QListWidget* List3 = nullptr;
    QLineEdit* Text1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
};

} // namespace library
