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

} // namespace runtime
