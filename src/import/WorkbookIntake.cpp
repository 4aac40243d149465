#include "import/WorkbookIntake.h"

#include <QFileInfo>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trap.h"

namespace importing {

using namespace Qt::StringLiterals;
using runtime::Trap;
using runtime::Value;

const QString TakingRows = u"导入数据..."_s;

const SheetRules examSheet{" - Private Sub Command1_Click/FormDaoRu",
                           {u"班级"_s, u"学号"_s, u"姓名"_s},
                           u"前3列名称应为：班级,学号,姓名"_s,
                           SheetRules::Activation::BringForward};

const SheetRules studentSheet{" - Private Sub Command1_Click/FormDaoRuXinXi",
                              {u"班级"_s, u"学号"_s, u"姓名"_s},
                              u"前3列为 班级、学号、姓名"_s,
                              SheetRules::Activation::LeaveInPlace};

const SheetRules classChangeSheet{" - Private Sub Command1_Click/FormDaoRuFenBanXinXi",
                                  {u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s, u"新学号"_s},
                                  u"前5列为：班级、学号、姓名、新班级、新学号"_s,
                                  SheetRules::Activation::LeaveInPlace};

namespace {

void refuse(const QString& text)
{
    runtime::MsgBox(text, u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical);
}

} // namespace

bool isEmptyCell(const Value& cell)
{
    return cell.isNull() || (cell.kind() == Value::Kind::Text && cell.text().isEmpty());
}

QString errorCellText(const Value& cell)
{
    return u"单元格里是错误值“%1”，没有存入。"_s.arg(cell.text());
}

WorkbookIntake::WorkbookIntake(Applications& applications, const SheetRules& rules)
    : m_applications(applications), m_rules(rules)
{
}

void WorkbookIntake::browse(const QString& path)
{
    m_path = path;
    m_openError.clear();
    m_excelBook = nullptr;
    m_applications.push_back(std::make_unique<excel::Application>());
    m_excelApp = m_applications.back().get();
    try {
        m_excelBook = &m_excelApp->Workbooks().Open(path);
        m_excelApp->setVisible(true);
    } catch (const runtime::Error& error) {
        m_openError = error.description();
        m_excelApp->Quit();
    }
}

void WorkbookIntake::use(excel::Application& application, excel::Workbook& book,
                         const QString& path)
{
    m_path = path;
    m_openError.clear();
    m_excelApp = &application;
    m_excelBook = &book;
}

QStringList WorkbookIntake::sheetNames() const
{
    QStringList names;
    Trap::silent()([&] {
        if (m_excelBook == nullptr)
            return;
        for (int i = 1; i <= m_excelBook->Worksheets().Count(); ++i)
            names.append(m_excelBook->Worksheets().Item(i).Name());
    });
    return names;
}

QString WorkbookIntake::folder() const
{
    return m_path.left(m_path.lastIndexOf(u'/') + 1);
}

QString WorkbookIntake::examNameOf(const QString& path)
{
    return QFileInfo(path).completeBaseName();
}

bool WorkbookIntake::checkWorkbookOpen() const
{
    const Trap trap(m_rules.tag);
    QString name;
    if (m_excelBook != nullptr)
        trap([&] { name = m_excelBook->Worksheets().Item(1).Name(); });
    else if (!m_openError.isEmpty())
        trap.fail(m_openError);
    if (name.isEmpty())
        refuse(u"要分析的工作簿未打开！"_s);
    return !name.isEmpty();
}

excel::Worksheet* WorkbookIntake::openSheet(const QString& name) const
{
    const Trap trap(m_rules.tag);
    excel::Worksheet* sheet = nullptr;
    trap([&] {
        excel::Worksheet& found = m_excelBook->Worksheets().Item(name);
        if (found.AutoFilterMode())
            found.AutoFilter();
        if (m_rules.activation == SheetRules::Activation::BringForward)
            found.Activate();
        if (hasHeadings(found))
            sheet = &found;
        else
            refuse(u"指定的工作表格式不对！\n\n"_s + m_rules.headingText);
    });
    return sheet;
}

bool WorkbookIntake::hasHeadings(const excel::Worksheet& sheet) const
{
    int column = 0;
    for (const QString& heading : m_rules.headings) {
        if (sheet.Cells(1, ++column).text() != heading)
            return false;
    }
    return true;
}

bool WorkbookIntake::hasHeadings(const QString& sheetName) const
{
    bool has = false;
    Trap::silent()([&] {
        has = m_excelBook != nullptr && hasHeadings(m_excelBook->Worksheets().Item(sheetName));
    });
    return has;
}

void WorkbookIntake::quitApplication()
{
    if (m_excelApp != nullptr)
        m_excelApp->Quit();
}

} // namespace importing
