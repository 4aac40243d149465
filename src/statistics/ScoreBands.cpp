#include "library/ColumnNames.h"
#include "platform/runtime/ComparedNumber.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "statistics/BandWidths.h"
#include "statistics/ExamFigures.h"
#include "statistics/Reports.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::doubleText;

namespace {

const runtime::Trap scoreBandsTrap{" - Sub TJGFSDRS/Mdl_MDB"};

/// What a width that is far too small would ask for is no table any more.
constexpr double MostBands = 10000;

/// The bands of one item: [0,w), [w,2w), …
class ScoreBands
{
public:
    /// Throws runtime::Error for more than MostBands.
    ScoreBands(double fullMarks, double width) : m_fullMarks(fullMarks), m_width(width)
    {
        const double whole = runtime::Int(fullMarks / width);
        if (!(whole < MostBands))
            throw runtime::Error(u"分数段 "_s + doubleText(width) + u" 太小。"_s);
        m_count = int(whole);
        m_exact = !(m_count * width < fullMarks);
        if (!m_exact)
            ++m_count;
    }

    int count() const { return m_count; }

    QString heading(int band) const
    {
        const bool closed = m_exact && band == m_count - 1;
        return u'[' + doubleText(band * m_width) + u',' + doubleText((band + 1) * m_width)
               + (closed ? u']' : u')');
    }

    /// How many values fall in each band. One more counter than bands takes what is up to one width
    /// above the last; a value above that is shown and not counted.
    std::vector<int> counted(const std::vector<double>& values) const
    {
        std::vector<int> counters(size_t(m_count) + 1, 0);
        for (const double value : values) {
            // A mark of 89.7 is kept as a number just below, and belongs to the band from 89.7 on.
            const double index = bandOf(runtime::roundedToCompare(value));
            if (index > m_count)
                scoreBandsTrap.fail(u"成绩 "_s + doubleText(value)
                                    + u" 高出最后一个分数段，没有计入。"_s);
            else
                ++counters[size_t(index)];
        }
        return counters;
    }

    /// What holds for the values that are counted in a band.
    QString condition(const QString& item, int band) const
    {
        const bool closed = m_exact && band == m_count - 1;
        return item + u">="_s + doubleText(lowestMark(band)) + u" and "_s + item
               + (closed ? u"<="_s + doubleText(m_fullMarks)
                         : u"<"_s + doubleText(lowestMark(band + 1)));
    }

private:
    double bandOf(double mark) const
    {
        const double index = runtime::Int(runtime::Round(mark / m_width, 9));
        // Full marks belong to the last band.
        return m_exact && mark == m_fullMarks ? index - 1 : index;
    }

    /// The lowest mark of a band, among marks of so many places as are looked at. It is where the
    /// band begins, unless that has more places.
    double lowestMark(int band) const
    {
        constexpr double scale = 1e4;
        static_assert(ComparedDigits == 4);
        const double begin = band * m_width;
        // So large a number has no such places.
        if (band == 0 || begin >= 1e11)
            return begin;
        double whole = std::floor(begin * scale) - 1;
        while (runtime::Int(runtime::Round(whole / scale / m_width, 9)) < band)
            ++whole;
        return whole / scale;
    }

    double m_fullMarks;
    double m_width;
    int m_count;
    bool m_exact;
};

void fillBlock(Block& block, ExamFigures& figures, const QString& item, const ScoreBands& bands)
{
    block.headNames(1);
    for (int m = 0; m < bands.count(); ++m) {
        block.head(1, m, 0, bands.heading(m));
        block.note(0, m, 0, figures.takenMeaning(item, bands.condition(item, m)));
    }
    block.eachClass(0, figures.exam(), [&](int j, double classNumber) {
        const std::vector<int> counters = bands.counted(figures.taken(item, classNumber));
        for (int m = 0; m < bands.count(); ++m)
            block.set(j, 0, m, 0, QString::number(counters[size_t(m)]));
    });
}

} // namespace

void TJGFSDRS(ReportContext& context, QString& exams, const QString& title, grid::FlexGrid& grid,
              Transfer transfer)
{
    if (!useLastExam(exams))
        return;
    ReportFrame frame(context, grid, exams, transfer, scoreBandsTrap);
    frame.clear();
    const auto widths = BandWidths::parse(context.library.settings.GetSZ(title));
    if (!widths.areUsable())
        return runtime::warn(widths.refusal());
    for (int i = 0; i < frame.streamCount(); ++i) {
        const library::ColumnMarks items =
            context.library.catalogue.GetKSKMZF(exams, frame.stream(i));
        ExamFigures figures(context, exams, frame.stream(i), scoreBandsTrap);
        for (int k = 0; k < items.count(); ++k) {
            const QString& item = items.names[k];
            const double width = library::isTotal(item) ? widths.total : widths.subject;
            scoreBandsTrap([&] {
                const ScoreBands bands(items.marks[size_t(k)], width);
                Block block =
                    frame.block(i, {.title = frame.streamTitle(i, u"科  "_s, item + title),
                                    .items = bands.count()});
                frame.mergeNames(MergedNames::Classes);
                fillBlock(block, figures, item, bands);
                frame.finish(i, block, 2);
            });
        }
    }
    frame.setWidths({.all = 900});
}

} // namespace statistics
