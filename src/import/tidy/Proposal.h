#pragma once

#include <optional>
#include <vector>

#include <QString>
#include <QStringList>

namespace tidy {

/// The import that the tidied sheet is for.
enum class Goal { ExamScores, StudentList };

/// What a column of the sheet is taken for.
enum class Field {
    Leave,        ///< not taken
    Class,        ///< 班级
    Number,       ///< 学号: the number within the class
    Name,         ///< 姓名
    ExamNumber,   ///< 考号: only finds the student
    SchoolNumber, ///< 学籍号: finds the student; a column of its own in a list of students
    Stream,       ///< 科类
    Subject,      ///< the scores of the subject that `name` names
    StudentColumn ///< the column of 信息表 that `name` names
};

/// The word of a field that a user reads and `--map` takes; 不导入 for Leave. Subjects and columns
/// of students have their own names.
QString fieldText(Field field);

struct ColumnUse
{
    Field field = Field::Leave;
    /// Of a subject or a column of 信息表; empty otherwise.
    QString name = {};

    /// What a user reads: 姓名, 语文, 不导入.
    QString text() const { return name.isEmpty() ? fieldText(field) : name; }
    friend bool operator==(const ColumnUse&, const ColumnUse&) = default;
};

/// Who decided something. What a user or a confirmed earlier workbook decided stays when a proposal
/// is reconsidered.
enum class DecidedBy { Program, Remembered, User };

enum class Taking { Take, LeaveOut };

/// The rows that the headings stand in; count 0 where none were found.
struct HeadingRows
{
    /// Headings are read from so many rows.
    static constexpr int most = 2;

    int first = 0;
    int count = 0;
    DecidedBy decidedBy = DecidedBy::Program;

    int last() const { return first + count - 1; }
    bool areFound() const { return count > 0; }
};

struct ColumnProposal
{
    /// Of the sheet, from 1.
    int column = 0;
    /// Of both rows, in one text; empty for a column without one.
    QString heading = {};
    ColumnUse use = {};
    DecidedBy decidedBy = DecidedBy::Program;
    /// Why this use was chosen, or why it is open, as a sentence.
    QString reason = {};
    /// The user has to choose.
    bool isOpen = false;
    /// The heading is that of scores and names no subject: each sheet has its own.
    bool isOfSheet = false;
};

/// Where the class of a sheet's rows comes from.
enum class ClassFrom { Nowhere, Column, TitleRows, SheetName, FileName };

struct ClassSource
{
    ClassFrom from = ClassFrom::Nowhere;
    /// The text that names the class: a title, the sheet's or the file's name.
    QString text = {};
    DecidedBy decidedBy = DecidedBy::Program;
};

/// Why a row is no row of a student.
enum class RowKind { Student, Title, Heading, Blank, Summary, RepeatedHeading, Note, NotFound };

/// Rows of a sheet that are not taken, the last one included.
struct LeftOutRows
{
    int first = 0;
    int last = 0;
    RowKind kind = RowKind::Blank;
    /// A short text for the row itself, such as 合计行.
    QString reason = {};
};

/// What the user said of a single row.
struct RowChoice
{
    int row = 0;
    Taking taking = Taking::Take;
};

struct SheetProposal
{
    QString name = {};
    Taking taking = Taking::Take;
    DecidedBy takingDecidedBy = DecidedBy::Program;
    /// Why the sheet is not taken; empty if it is.
    QString reason = {};
    HeadingRows heading = {};
    /// All columns with a heading or a content, ascending.
    std::vector<ColumnProposal> columns = {};
    ClassSource classSource = {};
    /// Ascending; rows that nobody took and that are no students.
    std::vector<LeftOutRows> leftOut = {};
    std::vector<RowChoice> rowChoices = {};
    /// Rows that become rows of the result.
    int students = 0;
    /// The last row that holds anything.
    int lastRow = 0;

    /// The first column of that field; 0 if there is none.
    int columnOf(Field field) const;
    /// The proposal of a column; null if it has none.
    const ColumnProposal* column(int number) const;
    /// The rows that this row is left out with; null for a row that is taken.
    const LeftOutRows* leftOutAt(int row) const;
};

/// What a text that is no score becomes.
enum class MarkUse { Absent, Cheated, AsItStands };

/// The word of a use that a user reads and `--mark` takes: 缺考, 作弊, 不变.
QString markUseText(MarkUse use);

/// A text that stands where scores do, and how often. The empty text stands for blank cells.
struct Mark
{
    QString text = {};
    MarkUse use = MarkUse::AsItStands;
    DecidedBy decidedBy = DecidedBy::Program;
    int count = 0;
    bool isOpen = false;
};

/// How a text that names a class is read.
struct ClassReading
{
    QString text = {};
    /// Nothing while it is open, or where the text names no class.
    std::optional<double> number = {};
    /// Numbers that it can mean.
    std::vector<double> candidates = {};
    DecidedBy decidedBy = DecidedBy::Program;
    /// How many students it is written for.
    int rows = 0;
    QString reason = {};
    bool isOpen = false;
};

enum class RemarkKind {
    NotFound,     ///< the library has no such student, and class or number are not known
    SeveralFound, ///< several students could be meant
    Unknown,      ///< class and number are there, the library has nobody of that number
    NameDiffers,  ///< the library has another name
    ClassDiffers, ///< found in another class than the sheet says
    Twice,        ///< the student stands on another row, too
    Nameless,     ///< no name
    LostDigits,   ///< a number of 16 or more digits
    OddScore,     ///< a score with something beside the number
    OddNumber     ///< a 学号 that is no number
};

/// Something about one row that a user should know.
struct Remark
{
    RemarkKind kind = RemarkKind::NotFound;
    QString sheet = {};
    int row = 0;
    QString text = {};
    /// The row is not in the result.
    bool isLeftOut = false;
};

/// What the result will hold.
struct Counts
{
    int sheets = 0;
    int students = 0;
    /// Known by class and number.
    int known = 0;
    /// Found by 考号, 学籍号 or class and name.
    int found = 0;
    /// With class and number that the library does not have.
    int unknown = 0;
    /// Rows of students that are not taken, which remarks tell.
    int leftOut = 0;
    /// Rows of scores or other numbers without a name, sums perhaps, that are listed with them.
    int nobody = 0;
    int absent = 0;
    int cheated = 0;
};

/// A sheet that the result will have.
struct ResultCount
{
    QString name = {};
    int students = 0;
};

/// How a workbook is read, with everything that the user can change.
struct Proposal
{
    Goal goal = Goal::ExamScores;
    /// Name of the file, without folder; may be empty.
    QString fileName = {};
    std::vector<SheetProposal> sheets = {};
    std::vector<Mark> marks = {};
    std::vector<ClassReading> classes = {};
    std::vector<Remark> remarks = {};
    /// Further remarks than the ones kept, of which there are mostRemarks.
    int remarksNotKept = 0;
    static constexpr int mostRemarks = 5000;
    /// What concerns more than a row, as sentences.
    QStringList warnings = {};
    /// What has to be decided before anything can be tidied, as sentences; empty once it can.
    QStringList questions = {};
    Counts counts = {};
    /// Several for an exam of both streams: its import takes one from a sheet.
    std::vector<ResultCount> results = {};

    bool isDecided() const { return questions.isEmpty(); }
};

/// That the result has a sheet a stream, as a sentence; empty where it has one sheet.
QString resultsText(const Proposal& proposal);

/// How many rows of nobody are listed, as the first half of a sentence; empty if there are none.
QString nobodyText(const Proposal& proposal);

} // namespace tidy
