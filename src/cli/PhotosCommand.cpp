#include "cli/ChosenOptions.h"
#include "cli/CliProgress.h"
#include "cli/Command.h"
#include "cli/GridOutput.h"
#include "maintenance/MissingPhotos.h"
#include "maintenance/PhotoRun.h"
#include "maintenance/paint/PictureFiles.h"

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// Exactly one of the folder and --missing is given.
void checkForms(const Arguments& arguments)
{
    const bool hasFolder = !arguments.positionals().value(1).isEmpty();
    if (hasFolder && arguments.has(u"missing"_s))
        throw UsageError(u"--missing 不能和照片文件夹一起使用。"_s);
    if (!hasFolder && !arguments.has(u"missing"_s))
        throw UsageError(u"缺少照片文件夹。"_s);
    for (const QString& option : {u"replace"_s, u"smaller"_s, u"no-backup"_s}) {
        if (!hasFolder && arguments.has(option))
            throw UsageError(u"--missing 不能和 --%1 一起使用。"_s.arg(option));
    }
    if (hasFolder && arguments.has(u"format"_s))
        throw UsageError(u"--format 只和 --missing 一起使用。"_s);
}

grid::FlexGrid missingPhotos(database::Connection& connection)
{
    const auto students = maintenance::studentsWithoutPhoto(connection);
    const QStringList headings{u"ID"_s, u"班级"_s, u"学号"_s, u"姓名"_s};
    grid::FlexGrid table;
    table.setCols(int(headings.size()));
    table.setRows(int(students.size()) + 1);
    const auto setRow = [&](int row, const QStringList& texts) {
        for (int column = 0; column < texts.size(); ++column)
            table.setTextMatrix(row, column, texts[column]);
    };
    setRow(0, headings);
    for (size_t i = 0; i < students.size(); ++i)
        setRow(int(i) + 1, {QString::number(students[i].id), students[i].classNumber.text(),
                            students[i].number.text(), students[i].name});
    return table;
}

Exit setPhotos(Session& session)
{
    const Arguments& arguments = session.arguments;
    if (arguments.has(u"replace"_s))
        session.dialogs.answer(u"已经有照片"_s, u"替换"_s);
    if (arguments.has(u"smaller"_s))
        session.dialogs.answer(u"照片很大"_s, u"改存较小的图片"_s);
    CliProgress progress;
    const maintenance::PictureFiles photos;
    const bool isDone = maintenance::PhotoRun(session.scores, photos, progress)
                            .run(arguments.path(1), chosenBackup(arguments));
    return isDone ? session.result() : Exit::Error;
}

} // namespace

Exit runPhotos(Session& session)
{
    checkForms(session.arguments);
    const QString format = session.arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (!session.openLibrary())
        return Exit::Error;
    if (!session.arguments.has(u"missing"_s))
        return setPhotos(session);
    printGrid(session, missingPhotos(session.scores.Conn), {}, format);
    return session.result();
}

} // namespace cli
