#include "import/tidy/ClassReadings.h"

#include <algorithm>
#include <cmath>

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

QString joined(const std::vector<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers)
        texts.append(QString::number(number));
    return texts.join(u'、');
}

void open(ClassReading& reading, const QString& reason)
{
    reading.number.reset();
    reading.isOpen = true;
    reading.reason = reason;
}

/// Two grades may each have a class 1; without a library nothing tells them apart.
void openShared(std::vector<ClassReading>& readings)
{
    const auto isShared = [&](const ClassReading& one) {
        return std::any_of(readings.begin(), readings.end(), [&](const ClassReading& other) {
            return other.candidates.size() > 1 && other.candidates != one.candidates
                   && other.candidates.front() == one.candidates.front();
        });
    };
    std::vector<ClassReading*> shared;
    for (ClassReading& reading : readings) {
        if (reading.decidedBy == DecidedBy::Program && reading.candidates.size() > 1
            && isShared(reading))
            shared.push_back(&reading);
    }
    for (ClassReading* reading : shared)
        open(*reading, u"和别的年级的班号相同，请写出班号。"_s);
}

} // namespace

ClassReadings::ClassReadings(const std::vector<ClassReading>& former, const Roster& roster)
    : m_roster(roster)
{
    std::copy_if(former.begin(), former.end(), std::back_inserter(m_former),
                 [](const ClassReading& one) { return one.decidedBy != DecidedBy::Program; });
}

/// A bare number means a class of the grade that the sheet tells.
QString ClassReadings::keyOf(const QString& text, const QString& grade) const
{
    if (grade.isEmpty() || !m_roster.hasStudents())
        return text;
    const std::optional<ClassName> name = className(text);
    const bool isBare = name && !name->hasGrade && name->number < 100;
    return isBare ? u"%1(%2)班"_s.arg(grade, QString::number(name->number)) : text;
}

/// A bare 1 may be 101, 201 or 301 where the library counts so.
void ClassReadings::addSimilar(ClassReading& reading) const
{
    constexpr double hundred = 100;
    const double number = reading.candidates.front();
    if (number >= hundred)
        return;
    for (const double other : m_roster.classes()) {
        if (std::fmod(other, hundred) == number)
            reading.candidates.push_back(other);
    }
}

void ClassReadings::decide(ClassReading& reading, const ClassName& name) const
{
    if (!name.hasGrade && !m_roster.hasClass(name.number))
        addSimilar(reading);
    std::vector<double> existing = name.candidates;
    std::erase_if(existing, [this](double number) { return !m_roster.hasClass(number); });
    if (existing.size() == 1) {
        reading.number = existing.front();
        reading.reason = u"成绩库里有 %1 班。"_s.arg(QString::number(existing.front()));
    } else if (existing.size() > 1) {
        open(reading, u"成绩库里有几个班都像它：%1。"_s.arg(joined(existing)));
    } else if (reading.candidates.size() == 1 || !m_roster.hasStudents()) {
        reading.number = name.number;
        reading.reason =
            m_roster.hasStudents() ? u"成绩库里还没有这个班。"_s : u"用的是文字里的班号。"_s;
    } else {
        open(reading, u"成绩库里没有这个班，可以是：%1。"_s.arg(joined(reading.candidates)));
    }
}

ClassReading ClassReadings::read(const QString& text) const
{
    const auto former = std::find_if(m_former.begin(), m_former.end(),
                                     [&](const ClassReading& one) { return one.text == text; });
    const std::optional<ClassName> name = className(text);
    ClassReading reading{.text = text};
    if (name)
        reading.candidates = name->candidates;
    if (former != m_former.end()) {
        reading.number = former->number;
        reading.decidedBy = former->decidedBy;
        reading.reason = u"您选择的。"_s;
    } else if (name) {
        decide(reading, *name);
    } else {
        open(reading, u"看不出是哪个班。"_s);
    }
    return reading;
}

int ClassReadings::placeOf(const QString& text, const QString& grade)
{
    auto known = m_placeOfCell.find({text, grade});
    if (known != m_placeOfCell.end())
        return *known;
    const QString key = keyOf(text, grade);
    auto place = m_placeOf.find(key);
    if (place == m_placeOf.end()) {
        place = m_placeOf.insert(key, int(m_readings.size()));
        m_readings.push_back(read(key));
    }
    return *m_placeOfCell.insert({text, grade}, *place);
}

void ClassReadings::count(const QString& text, const QString& grade)
{
    if (!text.isEmpty())
        ++m_readings[size_t(placeOf(text, grade))].rows;
}

void ClassReadings::settle()
{
    constexpr size_t mostCompared = 1000;
    if (!m_roster.hasStudents() && m_readings.size() <= mostCompared)
        openShared(m_readings);
}

std::optional<double> ClassReadings::numberOf(const QString& text, const QString& grade) const
{
    const auto place = m_placeOfCell.constFind({text, grade});
    return place == m_placeOfCell.constEnd() ? std::nullopt : m_readings[size_t(*place)].number;
}

} // namespace tidy
