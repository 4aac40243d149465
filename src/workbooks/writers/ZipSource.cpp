#include "workbooks/writers/ZipSource.h"

#include <exception>

namespace excel {

zip_source_t* ZipSource::make(zip_t* archive, std::unique_ptr<ZipSource> content)
{
    zip_source_t* source = zip_source_function(archive, &ZipSource::answer, content.get());
    if (source != nullptr)
        static_cast<void>(content.release()); // the source frees it
    return source;
}

zip_int64_t ZipSource::answer(void* source, void* data, zip_uint64_t length,
                              zip_source_cmd_t command)
{
    return static_cast<ZipSource*>(source)->answer(data, length, command);
}

zip_int64_t ZipSource::answer(void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                              ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                              -1);
    case ZIP_SOURCE_OPEN:
        return begin();
    case ZIP_SOURCE_READ:
        return next(static_cast<char*>(data), length);
    case ZIP_SOURCE_CLOSE:
        close();
        return 0;
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

zip_int64_t ZipSource::begin()
{
    m_place = 0;
    if (open())
        return 0;
    zip_error_set(&m_error, ZIP_ER_OPEN, 0);
    return -1;
}

/// The zip library asks again until nothing follows.
zip_int64_t ZipSource::next(char* data, size_t length)
{
    const size_t size = read(data, length);
    m_place += size;
    if (size > 0 || m_place == this->size())
        return zip_int64_t(size);
    zip_error_set(&m_error, ZIP_ER_READ, 0);
    return -1;
}

zip_int64_t ZipSource::tell(zip_stat_t* stat)
{
    zip_stat_init(stat);
    stat->size = size();
    stat->valid = ZIP_STAT_SIZE;
    return sizeof *stat;
}

bool PageSource::open()
{
    m_place = 0;
    return m_rows.rewind();
}

size_t PageSource::read(char* data, size_t length)
{
    size_t size = 0;
    if (m_place < m_head.size())
        size = m_head.copy(data, length, m_place);
    else if (m_place < m_head.size() + m_rows.size())
        size = m_rows.read(data, length);
    else
        size = m_tail.copy(data, length, m_place - m_head.size() - m_rows.size());
    m_place += size;
    return size;
}

size_t TextSource::size()
{
    // No exception may pass through the zip library; a part without a text makes it fail.
    try {
        if (m_text.empty())
            m_text = m_make();
    } catch (const std::exception&) {
        m_text.clear();
    }
    return m_text.size();
}

bool TextSource::open()
{
    m_place = 0;
    return size() > 0;
}

size_t TextSource::read(char* data, size_t length)
{
    const size_t size = m_text.copy(data, length, m_place);
    m_place += size;
    return size;
}

} // namespace excel
