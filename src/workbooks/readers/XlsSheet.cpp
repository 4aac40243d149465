#include "workbooks/readers/XlsSheet.h"

#include <bit>

#include "workbooks/model/ColumnWidth.h"

namespace excel {

using runtime::ByteCursor;

namespace {

using namespace Qt::StringLiterals;

runtime::Value errorValue(int code)
{
    switch (code) {
    case 0x00:
        return runtime::Value::error(u"#NULL!"_s);
    case 0x07:
        return runtime::Value::error(u"#DIV/0!"_s);
    case 0x0F:
        return runtime::Value::error(u"#VALUE!"_s);
    case 0x17:
        return runtime::Value::error(u"#REF!"_s);
    case 0x1D:
        return runtime::Value::error(u"#NAME?"_s);
    case 0x24:
        return runtime::Value::error(u"#NUM!"_s);
    default:
        return runtime::Value::error(u"#N/A"_s);
    }
}

/// A number packed into four bytes: whole or the upper half of a double, possibly times 100.
double unpackRk(quint32 packed)
{
    constexpr quint32 timesHundred = 1;
    constexpr quint32 whole = 2;
    const double number = (packed & whole) != 0
                              ? double(std::bit_cast<qint32>(packed) >> 2)
                              : std::bit_cast<double>(quint64(packed & ~3u) << 32);
    return (packed & timesHundred) != 0 ? number / 100 : number;
}

/// False for the arrows of a filter and the frames of comments.
bool isDrawing(const XlsRecord& record)
{
    constexpr int arrow = 0x14;
    constexpr int comment = 0x19;
    constexpr qint64 kindPlace = 4;
    ByteCursor bytes = record.read();
    if (bytes.left() < kindPlace + 2)
        return true;
    bytes.skip(kindPlace);
    const int kind = bytes.u16();
    return kind != arrow && kind != comment;
}

} // namespace

void XlsSheetReader::read(XlsStream& stream, const std::optional<CellRange>& filterRange)
{
    XlsRecord record;
    int depth = 1; // embedded charts have a BOF and an EOF of their own
    while (depth > 0) {
        if (!stream.next(record))
            throw ReadFailure{Fault::CutOffXls};
        if (record.type == record::bof)
            ++depth;
        else if (record.type == record::eof)
            --depth;
        else if (depth == 1)
            take(record);
    }
    m_sheet.table().settle();
    if (m_filtered)
        m_sheet.setAutoFilter(filterRange.value_or(wholeGrid));
}

void XlsSheetReader::take(const XlsRecord& record)
{
    switch (record.type) {
    case record::filterMode:
    case record::autoFilterInfo:
        m_filtered = true;
        break;
    case record::row:
        takeRow(record);
        break;
    case record::columnInfo:
        takeColumns(record);
        break;
    case record::mergedCells:
        takeMerged(record);
        break;
    case record::multipleRk:
        takeMultipleRk(record);
        break;
    case record::formula:
        takeFormula(record);
        break;
    case record::filePass:
        throw ReadFailure{Fault::Password};
    case record::formulaText: {
        XlsTextReader reader(record.pieces);
        if (m_textRow >= 0)
            add(m_textRow, m_textColumn, m_globals.longText(reader));
        m_textRow = -1;
        break;
    }
    case record::sharedText:
    case record::label:
    case record::richText:
    case record::number:
    case record::rk:
    case record::booleanOrError:
        takeCell(record);
        break;
    default:
        noteLoss(record);
        break;
    }
}

void XlsSheetReader::noteLoss(const XlsRecord& record)
{
    switch (record.type) {
    case record::object:
        if (isDrawing(record))
            losses.insert(Loss::Shapes);
        break;
    case record::note:
        losses.insert(Loss::Comments);
        break;
    case record::conditionalFormats:
        losses.insert(Loss::ConditionalFormats);
        break;
    case record::validations:
        losses.insert(Loss::Validations);
        break;
    case record::link:
        losses.insert(Loss::Links);
        break;
    case record::pageBreaks:
        losses.insert(Loss::Printing);
        break;
    default:
        break;
    }
}

void XlsSheetReader::takeCell(const XlsRecord& record)
{
    ByteCursor bytes = record.read();
    const int row = bytes.u16();
    const int column = bytes.u16();
    const int style = bytes.u16();
    switch (record.type) {
    case record::sharedText:
        add(row, column, m_globals.sharedText(bytes.u32()));
        break;
    case record::number:
        add(row, column, m_globals.number(bytes.real(), style));
        break;
    case record::rk:
        add(row, column, m_globals.number(unpackRk(bytes.u32()), style));
        break;
    case record::booleanOrError: {
        const int content = bytes.u8();
        const bool isError = bytes.u8() != 0;
        add(row, column, isError ? errorValue(content) : runtime::Value(content != 0));
        break;
    }
    default: {
        XlsTextReader reader(record.pieces);
        reader.skip(6);
        add(row, column, m_globals.longText(reader));
        break;
    }
    }
}

void XlsSheetReader::takeFormula(const XlsRecord& record)
{
    ByteCursor bytes = record.read();
    losses.insert(Loss::Formulas);
    const int row = bytes.u16();
    const int column = bytes.u16();
    const int style = bytes.u16();
    ByteCursor result(bytes.take(8));
    ByteCursor parts = result;
    const int kind = parts.u8();
    parts.skip(1);
    const int content = parts.u8();
    parts.skip(3);
    m_textRow = -1;
    if (parts.u16() != 0xFFFF) {
        add(row, column, m_globals.number(result.real(), style));
        return;
    }
    if (kind == 0) {
        m_textRow = row;
        m_textColumn = column;
    } else if (kind == 1) {
        add(row, column, content != 0);
    } else if (kind == 2) {
        add(row, column, errorValue(content));
    } else {
        add(row, column, QString());
    }
}

void XlsSheetReader::takeMultipleRk(const XlsRecord& record)
{
    ByteCursor bytes = record.read();
    const int row = bytes.u16();
    int column = bytes.u16();
    while (bytes.left() >= 6 + 2) {
        const int style = bytes.u16();
        add(row, column++, m_globals.number(unpackRk(bytes.u32()), style));
    }
}

void XlsSheetReader::takeRow(const XlsRecord& record)
{
    constexpr int hiddenFlag = 0x20;
    constexpr int ownHeightFlag = 0x40;
    constexpr float twipsPerPoint = 20;
    ByteCursor bytes = record.read();
    const int number = bytes.u16() + 1;
    bytes.skip(4);
    const int height = bytes.u16() & 0x7FFF;
    bytes.skip(4);
    const int flags = bytes.u16();
    if ((flags & (hiddenFlag | ownHeightFlag)) == 0)
        return;
    if (m_sheet.table().lacksPageFor(number))
        m_budget.takePage();
    m_sheet.geometry().addRow(number,
                              height > 0 ? float(height) / twipsPerPoint : Row::defaultHeight,
                              (flags & hiddenFlag) != 0 ? RowState::Hidden : RowState::Shown);
}

void XlsSheetReader::takeColumns(const XlsRecord& record)
{
    m_budget.takeCells(1);
    ByteCursor bytes = record.read();
    ColumnRange columns;
    columns.first = bytes.u16() + 1;
    columns.last = std::min(bytes.u16() + 1, lastGridColumn);
    columns.width = charactersOf(double(bytes.u16()) / 256);
    bytes.skip(2);
    columns.hidden = (bytes.u16() & 1) != 0;
    if (columns.first <= columns.last)
        m_sheet.geometry().addColumns(columns);
}

void XlsSheetReader::takeMerged(const XlsRecord& record)
{
    ByteCursor bytes = record.read();
    for (int left = bytes.u16(); left > 0; --left) {
        m_budget.takeCells(1);
        CellRange range;
        range.firstRow = bytes.u16() + 1;
        range.lastRow = bytes.u16() + 1;
        range.firstColumn = bytes.u16() + 1;
        range.lastColumn = bytes.u16() + 1;
        if (range.firstRow <= range.lastRow && range.firstColumn <= range.lastColumn
            && range.lastColumn <= lastGridColumn)
            m_sheet.merges().add(range);
    }
}

/// `row` and `column` count from 0, as in the file.
void XlsSheetReader::add(int row, int column, const runtime::Value& value)
{
    if (column >= lastGridColumn)
        throw ReadFailure{Fault::CutOffXls};
    if (m_sheet.table().lacksPageFor(row + 1))
        m_budget.takePage();
    m_budget.takeCells(1);
    m_sheet.table().append(row + 1, column + 1, value);
}

} // namespace excel
