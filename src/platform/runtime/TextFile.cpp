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

void readLines(const QString& file, QStringList& list)
{
    if (!QFileInfo(file).isFile())
        return;
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        throw Error(u"无法读取文件 %1（%2）"_s.arg(file, fileErrorText(in.error())));
    list.clear();
    const QString text = decodeText(in.readAll());
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (!line.isEmpty())
            list.append(line.toString());
    }
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
