#pragma once

#include <QString>
#include <QStringList>

namespace runtime {

/// A file in the making, beside the one that it belongs to and under a name that nobody else has.
/// It is gone again unless it was put in place; what a crash leaves of it goes by
/// removeLeftOvers().
class UnfinishedFile
{
public:
    /// Makes it, empty, in the folder of `neighbour`. Throws Error.
    explicit UnfinishedFile(const QString& neighbour);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const QString& path() const { return m_path; }

    /// Adds to its end. Throws Error unless all of it was written.
    void write(const QByteArray& bytes);

    /// The same with all bytes of a file. Throws Error, also if that cannot be read.
    void writeAllOf(const QString& file);

    /// Brings it to the disk and puts it in place of `target`, in the same folder, with the rights
    /// of `model` if there is such a file. Throws Error; unless only the folder could not be
    /// brought to the disk, `target` is as it was then.
    void replace(const QString& target, const QString& model);

    /// The same under a name that nobody has: false if a file of that name stands there, which
    /// stays.
    bool takeName(const QString& name, const QString& model);

private:
    void finish(const QString& model);

    const QString m_neighbour;
    QString m_path;
    int m_file = -1;
    bool m_isInPlace = false;
};

/// Throws Error if a file stands under this name that its user may not write, or a folder.
void checkReplaceable(const QString& target);

/// The unfinished files in the folder of `neighbour` whose makers are gone, by their paths.
QStringList leftOvers(const QString& neighbour);

/// Removes unfinished files whose makers are gone from the folder of `neighbour`; what cannot be
/// removed stays.
void removeLeftOvers(const QString& neighbour);

} // namespace runtime
