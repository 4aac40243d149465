#include "individual/ChartColors.h"

#include <cmath>

#include "platform/database/WriteBatch.h"
#include "platform/runtime/Error.h"

namespace individual {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

namespace {

constexpr int white = 0xFFFFFF;

const Trap loadTrap{" - Private Sub Form_Load/FormGeRenChenJi"};

bool isKept(int index)
{
    return index >= 0 && index <= ChartColors::largestKept;
}

QString outOfRange(const QString& index)
{
    return u"颜色表只有 0 到 15 号颜色，没有 %1 号。"_s.arg(index);
}

bool isWhole(const Value& value, int largest)
{
    const double number = value.toDouble();
    return value.isNumber() && number >= 0 && number <= largest && number == std::floor(number);
}

} // namespace

void ChartColors::load()
{
    loadTrap([&] {
        database::Recordset rows;
        rows.Open(u"select * from 颜色表 order by ID"_s, m_scores.Conn);
        for (; !rows.Eof(); rows.MoveNext())
            loadTrap([&] { takeRow(rows); });
    });
}

void ChartColors::takeRow(database::Recordset& rows)
{
    const Value index = rows.Fields(0).Value();
    const Value color = rows.Fields(1).Value();
    if (!isWhole(index, largestKept))
        throw runtime::Error(outOfRange(index.text()));
    if (!isWhole(color, white))
        throw runtime::Error(
            u"颜色表中 %1 号的颜色“%2”不是颜色的数值。"_s.arg(index.text(), color.text()));
    KMColors[size_t(index.toDouble())] = int(color.toDouble());
}

int ChartColors::color(int index)
{
    if (isKept(index))
        return KMColors[size_t(index)];
    refuse(index, loadTrap);
    const auto other = m_others.find(index);
    return other != m_others.end() ? other->second
                                   : KMColors[size_t((index - 1) % largestKept + 1)];
}

void ChartColors::setColor(int index, int color)
{
    if (isKept(index)) {
        KMColors[size_t(index)] = color;
        return SaveColor(index);
    }
    refuse(index, Trap(" - Private Sub Command1_MouseUp/FormGeRenChenJi"));
    m_others[index] = color;
}

void ChartColors::refuse(int index, const Trap& trap)
{
    if (!m_refused)
        trap.fail(outOfRange(QString::number(index)));
    m_refused = true;
}

void ChartColors::SaveColor(int index)
{
    const Trap trap{" - Sub SaveColor/FormGeRenChenJi"};
    trap([&] {
        database::WriteBatch batch(m_scores.Conn);
        database::Recordset rows;
        rows.Open(u"select * from 颜色表 where ID=?"_s, {index}, m_scores.Conn);
        if (rows.Eof())
            rows.AddNew();
        rows.Fields(0).setValue(index);
        rows.Fields(1).setValue(KMColors.at(size_t(index)));
        rows.Update();
        batch.commit();
    });
}

} // namespace individual
