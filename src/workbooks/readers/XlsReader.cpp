#include "workbooks/readers/XlsReader.h"

#include <QFileInfo>

#include "workbooks/readers/XlsGlobals.h"
#include "workbooks/readers/XlsSheet.h"

namespace excel {

using runtime::ByteCursor;

namespace {

constexpr int globalsStream = 0x05;
constexpr int worksheetStream = 0x10;

int typeOf(const XlsRecord& bof)
{
    ByteCursor bytes = bof.read();
    bytes.skip(2);
    return bytes.u16();
}

/// A stream that is one sheet without a list of sheets, as web programs like to write it.
void readLoneSheet(Workbook& book, XlsGlobals& globals, XlsStream& stream, Budget& budget)
{
    Worksheet& sheet = book.addSheet(QFileInfo(book.path()).completeBaseName());
    XlsSheetReader reader(sheet, globals, budget);
    reader.read(stream, std::nullopt);
    book.addLosses(reader.losses);
}

void readSheets(Workbook& book, XlsGlobals& globals, XlsStream& stream, Budget& budget)
{
    globals.read(stream);
    book.addLosses(globals.losses);
    int index = 0;
    for (const XlsGlobals::Sheet& entry : globals.sheets) {
        Worksheet& sheet = book.addSheet(entry.name);
        sheet.setVisibility(entry.visibility);
        stream.seek(entry.place);
        XlsRecord bof;
        if (!stream.next(bof) || bof.type != record::bof)
            throw ReadFailure{Fault::CutOffXls};
        XlsSheetReader reader(sheet, globals, budget);
        reader.read(stream, globals.filterRange(index));
        book.addLosses(reader.losses);
        if (globals.isActive(index++))
            sheet.Activate();
    }
}

} // namespace

std::unique_ptr<Workbook> readXls(const QString& path, const QByteArray& bytes, Budget& budget)
{
    std::unique_ptr<Workbook> book = std::make_unique<Workbook>(path);
    XlsStream stream(bytes, budget);
    XlsRecord bof;
    if (!stream.next(bof) || (bof.type & 0xFF) != (record::bof & 0xFF))
        throw ReadFailure{Fault::CutOffXls};
    if (bof.type != record::bof)
        throw ReadFailure{Fault::OldBook};
    XlsGlobals globals(budget);
    globals.readVersion(bof);
    const int type = typeOf(bof);
    if (type == globalsStream)
        readSheets(*book, globals, stream, budget);
    else if (type == worksheetStream)
        readLoneSheet(*book, globals, stream, budget);
    if (book->Worksheets().Count() == 0)
        throw ReadFailure{Fault::NoWorkbook};
    return book;
}

} // namespace excel
