#include "configuration/AnalysisSettings.h"

#include <algorithm>

#include "library/Settings.h"
#include "platform/database/ReadBatch.h"
#include "platform/database/WriteBatch.h"
#include "platform/grid/GridText.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"
#include "statistics/SettingComplaint.h"

namespace configuration {

using namespace Qt::StringLiterals;
using database::Recordset;
using runtime::Trap;

namespace {

constexpr int settingColumns = 6;
const QString yes = u"是"_s;
const QString conditionsLink = u"点此设置各科条件"_s;
const QString categories = u"参与统计的学生类别代码"_s;
const QString averages = u"各科平均分"_s;

const Trap loadingSettings{" - Private Sub Form_Load/FormSet"};
const Trap savingSettings{" - Private Sub Command1_Click/FormSet"};
const Trap conditionsTrap{" - Sub SzGekE/FormSet"};

/// The values of the first field of all rows, without NULL; nothing if there are no rows.
std::optional<QStringList> valuesOf(const QString& sql, database::Connection& connection)
{
    Recordset rows;
    rows.Open(sql, connection);
    if (rows.RecordCount() == 0)
        return std::nullopt;
    QStringList values;
    for (; !rows.Eof(); rows.MoveNext()) {
        const runtime::Value value = rows.Fields(0).Value();
        if (!value.isNull())
            values.append(value.text());
    }
    return values;
}

/// What can be read of an interval: after a message, one from 0 to 1 for a text without a comma.
statistics::Interval readInterval(const QString& text)
{
    auto interval = statistics::Interval::whole(text);
    conditionsTrap([&] { interval = statistics::Interval::parse(text); });
    return interval;
}

} // namespace

AnalysisSettings::AnalysisSettings(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary)
{
    settings.FixedRows = 0;
    settings.setRows(1);
    settings.setCols(settingColumns);
    settings.setColAlignment(-1, 1);
    for (const int hidden : {ChoicesCol, FlagCol})
        settings.setColWidth(hidden, 0);
}

bool AnalysisSettings::load()
{
    m_isRead = loadingSettings([&] {
        const runtime::Phase phase;
        const database::ReadBatch reading(m_library.Conn);
        loadRows();
    });
    // Rows that were read in part would take the place of the whole ones.
    if (!m_isRead) {
        settings.setRows(1);
        m_ids.assign(1, {});
    }
    m_unchanged = allRows();
    return m_isRead;
}

void AnalysisSettings::loadRows()
{
    Recordset rows;
    rows.Open(u"select * from  设置表 order by ID"_s, m_library.Conn);
    settings.setRows(int(rows.RecordCount()) + 1);
    m_ids.assign(size_t(settings.Rows()), {});
    for (int col = NameCol; col <= ConditionsCol; ++col)
        loadingSettings([&] { settings.setTextMatrix(0, col, rows.Fields(col + 1).Name()); });
    for (int row = 1; row < settings.Rows(); ++row) {
        loadRow(rows, row);
        rows.MoveNext();
    }
}

void AnalysisSettings::loadRow(Recordset& rows, int row)
{
    loadingSettings([&] { m_ids[size_t(row)] = rows.Fields(0).Value(); });
    for (int col = 0; col < settingColumns; ++col)
        loadingSettings(
            [&] { settings.setTextMatrix(row, col, rows.Fields(col + 1).Value().text()); });
    if (runtime::Val(settings.TextMatrix(row, FlagCol)) == 1)
        settings.setTextMatrix(row, ValueCol, statistics::CustomData);
    offerValues(row, settings.TextMatrix(row, NameCol));
}

/// What the library holds now takes the place of the choices that were stored.
void AnalysisSettings::offerValues(int row, const QString& name)
{
    loadingSettings([&] {
        std::optional<QStringList> values;
        if (name == categories)
            values = valuesOf(u"select distinct 类别代码 from  信息表"_s, m_library.Conn);
        else if (name == library::ComparedExams)
            values = valuesOf(u"select distinct 考试名称 from  考试名称表"_s, m_library.Conn);
        if (values)
            settings.setTextMatrix(row, ChoicesCol, values->join(u','));
    });
}

int AnalysisSettings::rowOf(const QString& name) const
{
    const QString wanted = runtime::Trim(name);
    for (int row = 1; row < settings.Rows(); ++row) {
        if (runtime::Trim(settings.TextMatrix(row, NameCol)) == wanted)
            return row;
    }
    return -1;
}

bool AnalysisSettings::isListEdited(int row) const
{
    return offersLibrary(row) || settings.TextMatrix(row, NameCol) == averages;
}

QStringList AnalysisSettings::choices(int row) const
{
    return settings.TextMatrix(row, ChoicesCol).split(u',', Qt::SkipEmptyParts);
}

bool AnalysisSettings::offersLibrary(int row) const
{
    const QString& name = settings.TextMatrix(row, NameCol);
    return name == categories || name == library::ComparedExams;
}

bool AnalysisSettings::flip(int row)
{
    if (row <= FirstRow)
        return false;
    const bool isIn = settings.TextMatrix(row, AnalysisCol) == yes;
    settings.setTextMatrix(row, AnalysisCol, isIn ? u"否"_s : yes);
    return true;
}

void AnalysisSettings::noteFlag(int row)
{
    m_notedFlag = settings.TextMatrix(row, FlagCol);
}

void AnalysisSettings::clearFlag(int row)
{
    settings.setTextMatrix(row, FlagCol, u"0"_s);
}

void AnalysisSettings::restoreFlag(int row)
{
    settings.setTextMatrix(row, FlagCol, m_notedFlag);
}

void AnalysisSettings::setValue(int row, const QString& value)
{
    settings.setTextMatrix(row, ValueCol, value);
    clearFlag(row);
}

QString AnalysisSettings::complaint(int row) const
{
    return statistics::settingComplaint(m_library.catalogue.Streams,
                                        settings.TextMatrix(row, NameCol),
                                        settings.TextMatrix(row, ValueCol));
}

bool AnalysisSettings::offersConditions(int row) const
{
    return settings.TextMatrix(row, ConditionsCol) == conditionsLink;
}

SubjectConditions AnalysisSettings::SzGekE(int row)
{
    SubjectConditions conditions(m_library);
    const QString name = settings.TextMatrix(row, NameCol);
    const QString value = settings.TextMatrix(row, ValueCol);
    const bool usesStored = runtime::Val(settings.TextMatrix(row, FlagCol)) == 1;
    if (usesStored || (value == statistics::CustomData && wantsStored(name, conditions))) {
        conditions.loadStored(name);
        return conditions;
    }
    conditions.makeFrom(readInterval(value));
    conditions.SetRow = row;
    return conditions;
}

/// Saved over the stored conditions, those from 0 to the full marks would be all that is left.
bool AnalysisSettings::wantsStored(const QString& name, const SubjectConditions& conditions) const
{
    const int stored = conditions.storedCount(name);
    if (stored == 0)
        return false;
    const QString question =
        u"“%1”有 %2 条已经保存的各科条件。\n\n"
        "按区间重新计算时，“(使用自定义数据)”不是区间，各科条件都成为 0 到满分；"
        "再按“确定”，已经保存的条件就被覆盖。"_s;
    return runtime::choose({.text = question.arg(name, QString::number(stored)),
                            .buttons = {u"显示已经保存的条件"_s, u"按区间重新计算"_s},
                            .safe = 0,
                            .title = u"各科条件"_s})
           == 0;
}

void AnalysisSettings::useConditions(int row)
{
    settings.setTextMatrix(row, ValueCol, statistics::CustomData);
}

/// The heading is no setting, whatever was typed there.
QString AnalysisSettings::allRows() const
{
    const QString text = grid::gridText(settings);
    return text.mid(text.indexOf(u'\n') + 1);
}

bool AnalysisSettings::isChanged() const
{
    return allRows() != m_unchanged;
}

void AnalysisSettings::saveFields(Recordset& rows, int row)
{
    const Trap passedOver = Trap::silent();
    savingSettings([&] { rows.Fields(0).setValue(m_ids[size_t(row)]); });
    for (int col = 0; col < settingColumns; ++col) {
        const QString& cell = settings.TextMatrix(row, col);
        // No number is no flag, and is not to become one.
        if (col == FlagCol && cell.isEmpty())
            continue;
        // Choices that are read anew whenever they are shown need not fit.
        const Trap& trap = col == ChoicesCol && offersLibrary(row) ? passedOver : savingSettings;
        trap([&] { rows.Fields(col + 1).setValue(cell); });
    }
}

void AnalysisSettings::saveRow(int row)
{
    const runtime::Value& id = m_ids[size_t(row)];
    // Rows that share an ID are told apart by their order.
    const auto before = std::count(m_ids.begin() + 1, m_ids.begin() + row, id);
    Recordset rows;
    rows.Open(u"select * from 设置表 where ID is ?"_s, {id}, m_library.Conn);
    for (auto i = before; i > 0 && !rows.Eof(); --i)
        rows.MoveNext();
    if (rows.RecordCount() <= before)
        rows.AddNew();
    saveFields(rows, row);
    rows.Update();
}

bool AnalysisSettings::save()
{
    if (!m_isRead) {
        runtime::warn(u"分析设置没有读出来，没有保存。"_s);
        return false;
    }
    int stored = 0;
    const bool written = savingSettings([&] {
        database::WriteBatch batch(m_library.Conn);
        for (int row = 1; row < settings.Rows(); ++row)
            stored += int(savingSettings([&] { saveRow(row); }));
        batch.commit();
    });
    if (!written || (stored == 0 && settings.Rows() > 1))
        return false;
    m_unchanged = allRows();
    runtime::MsgBox(u"设置保存成功！"_s);
    return true;
}

} // namespace configuration
