#pragma once

#include <string_view>

#include <QString>

namespace runtime {

/// Turns bytes in a code page into text. Unknown pages read as GB18030.
class CodePage
{
public:
    /// The number that Chinese office programs give to their texts; read as GB18030, which holds
    /// it.
    static constexpr int chinese = 936;

    explicit CodePage(int number) : m_number(number) {}
    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    /// Bytes that are no text become U+FFFD.
    QString decode(std::string_view bytes) const;

private:
    void* converter() const;

    int m_number;
    mutable void* m_converter = nullptr; // opened at the first use, which is costly
};

/// Bytes of a text file as text: UTF-8 (with or without mark), or GB18030 if they are not valid
/// UTF-8, which is how files of other school software come.
QString decodeText(const QByteArray& bytes);

} // namespace runtime
