#include "statistics/ComprehensiveAnalysis.h"

#include "library/ColumnNames.h"
#include "library/Settings.h"
#include "platform/database/Recordset.h"
#include "platform/database/SqlPieces.h"
#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Trap.h"
#include "statistics/NamedReports.h"

namespace statistics {

using namespace Qt::StringLiterals;
using runtime::Trap;

namespace {

const Trap analysisTrap{" - Sub ZHFX/Mdl_MDB"};

/// The reports of the sheet "考试分析", in its order. 高分段 stands for both groups; there is no
/// pass rate.
const QStringList examReports{
    u"考试人数"_s,     u"高分段"_s,       u"各科优秀率"_s,  u"各科良好率"_s, u"各科差生率"_s,
    u"各科平均分"_s,   u"各科最高分"_s,   u"各科最低分"_s,  u"各科标准差"_s, u"各分数段人数"_s,
    u"各名次段人数"_s, u"总分上线人数"_s, u"各名次段均分"_s};

/// The reports of the sheet "对比分析".
const QStringList historyReports{u"历次各名次段人数对比"_s, u"历次考试进入年级前x名人数"_s,
                                 u"历次总分上线人数"_s};

/// Whether -1 is written as the word for it.
enum class Absence { InWords, AsNumber };

/// A sheet with one row for each student.
struct StudentSheet
{
    /// Stands behind the exam in the sheet's name, and ahead of the stream in the name of the
    /// user's own choice of columns.
    QString family;
    QStringList defaultColumns;
    Absence absence;
};

class Analysis
{
public:
    Analysis(ReportContext& context, const QString& exam, excel::Application& application,
             runtime::Progress& progress)
        : m_context(context), m_exam(exam), m_application(application), m_progress(progress)
    {
    }

    AnalysisResult run();

private:
    library::Catalogue& catalogue() { return m_context.library.catalogue; }
    StreamSlot& slot() { return m_context.streamSlots[size_t(m_stream)]; }
    const QString& streamName() { return catalogue().Streams[m_stream]; }

    void runStream();
    void addBook();
    void beginSheet(int number, const QString& name);
    void fillStudents(const StudentSheet& sheet);
    void writeStudents(const StudentSheet& sheet, const QStringList& columns);
    static StudentSheet scores(const QStringList& examColumns);
    StudentSheet standardScores(const QStringList& examColumns);
    void runReports(const QStringList& names, const QString& exams);
    QString comparedExams();
    /// Tells where the work stands; true if it is to go on.
    bool advance(const QString& name);

