#include "workbooks/ui/WorksheetView.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QFontMetricsF>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>

#include <gtest/gtest.h>

#include "gui/WorkbookFixture.h"
#include "workbooks/ui/CellDisplay.h"
#include "workbooks/ui/SheetPages.h"

namespace {

using namespace Qt::StringLiterals;
using excel::Worksheet;
using excel::WorksheetView;

class SheetView : public support::WorkbookFixture
{
};

TEST_F(SheetView, ItsModelKeepsTheRulesOfModels)
{
    const QAbstractItemModelTester tester(view().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    sheet(1).setCell(500, 40, 1);
    window().refresh();
    EXPECT_GT(view().model()->rowCount(), 500);
    EXPECT_GT(view().model()->columnCount(), 40);
}

TEST_F(SheetView, ShowsTheCellsWithNumberedRowsAndLetteredColumns)
{
    EXPECT_EQ(shown(1, 1), u"班级"_s);
    EXPECT_EQ(shown(2, 2), u"0805"_s);
    EXPECT_EQ(shown(3, 2), u"66.6666666666667"_s);
    EXPECT_EQ(shown(3, 3), u"TRUE"_s);
    EXPECT_EQ(view().model()->headerData(0, Qt::Vertical), u"1"_s);
    EXPECT_EQ(view().model()->headerData(0, Qt::Horizontal), u"A"_s);
}

TEST_F(SheetView, ALoneCellAtTheEndOfTheGridDoesNotHurt)
{
    sheet(1).setCell(excel::lastGridRow, excel::lastGridColumn, u"末"_s);
    window().refresh();
    EXPECT_EQ(view().model()->rowCount(), excel::lastGridRow);
    QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(view().currentIndex().data().toString(), u"末"_s);
}

TEST_F(SheetView, ARefreshKeepsTheSelectionAndThePlace)
{
    sheet(1).setCell(300, 1, 1);
    window().refresh();
    view().setCurrentIndex(view().model()->index(200, 2));
    const QRect place = view().visualRect(view().currentIndex());
    sheet(1).setCell(301, 1, 1);
    window().refresh();
    EXPECT_EQ(view().currentIndex(), view().model()->index(200, 2));
    EXPECT_TRUE(view().selectionModel()->isSelected(view().model()->index(200, 2)));
    EXPECT_EQ(view().visualRect(view().currentIndex()), place);
}

TEST_F(SheetView, ShowsMergesSizesAndWhatIsHidden)
{
    sheet(1).Range(5, 1, 6, 3).setMergeCells(true);
    sheet(1).setColumnWidth(2, 2, 20);
    sheet(1).geometry().addColumns({4, 4, 8, true});
    sheet(1).setRowHeight(2, 36);
    sheet(1).setRowState(3, excel::RowState::Hidden);
    window().refresh();
    EXPECT_EQ(view().rowSpan(4, 0), 2);
    EXPECT_EQ(view().columnSpan(4, 0), 3);
    EXPECT_GT(view().columnWidth(1), 2 * view().columnWidth(0));
    EXPECT_EQ(view().rowHeight(1), 36 * view().logicalDpiY() / 72);
    EXPECT_TRUE(view().isRowHidden(2));
    EXPECT_TRUE(view().isColumnHidden(3));
    sheet(1).setRowState(3, excel::RowState::Shown);
    sheet(1).setRowHeight(2, excel::SheetGeometry::standardRowHeight);
    window().refresh();
    EXPECT_FALSE(view().isRowHidden(2));
    EXPECT_EQ(view().rowHeight(1), view().rowHeight(0));
}

TEST_F(SheetView, CopiesTheSelectedCellsAsTextAndAsATable)
{
    clickCell(2, 2);
    clickCell(3, 3, Qt::ShiftModifier);
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"0805\t张三\r\n66.6666666666667\tTRUE\r\n"_s);
    EXPECT_TRUE(copied->html().contains(u"<td style=\"mso-number-format:'\\@'\">0805</td>"_s));
}

TEST_F(SheetView, ACopyOfAllIsTheUsedCellsThatAreSeen)
{
    sheet(1).setRowState(2, excel::RowState::Hidden);
    window().refresh();
    QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
    click(u"Copy"_s);
    EXPECT_EQ(QApplication::clipboard()->text(),
              u"班级\t学号\t姓名\r\n2\t66.6666666666667\tTRUE\r\n"_s);
}

TEST_F(SheetView, FindsOnwardAndBackAroundTheEnd)
{
    sheet(1).setCell(40, 2, u"张三丰"_s);
    window().refresh();
    QTest::keyClick(&view(), Qt::Key_F, Qt::ControlModifier);
    auto* text = part<QLineEdit>(u"FindText"_s);
    ASSERT_TRUE(text->isVisible());
    text->setText(u"张三"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(view().currentIndex(), view().model()->index(1, 2));
    QTest::keyClick(text, Qt::Key_F3);
    EXPECT_EQ(view().currentIndex(), view().model()->index(39, 1));
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(view().currentIndex(), view().model()->index(1, 2));
    QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(view().currentIndex(), view().model()->index(39, 1));
    text->setText(u"没有的"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(part<QLabel>(u"FindResult"_s)->text(), u"没有找到"_s);
}

TEST_F(SheetView, AMergedBlockIsFoundOnceAndHidesWhatItCovers)
{
    for (int column = 1; column <= 3; ++column)
        sheet(1).setCell(10, column, u"标题"_s);
    sheet(1).Range(10, 1, 10, 3).setMergeCells(true);
    sheet(1).setCell(11, 1, u"标题之下"_s);
    sheet(1).setCell(12, 1, u"可见"_s);
    sheet(1).setCell(12, 2, u"标题以外"_s);
    sheet(1).Range(12, 1, 12, 2).setMergeCells(true);
    window().refresh();
    for (const int row : {10, 11, 10}) {
        EXPECT_TRUE(view().findText(u"标题"_s, Qt::AscendingOrder));
        EXPECT_EQ(view().currentIndex(), view().model()->index(row - 1, 0));
    }
    EXPECT_FALSE(view().findText(u"以外"_s, Qt::AscendingOrder));
    clickCell(10, 1);
    clickCell(12, 3, Qt::ShiftModifier);
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              u"标题\t标题\t标题\r\n标题之下\t\t\r\n可见\t\t\r\n"_s);
}

TEST_F(SheetView, FindsSeveralInOneRowInBothDirections)
{
    for (int column = 1; column <= 4; ++column)
        sheet(1).setCell(7, column, u"缺考"_s);
    window().refresh();
    std::vector<int> columns;
    clickCell(7, 2);
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(view().findText(u"缺考"_s, Qt::AscendingOrder));
        columns.push_back(view().currentIndex().column() + 1);
    }
    EXPECT_EQ(columns, (std::vector{3, 4, 1, 2}));
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(view().findText(u"缺考"_s, Qt::DescendingOrder));
        columns[size_t(i)] = view().currentIndex().column() + 1;
    }
    EXPECT_EQ(columns, (std::vector{1, 4, 3, 2}));
}

