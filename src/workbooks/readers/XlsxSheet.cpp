#include "workbooks/readers/XlsxSheet.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "platform/runtime/PlainNumber.h"
#include "workbooks/model/ColumnWidth.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

struct Place
{
    int row = 0;
    int column = 0;

    bool isInGrid() const
    {
        return row >= 1 && row <= lastGridRow && column >= 1 && column <= lastGridColumn;
    }
};

/// "AB12" as row and column; both 0 if it is none.
Place parsePlace(std::string_view text)
{
    Place place;
    size_t at = 0;
    for (; at < text.size() && at < 3; ++at) {
        const char letter = char(text[at] & ~0x20);
        if (letter < 'A' || letter > 'Z')
            break;
        place.column = place.column * 26 + (letter - 'A' + 1);
    }
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data() + at, end, place.row);
    return error == std::errc() && rest == end && place.isInGrid() ? place : Place();
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// The number that the text is from end to end.
std::optional<double> numberOf(std::string_view text)
{
    if (const std::optional<double> plain = runtime::plainNumber(text))
        return plain;
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

/// In characters, 0 if the file does not tell it.
double widthOf(const char* text)
{
    double width = 0;
    if (text != nullptr)
        std::from_chars(text, text + std::strlen(text), width);
    return charactersOf(width);
}

/// What an element of a sheet stands for that is not read.
std::optional<Loss> lossOf(std::string_view name)
{
    if (name == "drawing" || name == "oleObjects" || name == "controls")
        return Loss::Shapes;
    if (name == "conditionalFormatting")
        return Loss::ConditionalFormats;
    if (name == "dataValidation")
        return Loss::Validations;
    if (name == "hyperlink")
        return Loss::Links;
    if (name == "pageSetup" || name == "headerFooter" || name == "brk")
        return Loss::Printing;
    return std::nullopt;
}

} // namespace

std::optional<CellRange> parseRange(std::string_view text)
{
    const size_t colon = text.find(':');
    const Place first = parsePlace(text.substr(0, colon));
    const Place last = colon == std::string_view::npos ? first : parsePlace(text.substr(colon + 1));
    if (!first.isInGrid() || !last.isInGrid())
        return std::nullopt;
    return CellRange{std::min(first.row, last.row), std::min(first.column, last.column),
                     std::max(first.row, last.row), std::max(first.column, last.column)};
}

void XlsxSheetHandler::startElement(std::string_view name, const XmlAttributes& attributes)
{
    if (m_inCell)
        startInCell(name);
    else if (!m_inData)
        startOutside(name, attributes);
    else if (name == "c")
        startCell(attributes);
    else if (name == "row")
        startRow(attributes);
}

void XlsxSheetHandler::startInCell(std::string_view name)
{
    if (name == "v") {
        m_hasValue = true;
        characters.clear();
        collecting = true;
    } else if (name == "t") {
        collecting = !m_inPhonetic;
    } else if (name == "f") {
        m_hasFormula = true;
        losses.insert(Loss::Formulas);
    } else if (name == "rPh") {
        m_inPhonetic = true;
    }
}

void XlsxSheetHandler::startOutside(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "sheetData") {
        m_inData = true;
    } else if (name == "sheetFormatPr") {
        const double width = widthOf(attributes.find("defaultColWidth"));
        if (width > 0 && width != SheetGeometry::standardColumnWidth)
            m_sheet.geometry().addColumns({1, lastGridColumn, width, false});
    } else if (name == "col") {
        addColumns(attributes);
    } else if (name == "autoFilter") {
        startAutoFilter(attributes);
    } else if (name == "mergeCell") {
        const char* reference = attributes.find("ref");
        m_budget.takeCells(1);
        if (const auto range = parseRange(reference == nullptr ? "" : reference))
            m_sheet.merges().add(*range);
    } else {
        noteLoss(name, attributes);
    }
}

void XlsxSheetHandler::noteLoss(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "legacyDrawing")
        hasLegacyDrawing = true;
    else if (name == "pane" && attributes.text("state").startsWith(u"frozen"))
        losses.insert(Loss::Panes);
    else if (const std::optional<Loss> loss = lossOf(name))
        losses.insert(*loss);
}

void XlsxSheetHandler::startAutoFilter(const XmlAttributes& attributes)
{
    // Custom views repeat the filter, so the first one stands.
    if (m_sheet.AutoFilterMode())
        return;
    const char* reference = attributes.find("ref");
    m_sheet.setAutoFilter(parseRange(reference == nullptr ? "" : reference).value_or(wholeGrid));
}

void XlsxSheetHandler::addColumns(const XmlAttributes& attributes)
{
    m_budget.takeCells(1);
    ColumnRange columns;
    columns.first = attributes.number("min", 0);
    columns.last = std::min(attributes.number("max", columns.first), lastGridColumn);
    columns.width = widthOf(attributes.find("width"));
    columns.hidden = attributes.flag("hidden");
    if (columns.first >= 1 && columns.first <= columns.last)
        m_sheet.geometry().addColumns(columns);
}

