#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <QTemporaryFile>

namespace excel {

/// A text that is first written and then read. A long one waits in a scratch file, so that it
/// takes no memory beside the workbook that it is made of.
class ScratchText
{
public:
    void append(std::string_view text);

    size_t size() const { return m_size; }
    /// From now on it is read from its begin on. False if it could not be kept.
    bool rewind();
    /// How much of it was read, 0 at its end.
    size_t read(char* data, size_t length);

private:
    void spill();

    std::unique_ptr<QTemporaryFile> m_file; // of all but the end
    std::string m_end;
    size_t m_size = 0;
    size_t m_place = 0; // in the end
    bool m_isLost = false;
};

} // namespace excel
