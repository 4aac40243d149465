#include "import/preview/Preview.h"

namespace importing {

using namespace Qt::StringLiterals;

namespace {

struct KindText
{
    PreviewKind kind;
    const char16_t* name;
    const char16_t* key;
    const char16_t* unit;
};

constexpr KindText kindTexts[] = {
    {PreviewKind::NewClass, u"新班级", u"NewClass", u"个"},
    {PreviewKind::Column, u"不导入的列", u"Column", u"列"},
    {PreviewKind::NewStudent, u"新学生", u"NewStudent", u"人"},
    {PreviewKind::UnknownStudent, u"不认识的学生", u"UnknownStudent", u"人"},
    {PreviewKind::OtherName, u"姓名不一致", u"OtherName", u"行"},
    {PreviewKind::TakenNumber, u"班级和学号已有", u"TakenNumber", u"行"},
    {PreviewKind::Twice, u"表中重复", u"Twice", u"行"},
    {PreviewKind::BadCell, u"有问题的单元格", u"BadCell", u"处"},
    {PreviewKind::TextCell, u"文字当作数", u"TextCell", u"处"},
    {PreviewKind::Repeated, u"成绩重复", u"Repeated", u"人"},
    {PreviewKind::OtherExam, u"覆盖其他考试", u"OtherExam", u"人"},
    {PreviewKind::Changed, u"改动的成绩", u"Changed", u"处"},
    {PreviewKind::NewInExam, u"新增的成绩", u"NewInExam", u"人"},
    {PreviewKind::Missing, u"不在表中", u"Missing", u"人"},
    {PreviewKind::RowLeft, u"没有导入的行", u"RowLeft", u"行"},
};

constexpr bool isEachAtItsPlace()
{
    size_t place = 0;
    for (const KindText& texts : kindTexts) {
        if (size_t(texts.kind) != place++)
            return false;
    }
    return place == size_t(PreviewKind::RowLeft) + 1;
}

static_assert(isEachAtItsPlace(), "textsOf finds a kind by its place");

const KindText& textsOf(PreviewKind kind)
{
    return kindTexts[int(kind)];
}

} // namespace

const std::vector<PreviewKind>& previewKinds()
{
    static const std::vector<PreviewKind> all = [] {
        std::vector<PreviewKind> kinds;
        for (const KindText& texts : kindTexts)
            kinds.push_back(texts.kind);
        return kinds;
    }();
    return all;
}

QString kindName(PreviewKind kind)
{
    return QString::fromUtf16(textsOf(kind).name);
}

QString kindKey(PreviewKind kind)
{
    return QString::fromUtf16(textsOf(kind).key);
}

void Preview::add(PreviewEntry entry)
{
    if (++m_counts[entry.kind] <= MostListed)
        m_entries[entry.kind].push_back(std::move(entry));
}

int Preview::count(PreviewKind kind) const
{
    const auto found = m_counts.find(kind);
    return found == m_counts.end() ? 0 : found->second;
}

const std::vector<PreviewEntry>& Preview::entries(PreviewKind kind) const
{
    static const std::vector<PreviewEntry> none;
    const auto found = m_entries.find(kind);
    return found == m_entries.end() ? none : found->second;
}

QString Preview::headline() const
{
    QStringList parts{u"与成绩库一致 %1 人"_s.arg(matched)};
    for (const PreviewKind kind : previewKinds()) {
        if (count(kind) > 0)
            parts.append(u"%1 %2 %3"_s.arg(kindName(kind), QString::number(count(kind)),
                                           QString::fromUtf16(textsOf(kind).unit)));
    }
    if (unchanged > 0)
        parts.append(u"没有改动的成绩 %1 处"_s.arg(unchanged));
    return u"表中 %1 行："_s.arg(rows) + parts.join(u'，') + u'。';
}

} // namespace importing
