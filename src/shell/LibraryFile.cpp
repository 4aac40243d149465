#include "shell/LibraryFile.h"

#include <optional>

#include "library/LibraryBackup.h"
#include "platform/database/Compact.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"
#include "platform/runtime/UnfinishedFile.h"

namespace shell {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap compactTrap{" - Private Sub mfSaveAs_Click/FormMain"};

/// Of the backup, so that what it holds is proved to be readable.
void putCompactedCopy(const QString& backup, const QString& library)
{
    runtime::UnfinishedFile compacted(library);
    database::compactDatabase(backup, compacted.path());
    database::checkCopy(backup, compacted.path());
    compacted.replace(library, library);
}

void compactFile(const QString& library, const QString& backup, runtime::Progress& progress)
{
    std::optional<database::FileLock> held;
    if (!compactTrap([&] { held.emplace(library, database::FileLock::Against::Writers); }))
        return;
    const bool isKept = compactTrap([&] { library::copyLibrary(library, backup, progress); });
    compactTrap([&] {
        if (!isKept)
            throw runtime::Error(u"没有备份 %1，成绩库没有压缩。"_s.arg(backup));
        putCompactedCopy(backup, library);
    });
}

} // namespace

void compactLibrary(library::ScoreLibrary& scoreLibrary, const QString& date,
                    runtime::Progress& progress)
{
    const database::Connection& open = scoreLibrary.Conn;
    const QString library = open.isOpen() ? open.path() : database::realPath(scoreLibrary.LibPath);
    compactTrap([&] { scoreLibrary.Conn.Close(); });
    compactFile(library, library + u'_' + date + u"_.bak"_s, progress);
    progress.finish();
    scoreLibrary.LibPath = library;
    scoreLibrary.OpenDB();
    if (!scoreLibrary.Conn.isOpen())
        scoreLibrary.notifyChanged();
    runtime::MsgBox(u"压缩完毕!"_s);
}

} // namespace shell
