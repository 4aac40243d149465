#include "workbooks/writers/XlsxPackage.h"

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "workbooks/writers/ZipSource.h"

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
std::unique_ptr<ZipSource> filled(const std::string& page, SheetContent& content)
{
    const std::string first = "<sheetData";
    const std::string last = "</sheetData>";
    const std::string none = first + "/>";
    const size_t begin = page.find(first);
    const size_t root = page.rfind("</worksheet>");
    if (begin == std::string::npos || root == std::string::npos)
        return nullptr;
    const bool isEmpty = page.compare(begin, none.size(), none) == 0;
    const size_t rowsEnd = isEmpty ? begin : page.find(last, begin);
    if (rowsEnd == std::string::npos)
        return nullptr;
    const size_t end = rowsEnd + (isEmpty ? none : last).size();
    const std::string head = withColumns(page.substr(0, begin), content.columns);
    return std::make_unique<PageSource>(head + first + '>', content.rows,
                                        last + page.substr(end, root - end) + content.drawing
                                            + page.substr(root));
}

/// Adds a part; its place in the archive must be free.
bool addPart(zip_t* archive, const std::string& name, std::unique_ptr<ZipSource> content)
{
    zip_source_t* source = ZipSource::make(archive, std::move(content));
    if (source == nullptr)
        return false;
    const zip_int64_t added = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (added < 0) {
        zip_source_free(source);
        return false;
    }
    return zip_set_file_compression(archive, zip_uint64_t(added), ZIP_CM_DEFLATE, compression) == 0
           && zip_file_set_dostime(archive, zip_uint64_t(added), 0, firstDosDate, 0) == 0;
}

bool putContent(zip_t* archive, size_t sheet, SheetContent& content)
{
    const std::string name = "xl/worksheets/sheet" + std::to_string(sheet) + ".xml";
    const zip_int64_t found = zip_name_locate(archive, name.c_str(), 0);
    if (found < 0)
        return false;
    const auto index = zip_uint64_t(found);
    std::unique_ptr<ZipSource> page = filled(partOf(archive, index), content);
    if (page == nullptr)
        return false;
    // A new part, since one that is replaced keeps the strength of compression that it had.
    zip_delete(archive, index);
    return addPart(archive, name, std::move(page));
}

/// What the list of types has to say of these parts: of a picture by its ending, of others by name.
std::string typesOf(const std::vector<NewPart>& parts)
{
    std::set<std::string> endings;
    std::string types;
    for (const NewPart& part : parts) {
        const std::string type = "ContentType=\"" + part.type + "\"/>";
        const std::string ending = part.name.substr(part.name.rfind('.') + 1);
        if (part.type.empty())
            continue;
        if (ending == "xml")
            types.append("<Override PartName=\"/").append(part.name).append("\" ").append(type);
        else if (endings.insert(ending).second)
            types.append("<Default Extension=\"").append(ending).append("\" ").append(type);
    }
    return types;
}

/// The list of types stays the first part, by which some programs know such a file.
bool addTypes(zip_t* archive, const std::vector<NewPart>& parts)
{
    const zip_int64_t found = zip_name_locate(archive, "[Content_Types].xml", 0);
    if (found < 0)
        return false;
    std::string list = partOf(archive, zip_uint64_t(found));
    const size_t end = list.rfind("</Types>");
    if (end == std::string::npos)
        return false;
    list.insert(end, typesOf(parts));
    zip_source_t* source =
        ZipSource::make(archive, std::make_unique<TextSource>([list] { return list; }));
    if (source == nullptr)
        return false;
    if (zip_file_replace(archive, zip_uint64_t(found), source, 0) == 0)
        return true;
    zip_source_free(source);
    return false;
}

bool addParts(zip_t* archive, std::vector<NewPart> parts)
{
    if (parts.empty())
        return true;
    if (!addTypes(archive, parts))
        return false;
    for (NewPart& part : parts) {
        if (!addPart(archive, part.name, std::make_unique<TextSource>(std::move(part.text))))
            return false;
    }
    return true;
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

QByteArray withContents(QByteArray package, std::deque<SheetContent>& contents,
                        std::vector<NewPart> parts)
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
        const bool isEmpty = contents[i].columns.empty() && contents[i].rows.size() == 0
                             && contents[i].drawing.empty();
        if (!isEmpty && !putContent(archive.get(), i + 1, contents[i]))
            return {};
    }
    if (!addParts(archive.get(), std::move(parts)) || zip_close(archive.get()) != 0)
        return {};
    static_cast<void>(archive.release()); // closed
    return contentOf(bytes.get());
}

} // namespace excel
