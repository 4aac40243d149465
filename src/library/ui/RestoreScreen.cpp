#include "library/ui/RestoreScreen.h"

#include <algorithm>

#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "library/AskedRestore.h"
#include "library/CopyGrids.h"
#include "platform/database/FileIdentity.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Dialogs.h"
#include "platform/widgets/ScreenProgress.h"

namespace library {

using namespace Qt::StringLiterals;
using widgets::CommandScope;
using widgets::defaultButton;
using widgets::enterButton;
using widgets::named;
using widgets::namedText;

RestoreScreen::RestoreScreen(ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                             QString libraryPath, QWidget* parent)
    : DialogScreen(u"RestoreScreen"_s, u"恢复备份"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_path(std::move(libraryPath))
{
    makeWidgets();
    listCopies();
    showChosen();
}

void RestoreScreen::makeWidgets()
{
    auto* library = namedText(new QLabel(u"成绩库："_s + m_path, this), u"labelLibrary"_s);
    gridCopies = named(new grid::FlexGridView(m_copiesGrid, this), u"gridCopies"_s, u"备份"_s);
    gridCopies->horizontalHeader()->setStretchLastSection(true);
    labelDifferences = namedText(new QLabel(this), u"labelDifferences"_s);
    checkNames = named(new QCheckBox(u"列出名称(&N)"_s, this), u"checkNames"_s, u"列出名称"_s);
    gridDifferences = named(new grid::FlexGridView(m_differencesGrid, this), u"gridDifferences"_s,
                            u"与现在的不同之处"_s);
    gridDifferences->horizontalHeader()->setStretchLastSection(true);
    auto* heading = new QHBoxLayout;
    heading->addWidget(labelDifferences, 1);
    heading->addWidget(checkNames);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(library);
    layout->addWidget(gridCopies, 1);
    layout->addLayout(heading);
    layout->addWidget(gridDifferences, 1);
    layout->addLayout(makeButtons());
    resize(fontMetrics().averageCharWidth() * 130, fontMetrics().lineSpacing() * 32);
    connect(gridCopies, &grid::FlexGridView::rowColChanged, this, &RestoreScreen::showChosen);
    connect(gridCopies, &QAbstractItemView::doubleClicked, this, &RestoreScreen::compare);
    connect(checkNames, &QCheckBox::toggled, this, &RestoreScreen::showDifferences);
    gridCopies->setFocus();
}

QPushButton* RestoreScreen::addButton(QPushButton* made, const QString& tip,
                                      void (RestoreScreen::*press)())
{
    made->setToolTip(tip);
    connect(made, &QPushButton::clicked, this, [this, press] {
        const CommandScope command(m_dialogs);
        (this->*press)();
    });
    return made;
}

QLayout* RestoreScreen::makeButtons()
{
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(addButton(defaultButton(u"buttonCompare"_s, u"与现在比较(&D)"_s, this),
                                 u"列出选中的备份和现在的成绩库的不同之处"_s,
                                 &RestoreScreen::compare));
    buttons->addWidget(addButton(enterButton(u"buttonOtherFile"_s, u"其他文件(&F)…"_s, this),
                                 u"选择放在别处的备份，例如 U 盘上的"_s,
                                 &RestoreScreen::takeOtherFile));
    buttonRemove = addButton(enterButton(u"buttonRemove"_s, u"删除备份(&X)"_s, this), QString(),
                             &RestoreScreen::removeChosen);
    buttons->addWidget(buttonRemove);
    buttons->addWidget(addButton(enterButton(u"buttonRestore"_s, u"恢复(&R)"_s, this),
                                 u"成绩库换成选中的备份，先备份现在的"_s, &RestoreScreen::restore));
    buttons->addStretch();
    QPushButton* closing = enterButton(u"buttonClose"_s, u"关闭(&C)"_s, this);
    buttons->addWidget(closing);
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
    return buttons;
}

void RestoreScreen::listCopies()
{
    m_copies = m_otherFiles;
    for (const LibraryCopy& copy : copiesOf(m_path))
        m_copies.push_back(copy);
    m_copiesGrid = copiesGrid(m_copies);
    gridCopies->refresh();
}

void RestoreScreen::showDifferences()
{
    m_differencesGrid =
        differencesGrid(m_lines, checkNames->isChecked() ? Details::Shown : Details::Hidden);
    gridDifferences->refresh();
}

void RestoreScreen::forgetDifferences()
{
    m_lines.clear();
    labelDifferences->setText(m_copies.empty() ? u"成绩库旁边没有备份。"_s
                                               : u"选中一份备份，按“与现在比较”看有哪些不同。"_s);
    showDifferences();
}

bool RestoreScreen::isOtherFile(int row) const
{
    return row >= 1 && size_t(row) <= m_otherFiles.size();
}

void RestoreScreen::showChosen()
{
    forgetDifferences();
    const bool isOther = isOtherFile(m_copiesGrid.Row);
    buttonRemove->setText(isOther ? u"从列表中去掉(&X)"_s : u"删除备份(&X)"_s);
    buttonRemove->setAccessibleName(isOther ? u"从列表中去掉"_s : u"删除备份"_s);
    buttonRemove->setToolTip(isOther ? u"只从列表中去掉，文件不动"_s : u"删除选中的备份文件"_s);
}

const LibraryCopy* RestoreScreen::chosen()
{
    const size_t place = size_t(m_copiesGrid.Row) - 1;
    if (m_copiesGrid.Row >= 1 && place < m_copies.size())
        return &m_copies[place];
    runtime::warn(u"请先选择一份备份！"_s);
    return nullptr;
}

void RestoreScreen::compare()
{
    const LibraryCopy* copy = chosen();
    if (copy == nullptr)
        return;
    forgetDifferences();
    if (!m_library.Conn.isOpen()) {
        runtime::warn(u"现在的成绩库没有打开，无法比较。"_s);
        return;
    }
    widgets::ScreenProgress progress(this);
    const std::optional<CopyDifferences> differences =
        differencesFrom(m_library, m_path, copy->path, progress);
    if (!differences)
        return;
    m_lines = differenceLines(*differences);
    labelDifferences->setText(m_lines.empty()
                                  ? noDifferenceText()
                                  : timeText(copy->time) + u" 的备份和现在的成绩库的不同之处："_s);
    showDifferences();
}

void RestoreScreen::takeOtherFile()
{
    const QString file =
        runtime::ShowFileDialog(u"备份或成绩库|*.bak;*.CJK"_s, runtime::FileMode::Open);
    const QFileInfo info(file);
    if (file.isEmpty() || !info.isFile())
        return;
    const auto isListed = [&](const LibraryCopy& copy) {
        return database::isSameFile(copy.path, file);
    };
    if (std::none_of(m_copies.begin(), m_copies.end(), isListed)) {
        m_otherFiles.insert(m_otherFiles.begin(),
                            {file, info.lastModified(), info.size(), notedOccasions(file)});
        listCopies();
    }
    select(file);
    showChosen();
}

void RestoreScreen::select(const QString& file)
{
    for (size_t place = 0; place < m_copies.size(); ++place) {
        if (database::isSameFile(m_copies[place].path, file))
            gridCopies->select(int(place) + 1, 0, int(place) + 1, m_copiesGrid.Cols() - 1);
    }
}

void RestoreScreen::removeChosen()
{
    const LibraryCopy* copy = chosen();
    if (copy == nullptr)
        return;
    if (isOtherFile(m_copiesGrid.Row))
        m_otherFiles.erase(m_otherFiles.begin() + m_copiesGrid.Row - 1);
    else
        removeFile(*copy);
    listCopies();
    showChosen();
}

void RestoreScreen::removeFile(const LibraryCopy& copy)
{
    const QString question =
        u"删除 %1 的备份？删除后不能再恢复。\n\n%2"_s.arg(timeText(copy.time), copy.path);
    constexpr int goOn = 0;
    if (runtime::choose(
            {.text = question, .buttons = {u"删除"_s, u"取消"_s}, .safe = 1, .title = u"提示"_s})
        != goOn)
        return;
    if (!removeCopy(m_path, copy.path))
        runtime::warn(u"无法删除文件 %1。"_s.arg(copy.path));
}

void RestoreScreen::restore()
{
    const LibraryCopy* copy = chosen();
    if (copy == nullptr)
        return;
    const LibraryCopy taken = *copy;
    widgets::ScreenProgress progress(this);
    if (!restoreAsked(m_library, m_path, taken, progress)) {
        // What failed may have made a copy, or have come upon one that is gone.
        listCopies();
        select(taken.path);
        showChosen();
        return;
    }
    Q_EMIT restored();
    close();
}

} // namespace library
