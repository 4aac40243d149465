#include "oldlibraries/OldDatabase.h"

#include <optional>

#include <QSet>

#include "oldlibraries/OldFileError.h"
#include "oldlibraries/OldRows.h"
#include "oldlibraries/OldText.h"
#include "platform/database/OldFormat.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

/// The old engine's own limit. A file can be said to be larger than the disk.
constexpr qint64 largestFile = qint64(2) << 30;
/// The table of all things that the file holds.
constexpr quint32 objectsPage = 2;
constexpr qint64 tableObject = 1;
/// Bits of objects that the old engine made for itself.
constexpr quint32 systemFlags = 0x80000002;
constexpr quint32 pageBits = 0x00FFFFFF;
/// A library has eleven; a file with more than this many makes too much of itself.
constexpr size_t mostTables = 1000;

int requiredColumn(const PageFile& file, const OldTable& objects, const QString& name, OldType type)
{
    const int column = objects.find(name);
    if (column < 0 || objects.columns[size_t(column)].type != type)
        file.refuseDamaged(u"表的目录读不出"_s);
    return column;
}

/// One row of the list of all things that the file holds.
struct Entry
{
    quint32 id = 0;
    qint64 type = 0;
    QString name;
};

/// Of what the old engine made for itself nothing is given.
template <typename Take> void forEachEntry(PageFile& file, const Take& take)
{
    const OldTable objects = readTable(file, objectsPage, u"MSysObjects"_s);
    const int id = requiredColumn(file, objects, u"Id"_s, OldType::Long);
    const int name = requiredColumn(file, objects, u"Name"_s, OldType::Text);
    const int type = requiredColumn(file, objects, u"Type"_s, OldType::Integer);
    const int flags = requiredColumn(file, objects, u"Flags"_s, OldType::Long);
    OldRows rows(file, objects);
    while (rows.next()) {
        if (rows.isNull(type) || rows.isNull(id) || rows.isNull(name)
            || (!rows.isNull(flags) && (quint32(rows.integer(flags)) & systemFlags) != 0))
            continue;
        take(Entry{quint32(rows.integer(id)), rows.integer(type), rows.text(name)});
    }
}

std::optional<OldObject::Kind> kindOf(qint64 type)
{
    switch (type) {
    case 4: // by way of another engine
    case 6:
        return OldObject::Kind::LinkedTable;
    case 5:
        return OldObject::Kind::Query;
    case -32768:
        return OldObject::Kind::Form;
    case -32764:
        return OldObject::Kind::Report;
    case -32766:
        return OldObject::Kind::Macro;
    case -32761:
        return OldObject::Kind::Module;
    default:
        return std::nullopt;
    }
}

} // namespace

OldDatabase::OldDatabase(const QString& path) : m_file(path)
{
    const QByteArray first = m_file.firstBytes();
    if (!database::isOldFormat(first))
        throw OldFileError(OldFileFailure::Foreign, u"%1 不是旧格式的成绩库。"_s.arg(path));
    if (m_file.size() > largestFile)
        throw OldFileError(OldFileFailure::Foreign,
                           u"%1 超过 2 GB，不是旧格式的成绩库。"_s.arg(path));
    if (first.size() < PageFile::pageSize)
        m_file.refuseCutOff();
    m_header = FileHeader::fromPage(first);
    if (m_header.version != FileHeader::libraryVersion)
        throw OldFileError(OldFileFailure::OtherVersion,
                           u"%1 是另一种版本的数据库，不能转换。"_s.arg(path));
    checkNotEncrypted();
    if (m_file.size() % PageFile::pageSize != 0)
        m_file.refuseCutOff();
}

/// A file that is damaged from its front is not told to be cut off, even if no last page is whole.
void OldDatabase::checkNotEncrypted()
{
    const QByteArray page = m_file.page(objectsPage);
    if (isDefinitionPage(page))
        return;
    if (m_header.pageKey == 0)
        m_file.refuseDamaged(u"表的目录读不出"_s);
    // Damaged bytes can pass for a key; only one that opens a page is told to be one.
    if (!isDefinitionPage(withKey(page, m_header.pageKey ^ objectsPage)))
        throw OldFileError(OldFileFailure::Encrypted,
                           u"%1 的内容加密了，或者已损坏，不能转换。"_s.arg(m_file.path()));
    throw OldFileError(
        OldFileFailure::Encrypted,
        u"%1 的内容加密了，不能转换。请先用原来的程序取消加密。"_s.arg(m_file.path()));
}

bool OldDatabase::isPassword(const QString& text) const
{
    return !hasPassword() || text == m_header.password;
}

std::vector<OldTable> OldDatabase::readTables()
{
    std::vector<OldTable> tables;
    QSet<QString> names;
    QSet<quint32> pages = {objectsPage};
    forEachEntry(m_file, [&](const Entry& entry) {
        if (entry.type != tableObject)
            return;
        const quint32 page = entry.id & pageBits;
        const QString name = entry.name.toCaseFolded();
        if (!isName(entry.name) || names.contains(name) || pages.contains(page)
            || tables.size() == mostTables)
            m_file.refuseDamaged(u"表的目录读不出"_s);
        names.insert(name);
        pages.insert(page);
        tables.push_back(readTable(m_file, page, entry.name));
    });
    return tables;
}

std::vector<OldObject> OldDatabase::readOtherObjects()
{
    std::vector<OldObject> objects;
    forEachEntry(m_file, [&](const Entry& entry) {
        const std::optional<OldObject::Kind> kind = kindOf(entry.type);
        // The queries of forms are named so.
        if (kind && !entry.name.startsWith(u'~'))
            objects.push_back({*kind, entry.name});
    });
    return objects;
}

} // namespace oldlibraries
