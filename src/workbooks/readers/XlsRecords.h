#pragma once

#include <string_view>
#include <vector>

#include <QByteArray>

#include "platform/runtime/ByteCursor.h"
#include "workbooks/readers/Budget.h"

namespace excel {

/// Numbers of the records that are read.
namespace record {
constexpr int formula = 0x06;
constexpr int eof = 0x0A;
constexpr int name = 0x18;
constexpr int pageBreaks = 0x1B;
constexpr int note = 0x1C;
constexpr int dateMode = 0x22;
constexpr int filePass = 0x2F;
constexpr int continued = 0x3C;
constexpr int window = 0x3D;
constexpr int codePage = 0x42;
constexpr int object = 0x5D;
constexpr int columnInfo = 0x7D;
constexpr int boundSheet = 0x85;
constexpr int filterMode = 0x9B;
constexpr int autoFilterInfo = 0x9D;
constexpr int multipleRk = 0xBD;
constexpr int macros = 0xD3;
constexpr int richText = 0xD6;
constexpr int cellStyle = 0xE0;
constexpr int mergedCells = 0xE5;
constexpr int sharedTexts = 0xFC;
constexpr int sharedText = 0xFD;
constexpr int conditionalFormats = 0x1B0;
constexpr int validations = 0x1B2;
constexpr int link = 0x1B8;
constexpr int number = 0x203;
constexpr int label = 0x204;
constexpr int booleanOrError = 0x205;
constexpr int formulaText = 0x207;
constexpr int row = 0x208;
constexpr int rk = 0x27E;
constexpr int format = 0x41E;
constexpr int bof = 0x809;
} // namespace record

/// One record, with the pieces that CONTINUE records add to it.
struct XlsRecord
{
    int type = 0;
    std::string_view bytes;
    std::vector<std::string_view> pieces; // of texts that can be continued; the first is `bytes`

    runtime::ByteCursor read() const { return runtime::ByteCursor(bytes); }
};

/// Walks over the records of a stream.
class XlsStream
{
public:
    /// `bytes` must stay as long as this object does.
    XlsStream(const QByteArray& bytes, Budget& budget) : m_cursor(bytes), m_budget(budget) {}

    /// False at the end of the stream. A record that is cut off throws runtime::BytesCutOff.
    bool next(XlsRecord& into);
    void seek(qint64 place) { m_cursor.seek(place); }

private:
    int peekType() const;
    std::string_view takeRecord();

    runtime::ByteCursor m_cursor;
    Budget& m_budget;
};

} // namespace excel