void XlsxSheetHandler::payForPage(int row)
{
    if (m_table.lacksPageFor(row))
        m_budget.takePage();
}

void XlsxSheetHandler::startRow(const XmlAttributes& attributes)
{
    m_row = attributes.number("r", m_row + 1);
    m_column = 0;
    if (m_row < 1 || m_row > lastGridRow)
        throw ReadFailure{Fault::BadXml};
    const bool hidden = attributes.flag("hidden");
    const char* text = attributes.find("ht");
    if (!hidden && text == nullptr)
        return;
    payForPage(m_row);
    float height = Row::defaultHeight;
    if (text != nullptr)
        std::from_chars(text, text + std::strlen(text), height);
    m_sheet.geometry().addRow(m_row, height, hidden ? RowState::Hidden : RowState::Shown);
}

XlsxSheetHandler::CellType XlsxSheetHandler::typeOf(std::string_view text)
{
    if (text == "s")
        return CellType::Shared;
    if (text == "inlineStr")
        return CellType::Inline;
    if (text == "str")
        return CellType::FormulaText;
    if (text == "b")
        return CellType::Boolean;
    if (text == "e")
        return CellType::Error;
    return text == "d" ? CellType::IsoDate : CellType::Number;
}

void XlsxSheetHandler::startCell(const XmlAttributes& attributes)
{
    Place place{std::max(m_row, 1), m_column + 1};
    m_type = CellType::Number;
    m_style = 0;
    XmlAttributes rest = attributes;
    std::string_view name;
    const char* value = nullptr;
    while (rest.next(name, value)) {
        if (name == "r")
            place = parsePlace(value);
        else if (name == "t")
            m_type = typeOf(value);
        else if (name == "s")
            std::from_chars(value, value + std::strlen(value), m_style);
    }
    if (!place.isInGrid())
        throw ReadFailure{Fault::BadXml};
    m_row = place.row;
    m_column = place.column;
    m_inCell = true;
    m_inPhonetic = m_hasValue = m_hasFormula = false;
    characters.clear();
}

void XlsxSheetHandler::endElement(std::string_view name)
{
    if (m_inCell) {
        if (name == "c")
            endCell();
        else if (name == "v" || name == "t")
            collecting = false;
        else if (name == "rPh")
            m_inPhonetic = false;
    } else if (name == "sheetData") {
        m_inData = false;
        m_table.settle();
    }
}

void XlsxSheetHandler::payForCell()
{
    payForPage(m_row);
    m_budget.takeCells(1);
}

void XlsxSheetHandler::endCell()
{
    m_inCell = false;
    collecting = false;
    if (const QString* text = sharedText()) {
        payForCell();
        m_table.appendShared(m_row, m_column, *text);
        return;
    }
    const runtime::Value content = value();
    // A formula without a result stays as an empty cell.
    if (content.isNull() && !m_hasFormula)
        return;
    payForCell();
    m_table.append(m_row, m_column, content);
}

const QString* XlsxSheetHandler::sharedText() const
{
    if (m_type != CellType::Shared)
        return nullptr;
    const std::string_view text = trimmed(characters);
    if (text.empty())
        return nullptr;
    const std::vector<QString>& texts = *m_context.texts;
    size_t index = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    if (error != std::errc() || index >= texts.size())
        throw ReadFailure{Fault::BadXml};
    return &texts[index];
}

runtime::Value XlsxSheetHandler::value()
{
    switch (m_type) {
    case CellType::Number:
        return numberValue();
    case CellType::Inline:
        return textValue();
    case CellType::FormulaText:
        return m_hasValue ? textValue() : runtime::Value();
    case CellType::Shared:
        return {};
    default:
        break;
    }
    const std::string_view text = trimmed(characters);
    if (text.empty())
        return {};
    if (m_type == CellType::Boolean)
        return text == "1" || text == "true";
    if (m_type == CellType::Error)
        return runtime::Value::error(fromUtf8(text));
    QDateTime moment = QDateTime::fromString(fromUtf8(text), Qt::ISODateWithMs);
    if (!moment.isValid())
        return textValue();
    return QDateTime(moment.date(), moment.time(), Qt::UTC);
}

runtime::Value XlsxSheetHandler::numberValue() const
{
    const std::string_view text = trimmed(characters);
    if (text.empty())
        return {};
    const std::optional<double> number = numberOf(text);
    if (!number)
        return fromUtf8(text);
    return m_context.formats.isDateStyle(m_style) ? dateValue(*number, m_context.dates)
                                                  : runtime::Value(*number);
}

runtime::Value XlsxSheetHandler::textValue()
{
    QString text = decodeEscapes(fromUtf8(characters));
    m_budget.takeText(text.size());
    return text;
}

} // namespace excel
