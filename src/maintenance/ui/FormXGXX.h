#pragma once

#include "maintenance/StudentRecord.h"
#include "maintenance/paint/PictureFiles.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace grid {
class CellTextEditor;
class FlexGridView;
class GridEditor;
} // namespace grid

namespace library {
class StudentTreePanel;
}

namespace maintenance {

class PhotoBox;

/// "修改学生信息": the record and the photo of one student, edited in place; if asked for, beside a
/// list of the students without a photo.
class FormXGXX : public widgets::Screen
{
    Q_OBJECT

public:
    FormXGXX(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs, QWidget* parent);

    /// Fills the list of students without a photo and brings it into view.
    void listWithoutPhoto();

    /// Saves what was typed, if the user says so. False if he stays, or something is left to save.
    bool mayLeave() override;

    /// Closes without asking.
    void discard();

    /// Shows what others have changed in the library, beside what was typed here; closes if it is
    /// another library now, which knows nothing of the student.
    void takeChanges();

private:
    void build();
    QWidget* makeRecord();
    QWidget* makeList();
    void connectControls();
    void Form_Load();
    void ShowStuTree();
    void fillList();
    void ShowSel();
    void List1_Click();
    void leaveList();
    void choose(qint64 id);
    void ShowGeRenXX(qint64 id);
    void showPhoto();
    void ZoomPic(const QString& path);
    void MSFlexGrid1_MouseUp(int MouseRow);
    void Command1_Click();
    RecordSave save();

    library::ScoreLibrary& m_library;
    widgets::ScreenDialogs& m_dialogs;
    /// The library that the screen was opened over.
    QString m_path;
    PictureFiles m_photos;
    StudentRecord m_record;
    library::StudentTreePanel* m_tree = nullptr;
    grid::FlexGridView* MSFlexGrid1 = nullptr;
    grid::CellTextEditor* Text1 = nullptr;
    grid::GridEditor* m_editor = nullptr;
    PhotoBox* Picture1 = nullptr;
    QLabel* LabelResult = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QGroupBox* Frame2 = nullptr;
    QListWidget* List1 = nullptr;
};

} // namespace maintenance
