#include "shell/LibraryFile.h"

#include <QFile>

#include "platform/database/Compact.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileErrors.h"
#include "platform/runtime/Trap.h"

namespace shell {

using namespace Qt::StringLiterals;

void compactLibrary(library::ScoreLibrary& scoreLibrary, const QString& date)
{
    const runtime::Trap trap{" - Private Sub mfSaveAs_Click/FormMain"};
    const database::Connection& open = scoreLibrary.Conn;
    const QString library = open.isOpen() ? open.path() : scoreLibrary.LibPath;
    const QString backup = library + u'_' + date + u"_.bak"_s;
    trap([&] { scoreLibrary.Conn.Close(); });
    if (QFile::exists(backup))
        trap([&] {
            if (!QFile::remove(backup))
                throw runtime::Error(u"无法删除文件 %1。"_s.arg(backup));
        });
    trap([&] {
        QFile file(library);
        if (!file.rename(backup))
            throw runtime::Error(u"无法把 %1 改名为 %2（%3）。"_s.arg(
                library, backup, runtime::fileErrorText(file.error())));
    });
    trap([&] { database::compactDatabase(backup, library); });
    scoreLibrary.LibPath = library;
    scoreLibrary.OpenDB();
    if (!scoreLibrary.Conn.isOpen())
        scoreLibrary.notifyChanged();
    runtime::MsgBox(u"压缩完毕!"_s);
}

} // namespace shell
