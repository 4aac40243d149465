#include "library/CopyOccasion.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/runtime/Error.h"
#include "platform/runtime/UnfinishedFile.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

using Kind = Occasion::Kind;

constexpr size_t mostOccasions = 20;
constexpr qsizetype longestText = 300;
constexpr qsizetype mostNames = 20;
/// More than all that is ever written.
constexpr qint64 largestFile = 1 << 20;

constexpr std::array<std::pair<Kind, const char16_t*>, 3> kindNames{
    std::pair{Kind::Change, u"change"}, std::pair{Kind::ExamImport, u"exam-import"},
    std::pair{Kind::StudentImport, u"student-import"}};

QString nameOf(Kind kind)
{
    const auto* found = std::find_if(kindNames.begin(), kindNames.end(),
                                     [&](const auto& entry) { return entry.first == kind; });
    return QString::fromUtf16(found->second);
}

Kind kindOf(const QString& name)
{
    const auto* found = std::find_if(kindNames.begin(), kindNames.end(), [&](const auto& entry) {
        return name == QString::fromUtf16(entry.second);
    });
    return found == kindNames.end() ? Kind::Change : found->first;
}

QString cut(const QString& text)
{
    return text.size() <= longestText ? text : text.left(longestText - 1) + u'…';
}

QJsonObject toJson(const NotedOccasion& noted)
{
    QJsonObject object{{u"time"_s, noted.time.toString(Qt::ISODateWithMs)},
                       {u"what"_s, cut(noted.occasion.text.simplified())},
                       {u"kind"_s, nameOf(noted.occasion.kind)}};
    if (!noted.occasion.exam.isEmpty())
        object.insert(u"exam"_s, cut(noted.occasion.exam));
    if (!noted.occasion.laterNames.isEmpty())
        object.insert(u"renamed"_s, QJsonArray::fromStringList(noted.occasion.laterNames));
    if (noted.isUndone)
        object.insert(u"undone"_s, true);
    return object;
}

QStringList namesFrom(const QJsonArray& array)
{
    QStringList names;
    for (const auto& entry : array) {
        if (names.size() < mostNames)
            names.append(cut(entry.toString()));
    }
    return names;
}

NotedOccasion fromJson(const QJsonObject& object)
{
    return {QDateTime::fromString(object.value("time"_L1).toString(), Qt::ISODate),
            {.text = cut(object.value("what"_L1).toString().simplified()),
             .kind = kindOf(object.value("kind"_L1).toString()),
             .exam = cut(object.value("exam"_L1).toString()),
             .laterNames = namesFrom(object.value("renamed"_L1).toArray())},
            object.value("undone"_L1).toBool()};
}

QByteArray textOf(const std::vector<NotedOccasion>& occasions)
{
    QJsonArray array;
    for (const NotedOccasion& noted : occasions)
        array.append(toJson(noted));
    return QJsonDocument(QJsonObject{{u"occasions"_s, array}}).toJson();
}

void writeOccasions(const QString& copy, const std::vector<NotedOccasion>& occasions)
{
    try {
        runtime::UnfinishedFile file(copy);
        file.write(textOf(occasions));
        file.replace(occasionFile(copy), copy);
    } catch (const runtime::Error&) {
        // It is listed with what was noted before.
    }
}

/// Has all occasions of a copy changed, and writes them if one is another now.
template <class Change> void changeOccasions(const QString& copy, Change&& change)
{
    const std::vector<NotedOccasion> before = notedOccasions(copy);
    std::vector<NotedOccasion> all = before;
    std::for_each(all.begin(), all.end(), change);
    if (all != before)
        writeOccasions(copy, all);
}

} // namespace

Occasion Occasion::examImport(const QString& exam)
{
    return {.text = u"导入 "_s + exam, .kind = Kind::ExamImport, .exam = exam};
}

Occasion Occasion::studentImport()
{
    return {.text = u"导入学生名单"_s, .kind = Kind::StudentImport};
}

Occasion Occasion::undoing(const Occasion& import)
{
    return {.text = u"撤消 "_s + import.text};
}

QStringList Occasion::examNames() const
{
    QStringList names(laterNames.rbegin(), laterNames.rend());
    names.append(exam);
    return names;
}

QString occasionFile(const QString& copy)
{
    return copy + u".json"_s;
}

QString journalOfCopy(const QString& copy)
{
    return copy + u"-journal"_s;
}

void noteOccasion(const QString& copy, const NotedOccasion& occasion)
{
    std::vector<NotedOccasion> all = notedOccasions(copy);
    all.push_back(occasion);
    if (all.size() > mostOccasions)
        all.erase(all.begin(), all.end() - mostOccasions);
    writeOccasions(copy, all);
}

void renameNotedExam(const QString& copy, const QString& exam, const QString& name)
{
    changeOccasions(copy, [&](NotedOccasion& noted) {
        QStringList& names = noted.occasion.laterNames;
        if (exam.isEmpty() || !noted.occasion.examNames().contains(exam))
            return;
        names.removeAll(name);
        names.append(cut(name));
        names = names.last(std::min(names.size(), mostNames));
    });
}

void noteRestored(const QString& copy)
{
    changeOccasions(copy, [](NotedOccasion& noted) {
        noted.isUndone = noted.isUndone || noted.occasion.kind != Kind::Change;
    });
}

std::vector<NotedOccasion> notedOccasions(const QString& copy)
{
    QFile file(occasionFile(copy));
    // No device or pipe is waited for.
    if (!QFileInfo(file).isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(file.read(largestFile));
    const QJsonArray array = document.object().value("occasions"_L1).toArray();
    std::vector<NotedOccasion> all;
    for (const auto& entry : array) {
        if (all.size() == mostOccasions)
            break;
        all.push_back(fromJson(entry.toObject()));
    }
    return all;
}

} // namespace library
