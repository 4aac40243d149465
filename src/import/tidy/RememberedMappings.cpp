#include "import/tidy/RememberedMappings.h"

#include <algorithm>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "import/tidy/Aliases.h"
#include "platform/runtime/TextFile.h"

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestFile = qint64{4} * 1024 * 1024;
constexpr qsizetype longestText = 200;
constexpr qsizetype mostColumns = 255;

const QString goalKey = u"goal"_s;
const QString headingsKey = u"headings"_s;
const QString chosenKey = u"chosen"_s;
const QString fieldKey = u"field"_s;
const QString nameKey = u"name"_s;
const QString examGoal = u"exam"_s;
const QString studentsGoal = u"students"_s;

std::optional<Field> fieldNamed(const QString& text)
{
    for (int number = int(Field::Leave); number <= int(Field::StudentColumn); ++number) {
        if (fieldText(Field(number)) == text)
            return Field(number);
    }
    return std::nullopt;
}

std::optional<ColumnUse> useIn(const QJsonObject& json)
{
    const std::optional<Field> field = fieldNamed(json.value(fieldKey).toString());
    const QString name = json.value(nameKey).toString();
    if (!field || name.size() > longestText)
        return std::nullopt;
    return ColumnUse{*field, name};
}

/// Null for a column that nobody chose.
QJsonValue useJson(const std::optional<ColumnUse>& use)
{
    if (!use)
        return QJsonValue::Null;
    return QJsonObject{{fieldKey, fieldText(use->field)}, {nameKey, use->name}};
}

/// What is known of a column the next time: not what the program finds out by itself, which may
/// know more then, nor a subject that another sheet's name tells.
std::optional<ColumnUse> chosenUse(const ColumnProposal& column)
{
    const bool isChosen = column.decidedBy != DecidedBy::Program && !column.isOfSheet;
    return isChosen ? std::optional(column.use) : std::nullopt;
}

} // namespace

RememberedMappings::RememberedMappings(const runtime::AppPaths& paths)
    : m_file(paths.dataFile(u"整理记录.json"_s))
{
    read();
}

std::optional<RememberedMappings::Mapping> RememberedMappings::mappingIn(const QJsonObject& json)
{
    Mapping mapping;
    const QString goal = json.value(goalKey).toString();
    const QJsonArray headings = json.value(headingsKey).toArray();
    const QJsonArray uses = json.value(chosenKey).toArray();
    if ((goal != examGoal && goal != studentsGoal) || headings.size() != uses.size()
        || headings.isEmpty() || headings.size() > mostColumns)
        return std::nullopt;
    mapping.goal = goal == examGoal ? Goal::ExamScores : Goal::StudentList;
    for (qsizetype place = 0; place < uses.size(); ++place) {
        const std::optional<ColumnUse> use = useIn(uses[place].toObject());
        const QString heading = headings[place].toString();
        if ((!use && !uses[place].isNull()) || heading.size() > longestText)
            return std::nullopt;
        mapping.headings.append(heading);
        mapping.chosen.push_back(use);
    }
    return mapping;
}

void RememberedMappings::read()
{
    QFile file(m_file);
    if (file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return;
    const QJsonArray all = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto& json : all) {
        const std::optional<Mapping> mapping = mappingIn(json.toObject());
        if (mapping && count() < most)
            m_mappings.push_back(*mapping);
    }
}

void RememberedMappings::write() const
{
    QJsonArray all;
    for (const Mapping& mapping : m_mappings) {
        QJsonArray uses;
        for (const std::optional<ColumnUse>& use : mapping.chosen)
            uses.append(useJson(use));
        all.append(
            QJsonObject{{goalKey, mapping.goal == Goal::ExamScores ? examGoal : studentsGoal},
                        {headingsKey, QJsonArray::fromStringList(mapping.headings)},
                        {chosenKey, uses}});
    }
    runtime::writeTextFile(m_file, QString::fromUtf8(QJsonDocument(all).toJson()));
}

std::optional<RememberedMappings::Mapping> RememberedMappings::mappingOf(Goal goal,
                                                                         const SheetProposal& sheet)
{
    if (sheet.taking == Taking::LeaveOut || sheet.columns.empty())
        return std::nullopt;
    Mapping mapping{goal};
    for (const ColumnProposal& column : sheet.columns) {
        if (column.heading.size() > longestText)
            return std::nullopt;
        mapping.headings.append(folded(column.heading));
        mapping.chosen.push_back(chosenUse(column));
    }
    return mapping;
}

const RememberedMappings::Mapping* RememberedMappings::find(const Mapping& wanted) const
{
    const auto found =
        std::find_if(m_mappings.begin(), m_mappings.end(), [&](const Mapping& mapping) {
            return mapping.goal == wanted.goal && mapping.headings == wanted.headings;
        });
    return found == m_mappings.end() ? nullptr : &*found;
}

bool RememberedMappings::applyTo(SheetProposal& sheet, const Mapping& mapping)
{
    bool isChanged = false;
    for (size_t place = 0; place < sheet.columns.size(); ++place) {
        ColumnProposal& column = sheet.columns[place];
        const std::optional<ColumnUse>& chosen = mapping.chosen[place];
        if (!chosen || column.isOfSheet || column.decidedBy == DecidedBy::User
            || (column.use == *chosen && !column.isOpen))
            continue;
        column.use = *chosen;
        column.decidedBy = DecidedBy::Remembered;
        isChanged = true;
    }
    return isChanged;
}

bool RememberedMappings::apply(Proposal& proposal) const
{
    bool isChanged = false;
    for (SheetProposal& sheet : proposal.sheets) {
        const std::optional<Mapping> wanted = mappingOf(proposal.goal, sheet);
        const Mapping* known = wanted ? find(*wanted) : nullptr;
        if (known != nullptr)
            isChanged = applyTo(sheet, *known) || isChanged;
    }
    return isChanged;
}

/// What was chosen for a subject that this library lacks serves another one still.
void RememberedMappings::keepUnused(Mapping& mapping, const Mapping& former)
{
    for (size_t place = 0; place < mapping.chosen.size(); ++place) {
        if (!mapping.chosen[place])
            mapping.chosen[place] = former.chosen[place];
    }
}

bool RememberedMappings::Mapping::hasChoice() const
{
    return std::any_of(chosen.begin(), chosen.end(),
                       [](const std::optional<ColumnUse>& use) { return use.has_value(); });
}

void RememberedMappings::remember(const Proposal& proposal)
{
    for (const SheetProposal& sheet : proposal.sheets) {
        std::optional<Mapping> mapping = mappingOf(proposal.goal, sheet);
        if (!mapping)
            continue;
        if (const Mapping* former = find(*mapping))
            keepUnused(*mapping, *former);
        if (!mapping->hasChoice())
            continue;
        std::erase_if(m_mappings, [&](const Mapping& former) {
            return former.goal == mapping->goal && former.headings == mapping->headings;
        });
        m_mappings.push_front(*mapping);
    }
    if (count() > most)
        m_mappings.resize(most);
    write();
}

} // namespace tidy
