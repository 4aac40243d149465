#include "oldlibraries/FileHeader.h"

#include <array>
#include <cmath>
#include <numeric>
#include <utility>

#include <QFile>
#include <QFileInfo>

#include "platform/database/OldFormat.h"
#include "platform/runtime/ByteCursor.h"

namespace oldlibraries {

namespace {

constexpr int versionPlace = 0x14;
/// From here on the header is stirred with a key that all files share.
constexpr int stirredPlace = 0x18;
constexpr int stirredSize = 128;
constexpr quint32 headerKey = 0x6B39DAC7;
constexpr int pageKeyPlace = 0x3E;
constexpr int passwordPlace = 0x42;
constexpr int passwordSize = 40;
constexpr int creationDatePlace = 0x72;

/// The RC4 stream cipher, which undoes itself.
QByteArray stirred(const QByteArray& bytes, quint32 key)
{
    const auto keyBytes = std::bit_cast<std::array<quint8, 4>>(qToLittleEndian(key));
    std::array<quint8, 256> state = {};
    std::iota(state.begin(), state.end(), quint8(0));
    for (quint8 i = 0, j = 0;; ++i) {
        j = quint8(j + state[i] + keyBytes[i % keyBytes.size()]);
        std::swap(state[i], state[j]);
        if (i == 255)
            break;
    }
    QByteArray plain = bytes;
    quint8 i = 0;
    quint8 j = 0;
    for (char& byte : plain) {
        j = quint8(j + state[++i]);
        std::swap(state[i], state[j]);
        byte = char(quint8(byte) ^ state[quint8(state[i] + state[j])]);
    }
    return plain;
}

/// The day on which the file was made lies over the password; 0 for one that is no day.
std::array<char, 4> passwordMask(const QByteArray& header)
{
    const double date = runtime::ByteCursor(header).at(creationDatePlace).real();
    const qint32 day = std::abs(date) < 1e6 ? qint32(date) : 0;
    return std::bit_cast<std::array<char, 4>>(qToLittleEndian(day));
}

QString passwordOf(const QByteArray& header)
{
    QByteArray bytes = header.mid(passwordPlace, passwordSize);
    const std::array<char, 4> mask = passwordMask(header);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(bytes[i] ^ mask[size_t(i) % mask.size()]);
    runtime::ByteCursor letters(bytes);
    QString password;
    while (letters.left() > 0) {
        const int letter = letters.u16();
        if (letter == 0)
            break;
        password.append(QChar(letter));
    }
    return password;
}

} // namespace

FileHeader FileHeader::fromPage(const QByteArray& page)
{
    QByteArray header = page;
    header.replace(stirredPlace, stirredSize,
                   stirred(header.mid(stirredPlace, stirredSize), headerKey));
    FileHeader read;
    read.version = runtime::ByteCursor(header).at(versionPlace).u8();
    read.pageKey = runtime::ByteCursor(header).at(pageKeyPlace).u32();
    read.password = passwordOf(header);
    return read;
}

QByteArray withKey(const QByteArray& page, quint32 key)
{
    return stirred(page, key);
}

bool isOldLibrary(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && database::isOldFormat(file.read(versionPlace));
}

} // namespace oldlibraries
