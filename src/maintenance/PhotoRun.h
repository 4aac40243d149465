#pragma once

#include <QHash>

#include "library/LibraryBackup.h"
#include "maintenance/PhotoFiles.h"
#include "maintenance/PhotoFolder.h"

namespace maintenance {

/// Gives all students of the library the photos of a folder. What is found is looked at first, then
/// the questions come, then all is written in one batch.
class PhotoRun
{
public:
    PhotoRun(library::ScoreLibrary& scoreLibrary, const PhotoFiles& photos,
             runtime::Progress& progress);

    /// Tells what it did, or why not; true if it came to its end.
    bool run(const QString& folder, library::Backup backup);

private:
    enum class Existing { Replace, Keep };

    struct Find
    {
        QString file;
        PhotoSize size = PhotoSize::Ordinary;
        bool hasPhoto = false;
    };

    struct Counts
    {
        int set = 0;
        int kept = 0;
        int withoutFile = 0;
        int failed = 0;
    };

    bool look(PhotoFolder& folder);
    void lookFor(database::Recordset& student, PhotoFolder& folder);
    bool ask(library::Backup backup);
    bool askExisting();
    bool askLarge();
    bool write(library::Backup backup);
    void writeOne(database::Recordset& student);
    int sharing() const;
    void tell() const;

    library::ScoreLibrary& m_library;
    const PhotoFiles& m_photos;
    runtime::Progress& m_progress;
    QHash<qint64, Find> m_found;
    Existing m_existing = Existing::Replace;
    PhotoBytes m_large = PhotoBytes::Own;
    Counts m_counts;
    /// How many students each file was set for.
    QHash<QString, int> m_uses;
};

} // namespace maintenance
