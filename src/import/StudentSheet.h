#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "workbooks/model/Worksheet.h"

namespace importing {

/// How the cells below a heading of a student list are stored.
enum class CellRule { Number, Date, Photo, AsItStands, PassedOver };

struct StudentHeading
{
    QString name;
    CellRule rule = CellRule::AsItStands;
};

/// Which rows and columns of a student list an import takes. It ends at the first row without a
/// class, and at the first empty heading. Looks at the cells alone.
class StudentSheet
{
public:
    static constexpr int First = 2;

    /// `sheet` must outlive it.
    explicit StudentSheet(const excel::Worksheet& sheet);

    /// The row behind the last one that is taken.
    int end() const { return m_end; }
    /// Those of the columns from the first on.
    const std::vector<StudentHeading>& headings() const { return m_headings; }
    /// The rows from end() on that hold something under a heading and are not taken.
    std::vector<int> rowsLeft() const;

private:
    const excel::Worksheet& m_sheet;
    int m_end = First;
    std::vector<StudentHeading> m_headings;
};

/// Throws runtime::Error for an error value, which no field takes.
void refuseError(const runtime::Value& cell);

/// What is stored of a cell; nothing leaves the field as it is. Not for photos and error values.
/// Throws runtime::Error for what should be a date and is none.
std::optional<runtime::Value> studentValue(CellRule rule, const runtime::Value& cell);

/// The file that a photo's cell names, as it stands or in the workbook's folder; empty if there is
/// none. Throws runtime::Error for one of more than `largest` bytes.
QString photoFile(const runtime::Value& cell, const QString& folder, qint64 largest);

/// What is told of a column that would number the students.
QString passedOverText(const QString& heading);

} // namespace importing
