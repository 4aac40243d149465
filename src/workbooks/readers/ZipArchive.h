#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include <QByteArray>
#include <QString>

#include "workbooks/readers/Budget.h"

struct zip;

namespace excel {

/// A zip file opened for reading. Throws ReadFailure for whatever is wrong with it.
class ZipArchive
{
public:
    /// Gets the content piece by piece; an empty piece marks the end.
    using Sink = std::function<void(std::string_view)>;

    ZipArchive(const QString& path, Budget& budget);

    bool contains(const QByteArray& part) const;

    /// Unpacks a part into `sink`; `limit` is the most bytes that it may have, whatever its entry
    /// claims. Part names ignore case, as the writers of such files do not agree on it.
    void read(const QByteArray& part, qint64 limit, const Sink& sink);

private:
    struct Discard
    {
        void operator()(zip* archive) const;
    };

    qint64 locate(const QByteArray& part) const;

    std::unique_ptr<zip, Discard> m_archive;
    Budget& m_budget;
};

} // namespace excel
