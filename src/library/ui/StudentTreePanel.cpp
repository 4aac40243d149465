#include "library/ui/StudentTreePanel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "library/ui/StudentTreeView.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/Screen.h"

namespace library {

using namespace Qt::StringLiterals;
using widgets::CommandScope;
using widgets::named;

StudentTreePanel::StudentTreePanel(widgets::ScreenDialogs& dialogs, QWidget* parent)
    : QWidget(parent), m_dialogs(dialogs), m_finder(std::make_unique<StudentFinder>(StudentTree{}))
{
    build();
    connect(TreeView1, &StudentTreeView::nodeChosen, this, &StudentTreePanel::nodeChosen);
    connect(TextFind, &QLineEdit::textChanged, LabelFindResult, &QLabel::clear);
    connect(&m_idle, &QTimer::timeout, this, &StudentTreePanel::spellAhead);
    addKey(Qt::Key_F3, Qt::AscendingOrder);
    addKey(Qt::SHIFT | Qt::Key_F3, Qt::DescendingOrder);
}

StudentTreePanel::~StudentTreePanel() = default;

/// Elsewhere on the screen the key may find something else.
void StudentTreePanel::addKey(const QKeySequence& key, Qt::SortOrder direction)
{
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, direction] { findStudent(direction); });
}

void StudentTreePanel::build()
{
    TextFind = named(new QLineEdit(this), u"TextFind"_s, u"查找学生"_s);
    TextFind->setPlaceholderText(u"学号、姓名或拼音首字母"_s);
    TextFind->setToolTip(u"回车或 F3 找下一个，按住 Shift 找上一个"_s);
    TextFind->setClearButtonEnabled(true);
    TextFind->installEventFilter(this);
    LabelFindResult = widgets::namedText(new QLabel(this), u"LabelFindResult"_s);
    TreeView1 = new StudentTreeView(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* heading = new QHBoxLayout;
    heading->addWidget(widgets::label(u"LabelFind"_s, u"查找学生(&F)"_s, TextFind, this));
    heading->addStretch();
    heading->addWidget(LabelFindResult);
    layout->addLayout(heading);
    layout->addWidget(TextFind);
    layout->addWidget(TreeView1, 1);
}

void StudentTreePanel::setTree(const StudentTree& tree)
{
    m_idle.stop();
    m_finder = std::make_unique<StudentFinder>(tree);
    TreeView1->setTree(tree);
}

std::optional<qint64> StudentTreePanel::selected() const
{
    const QList<QTreeWidgetItem*> items = TreeView1->selectedItems();
    if (items.isEmpty())
        return std::nullopt;
    return items.constFirst()->data(0, Qt::UserRole).toLongLong();
}

void StudentTreePanel::select(qint64 id)
{
    int place = m_finder->count() - 1;
    while (place >= 0 && m_finder->student(place).id != id)
        --place;
    TreeView1->selectStudent(place);
}

void StudentTreePanel::findStudent(Qt::SortOrder direction)
{
    const CommandScope command(m_dialogs);
    const runtime::Trap trap{" - Sub FindStudent/StudentTree"};
    int found = -1;
    const bool searched = trap([&] {
        const int from = TreeView1->selectedPlace();
        found = direction == Qt::AscendingOrder ? m_finder->next(TextFind->text(), from)
                                                : m_finder->previous(TextFind->text(), from);
    });
    const bool isMissing = searched && found < 0 && !TextFind->text().trimmed().isEmpty();
    LabelFindResult->setText(isMissing ? u"没有找到"_s : QString());
    if (found < 0)
        return;
    TreeView1->selectStudent(found);
    Q_EMIT nodeChosen();
}

void StudentTreePanel::spellAhead()
{
    constexpr int namesAtOnce = 50;
    const runtime::Trap trap = runtime::Trap::silent();
    bool more = false;
    trap([&] { more = m_finder->spellSome(namesAtOnce); });
    if (!more)
        m_idle.stop();
}

bool StudentTreePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            findStudent(key->modifiers() & Qt::ShiftModifier ? Qt::DescendingOrder
                                                             : Qt::AscendingOrder);
            return true;
        }
        if (key->key() == Qt::Key_Down) {
            TreeView1->setFocus();
            return true;
        }
        m_idle.start();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace library
