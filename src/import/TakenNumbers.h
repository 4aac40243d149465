#pragma once

#include <optional>
#include <utility>

#include <QSet>
#include <QStringList>

#include "import/KnownStudents.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// The rows of a student list whose class and number somebody has already: a student of the
/// library, or a row further up. Rows are looked at in order, each once.
class TakenNumbers
{
public:
    enum class TakenBy { Nobody, Library, List };

    TakenNumbers(const excel::Worksheet& sheet, database::Connection& connection)
        : m_sheet(sheet), m_known(connection)
    {
    }

    /// The class and number of a row; nothing if one of them is missing.
    static std::optional<std::pair<double, double>> numberOn(const excel::Worksheet& sheet,
                                                             int row);

    /// Who has the class and number of a row. One without a class or a number is nobody's. Throws
    /// Error.
    TakenBy takenBy(int row);

private:
    const excel::Worksheet& m_sheet;
    KnownStudents m_known;
    QSet<std::pair<double, double>> m_listed;
};

/// How many rows of a list are taken and by whom, with the first of them by name.
class TakenCount
{
public:
    /// Looks at the rows from `first` to before `end`. Throws Error.
    TakenCount(const excel::Worksheet& sheet, database::Connection& connection, int first, int end);

    bool isAnyTaken() const { return m_byLibrary.count > 0 || m_byList.count > 0; }
    /// The facts, and what each answer does.
    QString question() const;

private:
    struct Rows
    {
        int count = 0;
        QStringList first;
    };

    static void note(Rows& rows, const excel::Worksheet& sheet, int row);
    static QString named(const Rows& rows);

    int m_rows = 0;
    Rows m_byLibrary;
    Rows m_byList;
};

} // namespace importing
