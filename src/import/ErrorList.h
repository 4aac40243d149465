#pragma once

#include <optional>

#include "import/ImportState.h"

namespace importing {

/// "修改错误成绩": every bad score of the import gets an answer.
class ErrorList
{
public:
    enum class Entry { Ignored, Refused, Accepted };

    /// The column of ImportState::errors that is emptied once its row is answered.
    static constexpr int ReasonColumn = 5;

    explicit ErrorList(ImportState& state) : m_state(state) {}

    QString countText() const;

    /// Takes a text as the answer to a row. An empty text is ignored, a number below 0 or above
    /// the subject's full mark refused with a message. An accepted one empties the row's mark and
    /// goes to the staging cell behind the last subject, not to the bad cell.
    Entry answer(int row, const QString& text);

    /// The first row without an answer, after a message; nothing if every row was answered.
    std::optional<int> finish() const;

private:
    float fullMark(const QString& subject) const;

    ImportState& m_state;
};

} // namespace importing