    ReportContext& m_context;
    QString m_exam;
    excel::Application& m_application;
    runtime::Progress& m_progress;
    grid::FlexGrid MFGData;
    int m_stream = 0;
    int m_done = 0;
    bool m_cancelled = false;
};

AnalysisResult Analysis::run()
{
    m_context.library.settings.GetTJLB();
    m_context.forgetRows();
    m_context.streamSlots = {};
    const int streams = std::min(int(catalogue().Streams.size()), MaxStreams);
    m_application.setScreenUpdating(false);
    for (m_stream = 0; m_stream < streams && !m_cancelled; ++m_stream)
        runStream();
    m_context.forgetRows();
    m_progress.finish();
    m_application.setScreenUpdating(true);
    analysisTrap([&] { m_application.setVisible(true); });
    if (m_cancelled)
        return AnalysisResult::Cancelled;
    runtime::MsgBox(u"综合分析完毕！"_s);
    return AnalysisResult::Finished;
}

void Analysis::runStream()
{
    // A report whose own question fails takes this answer.
    catalogue().GetKSKM(m_exam, streamName());
    const QStringList columns = catalogue().GetKSKMZF(m_exam, streamName()).names;
    addBook();
    beginSheet(1, m_exam + u"原始分和名次("_s + streamName() + u")"_s);
    fillStudents(scores(columns));
    beginSheet(2, m_exam + u"T分("_s + streamName() + u")"_s);
    fillStudents(standardScores(columns));
    beginSheet(3, u"考试分析"_s);
    runReports(examReports, m_exam);
    beginSheet(4, u"对比分析"_s);
    runReports(historyReports, comparedExams());
}

void Analysis::addBook()
{
    analysisTrap([&] {
        slot().ReportBook = &m_application.Workbooks().Add();
        const excel::Workbook::SheetList sheets = slot().ReportBook->Worksheets();
        sheets.Add(excel::Beside::After, sheets.Item(3));
    });
}

void Analysis::beginSheet(int number, const QString& name)
{
    analysisTrap([&] {
        slot().ReportSheet = &slot().ReportBook->Worksheets().Item(number);
        slot().ReportSheet->Activate();
        slot().ReportSheet->Cells().setHorizontalAlignment(excel::HorizontalAlignment::Center);
    });
    slot().SheetRow = 1;
    analysisTrap([&] { slot().ReportSheet->setName(name); });
}

StudentSheet Analysis::scores(const QStringList& examColumns)
{
    StudentSheet sheet{library::ScoreFamily, {u"班级"_s, u"学号"_s, u"姓名"_s}, Absence::InWords};
    sheet.defaultColumns += examColumns;
    for (const QString& column : examColumns)
        sheet.defaultColumns += library::gradeRankColumn(column);
    return sheet;
}

StudentSheet Analysis::standardScores(const QStringList& examColumns)
{
    StudentSheet sheet{library::TScoreFamily, {u"班级"_s, u"学号"_s, u"姓名"_s}, Absence::AsNumber};
    for (const QString& column : examColumns)
        sheet.defaultColumns += library::tScoreColumn(column);
    // All totals of the library, not only those of the exam.
    for (const QString& total : std::as_const(catalogue().TotalColumns))
        sheet.defaultColumns += library::tRankColumn(total);
    return sheet;
}

void Analysis::fillStudents(const StudentSheet& sheet)
{
    if (!advance(sheet.family))
        return;
    library::Settings& settings = m_context.library.settings;
    QStringList columns = settings.GetZDYXS(sheet.family + streamName());
    if (columns.isEmpty())
        columns = sheet.defaultColumns;
    for (int col = 0; col < columns.size(); ++col)
        analysisTrap([&] { slot().ReportSheet->setCellText(1, col + 1, columns[col]); });
    analysisTrap([&] { writeStudents(sheet, columns); });
}

void Analysis::writeStudents(const StudentSheet& sheet, const QStringList& columns)
{
    database::Recordset rows;
    rows.Open(database::sqlWith(
                  u"select * from 成绩表 WHERE 考试名称=? and 科类=?%1 order by 班级,学号"_s,
                  {database::SqlPiece::condition(m_context.library.settings.CategoryFilter)}),
              {m_exam, streamName()}, m_context.library.Conn);
    std::vector<database::FieldByName> fields;
    for (const QString& column : columns)
        fields.emplace_back(rows, column);
    for (int& row = slot().SheetRow; !rows.Eof(); rows.MoveNext()) {
        ++row;
        for (int col = 0; col < columns.size(); ++col) {
            analysisTrap([&] {
                const QString text = fields[size_t(col)].in(rows).Value().text();
                const bool inWords = sheet.absence == Absence::InWords && text == u"-1"_s;
                // A name such as -3 is no number.
                if (columns[col] == u"姓名"_s)
                    slot().ReportSheet->setCell(row, col + 1, text);
                else
                    slot().ReportSheet->setCellText(row, col + 1, inWords ? u"缺考"_s : text);
            });
        }
    }
}

bool Analysis::advance(const QString& name)
{
    const int sheetsAndReports = 2 + int(examReports.size() + historyReports.size());
    m_progress.report(u"综合分析："_s + streamName() + u"科 "_s + name, m_done++,
                      sheetsAndReports * int(catalogue().Streams.size()));
    m_cancelled = m_cancelled || m_progress.cancelled();
    return !m_cancelled;
}

void Analysis::runReports(const QStringList& names, const QString& exams)
{
    for (const QString& name : names) {
        if (!advance(name))
            return;
        if (m_context.library.settings.GetSZJR(name) != u"是"_s)
            continue;
        QString list = exams;
        analysisTrap([&] { namedReport(name)(m_context, list, MFGData, Transfer::ToSheet); });
    }
}

QString Analysis::comparedExams()
{
    const QString value = m_context.library.settings.GetSZ(library::ComparedExams);
    return value == library::AllOfThem ? catalogue().ExamList.join(u',') : value;
}

} // namespace

AnalysisResult ZHFX(ReportContext& context, const QString& exam, excel::Application& application,
                    runtime::Progress& progress)
{
    return Analysis(context, exam, application, progress).run();
}

} // namespace statistics
