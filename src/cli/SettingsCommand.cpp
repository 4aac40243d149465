#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "configuration/AnalysisSettings.h"
#include "library/Settings.h"

namespace cli {

using namespace Qt::StringLiterals;
using configuration::AnalysisSettings;
using configuration::SubjectConditions;

namespace {

/// One of --set or --analysis.
struct SettingChange
{
    QString name;
    QString value;
};

/// One of --condition: a stream and subject, and the two comparisons.
struct Condition
{
    QString stream;
    QString subject;
    QStringList operators;
    QStringList scores;
};

SettingChange settingChange(const QString& option, const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    if (equals < 0)
        throw UsageError(u"选项 --%1 的值应为 名称=值：%2"_s.arg(option, text));
    return {text.left(equals), text.mid(equals + 1)};
}

std::vector<SettingChange> settingChanges(const Arguments& arguments, const QString& option)
{
    std::vector<SettingChange> all;
    for (const QString& text : arguments.values(option))
        all.push_back(settingChange(option, text));
    return all;
}

/// Takes the operator off the head of a comparison such as ">=85".
QString takeOperator(QString& comparison, const QString& text)
{
    for (const QString& op : {u">="_s, u"<="_s, u">"_s, u"<"_s}) {
        if (comparison.startsWith(op)) {
            comparison.remove(0, op.size());
            return op;
        }
    }
    throw UsageError(u"选项 --condition 的条件应以 >、>=、<、<= 开头：%1"_s.arg(text));
}

Condition condition(const QString& text)
{
    const QStringList parts = text.split(u':');
    QStringList scores = parts.value(2).split(u',');
    if (parts.size() != 3 || scores.size() != 2)
        throw UsageError(u"选项 --condition 的值应为 科类:科目:>=85,<=100：%1"_s.arg(text));
    QStringList operators;
    for (QString& comparison : scores)
        operators.append(takeOperator(comparison, text));
    return {parts[0], parts[1], operators, scores};
}

std::vector<Condition> conditionsOf(const Arguments& arguments)
{
    std::vector<Condition> all;
    for (const QString& text : arguments.values(u"condition"_s))
        all.push_back(condition(text));
    return all;
}

int settingRow(const AnalysisSettings& settings, const QString& name)
{
    const int row = settings.rowOf(name);
    if (row < 0)
        throw UsageError(u"成绩库里没有设置“%1”。"_s.arg(name));
    return row;
}

/// The row of a setting that has conditions by subject.
int conditionsRow(const AnalysisSettings& settings, const QString& name)
{
    const int row = settingRow(settings, name);
    if (!settings.offersConditions(row))
        throw UsageError(u"设置“%1”没有各科条件。"_s.arg(name));
    return row;
}

/// A text such as "1,2" in the order of the list, or the word for all of it.
QString chosenValue(const AnalysisSettings& settings, int row, const SettingChange& wanted)
{
    if (settings.offersLibrary(row) && wanted.value == library::AllOfThem)
        return wanted.value;
    const QStringList choices = settings.choices(row);
    const QStringList values = wanted.value.split(u',', Qt::SkipEmptyParts);
    for (const QString& value : values) {
        if (!choices.contains(value))
            throw UsageError(
                u"设置“%1”不能是“%2”，可以是：%3"_s.arg(wanted.name, value, choices.join(u'、')));
    }
    QStringList chosen = choices;
    chosen.removeIf([&](const QString& choice) { return !values.contains(choice); });
    return chosen.join(u',');
}

void setValue(AnalysisSettings& settings, const SettingChange& wanted)
{
    const int row = settingRow(settings, wanted.name);
    if (settings.isListEdited(row)) {
        settings.settings.setTextMatrix(row, AnalysisSettings::ValueCol,
                                        chosenValue(settings, row, wanted));
        return;
    }
    settings.setValue(row, wanted.value);
    const QString complaint = settings.complaint(row);
    if (!complaint.isEmpty())
        printError(u"“%1”的值统计时读不懂，仍然保存：%2"_s.arg(wanted.name, complaint));
}

void setAnalysis(AnalysisSettings& settings, const SettingChange& wanted)
{
    const int row = settingRow(settings, wanted.name);
    if (wanted.value != u"是"_s && wanted.value != u"否"_s)
        throw UsageError(u"选项 --analysis 的值只能是 是 或 否：%1"_s.arg(wanted.value));
    if (row == AnalysisSettings::FirstRow)
        throw UsageError(u"“%1”不能加入综合分析。"_s.arg(wanted.name));
    if (settings.settings.TextMatrix(row, AnalysisSettings::AnalysisCol) != wanted.value)
        settings.flip(row);
    // Anything but 是 becomes 是 first.
    if (settings.settings.TextMatrix(row, AnalysisSettings::AnalysisCol) != wanted.value)
        settings.flip(row);
}

bool saveSettings(const Session& session, AnalysisSettings& settings)
{
    for (const SettingChange& wanted : settingChanges(session.arguments, u"set"_s))
        setValue(settings, wanted);
    for (const SettingChange& wanted : settingChanges(session.arguments, u"analysis"_s))
        setAnalysis(settings, wanted);
    return settings.save();
}

void apply(SubjectConditions& conditions, const Condition& wanted)
{
    const int row = conditions.rowOf(wanted.stream, wanted.subject);
    if (row < 0)
        throw UsageError(u"没有科类“%1”科目“%2”的条件。"_s.arg(wanted.stream, wanted.subject));
    for (int i = 0; i < wanted.operators.size(); ++i) {
        const int col = SubjectConditions::FirstOperatorCol + 2 * i;
        conditions.conditions.setTextMatrix(row, col, wanted.operators[i]);
        conditions.conditions.setTextMatrix(row, col + 1, wanted.scores[i]);
    }
}

/// As 确定 of both screens does.
bool saveConditions(AnalysisSettings& settings, SubjectConditions& conditions, const QString& name,
                    const std::vector<Condition>& wanted)
{
    for (const Condition& condition : wanted)
        apply(conditions, condition);
    return conditions.save(name, settings) && settings.save();
}

/// Options that belong together, and no others.
void checkOptions(const Arguments& arguments)
{
    const bool forConditions = arguments.has(u"conditions"_s);
    const bool forDeletion = arguments.has(u"delete-conditions"_s);
    const bool forSettings = arguments.has(u"set"_s) || arguments.has(u"analysis"_s);
    if (int(forConditions) + int(forDeletion) + int(forSettings) > 1)
        throw UsageError(
            u"--set 和 --analysis、--conditions、--delete-conditions 不能同时给出。"_s);
    if (arguments.has(u"condition"_s) && !forConditions)
        throw missingOption(u"conditions"_s);
}

Exit resultOf(const Session& session, bool saved)
{
    return saved ? session.result() : Exit::Error;
}

Exit runConditions(Session& session, AnalysisSettings& settings, const QString& format)
{
    const std::vector<Condition> wanted = conditionsOf(session.arguments);
    const int row = conditionsRow(settings, session.arguments.value(u"conditions"_s));
    const QString name = settings.settings.TextMatrix(row, AnalysisSettings::NameCol);
    SubjectConditions conditions = settings.SzGekE(row);
    if (!conditions.isRead())
        return Exit::Error;
    if (!wanted.empty())
        return resultOf(session, saveConditions(settings, conditions, name, wanted));
    printGrid(session, conditions.conditions, {}, format);
    return session.result();
}

Exit runDeletion(Session& session, const AnalysisSettings& settings)
{
    const int row = conditionsRow(settings, session.arguments.value(u"delete-conditions"_s));
    SubjectConditions conditions(session.scores);
    return resultOf(
        session, conditions.remove(settings.settings.TextMatrix(row, AnalysisSettings::NameCol)));
}

} // namespace

Exit runSettings(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    checkOptions(arguments);
    if (!session.openLibrary())
        return Exit::Error;
    AnalysisSettings settings(session.scores);
    if (!settings.load())
        return Exit::Error;
    if (arguments.has(u"conditions"_s))
        return runConditions(session, settings, format);
    if (arguments.has(u"delete-conditions"_s))
        return runDeletion(session, settings);
    if (arguments.has(u"set"_s) || arguments.has(u"analysis"_s))
        return resultOf(session, saveSettings(session, settings));
    printGrid(session, settings.settings, {}, format);
    return session.result();
}

} // namespace cli
