#include "workbooks/writers/ScratchText.h"

#include <algorithm>

namespace excel {

namespace {

constexpr size_t mostInMemory = 256UL * 1024;

} // namespace

void ScratchText::append(std::string_view text)
{
    m_end += text;
    m_size += text.size();
    if (m_end.size() > mostInMemory)
        spill();
}

void ScratchText::spill()
{
    if (m_file == nullptr) {
        m_file = std::make_unique<QTemporaryFile>();
        m_isLost = !m_file->open();
    }
    const auto size = qint64(m_end.size());
    if (m_isLost || m_file->write(m_end.data(), size) != size)
        m_isLost = true;
    m_end.clear();
}

bool ScratchText::rewind()
{
    m_place = 0;
    if (m_file != nullptr && !(m_file->flush() && m_file->seek(0)))
        m_isLost = true;
    return !m_isLost;
}

size_t ScratchText::read(char* data, size_t length)
{
    if (m_file != nullptr && !m_file->atEnd())
        return size_t(std::max<qint64>(0, m_file->read(data, qint64(length))));
    const size_t size = m_end.copy(data, length, m_place);
    m_place += size;
    return size;
}

} // namespace excel
