#include "shell/ui/LibraryList.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QLocale>

namespace shell {

using namespace Qt::StringLiterals;

namespace {

enum Role : int { Path = Qt::UserRole, IsMissing };

QString pathOf(const QListWidgetItem* item)
{
    return item ? item->data(Path).toString() : QString();
}

/// The name above, what else is known below.
void describe(QListWidgetItem* item, const QString& more)
{
    const QFileInfo file(pathOf(item));
    const QString below = more.isEmpty() ? file.path() : more + u"  "_s + file.path();
    const QString spoken = file.completeBaseName() + u"，"_s + below;
    item->setText(file.completeBaseName() + u'\n' + below);
    item->setData(Qt::AccessibleTextRole, spoken);
}

} // namespace

LibraryList::LibraryList(QWidget* parent, FileLook::Look look)
    : QListWidget(parent), m_look(this, std::move(look))
{
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizeAdjustPolicy(AdjustToContents);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    connect(&m_look, &FileLook::seen, this, &LibraryList::showState);
    connect(this, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { Q_EMIT openRequested(pathOf(item)); });
}

void LibraryList::showLibraries(const QStringList& paths)
{
    const int row = std::max(currentRow(), 0);
    clear();
    for (const QString& path : paths) {
        auto* item = new QListWidgetItem(this);
        item->setData(Path, path);
        item->setToolTip(path);
        describe(item, {});
    }
    setCurrentRow(std::min(row, count() - 1));
    m_look.start(paths);
}

QString LibraryList::chosen() const
{
    return pathOf(currentItem());
}

void LibraryList::showState(const QString& path, const FileState& state)
{
    for (int i = 0; i < count(); ++i) {
        if (pathOf(item(i)) != path)
            continue;
        const QString time = QLocale().toString(state.lastChanged, u"yyyy-MM-dd HH:mm"_s);
        describe(item(i), state.exists ? u"改于 "_s + time : u"找不到文件"_s);
        item(i)->setData(IsMissing, !state.exists);
    }
    greyMissing();
}

void LibraryList::greyMissing()
{
    for (int i = 0; i < count(); ++i) {
        const auto group =
            item(i)->data(IsMissing).toBool() ? QPalette::Disabled : QPalette::Active;
        item(i)->setForeground(palette().brush(group, QPalette::Text));
    }
}

void LibraryList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && currentItem())
        Q_EMIT removalRequested(chosen());
    else
        QListWidget::keyPressEvent(event);
}

void LibraryList::changeEvent(QEvent* event)
{
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        greyMissing();
}

} // namespace shell
