#include "shell/ui/StartPage.h"

#include <algorithm>

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"
#include "shell/ui/LibraryList.h"
#include "shell/ui/Road.h"

namespace shell {

using namespace Qt::StringLiterals;
using widgets::named;

StartPage::StartPage(QWidget* parent, const FileLook::Look& look) : QScrollArea(parent)
{
    named(this, u"StartPage"_s, u"开始"_s);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    // What is on the page has the keyboard and comes into view.
    setFocusPolicy(Qt::NoFocus);
    setWidget(named(new QWidget(this), u"StartContent"_s, u"开始"_s));
    // The window's picture stays behind it.
    viewport()->setAutoFillBackground(false);
    widget()->setAutoFillBackground(false);
    // What a small screen leaves beside the workbench.
    const int letter = fontMetrics().averageCharWidth();
    const int left = screen()->availableSize().width() - 67 * letter;
    setMinimumWidth(std::clamp(left, 12 * letter, 28 * letter));
    build(look);
    layOut(new QVBoxLayout(widget()));
    connectAll();
    showLibraries({});
}

QPushButton* StartPage::makeButton(const QString& name, const QString& caption, const QString& tip)
{
    QPushButton* made = widgets::button(name, caption, widget());
    made->setToolTip(tip);
    return made;
}

void StartPage::build(const FileLook::Look& look)
{
    m_new = makeButton(u"ButtonNew"_s, u"新建成绩库(&N)…"_s, u"从第一步开始"_s);
    m_open = makeButton(u"ButtonOpen"_s, u"打开成绩库(&Q)…"_s, u"打开已有的成绩库文件"_s);
    m_demo = makeButton(u"ButtonDemo"_s, u"打开示范成绩库(&V)"_s,
                        u"虚构的学校，三次考试，可以随意试用"_s);
    m_libraries = named(new LibraryList(widget(), look), u"ListLibraries"_s, u"最近的成绩库"_s);
    m_caption = widgets::label(u"LabelLibraries"_s, u"最近的成绩库(&R)"_s, m_libraries, widget());
    m_remove = makeButton(u"ButtonRemove"_s, u"从列表中移除(&W)"_s,
                          u"只从列表中移除，文件不会删除（Delete 键）"_s);
}

void StartPage::layOut(QVBoxLayout* layout)
{
    auto* title = widgets::namedText(new QLabel(u"开始"_s, widget()), u"LabelStart"_s);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    title->setFont(large);
    layout->addWidget(title);
    for (QPushButton* way : {m_new, m_open, m_demo}) {
        way->setMaximumWidth(fontMetrics().averageCharWidth() * 50);
        layout->addWidget(way);
    }
    layout->addSpacing(fontMetrics().lineSpacing() / 2);
    layout->addWidget(m_caption);
    layout->addWidget(m_libraries);
    layout->addWidget(m_remove, 0, Qt::AlignLeft);
    layout->addSpacing(fontMetrics().lineSpacing() / 2);
    auto* road =
        widgets::namedText(new QLabel(u"从名单到统计，四步："_s, widget()), u"LabelRoad"_s);
    layout->addWidget(road);
    layout->addWidget(new Road(widget()));
    layout->addStretch(1);
}

void StartPage::connectAll()
{
    connect(m_new, &QPushButton::clicked, this, &StartPage::newRequested);
    connect(m_open, &QPushButton::clicked, this, &StartPage::openRequested);
    connect(m_demo, &QPushButton::clicked, this, &StartPage::demoRequested);
    connect(m_libraries, &LibraryList::openRequested, this, &StartPage::libraryRequested);
    connect(m_libraries, &LibraryList::removalRequested, this, &StartPage::removalRequested);
    connect(m_remove, &QPushButton::clicked, this,
            [this] { Q_EMIT removalRequested(m_libraries->chosen()); });
}

void StartPage::showLibraries(const QStringList& paths)
{
    for (QWidget* part : std::initializer_list<QWidget*>{m_caption, m_libraries, m_remove})
        part->setVisible(!paths.isEmpty());
    m_libraries->showLibraries(paths);
}

void StartPage::begin()
{
    if (m_libraries->count() > 0)
        m_libraries->setFocus();
    else
        m_new->setFocus();
}

} // namespace shell
