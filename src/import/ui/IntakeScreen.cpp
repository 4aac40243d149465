#include "import/ui/IntakeScreen.h"

#include <algorithm>

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "import/ui/PreviewScreen.h"
#include "import/ui/TidyScreen.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using widgets::button;
using widgets::named;

IntakeScreen::IntakeScreen(const QString& name, const QString& caption, const SheetRules& rules,
                           library::ScoreLibrary& scoreLibrary, widgets::ScreenDialogs& dialogs,
                           Applications& applications, QWidget* parent)
    : Screen(name, caption, parent),
      m_library(scoreLibrary),
      m_dialogs(dialogs),
      m_applications(applications),
      m_intake(applications, rules)
{
    build();
    connect(Combo1, &QComboBox::currentTextChanged, this, [this](const QString& sheet) {
        if (m_intake.workbook() != nullptr && !sheet.isEmpty())
            Q_EMIT sheetChosen(*m_intake.workbook(), sheet);
    });
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &IntakeScreen::noteFileChange);
}

void IntakeScreen::build()
{
    Text1 = named(new QLineEdit(this), u"Text1"_s, u"Excel文件路径名"_s);
    Text1->setPlaceholderText(u"Excel文件路径名"_s);
    // It says which workbook is open; a name typed here would open none.
    Text1->setReadOnly(true);
    Text1->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    Command3 = button(u"Command3"_s, u"浏览(&B)"_s, this);
    // Labels without a fixed text have no name of their own, so that a screen reader reads the
    // text.
    LabelFault = named(new QLabel(this), u"LabelFault"_s, {});
    LabelFault->setTextFormat(Qt::PlainText);
    LabelFault->setWordWrap(true);
    LabelFault->hide();
    Combo1 = named(new QComboBox(this), u"Combo1"_s, u"数据表"_s);
    CheckBackup = new library::BackupBox(u"导入前备份成绩库(&K)"_s, this);
    Label4 = widgets::namedText(new QLabel(this), u"Label4"_s);
    Command1 = button(u"Command1"_s, u"导入(&I)"_s, this);
    Command2 = button(u"Command2"_s, u"退出(&X)"_s, this);
}

void IntakeScreen::layOutWorkbook(QGridLayout* layout, const QString& caption)
{
    layout->addWidget(widgets::label(u"Label1"_s, caption, Text1, this), 0, 0, 1, 3);
    layout->addWidget(Text1, 1, 0, 1, 2);
    layout->addWidget(Command3, 1, 2);
    layout->addWidget(LabelFault, 2, 0, 1, buttonTidy == nullptr ? 3 : 2);
    if (buttonTidy != nullptr)
        layout->addWidget(buttonTidy, 2, 2);
}

void IntakeScreen::makeTidyButton(tidy::Goal goal)
{
    m_tidyGoal = goal;
    buttonTidy = button(u"buttonTidy"_s, u"整理(&L)…"_s, this);
    buttonTidy->setToolTip(u"工作表不是导入要求的样子时，由它整理出能导入的表。"_s);
    setTabOrder(Command3, buttonTidy);
    connect(buttonTidy, &QPushButton::clicked, this, &IntakeScreen::tidyWorkbook);
}

void IntakeScreen::tidyWorkbook()
{
    TidyScreen screen(m_library, m_dialogs, m_applications, m_tidyGoal,
                      TidyScreen::GoalChoice::Fixed, this);
    excel::Workbook* book = m_intake.workbook();
    if (book != nullptr && book->isOpen()) {
        screen.use(*book, Text1->text());
        screen.showSheet(Combo1->currentText());
    }
    screen.setWindowModality(Qt::WindowModal);
    screen.exec();
    if (const std::optional<TidiedBook>& made = screen.tidiedBook())
        use(*made->application, *made->book, made->path);
}

bool IntakeScreen::isSheetAsWanted() const
{
    return m_intake.hasHeadings(Combo1->currentText());
}

void IntakeScreen::tellOfTidying(ImportResult result)
{
    const excel::Workbook* book = m_intake.workbook();
    if (result == ImportResult::Stopped && book != nullptr && book->isOpen() && !isSheetAsWanted())
        showFault(u"这张数据表不是导入要求的样子。点“整理”，可以由它整理出能导入的表。"_s);
}

