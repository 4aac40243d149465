#include "maintenance/ui/ExamDetailsScreen.h"

#include <algorithm>
#include <vector>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "library/ui/BackupBox.h"
#include "maintenance/QuotedText.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/widgets/ScreenProgress.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using grid::CellEditing;
using widgets::CommandScope;
using widgets::label;
using widgets::named;

namespace {

constexpr int linesOfChanges = 6;

QString resultText(DetailsSave save)
{
    switch (save) {
    case DetailsSave::Saved:
        return u"已保存"_s;
    case DetailsSave::Scored:
        return u"已保存，总分和名次已重新计算"_s;
    case DetailsSave::Stale:
        return u"已保存，总分和名次还没有重新计算"_s;
    case DetailsSave::NotSaved:
        break;
    }
    return {};
}

} // namespace

ExamDetailsScreen::ExamDetailsScreen(library::ScoreLibrary& scoreLibrary,
                                     widgets::ScreenDialogs& dialogs, const QString& exam,
                                     QWidget* parent)
    : DialogScreen(u"ExamDetailsScreen"_s, u"考试信息"_s, parent),
      m_details(scoreLibrary),
      m_dialogs(dialogs)
{
    makeWidgets();
    connectWidgets();
    listExams(exam);
    chooseExam();
}

void ExamDetailsScreen::makeWidgets()
{
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(makeHead());
    makeGrid();
    layout->addWidget(m_items, 1);
    m_changes = named(new QPlainTextEdit(this), u"TextChanges"_s, u"将要保存的改动"_s);
    m_changes->setReadOnly(true);
    m_changes->setTabChangesFocus(true);
    m_changes->setPlaceholderText(u"还没有改动"_s);
    m_changes->setFixedHeight(fontMetrics().lineSpacing() * linesOfChanges);
    layout->addWidget(label(u"LabelChanges"_s, u"将要保存的改动(&H)"_s, m_changes, this));
    layout->addWidget(m_changes);
    layout->addLayout(makeButtons());
    resize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 34);
}

QVBoxLayout* ExamDetailsScreen::makeHead()
{
    m_exams = named(new QComboBox(this), u"ComboExam"_s, u"考试"_s);
    m_name = named(new QLineEdit(this), u"TextName"_s, u"考试名称"_s);
    auto* fields = new QGridLayout;
    fields->addWidget(label(u"LabelExam"_s, u"考试(&K)"_s, m_exams, this), 0, 0);
    fields->addWidget(m_exams, 0, 1);
    fields->addWidget(label(u"LabelName"_s, u"名称(&N)"_s, m_name, this), 1, 0);
    fields->addWidget(m_name, 1, 1);
    fields->setColumnStretch(1, 1);
    auto* hint =
        label(u"LabelHint"_s, u"在“改为”一列里点一格或按 F2 修改。没有考的科目满分留空。"_s,
              nullptr, this);
    hint->setWordWrap(true);
    auto* head = new QVBoxLayout;
    head->addLayout(fields);
    head->addWidget(hint);
    return head;
}

void ExamDetailsScreen::makeGrid()
{
    m_items =
        named(new grid::FlexGridView(m_details.items, this), u"GridItems"_s, u"满分和总分公式"_s);
    m_text = named(new grid::CellTextEditor(m_items), u"TextItem"_s, u"内容"_s);
    m_editor = new grid::GridEditor(m_items, m_text, nullptr, {.editing = [this](int row, int col) {
                                        return m_details.isTypedInto(row, col) ? CellEditing::Text
                                                                               : CellEditing::None;
                                    }});
}

