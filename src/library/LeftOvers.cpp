#include "library/LeftOvers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "library/LibraryCopies.h"
#include "platform/runtime/UnfinishedFile.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

/// What was once written under a name of six random letters is the beginning of the template; a
/// file of the user's own (LIB.backup) is not.
bool isPartOfTemplate(const QString& file, const QString& templateFile)
{
    QFile part(file);
    QFile whole(templateFile);
    if (part.size() > QFileInfo(templateFile).size() || !part.open(QIODevice::ReadOnly)
        || !whole.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = part.readAll();
    return whole.read(bytes.size()) == bytes;
}

QRegularExpression beside(const QFileInfo& library, const QString& ending)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(library.fileName()) + ending));
}

} // namespace

void removeLeftOvers(const QString& libraryPath, const QString& templateFile)
{
    runtime::removeLeftOvers(libraryPath);
    const QFileInfo library(libraryPath);
    const QStringList files = library.dir().entryList(QDir::Files);
    const QRegularExpression copies =
        beside(library, u"_\\d{4}-\\d{2}-\\d{2}_\\d{4}\\.bak\\.tmp"_s);
    for (const QString& name : files.filter(copies))
        library.dir().remove(name);
    const QString dated = u"_\\d{4}-\\d{2}-\\d{2}_\\d{4}(\\d{2})?\\.bak"_s;
    for (const QString& name : files.filter(beside(library, dated + u"\\.json"_s))) {
        const QString copy = name.chopped(qstrlen(".json"));
        if (files.contains(copy))
            continue;
        passRestoresOn(libraryPath, library.dir().filePath(copy));
        library.dir().remove(name);
    }
    for (const QString& name : files.filter(beside(library, u"\\.[A-Za-z]{6}"_s))) {
        if (isPartOfTemplate(library.dir().filePath(name), templateFile))
            library.dir().remove(name);
    }
}

} // namespace library
