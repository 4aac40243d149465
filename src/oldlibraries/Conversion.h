#pragma once

#include <optional>

#include <QString>

#include "oldlibraries/ConversionReport.h"
#include "platform/runtime/Progress.h"

namespace oldlibraries {

/// Which library becomes which.
struct ConversionRequest
{
    /// What becomes of a file that stands at newPath.
    enum class Existing { Keep, Replace };

    /// What becomes of a library of which rows are missing: damage took them, or a crash left a
    /// wrong count.
    enum class MissingRows { Refuse, Accept };

    QString oldPath;
    QString newPath;
    /// The empty library, of which the new one gets what the old one lacks.
    QString templateFile;
    /// What the user typed; "" if he was not asked.
    QString password = {};
    Existing existing = Existing::Keep;
    MissingRows missingRows = MissingRows::Refuse;
    /// A library that is open, which the new one does not replace; "" for none.
    QString openPath = {};
};

/// NAME（转换）.CJK beside NAME.CJK.
QString suggestedPath(const QString& oldPath);

/// Why what stands at newPath must not be replaced, even if the user wants it; "" if it may.
QString targetRefusal(const ConversionRequest& request);

/// Makes a library of ours of one of the old engine. The old file is only read. The new one takes
/// its name when it is whole: every row was compared with the old file, which was read a second
/// time for that. Derived columns go over as they are stored.
///
/// Nothing if the user cancelled. The progress is finished in any case, so that its window does not
/// stand beside the box that tells a failure. Throws OldFileError for what is wrong with the old
/// file (Password if it has one and the request does not give it, RowsMissing unless they are
/// accepted), runtime::Error for what cannot be written; no new file stands then.
std::optional<ConversionReport> convert(const ConversionRequest& request,
                                        runtime::Progress& progress);

} // namespace oldlibraries
