#include "library/NewLibrary.h"

#include <optional>

#include <QFileInfo>

#include "library/FormulaTrim.h"
#include "library/LibraryShape.h"
#include "library/SubjectColumns.h"
#include "platform/database/Compact.h"
#include "platform/database/EmptyLibrary.h"
#include "platform/database/FileIdentity.h"
#include "platform/database/SqlPieces.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trap.h"
#include "platform/runtime/UnfinishedFile.h"

namespace library {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::Icon;
using runtime::MsgBox;
using runtime::Trap;

namespace {

const Trap trap{" - Private Sub Command1_Click/FormNew"};

/// Keeps others from the file that is to be replaced. Throws Error if that must not be.
std::optional<database::FileLock> heldForReplacing(const QString& target,
                                                   const database::Connection& open)
{
    if (database::isSameFile(target, open.path()))
        throw database::inUseError(target);
    return database::heldForReplacing(target);
}

void addColumns(database::Connection& conn, const QStringList& subjects)
{
    const auto add = [&](const std::vector<AddedColumn>& columns) {
        for (const AddedColumn& column : columns)
            trap([&] {
                conn.Execute(
                    database::sqlWith(column.sql, {database::SqlPiece::name(column.name)}));
            });
    };
    for (const QString& subject : subjects)
        add(addedColumns(subject));
    for (const QString& subject : subjects)
        add(addedTRank(subject));
    add({{u"ALTER TABLE 成绩表 add COLUMN %1 memo"_s, u"备注"_s}});
}

/// Adds the columns to a copy of the template, all of them but those that are refused.
void addColumns(const QString& path, const QStringList& subjects)
{
    database::Connection conn;
    conn.Open(path, libraryShape());
    database::WriteBatch batch(conn);
    addColumns(conn, subjects);
    batch.commit();
}

} // namespace

void NewLibrary::init()
{
    runtime::ReadTxtSet(m_library.paths().dataFile(u"科目.txt"_s), lists.subjects);
    const QString formulaFile = m_library.paths().dataFile(u"总分公式.txt"_s);
    if (!QFileInfo(formulaFile).isFile())
        return;
    QStringList lines;
    runtime::ReadTxtSet(formulaFile, lines);
    lists.totals.clear();
    lists.formulas.clear();
    const Trap loading{" - Sub init/FormNew"};
    for (const QString& line : std::as_const(lines)) {
        if (!line.contains(u'='))
            loading.fail(u"总分公式.txt 中的“%1”缺少等号。"_s.arg(line));
        lists.totals.append(line.section(u'=', 0, 0));
        lists.formulas.append(line.section(u'=', 1, 1));
    }
}

QString NewLibrary::formulaLine(const QString& subject) const
{
    const qsizetype found = lists.totals.lastIndexOf(subject);
    return found < 0 ? QString() : lists.totals[found] + u'=' + lists.formulas[found];
}

bool NewLibrary::checkSelected(const QStringList& subjects)
{
    if (subjects.isEmpty())
        runtime::warn(u"请选择科目！"_s);
    return !subjects.isEmpty();
}

bool NewLibrary::createAsked(const QStringList& subjects, const QString& path)
{
    if (!checkSelected(subjects))
        return false;
    m_library.LibPath = path;
    if (QFileInfo(path).isFile()
        && MsgBox(u"文件已存在,是否覆盖原文件？"_s, u"文件已存在"_s, Buttons::OkCancel,
                  Icon::Question)
               == Answer::Cancel) {
        MsgBox(u"用户取消，新建成绩库失败。"_s);
        return false;
    }
    if (path.isEmpty())
        return false;
    const bool made = create(subjects);
    if (!m_library.Conn.isOpen())
        return false;
    if (made)
        offerFormulaTrim(m_library);
    MsgBox(u"新建数据库成功，现在将设置学生信息。"_s);
    return true;
}

bool NewLibrary::create(const QStringList& subjects)
{
    const bool made = trap([&] { makeFile(subjects); });
    m_library.Conn.Close();
    m_library.OpenDB();
    m_library.catalogue.ExamList.clear();
    m_library.notifyChanged();
    return made;
}

void NewLibrary::makeFile(const QStringList& subjects) const
{
    const QString target = database::realPath(m_library.LibPath);
    database::checkPathLength(target);
    const QByteArray bytes = database::emptyLibraryBytes(m_library.paths().templateFile());
    const std::optional<database::FileLock> held = heldForReplacing(target, m_library.Conn);
    runtime::UnfinishedFile file(target);
    file.write(bytes);
    addColumns(file.path(), subjects);
    database::checkPages(file.path());
    database::removeLogs(target);
    file.replace(target, target);
}

} // namespace library
