#include "platform/widgets/ProgramStyle.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QTableView>

#include <gtest/gtest.h>

namespace {

using widgets::ProgramStyle;

/// Of a desktop whose windows are dark.
QPalette darkPalette()
{
    QPalette palette(QColor(49, 54, 59), QColor(35, 38, 41));
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::Text, QColor(239, 240, 241));
    palette.setColor(QPalette::WindowText, QColor(239, 240, 241));
    return palette;
}

/// The largest difference of lightness between the ground and what is drawn on it.
int contrast(QStyle::PrimitiveElement element, const QPalette& palette)
{
    const ProgramStyle style;
    QStyleOptionButton option;
    option.palette = palette;
    option.rect = QRect(0, 0, 16, 16);
    option.state = QStyle::State_Enabled | QStyle::State_Off;
    QImage image(16, 16, QImage::Format_RGB32);
    const QColor ground = palette.color(QPalette::Window);
    image.fill(ground);
    QPainter painter(&image);
    style.drawPrimitive(element, &option, &painter, nullptr);
    painter.end();
    int largest = 0;
    for (int x = 0; x < image.width(); ++x)
        largest = std::max(largest, image.pixelColor(x, 8).lightness() - ground.lightness());
    return largest;
}

TEST(ProgramStyle, EmptyBoxesAndOptionButtonsAreSeenInADarkPalette)
{
    EXPECT_GT(contrast(QStyle::PE_IndicatorCheckBox, darkPalette()), 50);
    EXPECT_GT(contrast(QStyle::PE_IndicatorRadioButton, darkPalette()), 50);
}

TEST(ProgramStyle, LinesBetweenCellsStandOutFromTheCellsInAnyPalette)
{
    const ProgramStyle style;
    for (const QPalette& palette : {QPalette(Qt::white), darkPalette()}) {
        QTableView table;
        table.setPalette(palette);
        const QColor line(
            QRgb(style.styleHint(QStyle::SH_Table_GridLineColor, nullptr, &table, nullptr)));
        const int base = table.palette().color(QPalette::Base).lightness();
        EXPECT_GT(std::abs(line.lightness() - base), 25) << base;
    }
}

} // namespace
