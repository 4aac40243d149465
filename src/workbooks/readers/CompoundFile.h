#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

#include "platform/runtime/ByteCursor.h"

namespace excel {

/// The container of an .xls file: streams in chains of sectors. Throws ReadFailure or
/// runtime::BytesCutOff when a chain leads out of the file or runs in circles.
class CompoundFile
{
public:
    /// `bytes` is the whole file; it must stay as long as this object does.
    explicit CompoundFile(const QByteArray& bytes);

    static bool hasMagic(const QByteArray& bytes);

    /// True if the root storage has a stream of that name; names ignore case.
    bool contains(const QString& name) const;
    QByteArray stream(const QString& name) const;

private:
    struct Entry
    {
        QString name;
        int type = 0;
        quint32 left = 0;
        quint32 right = 0;
        quint32 child = 0;
        quint32 start = 0;
        qint64 size = 0;
    };

    runtime::ByteCursor at(qint64 place) const { return runtime::ByteCursor(m_bytes).at(place); }
    static Entry entryAt(std::string_view raw);
    std::vector<quint32> tableSectors() const;
    void readTable();
    void readDirectory();
    std::vector<quint32> wordsOf(const QByteArray& bytes) const;
    qint64 placeOf(quint32 sector) const;
    QByteArray chain(quint32 start, qint64 size) const;
    QByteArray miniChain(quint32 start, qint64 size) const;
    const Entry* find(const QString& name) const;
    std::vector<quint32> rootChildren() const;

    const QByteArray& m_bytes;
    qint64 m_sectorSize = 512;
    qint64 m_miniSectorSize = 64;
    qint64 m_sectorCount = 0;
    std::vector<quint32> m_table;
    std::vector<quint32> m_miniTable;
    QByteArray m_miniStream;
    std::vector<Entry> m_entries;
};

} // namespace excel
