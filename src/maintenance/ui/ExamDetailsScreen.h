#pragma once

#include "maintenance/ExamDetails.h"
#include "platform/widgets/DialogScreen.h"
#include "platform/widgets/ScreenDialogs.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QVBoxLayout;

namespace grid {
class CellTextEditor;
class FlexGridView;
class GridEditor;
} // namespace grid

namespace library {
class BackupBox;
}

namespace maintenance {

/// "考试信息": name, remarks, full marks and formulas of one exam, as they are and as they are
/// changed to.
class ExamDetailsScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    /// Shows this exam first; "" for the first one of the library.
    ExamDetailsScreen(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                      const QString& exam, QWidget* parent);

    bool mayLeave() override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void makeWidgets();
    void makeGrid();
    QVBoxLayout* makeHead();
    QHBoxLayout* makeButtons();
    void connectWidgets();
    void listExams(const QString& chosen);
    void chooseExam();
    void takeName(const QString& typed);
    void showExam();
    void showChanges();
    void shareWidth();
    bool save();

    ExamDetails m_details;
    widgets::ScreenDialogs& m_dialogs;
    QComboBox* m_exams = nullptr;
    QLineEdit* m_name = nullptr;
    grid::FlexGridView* m_items = nullptr;
    grid::CellTextEditor* m_text = nullptr;
    grid::GridEditor* m_editor = nullptr;
    QPlainTextEdit* m_changes = nullptr;
    library::BackupBox* m_backup = nullptr;
    QLabel* m_result = nullptr;
};

} // namespace maintenance
