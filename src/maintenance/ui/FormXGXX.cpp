#include "maintenance/ui/FormXGXX.h"

#include <limits>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>

#include "library/StudentPhoto.h"
#include "library/paint/PhotoPicture.h"
#include "library/ui/StudentTreePanel.h"
#include "library/ui/StudentTreeView.h"
#include "maintenance/MissingPhotos.h"
#include "maintenance/ui/PhotoBox.h"
#include "platform/grid/ui/CellTextEditor.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/grid/ui/GridEditor.h"
#include "platform/runtime/Trap.h"
#include "platform/widgets/Unsaved.h"

namespace maintenance {

using namespace Qt::StringLiterals;
using grid::CellEditing;
using runtime::Trap;
using widgets::button;
using widgets::CommandScope;
using widgets::named;

namespace {

/// In twips.
constexpr int labelWidth = 1300;

} // namespace

FormXGXX::FormXGXX(library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                   QWidget* parent)
    : Screen(u"FormXGXX"_s, u"修改学生信息"_s, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_path(scoreLibrary.Conn.path()),
      m_record(scoreLibrary, m_photos)
{
    build();
    connectControls();
    Form_Load();
}

void FormXGXX::build()
{
    m_tree = new library::StudentTreePanel(m_dialogs, this);
    Picture1 = named(new PhotoBox(this), u"Picture1"_s, u"照片"_s);
    Picture1->setToolTip(u"点“照片名”一行，选择照片文件"_s);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_tree, 2);
    layout->addWidget(makeRecord(), 4);
    layout->addWidget(Picture1, 1, Qt::AlignTop);
    layout->addWidget(makeList(), 1);
}

QWidget* FormXGXX::makeRecord()
{
    auto* record = new QWidget(this);
    MSFlexGrid1 = named(new grid::FlexGridView(m_record.MSFlexGrid1, record), u"MSFlexGrid1"_s,
                        u"学生信息"_s);
    MSFlexGrid1->horizontalHeader()->setStretchLastSection(true);
    Text1 = named(new grid::CellTextEditor(MSFlexGrid1), u"Text1"_s, u"内容"_s);
    Text1->setMaxLength(std::numeric_limits<int>::max());
    m_editor = new grid::GridEditor(MSFlexGrid1, Text1, nullptr, {.editing = [](int row, int) {
                                        return row == StudentRecord::PhotoRow ? CellEditing::None
                                                                              : CellEditing::Text;
                                    }});
    LabelResult = widgets::namedText(new QLabel(record), u"LabelResult"_s);
    Command1 = button(u"Command1"_s, u"修改(&M)"_s, record);
    Command2 = button(u"Command2"_s, u"退出(&X)"_s, record);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(LabelResult, 1);
    buttons->addWidget(Command1);
    buttons->addWidget(Command2);
    auto* layout = new QVBoxLayout(record);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MSFlexGrid1, 1);
    layout->addLayout(buttons);
    return record;
}

QWidget* FormXGXX::makeList()
{
    Frame2 = named(new QGroupBox(u"无照片名单(&N)"_s, this), u"Frame2"_s, u"无照片名单"_s);
    List1 = named(new QListWidget(Frame2), u"List1"_s, u"无照片名单"_s);
    auto* layout = new QVBoxLayout(Frame2);
    layout->addWidget(List1);
    Frame2->hide();
    return Frame2;
}

