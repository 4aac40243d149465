#include "oldlibraries/KeyValues.h"

#include <QSet>

#include "oldlibraries/OldRows.h"
#include "oldlibraries/RowValues.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::ColumnDeclaration;
using Key = ColumnDeclaration::Key;
using runtime::Value;

namespace {

/// The values of one key column, row after row.
class KeyColumn
{
public:
    KeyColumn(const TargetTable& table, int column) : m_table(table), m_column(column) {}

    void take(OldRows& rows, qint64 row)
    {
        const Value value = libraryValue(rows, m_table.old.columns[size_t(m_column)], m_column);
        // As the engine compares: letters beyond A to Z are not folded.
        const QByteArray key = value.text().toUtf8().toLower();
        if (value.isNull())
            add(row, {}, u"没有值，照原样保存"_s);
        else if (m_seen.contains(key))
            add(row, value.text(), u"前面的行已有这个值，照原样保存"_s);
        m_seen.insert(key);
        if (value.isNumber()) {
            m_ascending = m_ascending && (row == 1 || value.toDouble() > m_last);
            m_last = value.toDouble();
        }
    }

    /// Tells what was found, and takes the key away if it cannot be one.
    void settle(ColumnDeclaration& column, std::vector<Finding>& findings) const
    {
        const bool isNumbering = column.key == Key::AutoNumber;
        if (m_faults.empty() && isNumbering && !m_ascending)
            findings.push_back({m_table.old.name,
                                0,
                                column.name,
                                {},
                                u"原来的行不按这一列的次序，新库里按它排列"_s});
        if (m_faults.empty())
            return;
        findings.insert(findings.end(), m_faults.begin(), m_faults.end());
        findings.push_back({m_table.old.name,
                            0,
                            column.name,
                            {},
                            isNumbering ? u"有重复的值或空值，新库里这一列不再自动编号"_s
                                        : u"有重复的值或空值，新库里这一列可以重复"_s});
        column.key = Key::None;
        if (isNumbering)
            column.type = u"Long INTEGER"_s;
    }

private:
    void add(qint64 row, const QString& value, const QString& done)
    {
        m_faults.push_back(
            {m_table.old.name, row, m_table.columns[size_t(m_column)].name, value, done});
    }

    const TargetTable& m_table;
    int m_column;
    QSet<QByteArray> m_seen;
    std::vector<Finding> m_faults;
    bool m_ascending = true;
    double m_last = 0;
};

} // namespace

void settleKeys(PageFile& file, TargetTable& table, std::vector<Finding>& findings)
{
    std::vector<std::pair<int, KeyColumn>> keys;
    for (int i = 0; i < int(table.columns.size()); ++i) {
        if (table.columns[size_t(i)].key != Key::None)
            keys.emplace_back(i, KeyColumn(table, i));
    }
    if (keys.empty())
        return;
    OldRows rows(file, table.old);
    for (qint64 row = 1; rows.next(); ++row) {
        for (auto& [column, key] : keys)
            key.take(rows, row);
    }
    for (const auto& [column, key] : keys)
        key.settle(table.columns[size_t(column)], findings);
}

} // namespace oldlibraries
