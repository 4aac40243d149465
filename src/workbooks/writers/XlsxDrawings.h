#pragma once

#include <vector>

#include <QHash>

#include "workbooks/model/Worksheet.h"
#include "workbooks/writers/XlsxPackage.h"

namespace excel {

/// The parts that the drawings of a workbook make in its file. The library does not write them: it
/// knows no lines and labels, places pictures and charts by another font than ours, and would pack
/// each chart twice.
class XlsxDrawings
{
public:
    /// Takes up the drawings of a sheet, the `number`-th of the file, where it has the name
    /// `sheetName`. Gives the element of the sheet that refers to them, empty if there are none.
    /// The sheet must stay as it is until the parts are packed.
    std::string add(const Worksheet& sheet, size_t number, const QString& sheetName);

    std::vector<NewPart> take() { return std::move(m_parts); }

private:
    std::string mediaOf(const Picture& picture);
    void addPart(const std::string& name, const std::string& type,
                 std::function<std::string()> text);

    std::vector<NewPart> m_parts;
    QHash<QByteArray, std::string> m_media; // names of the parts by their bytes
    int m_sheets = 0;
    int m_charts = 0;
};

} // namespace excel
