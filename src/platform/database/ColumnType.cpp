#include "platform/database/ColumnType.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/database/Error.h"
#include "platform/runtime/Numbers.h"

namespace database {

namespace {

using namespace Qt::StringLiterals;
using runtime::Value;

struct TypeName
{
    const char16_t* name;
    ColumnType::Kind kind;
};

/// First words of declarations. Longer names stand ahead of names that they begin with.
constexpr TypeName typeNames[] = {
    {u"single", ColumnType::Kind::Single},     {u"double", ColumnType::Kind::Double},
    {u"number", ColumnType::Kind::Double},     {u"numeric", ColumnType::Kind::Double},
    {u"decimal", ColumnType::Kind::Double},    {u"currency", ColumnType::Kind::Double},
    {u"float", ColumnType::Kind::Double},      {u"real", ColumnType::Kind::Double},
    {u"longbinary", ColumnType::Kind::Binary}, {u"ole", ColumnType::Kind::Binary},
    {u"blob", ColumnType::Kind::Binary},       {u"image", ColumnType::Kind::Binary},
    {u"longtext", ColumnType::Kind::Memo},     {u"memo", ColumnType::Kind::Memo},
    {u"long", ColumnType::Kind::Long},         {u"autonumber", ColumnType::Kind::Long},
    {u"counter", ColumnType::Kind::Long},      {u"bigint", ColumnType::Kind::Long},
    {u"int", ColumnType::Kind::Integer},       {u"short", ColumnType::Kind::Integer},
    {u"smallint", ColumnType::Kind::Integer},  {u"boolean", ColumnType::Kind::Boolean},
    {u"yesno", ColumnType::Kind::Boolean},     {u"bit", ColumnType::Kind::Boolean},
    {u"text", ColumnType::Kind::Text},         {u"varchar", ColumnType::Kind::Text},
    {u"char", ColumnType::Kind::Text},
};

/// The number in brackets of "text(50)", or 255.
int declaredLength(const QString& declaration)
{
    const qsizetype open = declaration.indexOf(u'(');
    if (open < 0)
        return 255;
    const int length = int(runtime::Val(QStringView(declaration).mid(open + 1)));
    return length > 0 ? length : 255;
}

[[noreturn]] void refuse(const QString& columnName, const QString& text, const QString& why)
{
    throw Error(Failure::Value, u"“%1”不能存入列“%2”：%3。"_s.arg(text.left(60), columnName, why));
}

/// A number, or a text that is one from end to end.
double numberOf(const Value& value, const QString& columnName)
{
    if (value.isNumber() || value.kind() == Value::Kind::Boolean)
        return value.toDouble();
    QByteArray text = value.text().trimmed().toUtf8();
    if (text.startsWith('+') && !text.startsWith("+-"))
        text.remove(0, 1);
    double number = 0;
    const char* last = text.constData() + text.size();
    const auto [end, error] = std::from_chars(text.constData(), last, number);
    if (error == std::errc::result_out_of_range)
        refuse(columnName, value.text(), u"数字太大"_s);
    // "inf" and "nan" read as numbers too.
    if (error != std::errc() || end != last || !std::isfinite(number))
        refuse(columnName, value.text(), u"不是数字"_s);
    return number;
}

template <class Whole> Value wholeNumber(double number, const QString& columnName)
{
    const double rounded = std::nearbyint(number);
    if (!(rounded >= double(std::numeric_limits<Whole>::min())
          && rounded <= double(std::numeric_limits<Whole>::max())))
        refuse(columnName, runtime::doubleText(number), u"数字太大"_s);
    return Value(qint64(rounded));
}

Value singleNumber(double number, const QString& columnName)
{
    // Half way above the largest float; what lies below rounds to it.
    constexpr double tooLarge = 0x1.ffffffp127;
    if (!(std::abs(number) < tooLarge))
        refuse(columnName, runtime::doubleText(number), u"数字太大"_s);
    return Value(float(number));
}

Value doubleNumber(double number, const QString& columnName)
{
    if (!std::isfinite(number))
        refuse(columnName, runtime::doubleText(number), u"数字太大"_s);
    return Value(number);
}

Value textValue(const Value& value, const QString& columnName, int length)
{
    if (value.kind() == Value::Kind::Binary)
        refuse(columnName, u"二进制数据"_s, u"这一列只存文字"_s);
    const QString text = value.text();
    if (text.size() > length)
        refuse(columnName, text, u"文字超过 %1 个字符"_s.arg(length));
    return Value(text);
}

} // namespace

ColumnType ColumnType::fromDeclaration(const QString& declaration)
{
    const QString lower = declaration.trimmed().toLower();
    ColumnType type;
    for (const TypeName& name : typeNames) {
        if (lower.startsWith(QStringView(name.name))) {
            type.kind = name.kind;
            break;
        }
    }
    if (type.kind == Kind::Text)
        type.length = declaredLength(lower);
    return type;
}

Value ColumnType::converted(const Value& value, const QString& columnName) const
{
    if (value.isNull())
        return value;
    switch (kind) {
    case Kind::Single:
        return singleNumber(numberOf(value, columnName), columnName);
    case Kind::Double:
        return doubleNumber(numberOf(value, columnName), columnName);
    case Kind::Long:
        return wholeNumber<qint32>(numberOf(value, columnName), columnName);
    case Kind::Integer:
        return wholeNumber<qint16>(numberOf(value, columnName), columnName);
    case Kind::Boolean:
        return Value(numberOf(value, columnName) != 0);
    case Kind::Text:
        return textValue(value, columnName, length);
    case Kind::Memo:
        return textValue(value, columnName, std::numeric_limits<int>::max());
    case Kind::Binary:
        break;
    }
    if (value.kind() != Value::Kind::Binary)
        refuse(columnName, value.text(), u"这一列只存二进制数据"_s);
    return value;
}

} // namespace database