TEST_F(SheetView, TheStatusBarTellsTheCurrentCellWhole)
{
    clickCell(2, 3);
    EXPECT_EQ(part<QLabel>(u"CellText"_s)->text(), u"C2  张三"_s);
}

/// What the view shows at a place of its viewport.
class Seen
{
public:
    explicit Seen(WorksheetView& view) : m_image(view.viewport()->grab().toImage()) {}

    QColor at(int x, int y) const
    {
        const QPointF dot = QPointF(x + 0.5, y + 0.5) * m_image.devicePixelRatio();
        return m_image.pixelColor(int(dot.x()), int(dot.y()));
    }

private:
    QImage m_image;
};

/// How light the right edge of a cell is.
int rightEdge(WorksheetView& view, int row, int column)
{
    const QRect cell = view.visualRect(view.model()->index(row - 1, column - 1));
    return Seen(view).at(cell.right(), cell.center().y() - 4).lightness();
}

TEST_F(SheetView, DrawsBordersOverTheGridLines)
{
    const int plain = rightEdge(view(), 5, 5);
    sheet(1).Range(5, 5, 5, 5).setBorders(excel::LineStyle::Continuous);
    window().refresh();
    const int line = rightEdge(view(), 5, 5);
    EXPECT_LT(line, 40);
    EXPECT_GT(plain, 180);
    EXPECT_EQ(rightEdge(view(), 5, 4), line);
}

