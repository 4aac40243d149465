#include "platform/runtime/OneLine.h"

#include <algorithm>

#include "platform/runtime/Text.h"

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestShown = 200;

/// Letters of Latin and Chinese texts, which every cell shows as they are.
bool isPlain(QChar letter)
{
    const char16_t code = letter.unicode();
    return (code >= u' ' && code < 0x7f) || (code >= 0x3000 && code < 0xd800);
}

} // namespace

QString shortened(const QString& text)
{
    if (text.size() <= longestShown)
        return text;
    const bool splitsPair = text[longestShown - 1].isHighSurrogate();
    return text.left(longestShown - (splitsPair ? 1 : 0)) + u'…';
}

QString onOneLine(QString text)
{
    if (std::all_of(text.begin(), text.end(), isPlain))
        return text;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    return forTerminal(text.replace(u'\n', u'⏎').replace(u'\t', u'⇥'));
}

QString headOnOneLine(const QString& text)
{
    return onOneLine(shortened(text));
}

} // namespace runtime
