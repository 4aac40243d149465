#include "import/tidy/StudentSearch.h"

#include <algorithm>

#include <QRegularExpression>

#include "platform/runtime/Numbers.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

bool isSameName(const QString& a, const QString& b)
{
    return withoutBlanks(a).compare(withoutBlanks(b), Qt::CaseInsensitive) == 0;
}

/// The number within the class; nothing for a text that is none.
std::optional<double> numberOf(const QString& text)
{
    static const QRegularExpression pattern(u"^(\\d{1,15})号?$"_s);
    const auto match = pattern.match(folded(text));
    return match.hasMatch() ? std::optional(match.captured(1).toDouble()) : std::nullopt;
}

/// A number that a spreadsheet cut: 16 digits or more, or written with an exponent.
bool hasLostDigits(const QString& text)
{
    static const QRegularExpression exponent(u"^\\d(\\.\\d+)?[eE]\\+?\\d+$"_s);
    return exponent.match(text).hasMatch();
}

QString placeOf(const RosterStudent& student)
{
    return u"%1班%2号%3"_s.arg(doubleText(student.classNumber), doubleText(student.number),
                               student.name);
}

/// The first of those found, each in the words of `text`.
QString listed(const Roster::Found& found, QString (*text)(const RosterStudent&))
{
    constexpr int mostNamed = 5;
    QStringList texts;
    for (const RosterStudent* student : found) {
        if (texts.size() < mostNamed)
            texts.append(text(*student));
    }
    return texts.join(u'、') + (found.size() > mostNamed ? u" 等"_s : QString());
}

QString placesOf(const Roster::Found& found)
{
    return listed(found, &placeOf);
}

QString namesOf(const Roster::Found& found)
{
    return listed(found, [](const RosterStudent& student) { return student.name; });
}

/// Why a text in the column of numbers is not used.
QString oddNumberText(const QString& text)
{
    static const QRegularExpression digits(u"^\\d+号?$"_s);
    return digits.match(folded(text)).hasMatch()
               ? u"学号“%1”太长，不像班里的学号，没有用它。"_s.arg(text)
               : u"学号“%1”不是数字，没有用它。"_s.arg(text);
}

void remark(StudentRow& row, RemarkKind kind, const QString& text)
{
    row.remarks.push_back({.kind = kind, .row = row.source.row, .text = text});
}

} // namespace

QString cleanName(const QString& name)
{
    const QString packed = withoutBlanks(name);
    const bool isChinese = std::all_of(packed.begin(), packed.end(), [](QChar letter) {
        return letter.script() == QChar::Script_Han || letter.isSurrogate() || letter == u'·';
    });
    return isChinese ? packed : name.simplified();
}

StudentRow StudentSearch::find(const SourceRow& source, std::optional<double> classNumber) const
{
    StudentRow row{source, classNumber.value_or(0), 0, cleanName(source.name)};
    const std::optional<double> number = numberOf(source.number);
    if (!number && !source.number.isEmpty())
        remark(row, RemarkKind::OddNumber, oddNumberText(source.number));
    if (classNumber && number) {
        row.number = *number;
        row.isWhole = true;
        findByNumber(row);
    } else if (m_goal == Goal::ExamScores && m_roster.hasStudents()) {
        findOtherwise(row, classNumber);
    }
    if (!row.isWhole)
        explain(row, classNumber);
    if (row.isWhole && row.name.isEmpty())
        remark(row, RemarkKind::Nameless, u"没有姓名。"_s);
    return row;
}

void StudentSearch::findByNumber(StudentRow& row) const
{
    const Roster::Found found = m_roster.at(row.classNumber, row.number);
    row.isKnown = !found.empty();
    if (m_goal == Goal::StudentList || !m_roster.hasStudents())
        return;
    if (found.empty()) {
        tellUnknown(row);
        return;
    }
    const QString place =
        u"成绩库里 %1 班 %2 号"_s.arg(doubleText(row.classNumber), doubleText(row.number));
    if (found.size() > 1)
        remark(row, RemarkKind::SeveralFound, u"%1有几个人：%2。"_s.arg(place, namesOf(found)));
    const auto same = std::find_if(found.begin(), found.end(), [&](const RosterStudent* student) {
        return isSameName(row.name, student->name);
    });
    if (same != found.end() || (row.name.isEmpty() && found.size() == 1)) {
        row.name = (same == found.end() ? found.front() : *same)->name;
    } else if (!row.name.isEmpty()) {
        row.hasOtherName = true;
        if (found.size() == 1)
            remark(row, RemarkKind::NameDiffers,
                   u"%1的姓名是“%2”。"_s.arg(place, found.front()->name));
    }
}