/// A picture file in one colour, `size` large.
QString colourFile(const QString& path, const QColor& colour, const QSize& size = {20, 20})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    EXPECT_TRUE(image.save(path));
    return path;
}

TEST_F(SheetView, PicturesLieOverTheCellsAndMoveWithThem)
{
    excel::Picture& picture =
        sheet(1).insertPicture(colourFile(file(u"red.png"_s), Qt::red, {40, 20}));
    picture.setLeft(60);
    picture.setTop(30);
    sheet(1).setCell(1, 1, u"x"_s);
    window().refresh();
    const QRect cell = view().visualRect(view().model()->index(2, 1));
    EXPECT_EQ(Seen(view()).at(cell.center().x(), cell.center().y()), QColor(Qt::red));
    view().horizontalScrollBar()->setValue(cell.width() + 100);
    EXPECT_NE(Seen(view()).at(cell.center().x(), cell.center().y()), QColor(Qt::red));
}

/// Pixels of a cell that are not as those of an empty one.
int inkIn(WorksheetView& view, int row, int column)
{
    const Seen seen(view);
    const QRect cell =
        view.visualRect(view.model()->index(row - 1, column - 1)).adjusted(0, 3, -3, -3);
    int ink = 0;
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        for (int x = cell.left(); x <= cell.right(); ++x)
            ink += seen.at(x, y) != view.palette().color(QPalette::Base) ? 1 : 0;
    }
    return ink;
}

TEST_F(SheetView, LongTextsRunOverEmptyCellsButNotOverFilledOnes)
{
    const QString text(20, u'长');
    sheet(1).setCell(6, 1, text);
    sheet(1).setCell(7, 1, text);
    sheet(1).setCell(7, 2, u" "_s);
    sheet(1).setCell(8, 1, text);
    sheet(1).Range(8, 1, 8, 1).setHorizontalAlignment(excel::HorizontalAlignment::Center);
    window().refresh();
    EXPECT_GT(inkIn(view(), 6, 2), 0);
    EXPECT_EQ(inkIn(view(), 7, 2), 0);
    EXPECT_EQ(inkIn(view(), 8, 2), 0);
}

/// The inside of a block, where neither lines nor the frame of the current cell are.
QImage insideOf(const QImage& image, const QRect& block)
{
    return image.copy(block.adjusted(3, 3, -3, -3)).convertToFormat(QImage::Format_RGB32);
}

/// The first page of a sheet, in the sizes and colours of a view.
QImage printed(const Worksheet& sheet, const WorksheetView& view)
{
    QImage page(view.viewport()->size(), QImage::Format_RGB32);
    page.fill(view.palette().color(QPalette::Base));
    page.setDotsPerMeterX(qRound(view.logicalDpiX() / 0.0254));
    page.setDotsPerMeterY(qRound(view.logicalDpiY() / 0.0254));
    QPainter painter(&page);
    excel::SheetPages(sheet, QSizeF(1000, 1000)).paint(painter, 0, view.logicalDpiX() / 72.0);
    return page;
}

TEST_F(SheetView, APageIsDrawnAsTheWindowIs)
{
    sheet(1).setCell(6, 1, QString(9, u'长'));
    sheet(1).setCell(7, 3, u"右"_s);
    sheet(1).Range(7, 3, 7, 3).setHorizontalAlignment(excel::HorizontalAlignment::Right);
    sheet(1).Range(8, 1, 9, 3).setMergeCells(true);
    sheet(1).setCellText(8, 1, u"合并"_s);
    sheet(1).Range(8, 1, 9, 3).setHorizontalAlignment(excel::HorizontalAlignment::Center);
    sheet(1).Range(1, 1, 2, 3).setBorders(excel::LineStyle::Continuous);
    sheet(1).insertPicture(colourFile(file(u"blue.png"_s), Qt::blue, {30, 10})).setTop(9.5 * 13.5);
    window().refresh();
    view().setCurrentIndex(view().model()->index(0, 6));
    const QImage seen = view().viewport()->grab().toImage();
    ASSERT_EQ(seen.devicePixelRatio(), 1);
    ASSERT_EQ(view().palette().color(QPalette::Text), QColor(Qt::black));

    const QImage page = printed(sheet(1), view());
    for (const auto& [row, column] : {std::pair{1, 1}, {2, 2}, {3, 2}, {7, 3}, {8, 1}, {10, 1}}) {
        const QRect cell = view().visualRect(view().model()->index(row - 1, column - 1));
        EXPECT_EQ(insideOf(seen, cell), insideOf(page, cell)) << row << ',' << column;
    }
    const QRect text = view().visualRect(view().model()->index(5, 0));
    const QRect crossed = view().visualRect(view().model()->index(5, 1));
    EXPECT_EQ(insideOf(seen, text | crossed), insideOf(page, text | crossed));
}

