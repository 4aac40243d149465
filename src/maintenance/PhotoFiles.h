#pragma once

#include <optional>

#include <QByteArray>
#include <QString>

#include "library/ScoreLibrary.h"

namespace maintenance {

/// Large is a photo of more than 5 MB, or of more than 2,000 pixels on a side.
enum class PhotoSize { Ordinary, Large };

/// Which bytes of a photo file go into the library.
enum class PhotoBytes { Own, Smaller };

/// Knows pictures, which the engine does not.
class PhotoFiles
{
public:
    virtual ~PhotoFiles() = default;

    /// Throws runtime::Error, which names the file, for one that is no picture that the program can
    /// show: something else, cut off, or too large for memory.
    virtual PhotoSize check(const QString& path) const = 0;

    /// The picture as a JPEG file of 600 pixels height, upright; no higher and no wider than it
    /// was. Throws runtime::Error, which names the file.
    virtual QByteArray smaller(const QString& path) const = 0;
};

/// Looks at the photo that was chosen for one student. A file that is no picture is refused with
/// its name, and nothing is given; a large one may go in smaller if the user says so.
std::optional<PhotoBytes> chosenBytes(const PhotoFiles& photos, const QString& path);

/// Assigns the file to 照片 and its name to 照片名 of the current row, which is not updated yet.
/// False if the file could not be read, which has been told: both stay as they were then. Throws
/// runtime::Error.
bool setPhoto(library::ScoreLibrary& scores, database::Recordset& student, const QString& path,
              const PhotoFiles& photos, PhotoBytes bytes);

} // namespace maintenance
