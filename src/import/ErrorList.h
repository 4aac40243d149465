#pragma once

#include <optional>

#include "import/ImportState.h"

namespace importing {

/// "修改错误成绩": every bad score of the import gets an answer.
class ErrorList
{
public:
    enum class Entry { Ignored, Refused, Accepted };
    /// Where accepted values go: to the staging cell behind the last subject, or to the bad cells,
    /// so that the import stores them.
    enum class Destination { OneCell, BadCells };

    /// The column of ImportState::errors that is emptied once its row is answered.
    static constexpr int ReasonColumn = 5;

    explicit ErrorList(ImportState& state) : m_state(state) {}

    QString countText() const;

    /// Takes a text as the answer to a row. An empty text is ignored, a number below 0 or above
    /// the subject's full mark refused with a message. An accepted one empties the row's mark and
    /// goes to its destination.
    Entry answer(int row, const QString& text);

    /// Sends the values that were accepted so far, and those to come, elsewhere.
    void setDestination(Destination destination);
    /// What becomes of the values at the destination.
    QString note() const;

    /// The first row without an answer, after a message; nothing if every row was answered.
    std::optional<int> finish() const;

private:
    struct Answer
    {
        int row = 0;
        QString score;
    };

    struct Overwritten
    {
        ImportState::Cell cell;
        QString text;
    };

    float fullMark(const QString& subject) const;
    ImportState::Cell cellFor(int row) const;
    void store(const Answer& answer);
    /// Puts the staging grid back to what the sheet says.
    void takeBack();

    ImportState& m_state;
    Destination m_destination = Destination::OneCell;
    std::vector<Answer> m_answers;
    std::vector<Overwritten> m_overwritten;
};

} // namespace importing
