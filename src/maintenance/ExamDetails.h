#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include "library/LibraryBackup.h"
#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "platform/runtime/Progress.h"

namespace maintenance {

/// How a save of an exam's details ended. What is wrong has been told.
enum class DetailsSave {
    NotSaved, ///< nothing has changed in the library
    Saved,
    Scored, ///< and the exam was scored anew
    Stale   ///< its totals and ranks are still those of the old full marks and formulas
};

/// "考试信息": an exam's name, remarks, full marks and formulas of totals, one row of 考试名称表 a
/// stream. In `items` each of them is a row, with a column of what is stored and a column of what
/// it is changed to for each stream.
class ExamDetails
{
public:
    explicit ExamDetails(library::ScoreLibrary& scoreLibrary) : m_library(scoreLibrary) {}

    grid::FlexGrid items;
    /// What the exam is renamed to.
    QString name;

    /// All exams of the library, also those that its lists pass over; none, after the message, if
    /// they cannot be read.
    QStringList exams() const;

    /// Takes up an exam. False, after the message, if there is none of that name or it cannot be
    /// read; what was taken up before stays.
    bool load(const QString& exam);
    /// The exam as it is stored; "" for none.
    const QString& exam() const { return m_exam; }

    /// True for the cells that are typed into.
    bool isTypedInto(int row, int col) const;
    /// True for the rows of full marks.
    bool isFullMark(int row) const;
    bool isChanged() const;
    /// A line for each change: what, the stream, before and after.
    QStringList changes() const;
    /// The cell that the latest save refused; nothing if it refused none.
    const std::optional<grid::CellPlace>& refusedCell() const { return m_refused; }

    /// Saves the changes in one batch, after the questions that they raise; then offers to score
    /// the exam anew where that is needed. Nothing is saved if another program has changed or
    /// removed the exam since it was read, which is told. Tells the library's followers.
    DetailsSave save(runtime::Progress& progress, library::Backup backup);

private:
    enum class Kind { Remark, FullMark, Formula };
    struct Item
    {
        QString column;
        Kind kind;
        friend bool operator==(const Item&, const Item&) = default;
    };
    struct Row
    {
        qint64 id = 0;
        QString stream;
        /// As they are typed, parallel to the items.
        QStringList values;
        friend bool operator==(const Row&, const Row&) = default;
    };
    struct Stored
    {
        std::vector<Item> items;
        std::vector<Row> rows;
        friend bool operator==(const Stored&, const Stored&) = default;
    };
    /// A cell whose text differs from what is stored.
    struct Change
    {
        const Item& item;
        const Row& row;
        QString before;
        QString after;
        grid::CellPlace place;
        /// "语文（文）".
        QString title;
    };

    static QString normal(const Item& item, const QString& typed);
    static Kind kindOf(const QString& column, int position);
    Stored read(const QString& exam) const;
    void fill();
    void fillHeadings();
    std::vector<Change> changedCells() const;
    QString changeLine(const Change& change) const;
    QString fault();
    QString cellFault(const Change& change) const;
    bool isConfirmed(library::Backup backup) const;
    bool mayHide() const;
    bool mayLoseScores() const;
    QString lostScores(const Change& change) const;
    void write() const;
    void writeRow(const Row& row, const std::vector<Change>& changes) const;
    bool needsScoring() const;
    DetailsSave offerScoring(runtime::Progress& progress);

    library::ScoreLibrary& m_library;
    QString m_exam;
    Stored m_stored;
    std::optional<grid::CellPlace> m_refused;
};

} // namespace maintenance
