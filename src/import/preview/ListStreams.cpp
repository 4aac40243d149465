#include "import/preview/ListStreams.h"

#include <algorithm>
#include <numeric>

#include "import/preview/SheetEntry.h"
#include "platform/database/Statement.h"
#include "platform/runtime/OneLine.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

QString inQuotes(const QString& stream)
{
    return u"“%1”"_s.arg(runtime::headOnOneLine(stream));
}

/// "“文”、“理”"; of many the first ones.
QString listed(const QStringList& texts)
{
    constexpr qsizetype most = 5;
    return texts.first(std::min(most, texts.size())).join(u'、')
           + (texts.size() > most ? u" 等"_s : QString());
}

} // namespace

ListStreams::ListStreams(database::Connection& connection)
{
    database::Statement rows(connection, u"select 科类 from 信息表 group by 科类 order by 科类"_s);
    while (rows.step())
        m_streams[placeOf(rows.text(0))].isInLibrary = true;
}

size_t ListStreams::placeOf(const QString& name)
{
    const QString key = name.toLower();
    const auto known = m_places.constFind(key);
    if (known != m_places.constEnd())
        return *known;
    m_streams.push_back({name});
    return *m_places.insert(key, m_streams.size() - 1);
}

void ListStreams::add(int row, RowIs rowIs, const QString& cell, const QString& stream)
{
    const size_t place = placeOf(stream);
    ++(rowIs == RowIs::Added ? m_streams[place].added : m_streams[place].asked);
    m_rows.push_back({row, cell, place});
}

std::vector<ListStreams::Stream> ListStreams::ofLibrary() const
{
    std::vector<Stream> found;
    std::copy_if(m_streams.begin(), m_streams.end(), std::back_inserter(found),
                 [](const Stream& one) { return one.isInLibrary; });
    return found;
}

/// "“文”、“理”"; of many the first ones.
QString ListStreams::namesOf(const std::vector<Stream>& streams)
{
    QStringList names;
    for (const Stream& one : streams)
        names.append(inQuotes(one.name));
    return listed(names);
}

/// Those that the library will have whatever is answered.
std::vector<ListStreams::Stream> ListStreams::certain() const
{
    std::vector<Stream> found;
    std::copy_if(m_streams.begin(), m_streams.end(), std::back_inserter(found),
                 [](const Stream& one) { return one.isInLibrary || one.added > 0; });
    return found;
}

void ListStreams::tell(const excel::Worksheet& sheet, Preview& preview) const
{
    if (m_streams.size() <= Most)
        return noteNew(preview);
    const std::vector<Stream> known = ofLibrary();
    preview.warning += known.size() > Most ? warningOfLibrary(known) : warningOfList();
    tellSurplus(sheet, preview);
}

/// A list is not to blame for what the library has too many of.
QString ListStreams::warningOfLibrary(const std::vector<Stream>& streams) const
{
    const QString text =
        u"成绩库里已经有 %1 个科类（%2）！成绩库最多两个科类，再多就打不开班级列表和统计，"
        "请先在“修改信息”里改正。"_s.arg(QString::number(streams.size()), namesOf(streams));
    return m_streams.size() == streams.size() ? text : text + u"表里还有别的科类，也请改正。"_s;
}

QString ListStreams::warningOfList() const
{
    const std::vector<Stream> sure = certain();
    const bool isSure = sure.size() > Most;
    const std::vector<Stream>& streams = isSure ? sure : m_streams;
    return u"%1导入后会有 %2 个科类（%3）！成绩库最多两个科类，再多就打不开班级列表和统计，"
           "请先改正表里的科类。"_s.arg(isSure ? QString() : u"选“全部添加”时，"_s,
                                        QString::number(streams.size()), namesOf(streams));
}

/// The library's, and where it has room those that most rows have.
std::vector<bool> ListStreams::areKept() const
{
    std::vector<size_t> places(m_streams.size());
    std::iota(places.begin(), places.end(), size_t(0));
    const auto rank = [this](size_t place) {
        const Stream& one = m_streams[place];
        return std::pair(one.isInLibrary, one.added + one.asked);
    };
    std::stable_sort(places.begin(), places.end(),
                     [&](size_t a, size_t b) { return rank(a) > rank(b); });
    std::vector<bool> kept(m_streams.size());
    for (size_t i = 0; i < places.size(); ++i)
        kept[places[i]] = i < Most || m_streams[places[i]].isInLibrary;
    return kept;
}

void ListStreams::tellSurplus(const excel::Worksheet& sheet, Preview& preview) const
{
    const std::vector<bool> kept = areKept();
    QStringList names;
    for (size_t i = 0; i < m_streams.size(); ++i) {
        if (kept[i])
            names.append(inQuotes(m_streams[i].name));
    }
    const QString why = u"成绩库最多两个科类，除了%1不能再有别的。"_s.arg(listed(names));
    for (const Row& one : m_rows) {
        if (kept[one.stream])
            continue;
        PreviewEntry entry = sheetEntry(PreviewKind::BadCell, sheet, one.row, why);
        entry.subject = u"科类"_s;
        entry.before = one.cell;
        entry.after = m_streams[one.stream].name;
        preview.add(std::move(entry));
    }
}

void ListStreams::noteNew(Preview& preview) const
{
    QStringList texts;
    for (const Stream& one : m_streams) {
        if (!one.isInLibrary && one.name != u"文"_s && one.name != u"理"_s)
            texts.append(
                u"%1（%2 人）"_s.arg(inQuotes(one.name), QString::number(one.added + one.asked)));
    }
    if (!texts.isEmpty())
        preview.notes.append(
            u"成绩库里还没有科类%1，会照样存入；写错了的请先改正。"_s.arg(texts.join(u'、')));
}

} // namespace importing
