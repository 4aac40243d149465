#include "maintenance/ui/StudentMovesScreen.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "library/ui/BackupBox.h"
#include "library/ui/StudentTreePanel.h"
#include "maintenance/Refusal.h"
#include "maintenance/SchoolClasses.h"
#include "maintenance/ui/MoveBox.h"
#include "maintenance/ui/SwapBox.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/ScreenProgress.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using widgets::enterButton;
using widgets::named;
using Kind = StudentMove::Kind;

namespace {

const runtime::Trap screenTrap{" - Sub ShowMoves/Maintenance"};

} // namespace

StudentMovesScreen::StudentMovesScreen(library::ScoreLibrary& scoreLibrary,
                                       widgets::ScreenDialogs& dialogs, QWidget* parent)
    : DialogScreen(u"StudentMovesScreen"_s, u"学生调整"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_moves(scoreLibrary)
{
    makeWidgets();
    showTree();
    showPlan();
    connect(&m_library, &library::ScoreLibrary::changed, this, [this] {
        showTree();
        showPlan();
    });
}

void StudentMovesScreen::makeWidgets()
{
    m_tree = new library::StudentTreePanel(m_dialogs, this);
    PlanGrid = named(new grid::FlexGridView(m_grid, this), u"PlanGrid"_s, u"要做的调整"_s);
    PlanGrid->horizontalHeader()->setStretchLastSection(true);
    CheckBackup = new library::BackupBox(u"执行前备份成绩库(&K)"_s, this);
    auto* students = new QVBoxLayout;
    students->addWidget(m_tree, 1);
    addStudentButtons(students);
    auto* plan = new QVBoxLayout;
    plan->addWidget(widgets::label(u"LabelPlan"_s, u"要做的调整(&P)"_s, PlanGrid, this));
    plan->addWidget(PlanGrid, 1);
    addRunButtons(plan);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(students, 1);
    layout->addLayout(plan, 3);
    resize(fontMetrics().averageCharWidth() * 160, fontMetrics().lineSpacing() * 32);
}

void StudentMovesScreen::addStudentButtons(QVBoxLayout* layout)
{
    QPushButton* buttonMove = enterButton(u"buttonMove"_s, u"移到(&M)…"_s, this);
    QPushButton* buttonSwap = enterButton(u"buttonSwap"_s, u"交换(&W)…"_s, this);
    QPushButton* buttonRemove = enterButton(u"buttonRemove"_s, u"删除(&D)…"_s, this);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* one : {buttonMove, buttonSwap, buttonRemove})
        buttons->addWidget(one);
    layout->addLayout(buttons);
    onClick(buttonMove, &StudentMovesScreen::move);
    onClick(buttonSwap, &StudentMovesScreen::swap);
    onClick(buttonRemove, &StudentMovesScreen::remove);
}