void StudentSearch::tellUnknown(StudentRow& row) const
{
    const Roster::Found others = m_roster.named(row.classNumber, row.name);
    QString text =
        u"成绩库里没有 %1 班 %2 号。"_s.arg(doubleText(row.classNumber), doubleText(row.number));
    if (!others.empty())
        text += u"同班同名的有：%1。"_s.arg(placesOf(others));
    remark(row, RemarkKind::Unknown, text);
}

void StudentSearch::take(StudentRow& row, const RosterStudent& student)
{
    row.classNumber = student.classNumber;
    row.number = student.number;
    row.name = student.name;
    row.isWhole = row.isKnown = row.isFound = true;
}

bool StudentSearch::takeOnly(StudentRow& row, const Roster::Found& found, const QString& by) const
{
    if (found.size() == 1) {
        take(row, *found.front());
        return true;
    }
    if (found.size() > 1)
        remark(row, RemarkKind::SeveralFound, u"按%1找到几个人：%2。"_s.arg(by, placesOf(found)));
    return false;
}

bool StudentSearch::findByKey(StudentRow& row, Field key, std::optional<double> classNumber) const
{
    const QString text = key == Field::ExamNumber ? row.source.examNumber : row.source.schoolNumber;
    if (text.isEmpty() || hasLostDigits(text))
        return false;
    Roster::Found found =
        key == Field::ExamNumber ? m_roster.withExamNumber(text) : m_roster.withSchoolNumber(text);
    if (found.empty() && key == Field::ExamNumber)
        found = m_roster.withSchoolNumber(text);
    const QString word = fieldText(key);
    if (found.size() == 1 && !row.name.isEmpty() && !isSameName(found.front()->name, row.name)) {
        remark(row, RemarkKind::NameDiffers,
               u"成绩库里%1“%2”是%3，姓名不同，没有按它查找。"_s.arg(word, text,
                                                                     placeOf(*found.front())));
        return false;
    }
    if (!takeOnly(row, found, word))
        return false;
    if (classNumber && *classNumber != row.classNumber)
        remark(row, RemarkKind::ClassDiffers,
               u"表里是 %1 班，成绩库里是%2，用的是成绩库的。"_s.arg(doubleText(*classNumber),
                                                                     placeOf(*found.front())));
    return true;
}

void StudentSearch::findByName(StudentRow& row, double classNumber) const
{
    takeOnly(row, m_roster.named(classNumber, row.name), u"班级和姓名"_s);
}

void StudentSearch::findOtherwise(StudentRow& row, std::optional<double> classNumber) const
{
    if (findByKey(row, Field::ExamNumber, classNumber)
        || findByKey(row, Field::SchoolNumber, classNumber))
        return;
    if (classNumber && !row.name.isEmpty())
        findByName(row, *classNumber);
}

void StudentSearch::explain(StudentRow& row, std::optional<double> classNumber) const
{
    const bool isSeveral =
        std::any_of(row.remarks.begin(), row.remarks.end(),
                    [](const Remark& one) { return one.kind == RemarkKind::SeveralFound; });
    if (!isSeveral) {
        QString text = !classNumber && row.number == 0 && row.source.number.isEmpty()
                           ? u"没有班级和学号。"_s
                       : !classNumber ? u"没有班级。"_s
                                      : u"没有学号。"_s;
        if (m_goal == Goal::ExamScores && m_roster.hasStudents()) {
            text += u"在成绩库里没有找到这个学生。"_s;
            const Roster::Found others = m_roster.named(row.name);
            if (!row.name.isEmpty() && !others.empty())
                text += u"同名的有：%1。"_s.arg(placesOf(others));
        }
        remark(row, RemarkKind::NotFound, text);
    }
    for (Remark& one : row.remarks)
        one.isLeftOut = true;
}

} // namespace tidy
