#include "library/ui/StudentTreeView.h"

#include <algorithm>
#include <memory>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

namespace library {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QTreeWidgetItem> classItem(const ClassNode& node, const QFont& font)
{
    auto item = std::make_unique<QTreeWidgetItem>(QStringList{node.text});
    item->setFont(0, font);
    return item;
}

} // namespace

StudentTreeView::StudentTreeView(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(u"TreeView1"_s);
    setAccessibleName(u"班级和学生"_s);
    setHeaderHidden(true);
    // Asked for the height of each student, the view would take a third of a second for 12,000.
    setUniformRowHeights(true);
    connect(this, &QTreeWidget::itemClicked, this, &StudentTreeView::choose);
}

void StudentTreeView::setTree(const StudentTree& tree)
{
    QFont bold = font();
    bold.setBold(true);
    m_students.clear();
    m_told.clear();
    clear();
    QList<QTreeWidgetItem*> classes;
    for (const ClassNode& node : tree) {
        QTreeWidgetItem* one = classes.emplace_back(classItem(node, bold).release());
        for (const StudentNode& student : node.students) {
            auto* item = new QTreeWidgetItem(one, {student.text()});
            item->setData(0, Qt::UserRole, student.id);
            m_students.push_back(item);
        }
    }
    addTopLevelItems(classes);
    expandAll();
    scrollToTop();
}

void StudentTreeView::selectStudent(int place)
{
    setCurrentItem(place < 0 ? nullptr : m_students.at(size_t(place)));
    if (place >= 0)
        scrollToItem(currentItem());
    m_told = selectedItems();
}

int StudentTreeView::selectedPlace() const
{
    const QList<QTreeWidgetItem*> selected = selectedItems();
    const auto found = selected.isEmpty()
                           ? m_students.end()
                           : std::find(m_students.begin(), m_students.end(), selected.constFirst());
    return found == m_students.end() ? -1 : int(found - m_students.begin());
}

void StudentTreeView::choose()
{
    m_told = selectedItems();
    Q_EMIT nodeChosen();
}

void StudentTreeView::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeWidget::mouseReleaseEvent(event);
    // A mouse that slips while its button is down selects without a click.
    if (selectedItems() != m_told)
        choose();
}

void StudentTreeView::keyPressEvent(QKeyEvent* event)
{
    m_pressed = event->key();
    const QList<QTreeWidgetItem*> before = selectedItems();
    QTreeWidget::keyPressEvent(event);
    m_toldByPress = selectedItems() != before;
    if (m_toldByPress)
        choose();
}

void StudentTreeView::keyReleaseEvent(QKeyEvent* event)
{
    QTreeWidget::keyReleaseEvent(event);
    // Enter that closed a box above the window is let go here, and must not bring the box again.
    if (event->isAutoRepeat() || event->key() != m_pressed)
        return;
    m_pressed = 0;
    if (!m_toldByPress)
        choose();
}

} // namespace library
