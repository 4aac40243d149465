#pragma once

#include <map>
#include <optional>
#include <utility>

#include <QStringList>

#include "import/ScoreRows.h"
#include "import/SheetRows.h"

namespace importing {

/// The names of a sheet's students once the import has put them into the library, row by row: of
/// several of one class and number all earlier scores bear the last.
class SettledNames
{
public:
    using Number = std::pair<double, double>;

    /// Rows come in order. `libraryName` is the name of the library for the class and number;
    /// nobody asks about an empty one, and the sheet's is not put there then.
    void add(const SheetStudent& student, const QString& libraryName);

    /// The name that the rows so far leave in the library; nothing if none of them has the
    /// student's class and number.
    std::optional<QString> nameOf(const SheetStudent& student) const;
    /// Under which name the student's first row is found; nothing if no row bears it any more.
    std::optional<RowName> rowNameOf(const SheetStudent& student) const;
    /// The names that the sheet has for a class and number.
    QStringList namesOf(const Number& number) const;

private:
    struct Names
    {
        QString current;
        bool isRenamed = false;
        QStringList onSheet;
    };

    std::map<Number, Names> m_names;
};

} // namespace importing
