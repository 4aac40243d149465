#include "import/SheetRows.h"

#include <algorithm>
#include <unordered_set>

#include "import/WorkbookIntake.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/PlainNumber.h"
#include "platform/runtime/Text.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Val;
using runtime::Value;

namespace {

constexpr int classColumn = 1;
constexpr int numberColumn = 2;
constexpr int nameColumn = 3;

/// What is read from a text where a score is expected.
ScoreReading readingOf(const QString& text)
{
    if (runtime::plainNumber(std::u16string_view(QStringView(text).utf16(), size_t(text.size())))
        || text == u"缺考"_s || text == u"作弊"_s)
        return ScoreReading::Score;
    // Blanks within a number are passed over, as they are when it is stored.
    QString packed = text;
    packed.removeIf([](QChar letter) { return QStringView(u" \t\r\n").contains(letter); });
    const qsizetype sign = packed.startsWith(u'-') || packed.startsWith(u'+') ? 1 : 0;
    const QChar head = packed.size() > sign ? packed[sign] : QChar();
    if (!(head >= u'0' && head <= u'9') && head != u'.')
        return ScoreReading::NoNumber;
    bool number = false;
    packed.toDouble(&number);
    return number ? ScoreReading::Score : ScoreReading::NumberAtTheHead;
}

bool isText(const Value& cell)
{
    return cell.kind() == Value::Kind::Text || cell.kind() == Value::Kind::Boolean
           || cell.kind() == Value::Kind::Date;
}

} // namespace

ScoreReading scoreReading(const Value& cell)
{
    return isText(cell) && !isEmptyCell(cell) ? readingOf(cell.text()) : ScoreReading::Score;
}

SheetStudent studentIn(const excel::Worksheet& sheet, int row)
{
    return {Val(sheet.Cells(row, classColumn)), Val(sheet.Cells(row, numberColumn)),
            runtime::Trim(sheet.Cells(row, nameColumn).text())};
}

SheetRows::SheetRows(const excel::Worksheet& sheet) : m_sheet(sheet)
{
    while (m_end <= Last && !isEmptyCell(m_sheet.Cells(m_end, numberColumn)))
        ++m_end;
}

std::vector<double> SheetRows::classes() const
{
    std::vector<double> found;
    std::unordered_set<double> seen;
    for (int row = First; row < m_end; ++row) {
        const double number = Val(m_sheet.Cells(row, classColumn));
        if ((found.empty() || number != found.back()) && seen.insert(number).second)
            found.push_back(number);
    }
    return found;
}

std::vector<SheetStudent> SheetRows::students() const
{
    std::vector<SheetStudent> all;
    for (int row = First; row < m_end; ++row)
        all.push_back(studentIn(m_sheet, row));
    return all;
}

OddTexts SheetRows::oddTexts(const std::vector<ImportSubject>& subjects) const
{
    OddTexts odd;
    for (int row = First; row < m_end; ++row) {
        for (const ImportSubject& subject : subjects) {
            const Value& cell = m_sheet.Cells(row, subject.KMColumn);
            const ScoreReading reading = scoreReading(cell);
            if (reading == ScoreReading::NoNumber)
                ++odd.withoutNumber[cell.text()];
            else if (reading == ScoreReading::NumberAtTheHead)
                ++odd.withNumber[cell.text()];
        }
    }
    return odd;
}

QString SheetRows::whyItEnds() const
{
    return m_end > Last ? u"一次最多读到第 %1 行"_s.arg(Last) : u"第 %1 行没有学号"_s.arg(m_end);
}

std::vector<int> SheetRows::rowsLeft(const std::vector<ImportSubject>& subjects) const
{
    const auto isEmpty = [this](int row, int column) {
        return isEmptyCell(m_sheet.Cells(row, column));
    };
    std::vector<int> left;
    const int last = m_sheet.lastUsedRow();
    for (int row = m_end; row <= last; ++row) {
        const bool empty =
            isEmpty(row, classColumn) && isEmpty(row, numberColumn) && isEmpty(row, nameColumn)
            && std::all_of(subjects.begin(), subjects.end(), [&](const ImportSubject& subject) {
                   return isEmpty(row, subject.KMColumn);
               });
        if (!empty)
            left.push_back(row);
    }
    return left;
}

} // namespace importing
