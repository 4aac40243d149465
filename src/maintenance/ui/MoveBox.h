#pragma once

#include <functional>
#include <memory>

#include <QDialog>

#include "maintenance/SchoolRoster.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace maintenance {

/// The ticks that a move and a swap share: what becomes of earlier scores, and of the stream.
class MoveTicks
{
public:
    MoveTicks(qsizetype earlierScores, QVBoxLayout* layout, QWidget* parent);

    void take(StudentMove& move) const;

private:
    QCheckBox* CheckScores;
    QCheckBox* CheckStream;
};

/// A box that asks where a student goes: a class, and a number in it, for which a free one is
/// offered. Esc cancels, Enter confirms.
class MoveBox : public QDialog
{
    Q_OBJECT

public:
    /// `freeNumber` gives the number to offer in a class.
    MoveBox(const RosterStudent& student, qsizetype earlierScores, const QStringList& classes,
            std::function<double(double)> freeNumber, QWidget* parent);

    /// Takes what was asked for, or says why it cannot be: the box stays open then.
    std::function<bool(const StudentMove&)> gather;

    /// What was asked for; a text that is no number counts as 0.
    StudentMove move() const;
    void accept() override;

private:
    void makeWidgets(const QStringList& classes, qsizetype earlierScores);
    void offerNumber();

    RosterStudent m_student;
    std::function<double(double)> m_freeNumber;
    std::unique_ptr<MoveTicks> m_ticks;
    QComboBox* ComboClass = nullptr;
    QLineEdit* TextNumber = nullptr;
};

/// Adds 确定 and 取消 to a box, the first as its default, and gives that.
QPushButton* addBoxButtons(QDialog* box, QVBoxLayout* layout);

} // namespace maintenance
