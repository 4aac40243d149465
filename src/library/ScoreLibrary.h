#pragma once

#include <optional>

#include <QObject>
#include <QString>

#include "library/Catalogue.h"
#include "library/Settings.h"
#include "library/Students.h"
#include "library/Teachers.h"
#include "platform/database/Connection.h"
#include "platform/database/Recordset.h"
#include "platform/runtime/AppPaths.h"

namespace library {

/// The open score library: its connection, its path, what is known about it, and its settings.
/// It tells of changes by signals and knows no screen.
class ScoreLibrary : public QObject
{
    Q_OBJECT

public:
    explicit ScoreLibrary(const runtime::AppPaths& paths);
    ~ScoreLibrary() override;

    /// The library that was last asked for: callers set it, then call OpenDB. Whether one is open,
    /// and which, the connection says.
    QString LibPath;
    /// LibPath up to, and not including, its last slash.
    QString LibFolder;

    /// The connection to the open library, which knows its path.
    database::Connection Conn;
    Catalogue catalogue;
    Students students;
    Teachers teachers;
    Settings settings;

    /// Opens the file that LibPath names and loads its structure; tells by opened(). A file that
    /// does not exist, or cannot be opened, is shown in a message, and a library open before stays
    /// open; LibPath is empty after a file that does not exist. A library that opens but cannot be
    /// read is closed again.
    void OpenDB();

    /// Reads streams, exams, columns and classes anew from one state of the file. Throws
    /// runtime::PhaseError; the lists are those of before then, or of before and after.
    void readCatalogue();
    /// The same if it was not read since another program wrote the file, or not to its end.
    void refreshCatalogue();

    /// Tells whoever listens that exams or students changed, or that no library is open
    /// any more.
    void notifyChanged();

    const runtime::AppPaths& paths() const { return m_paths; }

    /// The part behind the last slash or backslash, cut to its last 50 characters.
    static QString GetName(const QString& path);
    /// Writes the bytes of a binary field to a file, replacing it; an empty field writes nothing.
    void GetBin(const database::Field& field, const QString& fileName);
    /// Puts the bytes of a file into a binary field. False, after the message, if they could not be
    /// read to the end; the field is as it was then.
    bool SaveBin(const QString& fileName, database::Field field) const;
    /// Writes the student's picture to the one scratch file of data/ and gives its name; "" if the
    /// student has no 照片名.
    QString GetPic(qint64 id);

Q_SIGNALS:
    /// A library was opened; its lists stand.
    void opened();
    /// Exams or students of the open library changed, or none is open any more.
    void changed();

private:
    runtime::AppPaths m_paths;
    /// The state of the file that the catalogue was read from.
    std::optional<qint64> m_catalogueVersion;
};

} // namespace library
