#include "platform/runtime/TextFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"
#include "platform/runtime/Trap.h"

namespace runtime {

using namespace Qt::StringLiterals;

QStringList readAllLines(const QString& file)
{
    if (!QFileInfo(file).isFile())
        return {};
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        throw Error(u"无法读取文件 %1（%2）"_s.arg(file, fileErrorText(in.error())));
    QStringList lines = decodeText(in.readAll()).split(u'\n');
    for (QString& line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    // What the last line end is followed by is no line.
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

void readLines(const QString& file, QStringList& list)
{
    if (!QFileInfo(file).isFile())
        return;
    list = readAllLines(file);
    list.removeAll(QString());
}

void ReadTxtSet(const QString& file, QStringList& list)
{
    const Trap trap{" - Sub ReadTxtSet/MdlSYS"};
    trap([&] { readLines(file, list); });
}

void writeTextFile(const QString& file, const QString& text)
{
    QSaveFile out(file);
    const QByteArray bytes = text.toUtf8();
    // A disk that is nearly full takes a part and calls that a success.
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
        throw Error(u"无法写入文件 %1（%2）"_s.arg(file, fileErrorText(out.error())));
}

} // namespace runtime
