#include "statistics/ReportExplanation.h"

#include <algorithm>

#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"
#include "statistics/BandConditions.h"
#include "statistics/BandWidths.h"
#include "statistics/ExplanationTexts.h"
#include "statistics/FigureWords.h"
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

/// "语文>=102 and 语文<=120" as "语文 ≥ 102 且 语文 ≤ 120".
QString inWords(QString conditions)
{
    return conditions.replace(u" and "_s, u" 且 "_s)
        .replace(u">="_s, u" ≥ "_s)
        .replace(u"<="_s, u" ≤ "_s);
}

/// What a report makes of several exams.
QString examRule(const ExplanationText& text, ExamGrouping tables)
{
    return tables == ExamGrouping::OneByOne ? u"每次考试一张表，满分是那一次的。"_s
                                            : text.severalExams;
}

/// What the settings of a library come to in words.
class InForce
{
public:
    InForce(library::ScoreLibrary& scoreLibrary, const QStringList& exams, ExamGrouping tables)
        : m_library(scoreLibrary), m_exams(exams), m_tables(tables)
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

    /// Exams that one table is about, with its name where there are several tables.
    struct ExamTable
    {
        QString exams;
        QString name;
    };

    std::vector<ExamTable> examTables() const
    {
        if (m_exams.isEmpty())
            return {};
        if (m_tables == ExamGrouping::Together)
            return {{m_exams.join(u','), {}}};
        std::vector<ExamTable> tables;
        for (const QString& exam : m_exams)
            tables.push_back({exam, exam});
        return tables;
    }

    /// The marks that an interval comes to, a sentence for each table and stream.
    QStringList marks(const QString& name, const QString& value)
    {
        QStringList sentences;
        if (value == CustomData)
            sentences.append(u"各科的条件分别设定。"_s);
        for (const ExamTable& table : examTables()) {
            for (const QString& stream : std::as_const(m_library.catalogue.Streams)) {
                const library::ColumnMarks subjects =
                    m_library.catalogue.GetKSKM(table.exams, stream);
                const QStringList conditions =
                    value == CustomData ? ownConditions(name, stream, subjects)
                                        : MakeCXTJ(subjects, value).value_or(QStringList());
                if (!conditions.isEmpty())
                    sentences.append(prefix(table.name, stream) + inWords(conditions.join(u"；"_s))
                                     + u"。"_s);
            }
        }
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
            sentences.append(prefix({}, streams[i]) + table[size_t(i)].join(u"、"_s) + u"。"_s);
        return sentences;
    }

    static QStringList widths(const QString& value)
    {
        const auto widths = BandWidths::parse(value);
        return {u"科目每 %1 分一段，总分每 %2 分一段。"_s.arg(doubleText(widths.subject),
                                                              doubleText(widths.total))};
    }

    QString prefix(const QString& exam, const QString& stream) const
    {
        QStringList names;
        if (!exam.isEmpty())
            names.append(exam);
        if (m_library.catalogue.Streams.size() > 1)
            names.append(stream + u"科"_s);
        return names.isEmpty() ? QString() : names.join(u'，') + u'：';
    }

    library::ScoreLibrary& m_library;
    const QStringList& m_exams;
    const ExamGrouping m_tables;
};

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
                    const QStringList& exams, ExamGrouping tables)
{
    const ExplanationText* text = textOf(report);
    if (!text)
        throw runtime::Error(u"没有“%1”的口径说明。"_s.arg(report));
    Explanation shown{
        .report = text->report,
        .counted = text->counted,
        .over = {text->over + examRule(*text, tables), categoryRule(text->categories)},
        .leftOut = text->leftOut,
        .formulas = text->formulas,
        .settings = {}};
    if (text->categories == Categories::Chosen)
        shown.over.append(u"现在"_s + filterSentence(scoreLibrary.settings.CategoryFilter));
    InForce inForce(scoreLibrary, exams, tables);
    for (const SettingUse& use : text->settings)
        shown.settings.push_back(inForce.of(use));
    return shown;
}

} // namespace statistics
