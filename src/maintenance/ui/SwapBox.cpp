#include "maintenance/ui/SwapBox.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "library/ui/StudentTreePanel.h"
#include "platform/widgets/Screen.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

library::StudentTree withoutStudent(library::StudentTree tree, qint64 id)
{
    for (library::ClassNode& one : tree)
        std::erase_if(one.students,
                      [id](const library::StudentNode& node) { return node.id == id; });
    return tree;
}

} // namespace

SwapBox::SwapBox(const RosterStudent& student, qsizetype earlierScores,
                 const library::StudentTree& tree, widgets::ScreenDialogs& dialogs, QWidget* parent)
    : QDialog(parent), m_student(student), m_tree(new library::StudentTreePanel(dialogs, this))
{
    setObjectName(u"SwapBox"_s);
    setWindowTitle(u"交换"_s);
    auto* layout = new QVBoxLayout(this);
    auto* LabelWho = widgets::namedText(new QLabel(this), u"LabelWho"_s);
    LabelWho->setText(m_student.text() + u"和谁交换班级和学号？"_s);
    layout->addWidget(LabelWho);
    layout->addWidget(m_tree, 1);
    m_tree->setTree(withoutStudent(tree, m_student.id));
    m_ticks = std::make_unique<MoveTicks>(earlierScores, layout, this);
    QPushButton* ok = addBoxButtons(this, layout);
    ok->setEnabled(false);
    connect(m_tree, &library::StudentTreePanel::nodeChosen, this,
            [this, ok] { ok->setEnabled(move().other != 0); });
    resize(fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 28);
}

void SwapBox::accept()
{
    if (gather(move()))
        QDialog::accept();
}

StudentMove SwapBox::move() const
{
    StudentMove wanted{.kind = StudentMove::Kind::Swap, .id = m_student.id};
    wanted.other = m_tree->selected().value_or(0);
    m_ticks->take(wanted);
    return wanted;
}

} // namespace maintenance
