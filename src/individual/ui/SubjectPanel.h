#pragma once

#include <vector>

#include <QScrollArea>

#include "individual/ChartColors.h"
#include "individual/ChartRanks.h"

class QCheckBox;
class QGridLayout;
class QRadioButton;

namespace individual {

class ColorSwatch;

/// What the chart shows: the kind of ranks, and a box with its colour for each column.
class SubjectPanel : public QScrollArea
{
    Q_OBJECT

public:
    /// The first of the columns is ticked.
    SubjectPanel(const QStringList& columns, ChartColors& colors, QWidget* parent);

    RankKind kind() const;
    /// The ticked columns with their colours.
    std::vector<TickedColumn> ticked() const;

    /// The colour of a column, counted from 1, as 0xBBGGRR.
    int color(int index) const;
    void setColor(int index, int color);

Q_SIGNALS:
    /// A box was ticked or unticked, or the kind of ranks chosen.
    void chosen();
    /// The swatch of a column, counted from 1, was pressed.
    void swatchPressed(int index);

private:
    QWidget* makeKinds(QWidget* parent);
    void addColumn(QGridLayout* layout, const QString& column, int color);

    QStringList m_columns;
    QRadioButton* Option1 = nullptr;
    QRadioButton* Option2 = nullptr;
    // Counted from 0, unlike the columns.
    std::vector<QCheckBox*> CheckBox1;
    std::vector<ColorSwatch*> Command1;
};

} // namespace individual
