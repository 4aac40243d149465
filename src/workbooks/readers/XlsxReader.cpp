#include "workbooks/readers/XlsxReader.h"

#include "workbooks/readers/XlsxParts.h"
#include "workbooks/readers/XlsxSheet.h"
#include "workbooks/readers/ZipArchive.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 largestListPart = 16'000'000;  // relationships, workbook, styles
constexpr qint64 largestDataPart = 130'000'000; // sheets, shared texts

/// Reads the parts of one archive, each through its handler.
class XlsxReader
{
public:
    XlsxReader(const QString& path, Budget& budget) : m_archive(path, budget), m_budget(budget) {}

    void readInto(Workbook& book);

private:
    void scan(const QByteArray& part, qint64 limit, XmlHandler& handler);
    RelationsHandler relationsOf(const QByteArray& part);
    QByteArray bookPart();
    void refuseOtherFormats(const QByteArray& bookPart) const;
    void readShared(const RelationsHandler& relations);
    void readSheet(Workbook& book, const BookHandler::Sheet& entry, const QByteArray& part);

    ZipArchive m_archive;
    Budget& m_budget;
    XlsxContext m_context;
    Losses m_losses; // of what the sheets share
};

void XlsxReader::scan(const QByteArray& part, qint64 limit, XmlHandler& handler)
{
    XmlScanner scanner(handler, m_budget);
    m_archive.read(part, limit, [&](std::string_view piece) { scanner.feed(piece); });
}

RelationsHandler XlsxReader::relationsOf(const QByteArray& part)
{
    const qsizetype slash = part.lastIndexOf('/') + 1;
    const QByteArray folder = part.left(slash);
    RelationsHandler handler(folder);
    const QByteArray list = folder + "_rels/" + part.mid(slash) + ".rels";
    if (m_archive.contains(list))
        scan(list, largestListPart, handler);
    return handler;
}

QByteArray XlsxReader::bookPart()
{
    const QByteArray named = relationsOf({}).ofKind(u"officeDocument"_s).part;
    return named.isEmpty() ? QByteArray("xl/workbook.xml") : named;
}

void XlsxReader::refuseOtherFormats(const QByteArray& bookPart) const
{
    if (bookPart.endsWith(".bin"))
        throw ReadFailure{Fault::BinaryBook};
    if (m_archive.contains(bookPart))
        return;
    const bool openDocument = m_archive.contains("content.xml") && m_archive.contains("mimetype");
    throw ReadFailure{openDocument ? Fault::OpenDocument : Fault::NoWorkbook};
}

void XlsxReader::readShared(const RelationsHandler& relations)
{
    const QByteArray styles = relations.ofKind(u"styles"_s).part;
    if (m_archive.contains(styles)) {
        StylesHandler handler;
        scan(styles, largestListPart, handler);
        m_context.formats = std::move(handler.formats);
        if (handler.hasLooks)
            m_losses.insert(Loss::Looks);
    }
    const QByteArray texts = relations.ofKind(u"sharedStrings"_s).part;
    if (m_archive.contains(texts)) {
        SharedTextsHandler handler(m_budget);
        scan(texts, largestDataPart, handler);
        m_context.texts = std::make_shared<const std::vector<QString>>(std::move(handler.texts));
    }
}

void XlsxReader::readSheet(Workbook& book, const BookHandler::Sheet& entry, const QByteArray& part)
{
    Worksheet& sheet = book.addSheet(entry.name);
    sheet.setVisibility(entry.visibility);
    XlsxSheetHandler handler(sheet, m_context, m_budget);
    scan(part, largestDataPart, handler);
    if (handler.hasLegacyDrawing && !relationsOf(part).ofKind(u"comments"_s).part.isEmpty())
        handler.losses.insert(Loss::Comments);
    book.addLosses(handler.losses);
}

void XlsxReader::readInto(Workbook& book)
{
    const QByteArray part = bookPart();
    refuseOtherFormats(part);
    BookHandler list(m_budget);
    scan(part, largestListPart, list);
    if (!list.isWorkbook)
        throw ReadFailure{Fault::NoWorkbook};
    m_context.dates = list.dates;
    const RelationsHandler relations = relationsOf(part);
    readShared(relations);
    book.addLosses(m_losses);
    if (!relations.ofKind(u"vbaProject"_s).part.isEmpty())
        book.addLosses({Loss::Macros});
    int tab = 0;
    for (const BookHandler::Sheet& entry : list.sheets) {
        const Relation relation = relations.relations.value(entry.relation);
        if (relation.part.isEmpty())
            throw ReadFailure{Fault::BadXml};
        // Chart and macro sheets are no worksheets.
        if (relation.kind == u"worksheet") {
            readSheet(book, entry, relation.part);
            if (tab == list.activeTab)
                book.Worksheets().Item(book.Worksheets().Count()).Activate();
        } else {
            book.addLosses({Loss::OtherSheets});
        }
        ++tab;
    }
    if (book.Worksheets().Count() == 0)
        throw ReadFailure{Fault::NoWorkbook};
}

} // namespace

std::unique_ptr<Workbook> readXlsx(const QString& path, Budget& budget)
{
    std::unique_ptr<Workbook> book = std::make_unique<Workbook>(path);
    XlsxReader(path, budget).readInto(*book);
    return book;
}

} // namespace excel
