#include "workbooks/writers/WrittenFile.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <zip.h>

namespace excel {

namespace {

constexpr size_t tailSize = 64;

struct DiscardZip
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

struct CloseFile
{
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

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
    return !root.empty() && (tail.ends_with("</" + root + ">") || tail.ends_with("/>"));
}

bool isXml(std::string_view name)
{
    return name.ends_with(".xml") || name.ends_with(".rels");
}

bool isWholePart(zip_t* archive, zip_uint64_t index)
{
    const std::unique_ptr<zip_file_t, CloseFile> part(zip_fopen_index(archive, index, 0));
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

} // namespace

bool isWhole(const QByteArray& fileName)
{
    const std::unique_ptr<zip_t, DiscardZip> archive(
        zip_open(fileName.constData(), ZIP_RDONLY, nullptr));
    if (archive == nullptr)
        return false;
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t index = 0; index < count; ++index) {
        if (!isWholePart(archive.get(), zip_uint64_t(index)))
            return false;
    }
    return count > 0;
}

} // namespace excel
