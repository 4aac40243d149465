#include "statistics/ReportExplanation.h"

#include <algorithm>

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"
#include "statistics/BandConditions.h"
#include "statistics/BandWidths.h"
#include "statistics/ExplanationTexts.h"
#include "statistics/LineTable.h"
#include "statistics/SettingComplaint.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

const ExplanationText* textOf(const QString& report)
{
    const auto& texts = explanationTexts();
    const auto found = std::ranges::find_if(texts, [&](const ExplanationText& text) {
        return text.report == report || text.otherNames.contains(report);
    });
    return found == texts.end() ? nullptr : &*found;
}

/// "类别代码为 1、2 的学生" of " and (类别代码=1 or 类别代码=2)".
QString categoriesInForce(const QString& filter)
{
    if (filter.isEmpty())
        return u"现在不限类别。"_s;
    QString codes = filter;
    codes.remove(u" and ("_s).remove(u"类别代码="_s).remove(u')');
    const QStringList parts = codes.split(u" or "_s);
    QStringList shown;
    for (const QString& code : parts)
        shown.append(code.trimmed());
    return u"现在只算类别代码为 %1 的学生。"_s.arg(shown.join(u'、'));
}

/// What the settings of a library come to in words.
class InForce
{
public:
    InForce(library::ScoreLibrary& scoreLibrary, const QStringList& exams)
        : m_library(scoreLibrary), m_exams(exams)
    {
    }

    SettingInForce of(const SettingUse& use)
    {
        SettingInForce shown{use.name, m_library.settings.GetSZ(use.name), {}};
        const QString complaint =
            settingComplaint(m_library.catalogue.Streams, use.name, shown.value);
        shown.meaning = complaint.isEmpty() ? meaning(use, shown.value)
                                            : QStringList{u"这个设置读不懂："_s + complaint};
        return shown;
    }

private:
    QStringList meaning(const SettingUse& use, const QString& value)
    {
        switch (use.form) {
        case SettingForm::Interval:
            return marks(use.name, value);
        case SettingForm::Lines:
            return lines(value);
        case SettingForm::Widths:
            return widths(value);
        case SettingForm::Teachers:
            return {value == u"使用教师名单"_s ? u"表里有教师一列。"_s : u"表里没有教师一列。"_s};
        case SettingForm::Columns:
            return {value == u"使用教师名单"_s ? u"每科占三列。"_s : u"每科一列。"_s};
        case SettingForm::Conversion:
            return {u"T = "_s + value + u"，z 是保留两位小数的 Z 分。"_s};
        case SettingForm::Plain:
            break;
        }
        return {};
    }

    /// The marks that an interval comes to, a sentence for each stream.
    QStringList marks(const QString& name, const QString& value)
    {
        QStringList sentences;
        for (const QString& stream : std::as_const(m_library.catalogue.Streams)) {
            const library::ColumnMarks subjects =
                m_exams.isEmpty() ? library::ColumnMarks()
                                  : m_library.catalogue.GetKSKM(m_exams.join(u','), stream);
            const QStringList conditions = value == CustomData
                                               ? ownConditions(name, stream, subjects)
                                               : MakeCXTJ(subjects, value).value_or(QStringList());
            if (!conditions.isEmpty())
                sentences.append(streamPrefix(stream) + conditions.join(u"；"_s) + u"。"_s);
        }
        if (value == CustomData)
            sentences.prepend(u"各科的条件分别设定。"_s);
        return sentences;
    }

    QStringList ownConditions(const QString& name, const QString& stream,
                              const library::ColumnMarks& subjects)
    {
        QStringList conditions;
        for (const QString& subject : subjects.names) {
            const QString own = m_library.settings.GetXXSZ(name, stream, subject);
            conditions.append(own.isEmpty() ? subject + u" 没有设定，这一科没有结果"_s : own);
        }
        return conditions;
    }

    QStringList lines(const QString& value)
    {
        const QStringList& streams = m_library.catalogue.Streams;
        const LineTable table = readLines(streams, value).lines;
        QStringList sentences;
        for (int i = 0; i < streams.size() && i < MaxStreams; ++i)
            sentences.append(streamPrefix(streams[i]) + table[size_t(i)].join(u"、"_s) + u"。"_s);
        return sentences;
    }

    static QStringList widths(const QString& value)
    {
        const auto widths = BandWidths::parse(value);
        return {u"科目每 %1 分一段，总分每 %2 分一段。"_s.arg(doubleText(widths.subject),
                                                              doubleText(widths.total))};
    }

    QString streamPrefix(const QString& stream) const
    {
        return m_library.catalogue.Streams.size() > 1 ? stream + u"科："_s : QString();
    }

    library::ScoreLibrary& m_library;
    const QStringList& m_exams;
};

/// "语文>=102 and 语文<=120" as "语文>=102 且 语文<=120".
void sayInWords(SettingInForce& setting)
{
    for (QString& sentence : setting.meaning)
        sentence.replace(u" and "_s, u" 且 "_s)
            .replace(u">="_s, u" ≥ "_s)
            .replace(u"<="_s, u" ≤ "_s);
}

} // namespace

QStringList explainedReports()
{
    QStringList names;
    for (const ExplanationText& text : explanationTexts())
        names.append(text.report);
    return names;
}

QString explainedName(const QString& report)
{
    const ExplanationText* text = textOf(report);
    return text ? text->report : QString();
}

Explanation explain(const QString& report, library::ScoreLibrary& scoreLibrary,
                    const QStringList& exams)
{
    const ExplanationText* text = textOf(report);
    if (!text)
        throw runtime::Error(u"没有“%1”的口径说明。"_s.arg(report));
    Explanation shown{.report = text->report,
                      .counted = text->counted,
                      .over = {text->over, categoryRule(text->categories)},
                      .leftOut = text->leftOut,
                      .formulas = text->formulas,
                      .settings = {}};
    if (text->categories == Categories::Chosen)
        shown.over.append(categoriesInForce(scoreLibrary.settings.CategoryFilter));
    InForce inForce(scoreLibrary, exams);
    for (const SettingUse& use : text->settings) {
        shown.settings.push_back(inForce.of(use));
        if (use.form == SettingForm::Interval)
            sayInWords(shown.settings.back());
    }
    return shown;
}

} // namespace statistics
