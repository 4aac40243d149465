#pragma once

#include <memory>
#include <vector>

#include <QString>

#include "workbooks/model/Loss.h"
#include "workbooks/model/Worksheet.h"
#include "workbooks/readers/Budget.h"
#include "workbooks/readers/NumberFormats.h"
#include "workbooks/readers/XmlScanner.h"

namespace excel {

/// What the sheets of a workbook share.
struct XlsxContext
{
    TextList texts = std::make_shared<const std::vector<QString>>();
    NumberFormats formats;
    DateSystem dates = DateSystem::From1900;
};

/// Fills a sheet from its part.
class XlsxSheetHandler : public XmlHandler
{
public:
    XlsxSheetHandler(Worksheet& sheet, const XlsxContext& context, Budget& budget)
        : m_sheet(sheet), m_table(sheet.table()), m_context(context), m_budget(budget)
    {
        m_table.share(context.texts);
    }

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void endElement(std::string_view name) override;

    Losses losses;
    /// True if it has comments or controls.
    bool hasLegacyDrawing = false;

private:
    enum class CellType { Number, Shared, Inline, FormulaText, Boolean, Error, IsoDate };

    void startRow(const XmlAttributes& attributes);
    void startCell(const XmlAttributes& attributes);
    void startInCell(std::string_view name);
    void startOutside(std::string_view name, const XmlAttributes& attributes);
    void endCell();
    void payForCell();
    void payForPage(int row);
    void addColumns(const XmlAttributes& attributes);
    void noteLoss(std::string_view name, const XmlAttributes& attributes);
    void startAutoFilter(const XmlAttributes& attributes);

    static CellType typeOf(std::string_view text);
    /// The text that the cell refers to; null if it refers to none.
    const QString* sharedText() const;
    runtime::Value value();
    runtime::Value numberValue() const;
    runtime::Value textValue();

    Worksheet& m_sheet;
    CellTable& m_table;
    const XlsxContext& m_context;
    Budget& m_budget;
    bool m_inData = false;
    bool m_inCell = false;
    bool m_inPhonetic = false;
    bool m_hasValue = false;
    bool m_hasFormula = false;
    int m_row = 0;
    int m_column = 0;
    CellType m_type = CellType::Number;
    size_t m_style = 0;
};

/// The block that a reference such as "A1:C3" or "B2" names; nothing if it is none.
std::optional<CellRange> parseRange(std::string_view text);

} // namespace excel
