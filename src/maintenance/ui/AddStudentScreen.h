#pragma once

#include <utility>
#include <vector>

#include "maintenance/StudentAddition.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;

namespace maintenance {

/// "添加学生": one student after the other, beside the list of the class that he comes to.
class AddStudentScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    AddStudentScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                     QWidget* parent);

    bool mayLeave() override;

private:
    enum class Afterwards { Close, AddAnother };

    void makeWidgets();
    QWidget* makeFields();
    QWidget* makeDetails();
    QHBoxLayout* makeButtons();
    void connectWidgets();
    void listClasses();
    void showClass();
    void showRoster(const ClassRoster& roster);
    void selectStudent(qint64 id);
    bool isTyped() const;
    NewStudent typed() const;
    bool add();
    void save(Afterwards afterwards);
    void clearStudent();

    StudentAddition m_addition;
    widgets::ScreenDialogs& m_dialogs;
    /// The number that was offered last: it gives way to that of another class.
    QString m_offered;
    QComboBox* m_classes = nullptr;
    QComboBox* m_streams = nullptr;
    QLineEdit* m_category = nullptr;
    QLabel* m_classNote = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_name = nullptr;
    std::vector<std::pair<QString, QLineEdit*>> m_details;
    QListWidget* m_students = nullptr;
    QLabel* m_result = nullptr;
};

} // namespace maintenance
