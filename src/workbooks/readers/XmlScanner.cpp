#include "workbooks/readers/XmlScanner.h"

#include <charconv>
#include <cstdlib>
#include <cstring>

#include <expat.h>

#include "workbooks/readers/ReadError.h"

namespace excel {

using namespace Qt::StringLiterals;

namespace {

constexpr int deepestNesting = 100;
constexpr int mostAttributes = 256;      // of one element
constexpr size_t longestRun = 1'000'000; // bytes; a cell holds 32,767 characters at most
constexpr size_t mostParserMemory = 24'000'000;

/// Memory of the parser that runs, counted so that unique names or one endless tag cannot eat the
/// machine. Each block keeps its size in front.
thread_local size_t memoryTaken = 0;
constexpr size_t blockHead = alignof(std::max_align_t);

void* takeBlock(void* old, size_t size)
{
    const size_t oldSize = old == nullptr ? 0 : *static_cast<size_t*>(old);
    if (size > mostParserMemory || memoryTaken - oldSize + size > mostParserMemory)
        return nullptr;
    // The parser asks for a C allocator.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void* block = std::realloc(old, size + blockHead);
    if (block == nullptr)
        return nullptr;
    memoryTaken += size - oldSize;
    *static_cast<size_t*>(block) = size;
    return static_cast<char*>(block) + blockHead;
}

void* headOf(void* memory)
{
    return memory == nullptr ? nullptr : static_cast<char*>(memory) - blockHead;
}

void* allocate(size_t size)
{
    return takeBlock(nullptr, size);
}

void* reallocate(void* memory, size_t size)
{
    return takeBlock(headOf(memory), size);
}

void release(void* memory)
{
    if (memory == nullptr)
        return;
    memoryTaken -= *static_cast<size_t*>(headOf(memory));
    std::free(headOf(memory)); // NOLINT(cppcoreguidelines-no-malloc)
}

/// Names are short, so one walk beats searching for the colon and the end.
std::string_view localName(const char* name)
{
    const char* start = name;
    const char* at = name;
    for (; *at != '\0'; ++at) {
        if (*at == ':')
            start = at + 1;
    }
    return {start, size_t(at - start)};
}

/// The value of an escape that begins at `at`, or -1 if none does.
int escapeAt(const QString& text, qsizetype at)
{
    if (at + 7 > text.size() || text[at + 1] != u'x' || text[at + 6] != u'_')
        return -1;
    bool isHex = false;
    const int value = QStringView(text).mid(at + 2, 4).toInt(&isHex, 16);
    const QChar first = text[at + 2];
    return isHex && first != u'+' && first != u'-' && !first.isSpace() ? value : -1;
}

} // namespace

bool XmlAttributes::next(std::string_view& name, const char*& value)
{
    if (*m_list == nullptr)
        return false;
    name = localName(m_list[0]);
    value = m_list[1];
    m_list += 2;
    return true;
}

const char* XmlAttributes::find(std::string_view wanted) const
{
    XmlAttributes rest = *this;
    std::string_view name;
    const char* value = nullptr;
    while (rest.next(name, value)) {
        if (name == wanted)
            return value;
    }
    return nullptr;
}

QString XmlAttributes::text(std::string_view name) const
{
    return QString::fromUtf8(find(name));
}

int XmlAttributes::number(std::string_view name, int fallback) const
{
    const char* value = find(name);
    if (value == nullptr)
        return fallback;
    int number = fallback;
    std::from_chars(value, value + std::strlen(value), number);
    return number;
}

bool XmlAttributes::flag(std::string_view name) const
{
    const char* value = find(name);
    if (value == nullptr)
        return false;
    const std::string_view text(value);
    return text == "1" || text == "true" || text == "on";
}

/// What the parser calls. An exception must not pass through it, so it waits in the scanner.
struct XmlScanner::Callbacks
{
    static void XMLCALL start(void* scanner, const char* name, const char** attributes)
    {
        XmlScanner& self = *static_cast<XmlScanner*>(scanner);
        self.guarded([&] {
            if (++self.m_depth > deepestNesting)
                throw ReadFailure{Fault::TooLarge};
            const int attributeCount = XML_GetSpecifiedAttributeCount(self.m_parser.get()) / 2;
            if (attributeCount > mostAttributes)
                throw ReadFailure{Fault::TooLarge};
            self.m_budget.takeMarkup(1 + attributeCount);
            self.m_handler.startElement(localName(name), XmlAttributes(attributes));
        });
    }

    static void XMLCALL end(void* scanner, const char* name)
    {
        XmlScanner& self = *static_cast<XmlScanner*>(scanner);
        self.guarded([&] {
            --self.m_depth;
            self.m_handler.endElement(localName(name));
        });
    }

    static void XMLCALL characters(void* scanner, const char* text, int length)
    {
        XmlScanner& self = *static_cast<XmlScanner*>(scanner);
        self.guarded([&] {
            if (self.m_handler.characters.size() + size_t(length) > longestRun)
                throw ReadFailure{Fault::TooLarge};
            self.m_handler.characters.append(text, size_t(length));
        });
    }

    static void XMLCALL documentType(void* scanner, const char*, const char*, const char*, int)
    {
        static_cast<XmlScanner*>(scanner)->guarded([] { throw ReadFailure{Fault::UnsafeXml}; });
    }
};

void XmlScanner::Free::operator()(XML_ParserStruct* parser) const
{
    XML_ParserFree(parser);
}

XmlScanner::XmlScanner(XmlHandler& handler, Budget& budget) : m_handler(handler), m_budget(budget)
{
    const XML_Memory_Handling_Suite memory{allocate, reallocate, release};
    m_parser.reset(XML_ParserCreate_MM(nullptr, &memory, nullptr));
    if (m_parser == nullptr)
        throw ReadFailure{Fault::TooLarge};
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), Callbacks::start, Callbacks::end);
    XML_SetStartDoctypeDeclHandler(m_parser.get(), Callbacks::documentType);
}

template <typename Call> void XmlScanner::guarded(Call call)
{
    if (m_failure != nullptr)
        return;
    try {
        call();
        watchCharacters();
    } catch (...) {
        m_failure = std::current_exception();
        XML_StopParser(m_parser.get(), XML_FALSE);
    }
}

/// Character data that nobody wants is not even reported.
void XmlScanner::watchCharacters()
{
    if (m_watching == m_handler.collecting)
        return;
    m_watching = m_handler.collecting;
    XML_SetCharacterDataHandler(m_parser.get(), m_watching ? Callbacks::characters : nullptr);
}

void XmlScanner::feed(std::string_view piece)
{
    const XML_Status status =
        XML_Parse(m_parser.get(), piece.data(), int(piece.size()), piece.empty());
    if (m_failure != nullptr)
        std::rethrow_exception(m_failure);
    if (status != XML_STATUS_OK) {
        const bool starved = XML_GetErrorCode(m_parser.get()) == XML_ERROR_NO_MEMORY;
        throw ReadFailure{starved ? Fault::TooLarge : Fault::BadXml};
    }
}

QString decodeEscapes(QString text)
{
    qsizetype at = text.indexOf(u"_x"_s);
    if (at < 0)
        return text;
    QString decoded;
    qsizetype done = 0;
    for (; at >= 0; at = text.indexOf(u"_x"_s, at)) {
        const int value = escapeAt(text, at);
        if (value < 0) {
            ++at;
            continue;
        }
        decoded += QStringView(text).mid(done, at - done);
        decoded += QChar(char16_t(value));
        at = done = at + 7;
    }
    return decoded += QStringView(text).mid(done);
}

} // namespace excel
