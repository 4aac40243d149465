#include "workbooks/readers/ZipArchive.h"

#include <array>

#include <QFile>
#include <QtEndian>

#include <zip.h>

namespace excel {

namespace {

constexpr qint64 mostEntries = 65535;
constexpr qint64 pieceSize = qint64{128} * 1024;

/// Entries that a 64-bit end record claims, given the place of its locator in the file's tail.
qint64 entriesBy64BitRecord(QFile& file, const QByteArray& tail, qsizetype locator)
{
    if (locator + 20 > tail.size())
        return 0;
    const quint64 place = qFromLittleEndian<quint64>(tail.constData() + locator + 8);
    if (place > quint64(file.size()) || !file.seek(qint64(place)))
        return 0;
    const QByteArray record = file.read(56);
    if (record.size() < 56)
        return 0;
    const quint64 count = qFromLittleEndian<quint64>(record.constData() + 32);
    return qint64(std::min<quint64>(count, quint64(mostEntries) + 1));
}

/// The library takes memory for as many entries as the file claims, so look at that first.
void refuseTooManyEntries(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReadFailure{Fault::Unreadable};
    file.seek(std::max<qint64>(0, file.size() - qint64{66} * 1024));
    const QByteArray tail = file.readAll();
    const QByteArray mark("PK\x06\x07", 4);
    for (qsizetype at = tail.indexOf(mark); at >= 0; at = tail.indexOf(mark, at + 1)) {
        if (entriesBy64BitRecord(file, tail, at) > mostEntries)
            throw ReadFailure{Fault::TooLarge};
    }
}

Fault faultOf(int zipError)
{
    switch (zipError) {
    case ZIP_ER_NOPASSWD:
    case ZIP_ER_WRONGPASSWD:
    case ZIP_ER_ENCRNOTSUPP:
        return Fault::Password;
    case ZIP_ER_MEMORY:
        return Fault::TooLarge;
    default:
        return Fault::CutOffXlsx;
    }
}

struct CloseFile
{
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

} // namespace

void ZipArchive::Discard::operator()(zip* archive) const
{
    zip_discard(archive);
}

ZipArchive::ZipArchive(const QString& path, Budget& budget) : m_budget(budget)
{
    refuseTooManyEntries(path);
    int error = 0;
    m_archive.reset(zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &error));
    if (m_archive == nullptr)
        throw ReadFailure{faultOf(error)};
}

qint64 ZipArchive::locate(const QByteArray& part) const
{
    const qint64 exact = zip_name_locate(m_archive.get(), part.constData(), 0);
    return exact >= 0 ? exact : zip_name_locate(m_archive.get(), part.constData(), ZIP_FL_NOCASE);
}

bool ZipArchive::contains(const QByteArray& part) const
{
    return locate(part) >= 0;
}

void ZipArchive::read(const QByteArray& part, qint64 limit, const Sink& sink)
{
    const qint64 index = locate(part);
    zip_stat_t entry;
    if (index < 0 || zip_stat_index(m_archive.get(), zip_uint64_t(index), 0, &entry) != 0)
        throw ReadFailure{Fault::CutOffXlsx};
    if ((entry.valid & ZIP_STAT_SIZE) != 0 && entry.size > quint64(limit))
        throw ReadFailure{Fault::TooLarge};
    // Other methods can ask for any amount of memory before they give the first byte.
    if (entry.comp_method != ZIP_CM_STORE && entry.comp_method != ZIP_CM_DEFLATE)
        throw ReadFailure{Fault::CutOffXlsx};
    const std::unique_ptr<zip_file_t, CloseFile> file(
        zip_fopen_index(m_archive.get(), zip_uint64_t(index), 0));
    if (file == nullptr)
        throw ReadFailure{faultOf(zip_error_code_zip(zip_get_error(m_archive.get())))};
    std::vector<char> piece(pieceSize);
    for (;;) {
        const qint64 got = zip_fread(file.get(), piece.data(), piece.size());
        if (got < 0)
            throw ReadFailure{Fault::CutOffXlsx};
        limit -= got;
        if (limit < 0)
            throw ReadFailure{Fault::TooLarge};
        m_budget.takeBytes(got);
        sink(std::string_view(piece.data(), size_t(got)));
        if (got == 0)
            return;
    }
}

} // namespace excel
