#pragma once

#include <QString>

namespace excel {

// The numbers are the codes that programs for spreadsheets use.

enum class HorizontalAlignment { General = 1, Left = -4131, Center = -4108, Right = -4152 };
enum class VerticalAlignment { Top = -4160, Center = -4108, Bottom = -4107 };
enum class LineStyle { None = -4142, Continuous = 1, Dash = -4115 };

/// Lines at the four edges of a cell.
struct CellBorders
{
    LineStyle left = LineStyle::None;
    LineStyle top = LineStyle::None;
    LineStyle right = LineStyle::None;
    LineStyle bottom = LineStyle::None;

    friend bool operator==(const CellBorders&, const CellBorders&) = default;
};

/// How a cell looks.
struct CellFormat
{
    /// Font of a new sheet; its size in points.
    static constexpr char16_t defaultFontName[] = u"宋体";
    static constexpr double defaultFontSize = 11;

    HorizontalAlignment horizontalAlignment = HorizontalAlignment::General;
    VerticalAlignment verticalAlignment = VerticalAlignment::Bottom;
    bool wrapText = false;
    bool bold = false;
    double fontSize = defaultFontSize;
    QString fontName = QString::fromUtf16(defaultFontName);
    CellBorders borders;

    friend bool operator==(const CellFormat&, const CellFormat&) = default;
};

} // namespace excel
