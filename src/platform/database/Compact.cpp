#include "platform/database/Compact.h"

#include <sqlite3.h>

#include <QFile>

#include "platform/database/Error.h"
#include "platform/database/OpenFile.h"

namespace database {

using namespace Qt::StringLiterals;

void compactDatabase(const QString& source, const QString& target)
{
    const Handle handle = openedFile(source, {});
    if (QFile::exists(target))
        throw Error(Failure::Other, u"文件 %1 已经存在。"_s.arg(target));
    sqlite3_stmt* raw = nullptr;
    int code = sqlite3_prepare_v2(handle.get(), "VACUUM INTO ?", -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(raw, sqlite3_finalize);
    if (code == SQLITE_OK) {
        const QByteArray path = target.toUtf8();
        sqlite3_bind_text(raw, 1, path.constData(), int(path.size()), SQLITE_TRANSIENT);
        code = sqlite3_step(raw);
    }
    if (code == SQLITE_DONE)
        return;
    const Error error = engineError(handle.get());
    QFile::remove(target);
    throw error;
}

} // namespace database