TEST_F(SheetView, APictureIsDecodedOnce)
{
    const excel::Picture& one = sheet(1).insertPicture(colourFile(file(u"red.png"_s), Qt::red));
    const excel::Picture& other =
        sheet(1).insertPicture(colourFile(file(u"green.png"_s), Qt::green));
    excel::PictureImages images;
    const qint64 first = images.imageOf(one).cacheKey();
    EXPECT_EQ(images.imageOf(other).pixelColor(1, 1), QColor(Qt::green));
    EXPECT_EQ(images.imageOf(one).cacheKey(), first);
    EXPECT_EQ(images.imageOf(one).pixelColor(1, 1), QColor(Qt::red));
}

TEST_F(SheetView, APictureOverSeveralPagesIsInThePdfOnce)
{
    sheet(1).insertPicture(colourFile(file(u"red.png"_s), Qt::red, {200, 100}));
    excel::SheetPages pages(sheet(1), QSizeF(2 * 54, 3 * 13.5));
    ASSERT_GT(pages.count(), 3);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    QPainter painter(&writer);
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0)
            writer.newPage();
        pages.paint(painter, page, 1);
    }
    painter.end();
    EXPECT_EQ(pdf.data().count("/Subtype /Image"), 1);
}

TEST_F(SheetView, AMovedPictureIsShownAtItsNewPlace)
{
    excel::Picture& picture = sheet(1).insertPicture(colourFile(file(u"red.png"_s), Qt::red));
    window().refresh();
    picture.setLeft(150);
    picture.setTop(75);
    window().refresh();
    const int x = 150 * view().logicalDpiX() / 72;
    const int y = 75 * view().logicalDpiY() / 72;
    EXPECT_EQ(Seen(view()).at(x + 8, y + 8), QColor(Qt::red));
    EXPECT_NE(Seen(view()).at(10, 10), QColor(Qt::red));
}

TEST(CellDisplay, ANumberLosesDecimalsBeforeItIsCut)
{
    const QFontMetricsF metrics(QApplication::font());
    const auto shown = [&](const runtime::Value& value, const QString& room) {
        return excel::fittingNumber(value, metrics, metrics.horizontalAdvance(room));
    };
    EXPECT_EQ(shown(66.125, u"66.125"_s), u"66.125"_s);
    EXPECT_EQ(shown(66.66666666, u"66.6667"_s), u"66.6667"_s);
    EXPECT_EQ(shown(66.66666666, u"66"_s), u"67"_s);
    EXPECT_EQ(shown(123456, u"####"_s), u"####"_s);
}

TEST(CellDisplay, WithoutAnAlignmentTheContentDecides)
{
    const excel::CellFormat plain;
    const Qt::Alignment down = Qt::AlignBottom;
    EXPECT_EQ(excel::displayAlignment(plain, 1.5), down | Qt::AlignRight);
    EXPECT_EQ(excel::displayAlignment(plain, u"1.5"_s), down | Qt::AlignLeft);
    EXPECT_EQ(excel::displayAlignment(plain, true), down | Qt::AlignHCenter);
    EXPECT_EQ(excel::displayAlignment(plain, runtime::Value::error(u"#N/A"_s)),
              down | Qt::AlignHCenter);
    excel::CellFormat set;
    set.horizontalAlignment = excel::HorizontalAlignment::Center;
    set.verticalAlignment = excel::VerticalAlignment::Top;
    EXPECT_EQ(excel::displayAlignment(set, 1.5), Qt::AlignTop | Qt::AlignHCenter);
}

} // namespace
