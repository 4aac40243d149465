#include "oldlibraries/TargetNames.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// A name that statements can hold and that stands for itself there.
QString possibleName(const QString& name)
{
    // Half a character becomes one that stands for what cannot be read.
    QString possible = QString::fromUtf8(name.toUtf8());
    possible.replace(u']', u'_').replace(QChar(u'\0'), u'_');
    if (possible.startsWith("sqlite_"_L1, Qt::CaseInsensitive))
        possible.prepend(u"旧_"_s);
    return possible.compare("rowid"_L1, Qt::CaseInsensitive) == 0 ? possible + u'_' : possible;
}

} // namespace

TargetNames::TargetNames(const QStringList& oldNames, const QStringList& reserved)
{
    for (const QString& name : reserved)
        m_reserved.insert(name.toLower());
    m_taken = m_reserved;
    for (const QString& name : oldNames)
        m_taken.insert(name.toLower());
}

QString TargetNames::nameFor(const QString& oldName)
{
    QString name = possibleName(oldName);
    if (name == oldName && !m_reserved.contains(name.toLower()))
        return name;
    while (m_taken.contains(name.toLower()))
        name += u'_';
    m_taken.insert(name.toLower());
    return name;
}

} // namespace oldlibraries
