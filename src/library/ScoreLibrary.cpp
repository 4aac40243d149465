#include "library/ScoreLibrary.h"

#include <QFile>
#include <QFileInfo>

#include "library/LeftOvers.h"
#include "library/LibraryShape.h"
#include "library/StudentPhoto.h"
#include "platform/database/Error.h"
#include "platform/database/ReadBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/FileErrors.h"
#include "platform/runtime/Phase.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Trap.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

/// Pictures are read and written in pieces of this many bytes.
constexpr qint64 pieceSize = 65536;

/// Both kinds of slash separate folders.
qsizetype lastSeparator(const QString& path)
{
    return std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
}

} // namespace

ScoreLibrary::ScoreLibrary(const runtime::AppPaths& paths)
    : catalogue(Conn), students(Conn), teachers(Conn), settings(Conn), m_paths(paths)
{
}

ScoreLibrary::~ScoreLibrary() = default;

void ScoreLibrary::OpenDB()
{
    const Trap trap{" - Public Sub OpenDB/Mdl_MDB"};
    if (!QFileInfo(LibPath).isFile()) {
        // What is no character in the name has become one that no file has.
        if (LibPath.contains(QChar::ReplacementCharacter))
            runtime::warn(LibPath + u"\n名称里有不是 UTF-8 编码的字，请先给文件改名。"_s);
        runtime::warn(LibPath + u"\n库文件不存在！"_s);
        LibPath.clear();
        return;
    }
    const qsizetype separator = lastSeparator(LibPath);
    if (separator < 0)
        return;
    LibFolder = LibPath.left(separator);
    if (!trap([&] { Conn.Open(LibPath, libraryShape()); }))
        return;
    removeLeftOvers(Conn.path(), m_paths.templateFile());
    // What was read in part would pass for the whole library.
    if (!trap([&] { readCatalogue(); })) {
        Conn.Close();
        return notifyChanged();
    }
    Q_EMIT opened();
}

void ScoreLibrary::readCatalogue()
{
    const runtime::Phase phase;
    const database::ReadBatch reading(Conn);
    m_catalogueVersion.reset();
    const qint64 version = Conn.dataVersion();
    catalogue.GetKeLei();
    catalogue.GetKSXX();
    m_catalogueVersion = version;
}

void ScoreLibrary::refreshCatalogue()
{
    if (m_catalogueVersion != Conn.dataVersion())
        readCatalogue();
}

void ScoreLibrary::notifyChanged()
{
    Q_EMIT changed();
}

QString ScoreLibrary::GetName(const QString& path)
{
    return runtime::Right(path.mid(lastSeparator(path) + 1), 50);
}

void ScoreLibrary::GetBin(const database::Field& field, const QString& fileName)
{
    const Trap trap{" - Sub GetBin/Mdl_MDB"};
    trap([&] {
        const database::ReadBatch reading(Conn);
        const qint64 size = field.ActualSize();
        if (size <= 0)
            return;
        QFile file(fileName);
        bool isWritten = file.open(QIODevice::WriteOnly);
        for (qint64 at = 0; isWritten && at < size; at += pieceSize) {
            const QByteArray piece = field.GetChunk(pieceSize, at);
            isWritten = file.write(piece) == piece.size();
        }
        if (!isWritten || !file.flush())
            throw runtime::Error(
                u"无法写入文件 %1（%2）。"_s.arg(fileName, runtime::fileErrorText(file.error())));
    });
}

bool ScoreLibrary::SaveBin(const QString& fileName, database::Field field) const
{
    const Trap trap{" - Sub SaveBin/Mdl_MDB"};
    return trap([&] {
        QFile file(fileName);
        bool isToRead = file.open(QIODevice::ReadOnly);
        if (file.size() > Conn.longestValue())
            throw runtime::Error(u"文件 %1 太大，成绩库放不下。"_s.arg(fileName));
        while (isToRead) {
            field.AppendChunk(file.read(pieceSize));
            isToRead = file.error() == QFileDevice::NoError && !file.atEnd();
        }
        if (file.error() == QFileDevice::NoError)
            return;
        // A picture that was read in part would pass for a whole one.
        field.takeBack();
        throw runtime::Error(
            u"无法读取文件 %1（%2）。"_s.arg(fileName, runtime::fileErrorText(file.error())));
    });
}

QString ScoreLibrary::GetPic(qint64 id)
{
    const Trap trap{" - Function GetPic/Mdl_MDB"};
    QString picture;
    trap([&] {
        database::Recordset rows;
        rows.Open(u"select *  from 信息表 where id=?"_s, {id}, Conn);
        const QString name = rows.Fields(u"照片名"_s).Value().text();
        if (runtime::Trim(name).isEmpty())
            return;
        picture = scratchPicture(m_paths);
        GetBin(rows.Fields(u"照片"_s), picture);
    });
    return picture;
}

} // namespace library
