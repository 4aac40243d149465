#pragma once

#include <functional>
#include <map>

#include "oldlibraries/FaultKind.h"
#include "oldlibraries/LibraryValue.h"
#include "oldlibraries/TargetTables.h"
#include "platform/database/Connection.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

/// Called after a row with how many are done; false ends the work.
using TellRows = std::function<bool(qint64 rows)>;

/// How copying ended. The keys of a table may not suit its rows: a value is missing, or stands
/// there twice.
enum class Copied { All, Cancelled, UnfitKeys };

/// Takes the rows of an old table over into the new library, which has the table already.
class TableCopy
{
public:
    /// What a user has to know of the values is added to the findings once all are copied.
    TableCopy(PageFile& file, const TargetTable& table, database::Connection& library,
              std::vector<Finding>& findings);

    /// Copies all rows in their order. Call within a WriteBatch. Throws OldFileError, and
    /// runtime::Error for a row that is too long or cannot be written.
    Copied run(const TellRows& tell);

    /// How many rows were met.
    qint64 rowCount() const { return m_row; }

private:
    /// False if the keys do not suit the row.
    bool copyRow();
    void bindValue(int place);
    bool suitsKey(database::ColumnDeclaration::Key key);
    void tellOddity(int place);
    bool insertRow();
    void takeNumber(qint64 number);
    void add(qint64 row, const QString& column, const QString& value, const QString& done);
    void tellOrder();
    void tellCount();

    const TargetTable& m_table;
    std::vector<Finding>& m_findings;
    const qint64 m_longestRow;
    OldRows m_rows;
    database::Statement m_insert;
    LibraryValue m_value;
    /// By column and sentence.
    std::map<std::pair<int, QStringView>, FaultKind> m_oddities;
    qint64 m_row = 0;
    /// Of the texts and pictures of this row.
    qint64 m_rowBytes = 0;
    qint64 m_lastNumber = 0;
    bool m_isAscending = true;
};

/// Sees to it that a number which was given once, to a row that may be gone by now, is never given
/// again. Throws database::Error.
void keepLastNumber(database::Connection& library, const TargetTable& table);

} // namespace oldlibraries
