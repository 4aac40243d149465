#include "workbooks/writers/XlsxPackage.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <zip.h>

namespace excel {

namespace {

constexpr zip_uint32_t compression = 4;
// 1980-01-01, as the library dates its parts.
constexpr zip_uint16_t firstDosDate = 0x21;

constexpr size_t tailSize = 64;

struct DiscardZip
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

struct ClosePart
{
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

struct FreeSource
{
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};

using Archive = std::unique_ptr<zip_t, DiscardZip>;

/// Name of the root element, by the first bytes of a part.
std::string rootOf(std::string_view head)
{
    size_t begin = head.find('<');
    while (begin != std::string_view::npos && begin + 1 < head.size()
           && (head[begin + 1] == '?' || head[begin + 1] == '!'))
        begin = head.find('<', begin + 1);
    if (begin == std::string_view::npos)
        return {};
    const size_t end = head.find_first_of(" \t\r\n/>", begin);
    return std::string(head.substr(begin + 1, end - begin - 1));
}

bool endsAsXml(const std::string& root, std::string_view tail)
{
    while (!tail.empty() && tail.back() == '\n')
        tail.remove_suffix(1);
    const std::string last = "</" + root + '>';
    const size_t place = tail.rfind('<');
    const bool isClosed = place != std::string_view::npos && tail.substr(place) == last;
    return !root.empty() && (isClosed || tail.ends_with("/>"));
}

bool isXml(std::string_view name)
{
    return name.ends_with(".xml") || name.ends_with(".rels");
}

bool isWholePart(zip_t* archive, zip_uint64_t index)
{
    const std::unique_ptr<zip_file_t, ClosePart> part(zip_fopen_index(archive, index, 0));
    if (part == nullptr)
        return false;
    std::array<char, 65536> buffer{};
    std::string root;
    std::string tail;
    zip_int64_t size = 0;
    while ((size = zip_fread(part.get(), buffer.data(), buffer.size())) > 0) {
        const std::string_view piece(buffer.data(), size_t(size));
        if (tail.empty())
            root = rootOf(piece);
        tail += piece.substr(piece.size() - std::min(piece.size(), tailSize));
        tail.erase(0, tail.size() - std::min(tail.size(), tailSize));
    }
    return size == 0 && (!isXml(zip_get_name(archive, index, 0)) || endsAsXml(root, tail));
}

/// The content of a part, empty if it cannot be read.
std::string partOf(zip_t* archive, zip_uint64_t index)
{
    zip_stat_t stat;
    const std::unique_ptr<zip_file_t, ClosePart> part(zip_fopen_index(archive, index, 0));
    if (part == nullptr || zip_stat_index(archive, index, 0, &stat) != 0)
        return {};
    std::string content(stat.size, '\0');
    const zip_int64_t size = zip_fread(part.get(), content.data(), content.size());
    return size == zip_int64_t(content.size()) ? content : std::string();
}

/// A sheet's part as the zip library asks for it, so that its rows are not copied.
class SheetPart
{
public:
    /// The rows stand between the two halves of the page.
    SheetPart(std::string head, ScratchText& rows, std::string tail)
        : m_head(std::move(head)), m_rows(rows), m_tail(std::move(tail))
    {
    }

    static zip_int64_t answer(void* part, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        return static_cast<SheetPart*>(part)->answer(data, length, command);
    }

private:
    zip_int64_t answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    size_t size() const { return m_head.size() + m_rows.size() + m_tail.size(); }
    zip_int64_t open();
    zip_int64_t read(char* data, size_t length);
    zip_int64_t tell(zip_stat_t* stat) const;

    std::string m_head;
    ScratchText& m_rows;
    std::string m_tail;
    size_t m_place = 0; // in all of it
    zip_error_t m_error{};
};

zip_int64_t SheetPart::answer(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                              ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                              -1);
    case ZIP_SOURCE_OPEN:
        return open();
    case ZIP_SOURCE_READ:
        return read(static_cast<char*>(data), length);
    case ZIP_SOURCE_STAT:
        return tell(static_cast<zip_stat_t*>(data));
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, data, length);
    case ZIP_SOURCE_FREE:
        delete this;
        return 0;
    default:
        return 0;
    }
}

zip_int64_t SheetPart::open()
{
    m_place = 0;
    if (m_rows.rewind())
        return 0;
    zip_error_set(&m_error, ZIP_ER_OPEN, 0);
    return -1;
}

