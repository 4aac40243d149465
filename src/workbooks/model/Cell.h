#pragma once

#include <deque>
#include <memory>
#include <unordered_set>
#include <vector>

#include "platform/runtime/Value.h"

namespace excel {

/// The texts that a workbook file lists once for all its sheets.
using TextList = std::shared_ptr<const std::vector<QString>>;

/// What is too large to stand in the cells of a sheet themselves. Equal texts are kept once; what
/// no cell holds any more stays until the sheet is given up.
class CellStore
{
public:
    const QString* keep(const QString& text) { return &*m_texts.insert(text).first; }
    const runtime::Value* keep(runtime::Value value);
    /// Keeps the list of a file, to which cells can refer from then on. A sheet has one at most.
    void share(TextList texts) { m_shared = std::move(texts); }

private:
    TextList m_shared;
    std::unordered_set<QString> m_texts;
    std::deque<runtime::Value> m_values;
};

/// One cell of a row, as small as can be: a sheet may have millions.
class Cell
{
public:
    using Kind = runtime::Value::Kind;

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): of a union one member is initialised
    explicit Cell(int column) : m_column(quint16(column)) {}

    int column() const { return m_column; }
    /// Its number in the sheet's FormatTable.
    int format() const { return m_format; }
    void setFormat(int number) { m_format = number; }

    Kind kind() const { return Kind(m_kind); }
    bool isNull() const { return kind() == Kind::Null; }
    runtime::Value value() const;
    /// Fills or empties the cell; `store` must outlive it.
    void setValue(const runtime::Value& value, CellStore& store);
    /// Refers to a text that the cell's store shares.
    void setShared(const QString& text);

private:
    int m_format = 0;
    quint16 m_column;
    quint8 m_kind = quint8(Kind::Null);
    bool m_isStored = false; // as a value of the store
    union {
        double m_number = 0;
        const QString* m_text;
        const runtime::Value* m_value;
    };
};

} // namespace excel
