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

void RecentFiles::add(const QString& file, const QString& path, int count)
{
    if (!m_list.mid(0, count).contains(path))
        m_list.prepend(path);
    const QStringList kept = m_list.mid(0, count);
    trap([&] { runtime::writeTextFile(file, kept.join(u'\n') + u'\n'); });
}

} // namespace shell
