#include "platform/runtime/Text.h"

#include "platform/runtime/Trap.h"

namespace runtime {

using namespace Qt::StringLiterals;

QString Trim(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

QString DelLast(const QString& text, int count)
{
    const Trap trap{" - Function DelLast/MdlSYS"};
    if (count > text.size()) {
        trap.fail(u"要去掉的字符比文本还长。"_s);
        return {};
    }
    return text.left(text.size() - count);
}

QStringList splitList(const QString& text, const QString& separator)
{
    return text.isEmpty() ? QStringList() : text.split(separator);
}

QString Right(const QString& text, int count)
{
    return text.right(count);
}

QString forTerminal(QString text)
{
    constexpr char16_t firstPicture = 0x2400;
    constexpr char16_t pictureOfDelete = 0x2421;
    for (QChar& c : text) {
        const char16_t code = c.unicode();
        const bool turns = (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069)
                           || code == 0x200e || code == 0x200f || code == 0x061c;
        if (code < u' ' && code != u'\n' && code != u'\t')
            c = QChar(char16_t(firstPicture + code));
        else if (code == 0x7f)
            c = QChar(pictureOfDelete);
        else if (turns || (code >= 0x80 && code < 0xa0))
            c = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace runtime
