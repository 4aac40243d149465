#include "maintenance/TeacherPick.h"

#include "maintenance/QuotedText.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trap.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap pickTrap{" - Private Sub Form_Load/FormJiaoShiMingDan"};

constexpr QChar joint = u'+';

QString masterFile(const runtime::AppPaths& paths)
{
    return paths.dataFile(u"教师总名单.txt"_s);
}

} // namespace

TeacherPick::TeacherPick(const runtime::AppPaths& paths, const library::Catalogue& catalogue)
    : m_paths(paths), m_catalogue(catalogue), m_elements(catalogue.AllColumns.size() + 1, QString())
{
}

void TeacherPick::load()
{
    m_elements = QStringList(m_catalogue.AllColumns.size() + 1, QString());
    QStringList lines;
    pickTrap([&] { runtime::readLines(masterFile(m_paths), lines); });
    for (const QString& line : std::as_const(lines))
        pickTrap([&] { add(line); });
}

void TeacherPick::add(const QString& line)
{
    const QStringList parts = line.split(u'_');
    if (parts.size() < 2)
        throw runtime::Error(u"教师总名单里的“%1”没有“_”。"_s.arg(quoted(line)));
    m_elements[0] += joint + parts[1];
    const int column = m_catalogue.GetKmID(parts[0]);
    if (column >= 0)
        m_elements[column] += joint + parts[1];
}

std::optional<QStringList> TeacherPick::names(int column) const
{
    const QStringList parts = element(column).split(joint);
    if (parts.size() < 2)
        return std::nullopt;
    return parts.mid(1);
}

QString readMasterList(const runtime::AppPaths& paths)
{
    QString text;
    for (const QString& line : runtime::readAllLines(masterFile(paths)))
        text += line + u'\n';
    return text;
}

void writeMasterList(const runtime::AppPaths& paths, const QString& text)
{
    runtime::writeTextFile(masterFile(paths), text + u'\n');
}

} // namespace maintenance
