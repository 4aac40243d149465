#pragma once

#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include <QByteArray>
#include <QString>

#include "workbooks/readers/Budget.h"

struct XML_ParserStruct;

namespace excel {

/// The attributes of an element, found by local name, whatever prefix they have.
class XmlAttributes
{
public:
    explicit XmlAttributes(const char* const* list) : m_list(list) {}

    /// Steps to the next attribute; false behind the last.
    bool next(std::string_view& name, const char*& value);

    /// The value, or null if there is no such attribute.
    const char* find(std::string_view wanted) const;
    QString text(std::string_view name) const;
    /// The whole number in the attribute, or `fallback` if there is none.
    int number(std::string_view name, int fallback) const;
    /// True for "1", "true" and "on".
    bool flag(std::string_view name) const;

private:
    const char* const* m_list;
};

/// Gets the elements of a part, with their local names.
class XmlHandler
{
public:
    virtual ~XmlHandler() = default;
    virtual void startElement(std::string_view name, const XmlAttributes& attributes) = 0;
    virtual void endElement(std::string_view name) { Q_UNUSED(name) }

    /// Character data is added to `characters` while `collecting` is set.
    std::string characters;
    bool collecting = false;
};

/// Feeds XML to a handler. Refuses document types and entity declarations, deep nesting and pieces
/// that need too much memory. Throws ReadFailure, and whatever the handler throws.
class XmlScanner
{
public:
    XmlScanner(XmlHandler& handler, Budget& budget);

    /// The next piece of the text; an empty piece marks the end.
    void feed(std::string_view piece);

private:
    struct Free
    {
        void operator()(XML_ParserStruct* parser) const;
    };
    struct Callbacks;

    template <typename Call> void guarded(Call call);
    void watchCharacters();

    XmlHandler& m_handler;
    Budget& m_budget;
    std::unique_ptr<XML_ParserStruct, Free> m_parser;
    std::exception_ptr m_failure;
    int m_depth = 0;
    bool m_watching = false;
};

/// Decodes the escapes _xHHHH_ that stand for characters XML cannot hold.
QString decodeEscapes(QString text);

} // namespace excel
