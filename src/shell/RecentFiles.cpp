#include "shell/RecentFiles.h"

#include <QFileInfo>

#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trap.h"

namespace shell {

using namespace Qt::StringLiterals;

namespace {

const runtime::Trap trap{" - Sub MKRecent/FormMain"};

bool fitsOnLine(const QString& path)
{
    return !path.contains(u'\n') && !path.contains(u'\r');
}

void write(const QString& file, const QStringList& paths)
{
    runtime::writeTextFile(file, paths.join(u'\n') + u'\n');
}

} // namespace

const QString RecentFiles::Placeholder = u"(最近打开的文件)"_s;

QString RecentFiles::MKRecent(const QString& file, const QString& path, int count)
{
    trap([&] { runtime::readLines(file, m_list); });
    if (!path.isEmpty() && fitsOnLine(path))
        add(file, path, count);
    QStringList shown;
    for (const QString& entry : m_list.mid(0, count)) {
        if (!entry.isEmpty())
            shown.append(entry);
    }
    m_captions = shown.isEmpty() ? QStringList{Placeholder} : shown;
    return path.isEmpty() && QFileInfo::exists(m_captions.first()) ? m_captions.first() : QString();
}

void RecentFiles::remove(const QString& file, const QString& path)
{
    trap([&] {
        m_list = runtime::readAllLines(file);
        m_list.removeAll(path);
        m_list.removeAll(QString());
        write(file, m_list);
    });
}

QStringList RecentFiles::files() const
{
    return m_captions.contains(Placeholder) ? QStringList() : m_captions;
}

void RecentFiles::add(const QString& file, const QString& path, int count)
{
    if (!m_list.mid(0, count).contains(path))
        m_list.prepend(path);
    const QStringList kept = m_list.mid(0, count);
    trap([&] { write(file, kept); });
}

} // namespace shell