void IntakeScreen::layOutButtons(QGridLayout* layout)
{
    m_buttons = new QHBoxLayout;
    m_buttons->addWidget(Label4, 1);
    m_buttons->addWidget(Command1);
    m_buttons->addWidget(Command2);
    layout->addLayout(m_buttons, layout->rowCount(), 0, 1, 3);
    layout->setColumnStretch(1, 1);
}

void IntakeScreen::offerPreview(std::function<std::optional<Preview>()> previewed,
                                std::function<void()> import)
{
    buttonPreview = button(u"buttonPreview"_s, u"预览(&V)…"_s, this);
    m_buttons->insertWidget(0, buttonPreview);
    connect(buttonPreview, &QPushButton::clicked, this,
            [this, previewed = std::move(previewed), import = std::move(import)] {
                showPreview(previewed, import);
            });
}

std::optional<Preview>
IntakeScreen::lookAhead(const std::function<std::optional<Preview>()>& previewed)
{
    const widgets::CommandScope command(m_dialogs);
    const runtime::Trap trap{" - Sub ShowPreview/Import"};
    std::optional<Preview> preview;
    trap([&] { preview = previewed(); });
    if (!preview)
        tellOfTidying(ImportResult::Stopped);
    return preview;
}

void IntakeScreen::showPreview(const std::function<std::optional<Preview>()>& previewed,
                               const std::function<void()>& import)
{
    std::optional<Preview> preview = lookAhead(previewed);
    if (!preview)
        return;
    PreviewScreen screen(*std::move(preview), m_dialogs, this);
    // The workbook stays usable beside it.
    screen.setWindowModality(Qt::WindowModal);
    m_isPreviewOpen = true;
    const int result = screen.exec();
    m_isPreviewOpen = false;
    if (result == QDialog::Accepted)
        import();
}

void IntakeScreen::choose(const QString& filter)
{
    const QString path = runtime::ShowFileDialog(filter, runtime::FileMode::Open);
    if (!path.isEmpty())
        browse(path);
}

void IntakeScreen::browse(const QString& path)
{
    m_intake.browse(path);
    showWorkbook(path);
}

void IntakeScreen::use(excel::Application& application, excel::Workbook& book, const QString& path)
{
    m_intake.use(application, book, path);
    showWorkbook(path);
}

void IntakeScreen::showWorkbook(const QString& path)
{
    if (m_intake.workbook() != nullptr)
        Q_EMIT workbookShown(*m_intake.application(), *m_intake.workbook());
    listSheets();
    Text1->setText(path);
    watch(path);
    showFault(m_intake.openError());
}

void IntakeScreen::listSheets()
{
    Combo1->clear();
    Combo1->addItems(m_intake.sheetNames());
}

void IntakeScreen::chooseSheet(const excel::Workbook& book, const QString& sheet)
{
    // What a running import asks and a preview shows is looked up in the whole workbook.
    if (m_intake.workbook() == &book && !m_dialogs.inCommand() && !m_isPreviewOpen)
        Combo1->setCurrentText(sheet);
}

void IntakeScreen::watch(const QString& path)
{
    if (!m_watcher.files().isEmpty())
        m_watcher.removePaths(m_watcher.files());
    m_openedVersion = QFileInfo(path).lastModified();
    if (m_openedVersion.isValid())
        m_watcher.addPath(path);
}

void IntakeScreen::noteFileChange(const QString& path)
{
    const QDateTime version = QFileInfo(path).lastModified();
    if (!version.isValid())
        showFault(u"文件已被删除或移走。"_s);
    else if (version != m_openedVersion)
        showFault(u"文件在打开之后改动过，要导入新的内容请重新浏览。"_s);
}

void IntakeScreen::showFault(const QString& fault)
{
    LabelFault->setText(fault);
    LabelFault->setVisible(!fault.isEmpty());
    if (!isVisible())
        return;
    // A wrapped label does not make its window grow by itself.
    layout()->activate();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

Backup IntakeScreen::backup() const
{
    return CheckBackup->backup();
}

} // namespace importing
