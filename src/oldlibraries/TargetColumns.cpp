#include "oldlibraries/TargetColumns.h"

#include "platform/database/ColumnType.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using database::ColumnType;
using Key = ColumnDeclaration::Key;
using Kind = ColumnType::Kind;

namespace {

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

bool isNumber(const ColumnType& type)
{
    return type.isNumeric() || type.kind == Kind::Boolean;
}

/// A column of the one type holds all that one of the other does.
bool holds(const ColumnType& type, const ColumnType& other)
{
    if (isNumber(type) && isNumber(other))
        return holdsNumbers(type.kind, other.kind);
    if (type.isText() && other.isText())
        return type.kind == Kind::Memo || (other.kind == Kind::Text && type.length >= other.length);
    return type.kind == other.kind;
}

bool isSameSort(const ColumnType& type, const ColumnType& other)
{
    return (isNumber(type) && isNumber(other)) || (type.isText() && other.isText())
           || type.kind == other.kind;
}

bool isWhole(OldType type)
{
    return type == OldType::Long || type == OldType::Integer || type == OldType::Byte;
}

} // namespace

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

ColumnDeclaration declarationLike(const ColumnDeclaration& known, const OldColumn& column)
{
    ColumnDeclaration own = ownDeclaration(column);
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

QString newForm(OldType type)
{
    switch (type) {
    case OldType::DateTime:
        return u"日期时间列，按“2009-07-31 08:30:00”这样的文字保存。"_s;
    case OldType::Guid:
        return u"“同步复制 ID”列，按文字保存。"_s;
    case OldType::Currency:
    case OldType::Decimal:
        return u"货币或小数列，按数保存。"_s;
    default:
        return {};
    }
}

QString newKind(const ColumnDeclaration& known, const ColumnDeclaration& column)
{
    if (known.key == Key::AutoNumber)
        return column.key == Key::AutoNumber
                   ? QString()
                   : u"旧库的类型不能自动编号，新库里这一列不自动编号。"_s;
    const bool isOther = !isSameSort(ColumnType::fromDeclaration(known.type),
                                     ColumnType::fromDeclaration(column.type));
    return isOther ? u"类型与现在的成绩库不同，照旧库的类型保存。"_s : QString();
}

} // namespace oldlibraries
