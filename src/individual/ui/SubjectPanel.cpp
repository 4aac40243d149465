#include "individual/ui/SubjectPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QRadioButton>
#include <QScrollBar>

#include "individual/ui/ColorSwatch.h"
#include "platform/widgets/Screen.h"

namespace individual {

using namespace Qt::StringLiterals;
using widgets::named;

SubjectPanel::SubjectPanel(const QStringList& columns, ChartColors& colors, QWidget* parent)
    : QScrollArea(parent), m_columns(columns)
{
    named(this, u"Picture2"_s, u"图中的科目"_s);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* Frame1 = named(new QWidget, u"Frame1"_s, u"图中的科目"_s);
    auto* layout = new QGridLayout(Frame1);
    layout->addWidget(makeKinds(Frame1), 0, 0, 1, 2);
    layout->setVerticalSpacing(2);
    layout->setColumnStretch(1, 1);
    for (int i = 1; i <= columns.size(); ++i)
        addColumn(layout, columns[i - 1], colors.color(i));
    if (!CheckBox1.empty())
        CheckBox1.front()->setChecked(true);
    setWidget(Frame1);
    // The frame alone stands between its contents and the tree.
    setMaximumHeight(Frame1->sizeHint().height() + 2 * frameWidth());
    setMinimumWidth(Frame1->sizeHint().width() + 2 * frameWidth()
                    + verticalScrollBar()->sizeHint().width());
}

QWidget* SubjectPanel::makeKinds(QWidget* parent)
{
    auto* kinds = new QWidget(parent);
    Option1 = named(new QRadioButton(u"年名(&N)"_s, kinds), u"Option1"_s, u"年名"_s);
    Option2 = named(new QRadioButton(u"班名(&B)"_s, kinds), u"Option2"_s, u"班名"_s);
    Option1->setChecked(true);
    auto* layout = new QHBoxLayout(kinds);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Option1);
    layout->addWidget(Option2);
    // The arrow keys choose without a click; one of the two tells of both.
    connect(Option1, &QRadioButton::toggled, this, &SubjectPanel::chosen);
    return kinds;
}

void SubjectPanel::addColumn(QGridLayout* layout, const QString& column, int color)
{
    const int index = int(CheckBox1.size()) + 1;
    auto* swatch = new ColorSwatch(color, this);
    named(swatch, u"Command1_%1"_s.arg(index), column + u"的颜色"_s);
    swatch->setToolTip(u"改变颜色"_s);
    auto* box = new QCheckBox(widgets::literalCaption(column), this);
    named(box, u"CheckBox1_%1"_s.arg(index), column);
    layout->addWidget(swatch, index, 0);
    layout->addWidget(box, index, 1);
    connect(box, &QCheckBox::clicked, this, &SubjectPanel::chosen);
    connect(swatch, &ColorSwatch::clicked, this, [this, index] { Q_EMIT swatchPressed(index); });
    Command1.push_back(swatch);
    CheckBox1.push_back(box);
}

RankKind SubjectPanel::kind() const
{
    return Option1->isChecked() ? RankKind::Grade : RankKind::Class;
}

std::vector<TickedColumn> SubjectPanel::ticked() const
{
    std::vector<TickedColumn> ticked;
    for (size_t i = 0; i < CheckBox1.size(); ++i) {
        if (CheckBox1[i]->isChecked())
            ticked.push_back({m_columns[qsizetype(i)], Command1[i]->color()});
    }
    return ticked;
}

int SubjectPanel::color(int index) const
{
    return Command1.at(size_t(index) - 1)->color();
}

void SubjectPanel::setColor(int index, int color)
{
    Command1.at(size_t(index) - 1)->setColor(color);
}

} // namespace individual
