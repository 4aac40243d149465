#include "cli/Command.h"
#include "cli/SelectionOptions.h"
#include "platform/database/Error.h"
#include "workbench/Browse.h"
#include "workbench/Selection.h"

namespace cli {

using namespace Qt::StringLiterals;
using workbench::Selection;

namespace {

void chooseStream(Selection& selection, const QString& stream)
{
    for (int i = 0; i < int(selection.OptionButton1.size()); ++i) {
        const workbench::StreamOption& option = selection.OptionButton1[size_t(i)];
        if (option.caption == stream && (option.visible || i == 0))
            return selection.OptionButton1_Click(i);
    }
    throw UsageError(u"成绩库里没有科类“%1”。"_s.arg(stream));
}

/// Sets a sort key from a text such as "总分:desc". The list offers no class and number, but a
/// column can be typed.
void setSortKey(const database::TableColumns& columns, workbench::DropDown& column,
                workbench::SingleList& direction, const QString& text)
{
    const qsizetype colon = text.lastIndexOf(u':');
    const QString word = colon < 0 ? u"asc"_s : text.mid(colon + 1).toLower();
    if (word != "asc"_L1 && word != "desc"_L1)
        throw UsageError(u"排序方式只能是 asc 或 desc：%1"_s.arg(text));
    column.text = colon < 0 ? text : text.left(colon);
    if (columns.find(column.text) < 0)
        throw UsageError(database::noSuchColumn(column.text));
    direction.ListIndex = word == "desc"_L1 ? 1 : 0;
}

void setOrder(Selection& selection, const QStringList& order)
{
    if (order.size() > qsizetype(selection.Combo1.size()))
        throw UsageError(u"最多按 %1 项排序。"_s.arg(selection.Combo1.size()));
    const database::TableColumns& columns = selection.library().Conn.columns(u"成绩表"_s);
    for (qsizetype i = 0; i < order.size(); ++i)
        setSortKey(columns, selection.Combo1[size_t(i)], selection.Combo2[size_t(i)], order[i]);
}

void choose(Selection& selection, const Session& session)
{
    const Arguments& arguments = session.arguments;
    chooseExamsAndCategories(selection, session);
    chooseStream(selection, arguments.value(u"stream"_s, u"全"_s));
    if (arguments.has(u"classes"_s))
        selectOnly(selection.ListFW, arguments.list(u"classes"_s), u"班级"_s);
    const QString show = arguments.oneOf(u"show"_s, selection.ListXM.items);
    selection.ListXM.ListIndex = int(selection.ListXM.items.indexOf(show));
    setOrder(selection, arguments.list(u"order"_s));
    selection.scTJ();
    if (arguments.has(u"sql"_s))
        selection.Text1 = arguments.value(u"sql"_s);
}

} // namespace

Exit runBrowse(Session& session)
{
    const Arguments& arguments = session.arguments;
    const QString format = arguments.oneOf(u"format"_s, {u"tsv"_s, u"json"_s});
    if (arguments.list(u"exam"_s).isEmpty() && !arguments.has(u"sql"_s))
        throw UsageError(u"缺少选项 --exam。"_s);
    if (!session.openLibrary())
        return Exit::Error;
    Selection selection(session.scores);
    selection.Form_Load();
    choose(selection, session);
    grid::FlexGrid grid;
    const bool filled = workbench::Browse(selection).CommandLLCJ_Click(grid);
    // A refusal leaves nothing to show as text; the object tells its message.
    if (filled || format == "json"_L1)
        printGrid(session, grid, selection.Text1, format);
    return session.result();
}

} // namespace cli
