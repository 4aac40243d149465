#pragma once

#include <unordered_map>
#include <vector>

#include <QString>

#include "platform/runtime/Value.h"

namespace excel {

/// The day from which a workbook counts its dates.
enum class DateSystem { From1900, From1904 };

/// Which cell styles of a workbook show a number as a date or a time.
class NumberFormats
{
public:
    /// A format of the workbook's own; it wins over a built-in one of the same number.
    void addFormat(int number, const QString& code) { m_own[number] = isDateCode(code); }
    /// The next cell style, which uses this format.
    void addStyle(int formatNumber) { m_styles.push_back(formatNumber); }

    bool isDateStyle(size_t style) const;

    /// Formats and styles together.
    size_t size() const { return m_styles.size() + m_own.size(); }

    /// True if the code holds y, m, d, h or s outside quotes, brackets and behind no backslash, or
    /// counts elapsed time, as [h] does.
    static bool isDateCode(const QString& code);

private:
    std::vector<int> m_styles;
    std::unordered_map<int, bool> m_own;
};

/// A number as the date that it stands for, rounded to milliseconds. A number that is no date of
/// the years 1900 to 9999 stays a Double.
runtime::Value dateValue(double number, DateSystem system);

} // namespace excel
