#include "import/tidy/ClassNames.h"

#include <algorithm>

#include <QRegularExpression>
#include <QSet>

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

const QString digits = u"零一二三四五六七八九"_s;

/// A number of Chinese numerals below 100, or of digits; -1 for any other text.
int numberIn(const QString& text)
{
    bool isNumber = false;
    const int plain = text.toInt(&isNumber);
    if (isNumber)
        return plain;
    const qsizetype ten = text.indexOf(u'十');
    const auto digit = [](const QString& one) {
        return one.isEmpty() ? 0 : int(digits.indexOf(one));
    };
    if (ten < 0)
        return text.size() == 1 ? digit(text) : -1;
    const int tens = ten == 0 ? 1 : digit(text.left(ten));
    const int ones = digit(text.mid(ten + 1));
    return ten > 1 || tens < 0 || ones < 0 || text.size() > ten + 2 ? -1 : tens * 10 + ones;
}

/// A text in half width without blanks, its brackets as round ones.
QString key(const QString& text)
{
    QString result;
    for (const QChar letter : halfWidth(text)) {
        if (letter.isSpace())
            continue;
        result.append(letter.category() == QChar::Punctuation_Open    ? QChar(u'(')
                      : letter.category() == QChar::Punctuation_Close ? QChar(u')')
                                                                      : letter);
    }
    return result;
}

void add(ClassName& name, double candidate)
{
    std::vector<double>& all = name.candidates;
    if (std::find(all.begin(), all.end(), candidate) == all.end())
        all.push_back(candidate);
}

ClassName plain(int number)
{
    return {double(number), {double(number)}};
}

void addGrade(ClassName& name, int grade)
{
    add(name, grade * 100 + name.number);
    if (name.number < 10)
        add(name, grade * 10 + name.number);
}

/// 高三 is the third grade of its school, and the twelfth of all.
ClassName ofGrade(const QString& school, int grade, int number)
{
    ClassName name = plain(number);
    name.hasGrade = true;
    addGrade(name, grade);
    constexpr int junior = 6;
    constexpr int senior = 9;
    name.grade = grade;
    if (grade <= 3)
        name.grade += school == u"高"_s ? senior : school == u"初"_s ? junior : 0;
    if (school != u"初"_s && grade <= 3)
        addGrade(name, grade + senior);
    if (school != u"高"_s && grade <= 3)
        addGrade(name, grade + junior);
    if (school.isEmpty() && grade > junior)
        addGrade(name, grade - junior);
    return name;
}

ClassName ofYear(int year, int number)
{
    ClassName name = plain(number);
    name.hasGrade = true;
    constexpr int century = 100;
    constexpr int firstYear = 2000;
    name.grade = firstYear + year % century;
    add(name, (year % century) * century + number);
    add(name, (firstYear + year % century) * century + number);
    return name;
}

std::optional<ClassName> valid(ClassName name, const QString& text)
{
    if (name.number <= 0)
        return std::nullopt;
    name.stream = text.contains(u'文') ? u"文"_s : text.contains(u'理') ? u"理"_s : QString();
    return name;
}

/// 1—3班 or 1班、2班: several classes in one text.
bool namesSeveral(const QString& text)
{
    static const QRegularExpression several(
        u"[\\d一二三四五六七八九十)班][-~—–―－/至到、,，;；.和与及]+第?"
        "\\(?(?:\\d{1,4}|[一二三四五六七八九十]{1,3})\\)?班"_s);
    return several.match(text).hasMatch();
}

const QString someNumber = u"(\\d{1,6}|[一二三四五六七八九十]{1,3})"_s;
const QString streams = u"[文理]?科?"_s;

} // namespace

