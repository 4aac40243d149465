#include "workbooks/readers/XlsGlobals.h"

namespace excel {

using namespace Qt::StringLiterals;

using runtime::ByteCursor;

namespace {

constexpr int biff8 = 0x0600;
constexpr int typeOfWorksheet = 0;
constexpr int filterName = 0x0D; // the built-in name of a filter's block
constexpr int builtInFlag = 0x20;
constexpr int areaToken = 0x3B;
constexpr qsizetype sizeOfLooks = 14;
constexpr qsizetype placeOfActiveTab = 10;

Visibility visibilityOf(int state)
{
    switch (state & 3) {
    case 0:
        return Visibility::Visible;
    case 2:
        return Visibility::VeryHidden;
    default:
        return Visibility::Hidden;
    }
}

} // namespace

void XlsGlobals::readVersion(const XlsRecord& bof)
{
    m_version = bof.read().u16() == biff8 ? XlsVersion::Biff8 : XlsVersion::Biff5;
}

void XlsGlobals::read(XlsStream& stream)
{
    XlsRecord record;
    while (stream.next(record)) {
        if (record.type == record::eof)
            return;
        take(record);
    }
    throw ReadFailure{Fault::CutOffXls};
}

void XlsGlobals::take(const XlsRecord& record)
{
    switch (record.type) {
    case record::filePass:
        throw ReadFailure{Fault::Password};
    case record::codePage:
        m_page = std::make_unique<runtime::CodePage>(record.read().u16());
        break;
    case record::dateMode:
        m_dates = record.read().u16() == 1 ? DateSystem::From1904 : DateSystem::From1900;
        break;
    case record::window:
        if (record.bytes.size() >= placeOfActiveTab + 2) {
            ByteCursor bytes = record.read();
            bytes.skip(placeOfActiveTab);
            m_activeTab = bytes.u16();
        }
        break;
    case record::boundSheet:
        takeSheet(record);
        break;
    case record::format:
        takeFormat(record);
        break;
    case record::cellStyle:
        takeStyle(record);
        break;
    case record::macros:
        losses.insert(Loss::Macros);
        break;
    case record::sharedTexts:
        takeSharedTexts(record);
        break;
    case record::name:
        takeName(record);
        break;
    default:
        break;
    }
    if (m_formats.size() > mostStyles)
        throw ReadFailure{Fault::TooLarge};
}

QString XlsGlobals::text(XlsTextReader& reader, int length) const
{
    QString text = m_version == XlsVersion::Biff8 ? reader.unicodeText(length)
                                                  : reader.byteText(length, *m_page);
    m_budget.takeText(text.size());
    return text;
}

QString XlsGlobals::shortText(XlsTextReader& reader) const
{
    const int length = reader.u8();
    return text(reader, length);
}

QString XlsGlobals::longText(XlsTextReader& reader) const
{
    const int length = reader.u16();
    return text(reader, length);
}

void XlsGlobals::takeSheet(const XlsRecord& record)
{
    m_budget.takeSheets(1);
    ++m_sheetNumber;
    XlsTextReader reader(record.pieces);
    Sheet sheet;
    sheet.place = reader.u32();
    sheet.visibility = visibilityOf(reader.u8());
    const int type = reader.u8();
    sheet.name = shortText(reader);
    if (type != typeOfWorksheet) {
        losses.insert(Loss::OtherSheets);
        return;
    }
    sheets.push_back(sheet);
    m_sheetNumbers.push_back(m_sheetNumber);
}

void XlsGlobals::takeFormat(const XlsRecord& record)
{
    XlsTextReader reader(record.pieces);
    const int number = reader.u16();
    m_formats.addFormat(number,
                        m_version == XlsVersion::Biff8 ? longText(reader) : shortText(reader));
}

void XlsGlobals::takeStyle(const XlsRecord& record)
{
    constexpr int standardAlignment = 0x20;
    constexpr int templateFlag = 4;
    ByteCursor bytes = record.read();
    const int font = bytes.u16();
    m_formats.addStyle(bytes.u16());
    if (m_version != XlsVersion::Biff8 || bytes.left() < sizeOfLooks)
        return;
    const bool isTemplate = (bytes.u16() & templateFlag) != 0;
    const int alignment = bytes.u8();
    bytes.skip(3);
    const bool hasBorder = bytes.u16() != 0;
    bytes.skip(2);
    const bool hasFill = (bytes.u32() >> 26) != 0;
    if (!isTemplate && (font != 0 || alignment != standardAlignment || hasBorder || hasFill))
        losses.insert(Loss::Looks);
}

void XlsGlobals::takeSharedTexts(const XlsRecord& record)
{
    XlsTextReader reader(record.pieces);
    reader.u32();
    const quint32 count = reader.u32();
    m_texts.clear();
    for (quint32 i = 0; i < count; ++i) {
        m_budget.takeTexts(1);
        m_texts.push_back(longText(reader));
    }
}

/// Of all names only the block of an automatic filter is of interest.
void XlsGlobals::takeName(const XlsRecord& record)
{
    constexpr qsizetype smallestName = 14 + 2 + 11; // with a name of one letter and one area
    if (m_version != XlsVersion::Biff8 || qsizetype(record.bytes.size()) < smallestName)
        return;
    ByteCursor bytes = record.read();
    const int flags = bytes.u16();
    bytes.skip(1);
    const int nameLength = bytes.u8();
    bytes.skip(4);
    const int sheet = bytes.u16();
    bytes.skip(5);
    if ((flags & builtInFlag) == 0 || nameLength != 1 || bytes.u8() != filterName)
        return;
    if (bytes.u8() != areaToken)
        return;
    bytes.skip(2);
    CellRange range;
    range.firstRow = bytes.u16() + 1;
    range.lastRow = bytes.u16() + 1;
    range.firstColumn = (bytes.u16() & 0x3FFF) + 1;
    range.lastColumn = (bytes.u16() & 0x3FFF) + 1;
    m_filterRanges.insert(sheet, range);
}

runtime::Value XlsGlobals::number(double number, int style) const
{
    if (!std::isfinite(number))
        return runtime::Value::error(u"#NUM!"_s);
    return m_formats.isDateStyle(size_t(style)) ? dateValue(number, m_dates)
                                                : runtime::Value(number);
}

const QString& XlsGlobals::sharedText(quint32 index) const
{
    if (index >= m_texts.size())
        throw ReadFailure{Fault::CutOffXls};
    return m_texts[index];
}

bool XlsGlobals::isActive(int sheetIndex) const
{
    return m_sheetNumbers[size_t(sheetIndex)] == m_activeTab + 1;
}

std::optional<CellRange> XlsGlobals::filterRange(int sheetIndex) const
{
    const auto found = m_filterRanges.find(m_sheetNumbers[size_t(sheetIndex)]);
    return found == m_filterRanges.end() ? std::nullopt : std::optional(*found);
}

} // namespace excel
