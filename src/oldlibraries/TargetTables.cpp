#include "oldlibraries/TargetTables.h"

#include <algorithm>

#include <QSet>
#include <QStringList>

#include "platform/database/ColumnType.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::ColumnType;
using Key = ColumnDeclaration::Key;
using Kind = ColumnType::Kind;

namespace {

/// A column of a type of the old engine where nothing else is known of it.
ColumnDeclaration ownDeclaration(const OldColumn& column)
{
    const auto as = [&](const QString& type, const QString& collation = {}) {
        return ColumnDeclaration{column.name, type, collation};
    };
    const QString ignoringCase = u"NOCASE"_s;
    switch (column.type) {
    case OldType::Boolean:
        return as(u"Boolean INTEGER"_s);
    case OldType::Byte:
    case OldType::Integer:
        return as(u"Integer INTEGER"_s);
    case OldType::Long:
        return as(u"Long INTEGER"_s);
    case OldType::Single:
        return as(u"Single REAL"_s);
    case OldType::Currency:
    case OldType::Double:
    case OldType::Decimal:
        return as(u"Double REAL"_s);
    case OldType::Binary:
    case OldType::LongBinary:
        return as(u"LongBinary BLOB"_s);
    case OldType::Text:
        return as(u"text(%1)"_s.arg(column.length), ignoringCase);
    case OldType::Memo:
        return as(u"Memo TEXT"_s, ignoringCase);
    case OldType::DateTime:
    case OldType::Guid:
        break;
    }
    return as(u"text(50)"_s, ignoringCase);
}

/// Numbers of which the second kind holds all that the first one does.
bool holdsNumbers(Kind kind, Kind of)
{
    switch (kind) {
    case Kind::Double:
        return true;
    case Kind::Single:
        return of == Kind::Integer || of == Kind::Boolean || of == Kind::Single;
    case Kind::Long:
        return of == Kind::Long || of == Kind::Integer || of == Kind::Boolean;
    case Kind::Integer:
        return of == Kind::Integer || of == Kind::Boolean;
    default:
        return kind == of;
    }
}

/// A column of the one type holds all that one of the other does.
bool holds(const ColumnType& type, const ColumnType& other)
{
    if (type.isNumeric() && other.isNumeric())
        return holdsNumbers(type.kind, other.kind);
    if (type.isText() && other.isText())
        return type.kind == Kind::Memo || (other.kind == Kind::Text && type.length >= other.length);
    return type.kind == other.kind;
}

bool isSameSort(const ColumnType& type, const ColumnType& other)
{
    return (type.isNumeric() && other.isNumeric()) || (type.isText() && other.isText());
}

bool isWhole(OldType type)
{
    return type == OldType::Long || type == OldType::Integer || type == OldType::Byte;
}

/// The column as the empty library has it, wider where the old one is.
ColumnDeclaration declarationLike(const ColumnDeclaration& known, const OldColumn& column)
{
    const ColumnDeclaration own = ownDeclaration(column);
    if (known.key == Key::AutoNumber && !isWhole(column.type))
        return own;
    ColumnDeclaration declaration = known;
    declaration.name = column.name;
    const ColumnType knownType = ColumnType::fromDeclaration(known.type);
    const ColumnType ownType = ColumnType::fromDeclaration(own.type);
    if (known.key == Key::AutoNumber || holds(knownType, ownType))
        return declaration;
    if (!isSameSort(knownType, ownType))
        return own;
    declaration.type = own.type;
    return declaration;
}

const ColumnDeclaration* find(const std::vector<ColumnDeclaration>& columns, const QString& name)
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const auto& column) {
        return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? nullptr : &*found;
}

ColumnDeclaration numbering(const QString& name)
{
    return {name, u"INTEGER"_s, {}, {}, Key::AutoNumber};
}

