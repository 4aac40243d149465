#pragma once

#include <QHash>
#include <QString>

#include <xlsxwriter.h>

namespace excel {

/// The texts of a file, each kept once.
class SharedTexts
{
public:
    explicit SharedTexts(lxw_workbook* book) : m_table(book->sst) {}

    /// The number of a text in the file, which is used in one more cell.
    uint32_t numberOf(const QString& text);

private:
    lxw_sst* m_table;
    QHash<QString, uint32_t> m_numbers;
};

} // namespace excel
