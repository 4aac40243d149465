#include <gtest/gtest.h>

#include "library/ColumnNames.h"
#include "platform/grid/GridText.h"
#include "shell/GridExport.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"
#include "workbench/Browse.h"
#include "workbench/Offers.h"
#include "workbench/ScoreQuery.h"
#include "workbench/StatisticsRun.h"
#include "workbooks/readers/Reader.h"

namespace {

using namespace Qt::StringLiterals;

/// A library whose score rows have many equal neighbours: class and number, scores and ranks.
class ReportThenBrowse : public testing::Test
{
protected:
    ReportThenBrowse()
    {
        const QString streams[] = {u"文"_s, u"理"_s};
        for (int number = 1; number <= 2; ++number) {
            for (const QString& stream : streams)
                library.addExam(exams[number - 1], stream, number,
                                {{u"语文"_s, 100}, {u"数学"_s, 100}, {u"总分"_s, u"语文+数学"_s}});
        }
        for (int room = 1; room <= 6; ++room) {
            for (int number = 1; number <= 8; ++number)
                addStudent(room, number, streams[room % 2]);
        }
        library.reload();
        library.dialogs.always(u"是否继续"_s, runtime::Answer::Ok);
    }

    void addStudent(int room, int number, const QString& stream)
    {
        library.addStudent(room, number, u"学生%1-%2"_s.arg(room).arg(number), stream);
        const int score = 10 * number;
        for (const QString& exam : exams)
            library.addScores(exam, room, number,
                              {{u"语文"_s, score},
                               {u"语文年名"_s, score},
                               {u"数学"_s, score},
                               {u"数学年名"_s, number},
                               {u"总分"_s, 2 * score},
                               {u"总分年名"_s, 2 * score}});
    }

    void report(const QString& item)
    {
        ASSERT_TRUE(workbench::runReport({exams, item}, context, grid)) << item.toStdString();
    }

    void browse()
    {
        const QStringList classes = workbench::classes(library.scores.catalogue);
        const workbench::RowChoice rows{exams, classes, {u"1"_s}, {}};
        const workbench::BrowseRequest request{rows, u"原始分和名次"_s, library::AllStreams,
                                               workbench::rowsSql(rows)};
        runtime::NoProgress progress;
        ASSERT_TRUE(workbench::browse(library.scores, request, grid, progress));
    }

    /// The grid as it stands in a file.
    std::unique_ptr<excel::Workbook> exported()
    {
        excel::Application application;
        shell::copyGridToWorkbook(grid, application);
        const QString path = library.file(u"导出.xlsx"_s);
        application.Workbooks().Item(1).SaveAs(path);
        return excel::readWorkbook(path);
    }

    support::TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    const QStringList exams{u"期中"_s, u"期末"_s};
    statistics::ReportContext context{library.scores};
    grid::FlexGrid grid;
};

QString textsOf(const excel::Worksheet& sheet)
{
    QString text;
    for (int row = 1; row <= sheet.lastUsedRow(); ++row) {
        QStringList cells;
        for (int column = 1; column <= sheet.lastUsedColumn(); ++column)
            cells.append(sheet.Cells(row, column).text());
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

TEST_F(ReportThenBrowse, TheFileHasEveryStudentWhateverReportStoodThereBefore)
{
    for (const QString& item : workbench::statisticsItems(library.scores)) {
        report(item);
        browse();
        const auto book = exported();
        const excel::Worksheet& sheet = book->Worksheets().Item(1);
        ASSERT_EQ(sheet.lastUsedRow(), 1 + 2 * 48);
        EXPECT_EQ(textsOf(sheet), grid::gridText(grid)) << item.toStdString();
        for (const excel::CellRange& merge : sheet.merges().all()) {
            for (int row = merge.firstRow; row <= merge.lastRow; ++row) {
                for (int column = merge.firstColumn; column <= merge.lastColumn; ++column)
                    EXPECT_EQ(sheet.Cells(row, column),
                              sheet.Cells(merge.firstRow, merge.firstColumn))
                        << item.toStdString() << row << ',' << column;
            }
        }
    }
}

} // namespace