void StudentMovesScreen::addRunButtons(QVBoxLayout* layout)
{
    buttonTakeBack = enterButton(u"buttonTakeBack"_s, u"撤回一项(&U)"_s, this);
    buttonTakeBack->setToolTip(u"撤回表里选中的一项调整"_s);
    buttonRun = widgets::defaultButton(u"buttonRun"_s, u"执行(&E)"_s, this);
    QPushButton* buttonClose = enterButton(u"buttonClose"_s, u"关闭(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CheckBackup);
    buttons->addStretch();
    for (QPushButton* one : {buttonTakeBack, buttonRun, buttonClose})
        buttons->addWidget(one);
    layout->addLayout(buttons);
    onClick(buttonTakeBack, &StudentMovesScreen::takeBack);
    onClick(buttonRun, &StudentMovesScreen::execute);
    connect(buttonClose, &QPushButton::clicked, this, &QDialog::close);
}

void StudentMovesScreen::onClick(QPushButton* pressed, void (StudentMovesScreen::*handler)())
{
    connect(pressed, &QPushButton::clicked, this, [this, handler] {
        const widgets::CommandScope command(m_dialogs);
        (this->*handler)();
    });
}

void StudentMovesScreen::showTree()
{
    const std::optional<qint64> chosen = m_tree->selected();
    screenTrap([&] { m_students = library::readStudentTree(m_library.Conn); });
    m_tree->setTree(m_students);
    if (chosen.value_or(0) != 0)
        m_tree->select(*chosen);
}

void StudentMovesScreen::showPlan()
{
    screenTrap([&] { m_plan = m_moves.plan(); });
    m_grid = planGrid(m_plan);
    PlanGrid->refresh();
    const bool isAnything = !m_moves.gathered().empty();
    buttonTakeBack->setEnabled(isAnything);
    buttonRun->setEnabled(isAnything);
    if (isAnything)
        PlanGrid->select(m_grid.Rows() - 1, 0, m_grid.Rows() - 1, m_grid.Cols() - 1);
    else
        PlanGrid->clearSelection();
}

std::optional<PlannedStudent> StudentMovesScreen::chosenStudent()
{
    const qint64 id = m_tree->selected().value_or(0);
    if (id == 0) {
        runtime::warn(u"请先在左边选择一名学生。"_s);
        return std::nullopt;
    }
    std::optional<PlannedStudent> chosen;
    screenTrap([&] {
        chosen = planMoves(m_library.Conn, {{.kind = Kind::Remove, .id = id}}).students.front();
    });
    if (!chosen || chosen->conflicts.isEmpty())
        return chosen;
    runtime::warn(chosen->conflicts.join(u'\n'));
    return std::nullopt;
}

bool StudentMovesScreen::gather(const StudentMove& wanted)
{
    const bool isGathered = unlessRefused(screenTrap, [&] { m_moves.add(wanted); });
    showPlan();
    return isGathered;
}

void StudentMovesScreen::move()
{
    const std::optional<PlannedStudent> chosen = chosenStudent();
    if (!chosen)
        return;
    QStringList classes;
    screenTrap([&] { classes = classesOfStudents(m_library.Conn); });
    classes.removeAll(QString());
    const auto freeNumber = [this](double classNumber) {
        double number = 1;
        screenTrap([&] { number = m_moves.freeNumber(classNumber); });
        return number;
    };
    MoveBox box(chosen->student, qsizetype(chosen->earlier.size()), classes, freeNumber, this);
    box.gather = [this](const StudentMove& wanted) { return gather(wanted); };
    box.exec();
}

void StudentMovesScreen::swap()
{
    const std::optional<PlannedStudent> chosen = chosenStudent();
    if (!chosen)
        return;
    SwapBox box(chosen->student, qsizetype(chosen->earlier.size()), m_students, m_dialogs, this);
    box.gather = [this](const StudentMove& wanted) { return gather(wanted); };
    box.exec();
}

void StudentMovesScreen::remove()
{
    const std::optional<PlannedStudent> chosen = chosenStudent();
    if (!chosen)
        return;
    StudentMove removal{.kind = Kind::Remove, .id = chosen->student.id};
    if (!chosen->earlier.empty()) {
        constexpr int withScores = 0;
        constexpr int cancel = 2;
        const int pressed = runtime::choose(
            {.text = u"%1有 %2 条以前的成绩，要连同成绩删除吗？\n\n"
                     "先记在右边的表里，按“执行”时才删除。"_s.arg(
                         chosen->student.text(), QString::number(chosen->earlier.size())),
             .buttons = {u"连同成绩"_s, u"只删学生"_s, u"取消"_s},
             .safe = cancel,
             .title = u"删除学生"_s});
        if (pressed == cancel)
            return;
        removal.scores = pressed == withScores ? EarlierScores::GoAlong : EarlierScores::Stay;
    }
    gather(removal);
}

void StudentMovesScreen::takeBack()
{
    const int row = m_grid.Row - m_grid.FixedRows;
    if (row < 0 || row >= int(m_plan.students.size()))
        return;
    m_moves.takeBack(m_plan.students[size_t(row)].move);
    showPlan();
}

void StudentMovesScreen::execute()
{
    (void)run();
}

bool StudentMovesScreen::run()
{
    widgets::ScreenProgress progress(this);
    const StudentMoves::Result result = m_moves.run(progress, CheckBackup->backup());
    showPlan();
    return result == StudentMoves::Result::Done;
}

bool StudentMovesScreen::mayLeave()
{
    if (m_moves.gathered().empty())
        return true;
    const widgets::CommandScope command(m_dialogs);
    return widgets::settleUnsaved(
        u"还有 %1 项调整没有执行，要执行并保存吗？"_s.arg(m_moves.gathered().size()),
        [this] { return run(); });
}

} // namespace maintenance
