#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "oldlibraries/OldTable.h"
#include "platform/runtime/Value.h"
#include "support/OldFilePages.h"
#include "support/OldRowBytes.h"

namespace support {

/// A column of a table that OldFileWriter makes.
struct OldColumnPlan
{
    enum class Place {
        Usual,   ///< texts and bytes where the row says, the rest at fixed places
        Fixed,   ///< a text is filled up with blanks
        Variable ///< also a number
    };

    QString name;
    oldlibraries::OldType type = oldlibraries::OldType::Text;
    /// Characters of a Text, bytes of a Binary.
    int length = 50;
    /// Decimals of a Decimal.
    int scale = 0;
    /// Of a Long that numbers by itself; the values are given all the same.
    bool isAutoNumber = false;
    Place place = Place::Usual;
};

/// Writes a file of the old engine, table by table and row by row; no more than some pages of it
/// are held in memory.
///
///     OldFileWriter file(path);
///     file.addTable(u"颜色表"_s, {{u"ID"_s, OldType::Long}, {u"颜色"_s, OldType::Double}});
///     file.addRow({1, 255.0});
///     file.save();
///
/// All calls throw runtime::Error for what cannot be written.
class OldFileWriter
{
public:
    struct Header
    {
        /// At most 20 characters.
        QString password = {};
        /// Encrypts the pages; 0 for none.
        quint32 pageKey = 0;
        /// The version of the format.
        int version = 1;
    };

    /// Where memos and long binaries go.
    enum class LongForm {
        Usual,    ///< by their size
        InRow,    ///< up to about 3,000 bytes
        OnePiece, ///< on a page with others, up to 4,080 bytes
        Chain     ///< over pages of their own
    };

    enum class TableKind { User, System };

    /// What becomes of a row.
    enum class RowKind {
        Stored,
        Deleted,
        Moved ///< to another page, because it grew; a pointer stands in its place
    };

    explicit OldFileWriter(const QString& path);
    OldFileWriter(const QString& path, Header header);
    ~OldFileWriter();

    /// The forms of what is added from now on; a table's map is that of its end.
    void setTextForm(OldTextForm form) { m_textForm = form; }
    void setLongForm(LongForm form) { m_longForm = form; }
    void setMapForm(OldMapForm form) { m_mapForm = form; }

    /// Rows and columns that follow belong to this table; the one before is finished.
    void addTable(const QString& name, const std::vector<OldColumnPlan>& columns,
                  TableKind kind = TableKind::User);
    /// Rows that were added are stored without it.
    void addColumn(const OldColumnPlan& column);
    /// Its bytes stay in the rows.
    void dropColumn(const QString& name);
    /// The values of the columns in their order.
    void addRow(const std::vector<runtime::Value>& values, RowKind kind = RowKind::Stored);
    /// Something that is no table, such as a query: type 5.
    void addObject(const QString& name, int type);

    void save();

private:
    struct Table;

    void addObject(qint32 id, const QString& name, int type, quint32 flags);
    std::unique_ptr<Table> makeTable(const QString& name, quint32 definitionPage,
                                     const std::vector<OldColumnPlan>& columns, TableKind kind);
    void finish(Table& table);
    void writeDefinition(const Table& table);
    void storeRow(Table& table, const std::vector<runtime::Value>& values, RowKind kind);
    quint32 place(std::vector<quint32>& pages, std::optional<OldRowsPage>& open, quint32 owner,
                  const QByteArray& row, OldRowsPage::Flag flag);
    OldPart part(const oldlibraries::OldColumn& column, const runtime::Value& value);
    QByteArray longValue(const QByteArray& bytes);
    quint32 placeChain(const QByteArray& bytes);
    void writeHeader();
    void writeObjects();

    Header m_header;
    OldPageSink m_sink;
    OldTextForm m_textForm = OldTextForm::Plain;
    LongForm m_longForm = LongForm::Usual;
    OldMapForm m_mapForm = OldMapForm::Usual;
    std::unique_ptr<Table> m_table;
    std::optional<OldRowsPage> m_longValues;
    std::vector<std::vector<runtime::Value>> m_objects;
};

} // namespace support
