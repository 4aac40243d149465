#include "oldlibraries/ExamFaults.h"

#include "oldlibraries/FaultKind.h"
#include "oldlibraries/SubjectColumns.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/Statement.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Text.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

namespace {

const QString examTable = u"考试名称表"_s;

/// The engine takes A to Z for a to z, and no other letters for each other.
QString folded(QString text)
{
    for (QChar& letter : text) {
        if (letter >= u'A' && letter <= u'Z')
            letter = letter.toLower();
    }
    return text;
}

/// The terms of a formula that are no columns.
QStringList unknownTerms(const QString& formula, const QStringList& columns)
{
    QStringList terms = runtime::splitList(formula, u"+"_s);
    terms.removeIf(
        [&](const QString& term) { return columns.contains(term, Qt::CaseInsensitive); });
    return terms;
}

/// Numbers as they are, with all their digits.
double markOf(const runtime::Value& mark)
{
    return mark.isNumber() ? mark.toDouble() : runtime::Val(mark);
}

QString formulaText(const QStringList& unknown, const QString& formula)
{
    return u"%1（%2）"_s.arg(unknown.join(u'、'), formula);
}

} // namespace

ExamKey::ExamKey(const QString& examName, const QString& streamName)
    : exam(folded(examName)), stream(folded(streamName))
{
}

ListedExams::ListedExams(database::Connection& library) : m_columns(subjectsOf(library))
{
    constexpr int firstColumn = 3;
    database::Statement rows(
        library,
        database::sqlWith(u"select 考试名称, 科类, 考试编号%1 from 考试名称表 order by rowid"_s,
                          {database::SqlPiece::moreNames(m_columns)}));
    while (rows.step()) {
        Row row{rows.text(0), rows.text(1), !rows.isNull(2), {}, {}};
        for (int i = 0; i < int(m_columns.size()); ++i) {
            const bool hasFormula = isTotal(m_columns[i]);
            row.marks.push_back(hasFormula ? 0 : markOf(rows.value(firstColumn + i)));
            row.formulas.append(hasFormula ? rows.text(firstColumn + i) : QString());
        }
        const ExamKey key(row.exam, row.stream);
        if (!m_places.contains(key))
            m_places.insert(key, m_rows.size());
        m_exams.insert(key.exam);
        m_rows.push_back(std::move(row));
    }
}

std::vector<double> ListedExams::marks(const ExamKey& key) const
{
    const QString other = key.stream == u"文"_s ? u"理"_s : u"文"_s;
    for (const QString& stream : {key.stream, other}) {
        const auto found = m_places.constFind(ExamKey(key.exam, stream));
        if (found != m_places.constEnd())
            return m_rows[*found].marks;
    }
    return {};
}

void ListedExams::tell(const QSet<ExamKey>& taken, std::vector<Finding>& findings) const
{
    FaultKind same(examTable, u"考试名称和科类与前面的一行相同，原样转入；程序只用前面的一行。"_s);
    FaultKind unnumbered(examTable, u"没有考试编号，原样转入；请在转换后调整考试的顺序。"_s);
    FaultKind untaken(examTable, u"成绩表里没有这次考试的成绩；原样转入。"_s);
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const Row& row = m_rows[i];
        const ExamKey key(row.exam, row.stream);
        const QString text = u"%1 %2"_s.arg(row.exam, row.stream);
        if (m_places.value(key) != i)
            same.add(qint64(i) + 1, u"考试名称"_s, text);
        if (!row.hasNumber)
            unnumbered.add(qint64(i) + 1, u"考试编号"_s, text);
        if (!taken.contains(key))
            untaken.add(qint64(i) + 1, u"考试名称"_s, text);
    }
    for (const FaultKind* kind : {&same, &unnumbered, &untaken})
        kind->tell(findings);
    tellFormulas(findings);
}

void ListedExams::tellFormulas(std::vector<Finding>& findings) const
{
    FaultKind wrong(examTable, u"总分公式里有成绩库没有的科目，原样转入；请修改公式。"_s);
    for (size_t row = 0; row < m_rows.size(); ++row) {
        for (qsizetype i = 0; i < m_columns.size(); ++i) {
            const QString& formula = m_rows[row].formulas[i];
            if (!isTotal(m_columns[i]))
                continue;
            const QStringList unknown = unknownTerms(formula, m_columns);
            if (!unknown.isEmpty())
                wrong.add(qint64(row) + 1, m_columns[i], formulaText(unknown, formula));
        }
    }
    wrong.tell(findings);
}

void findFormulaFaults(database::Connection& library, const QStringList& columns,
                       std::vector<Finding>& findings)
{
    FaultKind wrong(u"总分公式"_s,
                    u"默认公式里有成绩库没有的科目，原样转入；导入成绩后请修改公式。"_s);
    database::Statement rows(library, u"select 总分, 公式 from 总分公式 order by rowid"_s);
    for (qint64 row = 1; rows.step(); ++row) {
        // The formula of a total that the library does not have is never used.
        if (!columns.contains(rows.text(0), Qt::CaseInsensitive))
            continue;
        const QStringList unknown = unknownTerms(rows.text(1), columns);
        if (!unknown.isEmpty())
            wrong.add(row, rows.text(0), formulaText(unknown, rows.text(1)));
    }
    wrong.tell(findings);
}

} // namespace oldlibraries