void FormXGXX::connectControls()
{
    connect(m_tree, &library::StudentTreePanel::nodeChosen, this, &FormXGXX::ShowSel);
    connect(List1, &QListWidget::itemSelectionChanged, this, &FormXGXX::List1_Click);
    connect(m_editor, &grid::GridEditor::activated, this, &FormXGXX::MSFlexGrid1_MouseUp);
    connect(m_editor, &grid::GridEditor::edited, LabelResult, &QLabel::clear);
    connect(Command1, &QPushButton::clicked, this, &FormXGXX::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    connect(&m_library, &library::ScoreLibrary::opened, this, &FormXGXX::takeChanges);
    connect(&m_library, &library::ScoreLibrary::changed, this, &FormXGXX::takeChanges);
}

void FormXGXX::Form_Load()
{
    m_record.MSFlexGrid1.setColWidth(StudentRecord::LabelCol, labelWidth);
    MSFlexGrid1->refresh();
    MSFlexGrid1->select(0, StudentRecord::ValueCol, 0, StudentRecord::ValueCol);
    const QSize letter(fontMetrics().averageCharWidth(), fontMetrics().lineSpacing());
    resize(letter.width() * 120, letter.height() * 32);
    ShowStuTree();
}

/// The tree stays where it was scrolled to, with the student shown selected.
void FormXGXX::ShowStuTree()
{
    const Trap trap{" - Sub ShowStuTree/FormXGXX"};
    trap([&] {
        QScrollBar* bar = m_tree->view()->verticalScrollBar();
        const int place = bar->value();
        m_tree->setTree(library::readStudentTree(m_library.Conn));
        bar->setValue(place);
        m_tree->select(m_record.StuID);
    });
}

void FormXGXX::fillList()
{
    const Trap trap{" - Private Sub meJCTP_Click/FormMain"};
    const QSignalBlocker filling(List1);
    const int place = List1->verticalScrollBar()->value();
    List1->clear();
    trap([&] {
        for (const StudentWithoutPhoto& student : studentsWithoutPhoto(m_library.Conn)) {
            auto* item = new QListWidgetItem(student.name, List1);
            item->setData(Qt::UserRole, student.id);
            item->setToolTip(
                u"%1 班 %2 号"_s.arg(student.classNumber.text(), student.number.text()));
        }
    });
    List1->verticalScrollBar()->setValue(place);
}

void FormXGXX::listWithoutPhoto()
{
    const CommandScope command(m_dialogs);
    fillList();
    if (Frame2->isVisibleTo(this))
        return;
    Frame2->show();
    resize(width() + Frame2->sizeHint().width(), height());
}

void FormXGXX::ShowSel()
{
    leaveList();
    choose(m_tree->selected().value_or(0));
}

void FormXGXX::List1_Click()
{
    const QList<QListWidgetItem*> items = List1->selectedItems();
    if (!items.isEmpty())
        choose(items.constFirst()->data(Qt::UserRole).toLongLong());
}

/// A click on any of the list is a choice again.
void FormXGXX::leaveList()
{
    const QSignalBlocker leaving(List1);
    List1->clearSelection();
}

/// A class is no student. Chosen once more, the student keeps what was typed.
void FormXGXX::choose(qint64 id)
{
    const bool isEdited = id == m_record.StuID && m_record.isChanged();
    if (id == 0 || isEdited)
        return;
    const CommandScope command(m_dialogs);
    if (mayLeave())
        ShowGeRenXX(id);
    else
        leaveList();
    m_tree->select(m_record.StuID);
}

void FormXGXX::ShowGeRenXX(qint64 id)
{
    m_editor->HideTS();
    LabelResult->clear();
    if (!m_record.ShowGeRenXX(id))
        ShowStuTree();
    MSFlexGrid1->refresh();
    showPhoto();
}

void FormXGXX::showPhoto()
{
    if (m_record.StuID == 0)
        Picture1->clear();
    else
        ZoomPic(library::studentPhoto(m_library, m_record.StuID));
}

void FormXGXX::ZoomPic(const QString& path)
{
    const Trap trap{" - Sub ZoomPic/FormXGXX"};
    const QString noPicture = m_library.paths().dataFile(u"nopic.gif"_s);
    const auto load = [this](const QString& file) {
        Picture1->setPhoto(library::readPhoto(file, screen()->size()));
    };
    Picture1->clear();
    if (!trap([&] { load(path); }) && path != noPicture)
        trap([&] { load(noPicture); });
}

/// The photo is a file; every other cell is a text that the box above it holds.
void FormXGXX::MSFlexGrid1_MouseUp(int MouseRow)
{
    if (MouseRow != StudentRecord::PhotoRow)
        return;
    const CommandScope command(m_dialogs);
    if (m_record.StuID == 0)
        return runtime::warn(u"请先选择一名学生。"_s);
    const QString path =
        runtime::ShowFileDialog(u"所有图片文件(*.*)|*.*|"_s, runtime::FileMode::Open);
    if (path.isEmpty() || !m_record.choosePhoto(path))
        return;
    LabelResult->clear();
    ZoomPic(path);
    MSFlexGrid1->refreshCell(MouseRow, StudentRecord::ValueCol);
}

void FormXGXX::Command1_Click()
{
    const CommandScope command(m_dialogs);
    save();
}

RecordSave FormXGXX::save()
{
    m_editor->HideTS();
    LabelResult->clear();
    const RecordSave result = m_record.Command1_Click();
    MSFlexGrid1->refresh();
    if (result == RecordSave::GivenUp || result == RecordSave::Failed)
        return result;
    if (!m_record.isPhotoChosen())
        showPhoto();
    if (Frame2->isVisibleTo(this))
        fillList();
    LabelResult->setText(m_record.isChanged() ? u"已保存，有的没有存入"_s : u"已保存"_s);
    return result;
}

bool FormXGXX::mayLeave()
{
    if (!m_record.isChanged())
        return true;
    const CommandScope command(m_dialogs);
    return widgets::settleUnsaved(u"学生信息有改动，还没有保存。"_s, [this] {
        save();
        return !m_record.isChanged();
    });
}

void FormXGXX::discard()
{
    m_record.clear();
    close();
}

void FormXGXX::takeChanges()
{
    if (m_library.Conn.path() != m_path)
        return discard();
    // An open cell would give back what the record held before.
    m_editor->HideTS();
    if (m_record.StuID != 0)
        m_record.refresh();
    MSFlexGrid1->refresh();
    ShowStuTree();
    if (Frame2->isVisibleTo(this))
        fillList();
    if (!m_record.isPhotoChosen())
        showPhoto();
}

} // namespace maintenance