QHBoxLayout* ExamDetailsScreen::makeButtons()
{
    m_backup = new library::BackupBox(u"保存前备份成绩库(&B)"_s, this);
    m_result = widgets::namedText(new QLabel(this), u"LabelResult"_s);
    QPushButton* saving = widgets::defaultButton(u"ButtonSave"_s, u"保存(&S)"_s, this);
    QPushButton* closing = widgets::enterButton(u"ButtonClose"_s, u"关闭(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_backup);
    buttons->addWidget(m_result, 1, Qt::AlignRight);
    buttons->addWidget(saving);
    buttons->addWidget(closing);
    connect(saving, &QPushButton::clicked, this, &ExamDetailsScreen::save);
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
    return buttons;
}

void ExamDetailsScreen::connectWidgets()
{
    connect(m_exams, &QComboBox::activated, this, &ExamDetailsScreen::chooseExam);
    connect(m_name, &QLineEdit::textEdited, this, &ExamDetailsScreen::takeName);
    connect(m_editor, &grid::GridEditor::edited, this, &ExamDetailsScreen::showChanges);
    connect(m_editor, &grid::GridEditor::takenBack, this, &ExamDetailsScreen::showChanges);
    // A mark is typed anew; 140 behind 150 would be 150140. Formulas are typed on.
    connect(m_editor, &grid::GridEditor::opened, this, [this](int row) {
        if (m_details.isFullMark(row))
            m_text->selectAll();
    });
}

void ExamDetailsScreen::listExams(const QString& chosen)
{
    const CommandScope command(m_dialogs);
    m_exams->clear();
    m_exams->addItems(m_details.exams());
    m_exams->setCurrentIndex(
        std::max(0, m_exams->findText(chosen, Qt::MatchExactly | Qt::MatchCaseSensitive)));
}

void ExamDetailsScreen::chooseExam()
{
    const QString chosen = m_exams->currentText();
    if (chosen.isEmpty() || chosen == m_details.exam())
        return;
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    if (mayLeave() && m_details.load(chosen))
        showExam();
    // What was typed may have been saved under another name, or is kept.
    listExams(m_details.exam());
}

void ExamDetailsScreen::takeName(const QString& typed)
{
    m_details.name = typed;
    showChanges();
}

void ExamDetailsScreen::showExam()
{
    m_name->setText(m_details.name);
    shareWidth();
    if (m_details.items.Rows() > 1 && m_details.items.Cols() > 2)
        m_items->select(1, 2, 1, 2);
    showChanges();
}

void ExamDetailsScreen::showChanges()
{
    m_changes->setPlainText(m_details.changes().join(u'\n'));
    m_result->clear();
}

void ExamDetailsScreen::shareWidth()
{
    m_items->shareWidth(std::vector(size_t(m_details.items.Cols()), 1));
}

void ExamDetailsScreen::resizeEvent(QResizeEvent* event)
{
    DialogScreen::resizeEvent(event);
    shareWidth();
}

void ExamDetailsScreen::showEvent(QShowEvent* event)
{
    // Not before now does the grid know its size.
    shareWidth();
    DialogScreen::showEvent(event);
}

bool ExamDetailsScreen::save()
{
    const CommandScope command(m_dialogs);
    m_editor->HideTS();
    if (!m_details.isChanged()) {
        m_result->setText(u"没有改动"_s);
        return true;
    }
    widgets::ScreenProgress progress(this);
    const DetailsSave result = m_details.save(progress, m_backup->backup());
    if (result != DetailsSave::NotSaved) {
        listExams(m_details.exam());
        showExam();
    } else if (const auto& cell = m_details.refusedCell()) {
        m_items->setFocus();
        m_items->select(cell->row, cell->col, cell->row, cell->col);
    }
    m_result->setText(resultText(result));
    return result != DetailsSave::NotSaved;
}

bool ExamDetailsScreen::mayLeave()
{
    if (!m_details.isChanged())
        return true;
    const CommandScope command(m_dialogs);
    return widgets::settleUnsaved(
        u"“%1”的信息有改动，还没有保存。"_s.arg(shownName(m_details.exam())),
        [this] { return save(); });
}

} // namespace maintenance
