#pragma once

#include <vector>

#include <QHash>

#include "import/preview/Preview.h"
#include "platform/database/Connection.h"
#include "workbooks/model/Worksheet.h"

namespace importing {

/// The streams that a student list brings, beside those of the library, which has room for two.
class ListStreams
{
public:
    static constexpr size_t Most = 2;

    /// Whether a row of the list is added, or only if all of them are.
    enum class RowIs { Added, Asked };

    /// Reads those of the library. Throws Error.
    explicit ListStreams(database::Connection& connection);

    /// Takes the stream that a row would have; `cell` is what stands on the sheet.
    void add(int row, RowIs rowIs, const QString& cell, const QString& stream);

    /// Warns if there are or would be more than two, and tells of each row with one too many;
    /// otherwise notes those that are neither the library's nor 文 nor 理.
    void tell(const excel::Worksheet& sheet, Preview& preview) const;

private:
    struct Stream
    {
        QString name;
        bool isInLibrary = false;
        int added = 0;
        int asked = 0;
    };

    struct Row
    {
        int row = 0;
        QString cell;
        size_t stream = 0;
    };

    size_t placeOf(const QString& name);
    std::vector<Stream> ofLibrary() const;
    std::vector<Stream> certain() const;
    static QString namesOf(const std::vector<Stream>& streams);
    QString warningOfLibrary(const std::vector<Stream>& streams) const;
    QString warningOfList() const;
    std::vector<bool> areKept() const;
    void tellSurplus(const excel::Worksheet& sheet, Preview& preview) const;
    void noteNew(Preview& preview) const;

    std::vector<Stream> m_streams;
    /// Where they stand, by their names in small letters.
    QHash<QString, size_t> m_places;
    std::vector<Row> m_rows;
};

} // namespace importing
