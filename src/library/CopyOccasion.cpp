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
constexpr size_t mostRestores = 100;
constexpr qsizetype longestText = 300;
constexpr qsizetype mostNames = 20;
/// More than all that is ever written.
constexpr qint64 largestFile = 1 << 20;

constexpr std::array<std::pair<Kind, const char16_t*>, 4> kindNames{
    std::pair{Kind::Change, u"change"}, std::pair{Kind::ExamImport, u"exam-import"},
    std::pair{Kind::StudentImport, u"student-import"}, std::pair{Kind::Restore, u"restore"}};

const QString RestoreText = u"恢复备份"_s;
const QString UndoText = u"撤消 "_s;

/// All that a file beside a copy holds.
struct Notes
{
    std::vector<NotedOccasion> occasions;
    std::vector<NotedRestore> restores;

    friend bool operator==(const Notes&, const Notes&) = default;
};

QString nameOf(Kind kind)
{
    const auto* found = std::find_if(kindNames.begin(), kindNames.end(),
                                     [&](const auto& entry) { return entry.first == kind; });
    return QString::fromUtf16(found->second);
}

Kind kindOf(const QString& name, const QString& text)
{
    // Earlier versions noted it as any other change.
    if (text == RestoreText || text.startsWith(UndoText + u"导入"_s))
        return Kind::Restore;
    const auto* found = std::find_if(kindNames.begin(), kindNames.end(), [&](const auto& entry) {
        return name == QString::fromUtf16(entry.second);
    });
    return found == kindNames.end() ? Kind::Change : found->first;
}

QString cut(const QString& text)
{
    return text.size() <= longestText ? text : text.left(longestText - 1) + u'…';
}

QString timeToJson(const QDateTime& time)
{
    return time.toString(Qt::ISODateWithMs);
}

QDateTime timeFrom(const QJsonValue& value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODate);
}

QJsonObject toJson(const NotedOccasion& noted)
{
    QJsonObject object{{u"time"_s, timeToJson(noted.time)},
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
    const QString text = cut(object.value("what"_L1).toString().simplified());
    return {timeFrom(object.value("time"_L1)),
            {.text = text,
             .kind = kindOf(object.value("kind"_L1).toString(), text),
             .exam = cut(object.value("exam"_L1).toString()),
             .laterNames = namesFrom(object.value("renamed"_L1).toArray())},
            object.value("undone"_L1).toBool()};
}

QJsonObject toJson(const NotedRestore& noted)
{
    QJsonObject object{{u"time"_s, timeToJson(noted.time)}, {u"done"_s, noted.isDone}};
    if (noted.restored.isValid())
        object.insert(u"restored"_s, timeToJson(noted.restored));
    return object;
}

NotedRestore restoreFrom(const QJsonObject& object)
{
    return {timeFrom(object.value("time"_L1)), timeFrom(object.value("restored"_L1)),
            object.value("done"_L1).toBool()};
}

template <class Noted> QJsonArray arrayOf(const std::vector<Noted>& all)
{
    QJsonArray array;
    for (const Noted& noted : all)
        array.append(toJson(noted));
    return array;
}

/// The first `most` of an array that `read` makes of its entries.
template <class Read> auto listFrom(const QJsonArray& array, size_t most, Read&& read)
{
    std::vector<decltype(read(QJsonObject()))> all;
    for (const auto& entry : array) {
        if (all.size() == most)
            break;
        all.push_back(read(entry.toObject()));
    }
    return all;
}

Notes notesOf(const QString& copy)
{
    QFile file(occasionFile(copy));
    // No device or pipe is waited for.
    if (!QFileInfo(file).isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject object = QJsonDocument::fromJson(file.read(largestFile)).object();
    return {listFrom(object.value("occasions"_L1).toArray(), mostOccasions, fromJson),
            listFrom(object.value("restores"_L1).toArray(), mostRestores, restoreFrom)};
}

QByteArray textOf(const Notes& notes)
{
    QJsonObject object{{u"occasions"_s, arrayOf(notes.occasions)}};
    if (!notes.restores.empty())
        object.insert(u"restores"_s, arrayOf(notes.restores));
    return QJsonDocument(object).toJson();
}

template <class Noted> void keepNewest(std::vector<Noted>& all, size_t most)
{
    if (all.size() > most)
        all.erase(all.begin(), all.begin() + qsizetype(all.size() - most));
}

/// Has the notes of a copy changed, and writes them if they are others now.
template <class Change> void changeNotes(const QString& copy, Change&& change)
{
    const Notes before = notesOf(copy);
    Notes notes = before;
    change(notes);
    if (notes == before)
        return;
    keepNewest(notes.occasions, mostOccasions);
    keepNewest(notes.restores, mostRestores);
    try {
        runtime::UnfinishedFile file(copy);
        file.write(textOf(notes));
        file.replace(occasionFile(copy), copy);
    } catch (const runtime::Error&) {
        // It is listed with what was noted before.
    }
}

void addName(Occasion& occasion, const QString& exam, const QString& name)
{
    QStringList& names = occasion.laterNames;
    if (exam.isEmpty() || !occasion.examNames().contains(exam))
        return;
    names.removeAll(name);
    names.append(cut(name));
    names = names.last(std::min(names.size(), mostNames));
}

void addRestore(std::vector<NotedRestore>& all, const NotedRestore& restore)
{
    const auto place =
        std::lower_bound(all.begin(), all.end(), restore.time,
                         [](const auto& each, const QDateTime& time) { return each.time < time; });
    if (place == all.end() || place->time != restore.time)
        all.insert(place, restore);
    else if (!place->isDone)
        *place = restore;
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

Occasion Occasion::restoring()
{
    return {.text = RestoreText, .kind = Kind::Restore};
}

Occasion Occasion::undoing(const Occasion& import)
{
    return {.text = UndoText + import.text, .kind = Kind::Restore};
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
    changeNotes(copy, [&](Notes& notes) { notes.occasions.push_back(occasion); });
}

void renameNotedExam(const QString& copy, const QString& exam, const QString& name)
{
    changeNotes(copy, [&](Notes& notes) {
        for (NotedOccasion& noted : notes.occasions)
            addName(noted.occasion, exam, name);
    });
}

void noteRestores(const QString& copy, const std::vector<NotedRestore>& restores)
{
    changeNotes(copy, [&](Notes& notes) {
        for (const NotedRestore& restore : restores)
            addRestore(notes.restores, restore);
    });
}

std::vector<NotedOccasion> notedOccasions(const QString& copy)
{
    return notesOf(copy).occasions;
}

std::vector<NotedRestore> notedRestores(const QString& copy)
{
    return notesOf(copy).restores;
}

} // namespace library
