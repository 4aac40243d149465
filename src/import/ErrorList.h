#pragma once

#include "import/ImportState.h"

namespace importing {

/// "修改错误成绩": every bad score of the import gets an answer.
class ErrorList
{
public:
    enum class Entry { Ignored, Refused, Accepted };

    explicit ErrorList(ImportState& state) : m_state(state) {}

    /// The row being edited.
    int CurRow = 0;

    QString countText() const;

    /// Takes a text as the answer to CurRow. An empty text is ignored, a number below 0 or above
    /// the subject's full mark refused with a message. An accepted one empties the row's mark and
    /// goes to the staging cell behind the last subject, not to the bad cell.
    Entry enter(const QString& text);

    /// True if every row was answered; otherwise a message, and CurRow is the first
    /// open row.
    bool finish();

private:
    float fullMark(const QString& subject) const;

    ImportState& m_state;
};

} // namespace importing
