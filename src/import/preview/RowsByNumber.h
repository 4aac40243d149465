#pragma once

#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "import/preview/Preview.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// The rows of a sheet by the class and number that they bear.
class RowsByNumber
{
public:
    using Number = std::pair<double, double>;

    void add(const Number& number, int row) { m_rows[number].push_back(row); }

    /// Tells of each row whose class and number stand on others too. `what` says what the import
    /// makes of such rows.
    void tellTwice(const excel::Worksheet& sheet, const std::function<QString(const Number&)>& what,
                   Preview& preview) const;

private:
    std::map<Number, std::vector<int>> m_rows;
};

} // namespace importing
