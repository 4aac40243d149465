#pragma once

#include "library/ScoreLibrary.h"
#include "platform/widgets/Screen.h"

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace maintenance {

/// "转班": offers to move a single student, or to swap or delete two, and carries out nothing.
class FormZhuanBan : public widgets::Screen
{
    Q_OBJECT

public:
    FormZhuanBan(library::ScoreLibrary& scoreLibrary, QWidget* parent);

Q_SIGNALS:
    /// "学生调整" was pressed.
    void movesRequested();

private:
    struct Student
    {
        QComboBox* classBox;
        QComboBox* numberBox;
        QLineEdit* nameBox;
    };

    void makeWidgets();
    void layOut(QGridLayout* layout, int row, const Student& student);
    void addButtonMoves(QGridLayout* layout);
    void Form_Load();
    void Combo4_Click();

    library::ScoreLibrary& m_library;
    QComboBox* Combo1 = nullptr;
    QComboBox* Combo2 = nullptr;
    QLineEdit* Combo3 = nullptr;
    QComboBox* Combo4 = nullptr;
    QComboBox* Combo5 = nullptr;
    QLineEdit* Combo6 = nullptr;
    QComboBox* Combo7 = nullptr;
};

} // namespace maintenance
