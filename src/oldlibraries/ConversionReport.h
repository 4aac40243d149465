#pragma once

#include <vector>

#include <QString>

namespace oldlibraries {

/// Something in an old library that its new one does not have as it stood, or that a user has to
/// know.
struct Finding
{
    QString table;
    /// Counted from 1 in the order of the old table; 0 for what concerns the table as a whole.
    qint64 row = 0;
    /// "" for what concerns the whole row.
    QString column;
    /// The value as it stood, as text, of a long one the beginning.
    QString value;
    /// What was done with it, as a sentence.
    QString done;
};

/// What became of an old library.
struct ConversionReport
{
    struct Table
    {
        QString name;
        qint64 rows = 0;
    };

    QString oldPath;
    QString newPath;
    /// The tables of the old library, in its order.
    std::vector<Table> tables;
    std::vector<Finding> findings;
};

} // namespace oldlibraries