/// As much as follows in one piece; the zip library asks again until nothing does.
zip_int64_t SheetPart::read(char* data, size_t length)
{
    size_t size = 0;
    if (m_place < m_head.size())
        size = m_head.copy(data, length, m_place);
    else if (m_place < m_head.size() + m_rows.size())
        size = m_rows.read(data, length);
    else
        size = m_tail.copy(data, length, m_place - m_head.size() - m_rows.size());
    m_place += size;
    if (size > 0 || m_place == this->size())
        return zip_int64_t(size);
    zip_error_set(&m_error, ZIP_ER_READ, 0);
    return -1;
}

zip_int64_t SheetPart::tell(zip_stat_t* stat) const
{
    zip_stat_init(stat);
    stat->size = size();
    stat->valid = ZIP_STAT_SIZE;
    return sizeof *stat;
}

/// What stands before the rows, with these columns in place of its own.
std::string withColumns(std::string head, const std::string& columns)
{
    const std::string last = "</cols>";
    const size_t begin = head.find("<cols>");
    const size_t end = head.find(last);
    if (begin < end && end != std::string::npos)
        head.erase(begin, end + last.size() - begin);
    return head + columns;
}

/// The page with the content in place of its own; null if it is no page.
std::unique_ptr<SheetPart> filled(const std::string& page, SheetContent& content)
{
    const std::string first = "<sheetData";
    const std::string last = "</sheetData>";
    const std::string none = first + "/>";
    const size_t begin = page.find(first);
    if (begin == std::string::npos)
        return nullptr;
    const bool isEmpty = page.compare(begin, none.size(), none) == 0;
    const size_t end = isEmpty ? begin : page.find(last, begin);
    if (end == std::string::npos)
        return nullptr;
    const std::string head = withColumns(page.substr(0, begin), content.columns);
    return std::make_unique<SheetPart>(head + first + '>', content.rows,
                                       last + page.substr(end + (isEmpty ? none : last).size()));
}

bool putContent(zip_t* archive, size_t sheet, SheetContent& content)
{
    const std::string name = "xl/worksheets/sheet" + std::to_string(sheet) + ".xml";
    const zip_int64_t found = zip_name_locate(archive, name.c_str(), 0);
    if (found < 0)
        return false;
    const auto index = zip_uint64_t(found);
    std::unique_ptr<SheetPart> part = filled(partOf(archive, index), content);
    if (part == nullptr)
        return false;
    zip_source_t* source = zip_source_function(archive, &SheetPart::answer, part.get());
    if (source == nullptr)
        return false;
    static_cast<void>(part.release()); // the source frees it
    // A new part, since one that is replaced keeps the strength of compression that it had.
    zip_delete(archive, index);
    const zip_int64_t added = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (added < 0) {
        zip_source_free(source);
        return false;
    }
    return zip_set_file_compression(archive, zip_uint64_t(added), ZIP_CM_DEFLATE, compression) == 0
           && zip_file_set_dostime(archive, zip_uint64_t(added), 0, firstDosDate, 0) == 0;
}

QByteArray contentOf(zip_source_t* source)
{
    zip_stat_t stat;
    if (zip_source_stat(source, &stat) != 0 || zip_source_open(source) != 0)
        return {};
    QByteArray content(qsizetype(stat.size), Qt::Uninitialized);
    const zip_int64_t size = zip_source_read(source, content.data(), zip_uint64_t(content.size()));
    zip_source_close(source);
    return size == content.size() ? content : QByteArray();
}

} // namespace

bool isWhole(const QByteArray& fileName)
{
    const Archive archive(zip_open(fileName.constData(), ZIP_RDONLY, nullptr));
    if (archive == nullptr)
        return false;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        if (!isWholePart(archive.get(), zip_uint64_t(index)))
            return false;
    }
    return count > 0;
}

QByteArray withContents(QByteArray package, std::deque<SheetContent>& contents)
{
    const std::unique_ptr<zip_source_t, FreeSource> bytes(
        zip_source_buffer_create(package.data(), zip_uint64_t(package.size()), 0, nullptr));
    if (bytes == nullptr)
        return {};
    Archive archive(zip_open_from_source(bytes.get(), 0, nullptr));
    if (archive == nullptr)
        return {};
    zip_source_keep(bytes.get()); // the archive gives up its own hold
    for (size_t i = 0; i < contents.size(); ++i) {
        const bool isEmpty = contents[i].columns.empty() && contents[i].rows.size() == 0;
        if (!isEmpty && !putContent(archive.get(), i + 1, contents[i]))
            return {};
    }
    if (zip_close(archive.get()) != 0)
        return {};
    static_cast<void>(archive.release()); // closed
    return contentOf(bytes.get());
}

} // namespace excel
