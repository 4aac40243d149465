#include "workbooks/readers/Reader.h"

#include <new>

#include <QFile>
#include <QFileInfo>

#include "platform/runtime/CodePage.h"
#include "workbooks/readers/CompoundFile.h"
#include "workbooks/readers/XlsReader.h"
#include "workbooks/readers/XlsxReader.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 largestXls = 64'000'000;
constexpr qint64 headSize = 4096;

QByteArray wholeFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReadFailure{Fault::Unreadable};
    if (file.size() > largestXls)
        throw ReadFailure{Fault::TooLarge};
    return file.read(file.size());
}

std::unique_ptr<Workbook> readCompound(const QString& path, Budget& budget)
{
    const QByteArray bytes = wholeFile(path);
    const CompoundFile file(bytes);
    if (file.contains(u"EncryptedPackage"_s))
        throw ReadFailure{Fault::Password};
    for (const QString& name : {u"Workbook"_s, u"Book"_s}) {
        if (file.contains(name))
            return readXls(path, file.stream(name), budget);
    }
    throw ReadFailure{Fault::NoWorkbook};
}

/// A record stream that stands in no container.
bool isBareStream(const QByteArray& head)
{
    if (head.size() < 4 || head[0] != 0x09 || head[3] != 0)
        return false;
    return head[1] == 0 || head[1] == 2 || head[1] == 4 || head[1] == 8;
}

QString decodedHead(const QByteArray& head)
{
    if (head.startsWith("\xFF\xFE"))
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(head.constData()) + 1,
                                  head.size() / 2 - 1);
    return runtime::decodeText(head);
}

Fault markupFault(const QString& text)
{
    if (text.contains(u"<Workbook"_s) || text.contains(u"mso-application"_s))
        return Fault::XmlTable;
    return Fault::WebPage;
}

/// Control characters that no text file has.
bool isBinary(QChar letter)
{
    return letter < u' ' && !letter.isSpace();
}

/// Tells what a file is that is no workbook, so that the user knows what to do.
Fault judgeText(const QByteArray& head)
{
    const QString text = decodedHead(head).trimmed();
    if (std::any_of(text.begin(), text.end(), isBinary))
        return Fault::Unknown;
    if (text.startsWith(u'<'))
        return markupFault(text);
    return text.startsWith(u"MIME-Version"_s) ? Fault::WebPage : Fault::PlainText;
}

QByteArray headOf(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw ReadFailure{Fault::Missing};
    if (!info.isFile())
        throw ReadFailure{Fault::NoFile};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReadFailure{Fault::Unreadable};
    QByteArray head = file.read(headSize);
    if (head.isEmpty())
        throw ReadFailure{Fault::Empty};
    return head;
}

std::unique_ptr<Workbook> readByContent(const QString& path)
{
    const QByteArray head = headOf(path);
    Budget budget;
    if (head.startsWith("PK\x03\x04") || head.startsWith("PK\x05\x06"))
        return readXlsx(path, budget);
    if (CompoundFile::hasMagic(head))
        return readCompound(path, budget);
    if (isBareStream(head))
        return readXls(path, wholeFile(path), budget);
    throw ReadFailure{judgeText(head)};
}

} // namespace

std::unique_ptr<Workbook> readWorkbook(const QString& path)
{
    try {
        std::unique_ptr<Workbook> book = readByContent(path);
        book->setSaved(true);
        return book;
    } catch (const ReadFailure& failure) {
        throw ReadError(failure.fault, path);
    } catch (const runtime::BytesCutOff&) {
        throw ReadError(Fault::CutOffXls, path);
    } catch (const std::bad_alloc&) {
        throw ReadError(Fault::TooLarge, path);
    }
}

} // namespace excel