std::optional<ClassName> className(const QString& text)
{
    static const QRegularExpression number(u"^\\(?%1\\)?$"_s.arg(u"(\\d{1,6})"_s));
    static const QRegularExpression ofClass(u"^%2\\(?%1\\)?班$"_s.arg(someNumber, streams));
    static const QRegularExpression inGrade(
        u"^([高初]?)([1-9]|[一二三四五六七八九])(?:年级|年)?%2\\(%1\\)班?$"_s.arg(someNumber,
                                                                                  streams));
    static const QRegularExpression inNamedGrade(
        u"^([高初])([一二三])(?:年级)?%2%1班?$"_s.arg(someNumber, streams));
    static const QRegularExpression inYearOfSchool(
        u"^()([1-9]|[一二三四五六七八九])(?:年级|年|[-.])%2%1班?$"_s.arg(someNumber, streams));
    static const QRegularExpression inChineseGrade(u"^()([一二三七八九])(\\d{1,2})班?$"_s);
    static const QRegularExpression inYear(
        u"^[高初]?(\\d{4}|\\d{2})[级届]%2\\(?%1\\)?班?$"_s.arg(someNumber, streams));
    const QString whole = key(text);
    if (const auto match = number.match(whole); match.hasMatch())
        return valid(plain(numberIn(match.captured(1))), whole);
    if (const auto match = ofClass.match(whole); match.hasMatch())
        return valid(plain(numberIn(match.captured(1))), whole);
    for (const auto* pattern : {&inGrade, &inNamedGrade, &inYearOfSchool, &inChineseGrade}) {
        if (const auto match = pattern->match(whole); match.hasMatch())
            return valid(ofGrade(match.captured(1), numberIn(match.captured(2)),
                                 numberIn(match.captured(3))),
                         whole);
    }
    if (const auto match = inYear.match(whole); match.hasMatch())
        return valid(ofYear(match.captured(1).toInt(), numberIn(match.captured(2))), whole);
    return std::nullopt;
}

std::optional<double> writtenClass(const QString& text)
{
    static const QRegularExpression whole(u"^0*[1-9]\\d{0,8}$"_s);
    const QString plain = halfWidth(text).trimmed();
    return whole.match(plain).hasMatch() ? std::optional(plain.toDouble()) : std::nullopt;
}

QString classIn(const QString& text)
{
    // Behind a sign of a range a bare number is its end, and no class.
    static const QRegularExpression part(
        u"(?:[高初]?[一二三四五六七八九](?:年级|年)?|[高初]\\d|\\d年级|"
        "[高初]?(?:\\d{4}|\\d{2})[级届]|(?<![-~—–―/至到、,.和与及\\d高初]))[文理]?科?"
        "(?:\\(\\d{1,4}\\)|\\d{1,4}|\\([一二三四五六七八九十]{1,3}\\)|"
        "[一二三四五六七八九十]{1,3})班(?![级主长])"_s);
    QSet<QString> found;
    const QString whole = key(text);
    auto matches = part.globalMatch(whole);
    while (matches.hasNext())
        found.insert(matches.next().captured());
    return found.size() == 1 && !namesSeveral(whole) ? *found.begin() : QString();
}

bool areOfDifferentKinds(const ClassName& one, const ClassName& other)
{
    const bool otherGrade = one.grade != 0 && other.grade != 0 && one.grade != other.grade;
    const bool otherStream =
        !one.stream.isEmpty() && !other.stream.isEmpty() && one.stream != other.stream;
    return otherGrade || otherStream;
}

QString classInName(const QString& name)
{
    static const QRegularExpression date(u"^[\\d.\\-]*[.\\-][\\d.\\-]*班?$|^\\d{4,}$"_s);
    if (date.match(key(name)).hasMatch())
        return {};
    return className(name) ? name : classIn(name);
}

QString gradeIn(const QString& text)
{
    static const QRegularExpression part(u"[高初][一二三]|[七八九]年级|[高初]?20\\d\\d级"_s);
    QSet<QString> found;
    auto matches = part.globalMatch(key(text));
    while (matches.hasNext())
        found.insert(matches.next().captured());
    return found.size() == 1 ? *found.begin() : QString();
}

} // namespace tidy
