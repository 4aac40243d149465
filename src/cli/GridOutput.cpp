#include "cli/GridOutput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/grid/GridText.h"

namespace cli {

using namespace Qt::StringLiterals;

void printGrid(const Session& session, const grid::FlexGrid& grid, const QString& sql,
               const QString& format)
{
    if (format == "tsv"_L1)
        return printResult(grid::gridText(grid));
    session.dialogs.endCommand();
    QJsonObject object = grid::gridJson(grid);
    object.insert(u"Sql"_s, sql);
    object.insert(u"Messages"_s, QJsonArray::fromStringList(session.dialogs.messages()));
    printResult(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
}

} // namespace cli
