#include "import/tidy/ClassReadings.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/Numbers.h"

namespace tidy {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

QString joined(const std::vector<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers)
        texts.append(doubleText(number));
    return texts.join(u'、');
}

void open(ClassReading& reading, const QString& reason)
{
    reading.number.reset();
    reading.isOpen = true;
    reading.reason = reason;
}

ClassName ofStream(const QString& stream)
{
    ClassName name;
    name.stream = stream;
    return name;
}

/// Whether one number cannot be the class of both texts, as far as the texts tell.
bool exclude(const ClassName& one, const ClassName& other, const QString& knownStream)
{
    const bool oneTellsStream = one.stream.isEmpty() != other.stream.isEmpty();
    return areOfDifferentKinds(one, other) || (oneTellsStream && knownStream.isEmpty());
}

/// The readings of each number that they have, or may have while they are open.
QHash<double, std::vector<size_t>> placesByNumber(const std::vector<ClassReading>& readings)
{
    QHash<double, std::vector<size_t>> places;
    for (size_t place = 0; place < readings.size(); ++place) {
        const ClassReading& reading = readings[place];
        if (reading.number)
            places[*reading.number].push_back(place);
        else
            for (const double number : reading.candidates)
                places[number].push_back(place);
    }
    return places;
}

} // namespace

ClassReadings::ClassReadings(const std::vector<ClassReading>& former, const Roster& roster)
    : m_roster(roster)
{
    std::copy_if(former.begin(), former.end(), std::back_inserter(m_former),
                 [](const ClassReading& one) { return one.decidedBy != DecidedBy::Program; });
}

/// A bare number means a class of the grade that the sheet tells.
QString ClassReadings::keyOf(const QString& text, const QString& grade)
{
    if (grade.isEmpty())
        return text;
    const std::optional<ClassName> name = className(text);
    const bool isBare = name && !name->hasGrade && name->number < 100;
    return isBare ? u"%1%2(%3)班"_s.arg(grade, name->stream, doubleText(name->number)) : text;
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
    const size_t found = existing.size();
    std::erase_if(existing, [&](double number) {
        return areOfDifferentKinds(ofStream(m_roster.streamOf(number)), name);
    });
    if (found > 0 && existing.empty()) {
        open(reading, u"成绩库里这个班号的班不是%1科。"_s.arg(name.stream));
    } else if (existing.size() == 1) {
        reading.number = existing.front();
        reading.reason = u"成绩库里有 %1 班。"_s.arg(doubleText(existing.front()));
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

/// Two grades, or two streams, may each have a class 1.
void ClassReadings::openShared()
{
    std::vector<std::optional<ClassName>> names;
    for (const ClassReading& reading : m_readings)
        names.push_back(className(reading.text));
    std::vector<size_t> shared;
    const QHash<double, std::vector<size_t>> placesOf = placesByNumber(m_readings);
    for (const auto& [number, places] : placesOf.asKeyValueRange()) {
        const QString stream = m_roster.streamOf(number);
        for (const size_t place : places) {
            const bool isShared = std::any_of(places.begin(), places.end(), [&](size_t other) {
                return names[place] && names[other]
                       && exclude(*names[place], *names[other], stream);
            });
            const ClassReading& reading = m_readings[place];
            if (isShared && reading.number && reading.decidedBy == DecidedBy::Program)
                shared.push_back(place);
        }
    }
    for (const size_t place : shared)
        open(m_readings[place], u"和别的年级或科类的班号相同，请写出班号。"_s);
}

/// 高一(1)班 is class 1 and not 11 where the workbook has a 高一(11)班 as well.
void ClassReadings::takePlain()
{
    QHash<int, std::vector<double>> named; // by grade
    for (const ClassReading& reading : m_readings) {
        if (const auto name = className(reading.text); name && name->hasGrade)
            named[name->grade].push_back(name->number);
    }
    for (ClassReading& reading : m_readings) {
        const auto name = className(reading.text);
        if (!reading.isOpen || !name || !name->hasGrade || !m_roster.hasClass(name->number))
            continue;
        const std::vector<double>& plain = named[name->grade];
        const bool areOthersNamed =
            std::all_of(name->candidates.begin(), name->candidates.end(), [&](double number) {
                return !m_roster.hasClass(number)
                       || std::find(plain.begin(), plain.end(), number) != plain.end();
            });
        if (!areOthersNamed
            || areOfDifferentKinds(ofStream(m_roster.streamOf(name->number)), *name))
            continue;
        reading.number = name->number;
        reading.isOpen = false;
        reading.reason = u"成绩库里有 %1 班。"_s.arg(doubleText(name->number));
    }
}

void ClassReadings::settle()
{
    constexpr size_t mostCompared = 1000;
    if (m_readings.size() > mostCompared)
        return;
    takePlain();
    openShared();
}

std::optional<double> ClassReadings::numberOf(const QString& text, const QString& grade) const
{
    const auto place = m_placeOfCell.constFind({text, grade});
    return place == m_placeOfCell.constEnd() ? std::nullopt : m_readings[size_t(*place)].number;
}

} // namespace tidy