std::vector<ColumnDeclaration> columnsOf(const OldTable& table,
                                         const std::vector<ColumnDeclaration>& known)
{
    std::vector<ColumnDeclaration> columns;
    for (const OldColumn& column : table.columns) {
        const ColumnDeclaration* like = find(known, column.name);
        columns.push_back(like ? declarationLike(*like, column) : ownDeclaration(column));
    }
    return columns;
}

/// A column that numbers by itself goes on doing so, unless another one does already.
void keepNumbering(TargetTable& table)
{
    if (table.numberColumn() >= 0)
        return;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.old.columns[i].isAutoNumber) {
            table.columns[i] = numbering(table.columns[i].name);
            return;
        }
    }
}

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

/// Gives names of one kind (tables, columns of a table), each once.
class Names
{
public:
    /// Those of the old library, and others that are not to be had.
    explicit Names(const QStringList& old, const QStringList& others = {})
    {
        for (const QString& name : others)
            m_others.insert(name.toLower());
        for (const QString& name : old)
            m_taken.insert(name.toLower());
        m_taken.unite(m_others);
    }

    /// The name itself if it can be had, otherwise one like it that is free.
    QString target(const QString& name)
    {
        QString free = possibleName(name);
        if (free == name && !m_others.contains(name.toLower()))
            return name;
        while (m_taken.contains(free.toLower()))
            free += u'_';
        m_taken.insert(free.toLower());
        return free;
    }

private:
    QSet<QString> m_taken;
    QSet<QString> m_others;
};

QStringList indexNames(database::Connection& emptyLibrary)
{
    QStringList names;
    database::Statement indexes(emptyLibrary,
                                u"select name from sqlite_master where type='index'"_s);
    while (indexes.step())
        names.append(indexes.text(0));
    return names;
}

QStringList namesOf(const std::vector<OldTable>& tables)
{
    QStringList names;
    for (const OldTable& table : tables)
        names.append(table.name);
    return names;
}

void renameColumns(TargetTable& table, std::vector<Finding>& findings)
{
    Names names(table.columnNames());
    for (ColumnDeclaration& column : table.columns) {
        const QString name = names.target(column.name);
        if (name != column.name)
            findings.push_back({table.name, 0, column.name, {}, u"列改名为“%1”"_s.arg(name)});
        column.name = name;
    }
}

} // namespace

int TargetTable::numberColumn() const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [](const auto& column) {
        return column.key == Key::AutoNumber;
    });
    return found == columns.end() ? -1 : int(found - columns.begin());
}

QStringList TargetTable::columnNames() const
{
    QStringList names;
    for (const ColumnDeclaration& column : columns)
        names.append(column.name);
    return names;
}

bool TargetTable::hasKeys() const
{
    return std::any_of(columns.begin(), columns.end(),
                       [](const auto& column) { return column.key != Key::None; });
}

TargetTable TargetTable::withoutKeys() const
{
    TargetTable plain = *this;
    for (size_t i = 0; i < columns.size(); ++i) {
        ColumnDeclaration& column = plain.columns[i];
        if (column.key == Key::AutoNumber)
            column.type = ownDeclaration(old.columns[i]).type;
        column.key = Key::None;
    }
    return plain;
}

std::vector<TargetTable> targetTables(const std::vector<OldTable>& oldTables,
                                      database::Connection& emptyLibrary,
                                      std::vector<Finding>& findings)
{
    std::vector<TargetTable> tables;
    Names names(namesOf(oldTables), indexNames(emptyLibrary));
    for (const OldTable& old : oldTables) {
        TargetTable table{old, names.target(old.name),
                          columnsOf(old, database::columnDeclarations(emptyLibrary, old.name))};
        if (table.name != old.name)
            findings.push_back({old.name, 0, {}, {}, u"表改名为“%1”"_s.arg(table.name)});
        renameColumns(table, findings);
        keepNumbering(table);
        tables.push_back(std::move(table));
    }
    return tables;
}

} // namespace oldlibraries
