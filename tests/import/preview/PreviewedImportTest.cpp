#include <map>

#include "ExamPreviewFixture.h"

namespace {

using namespace Qt::StringLiterals;
using importing::ExamChoice;
using importing::ImportResult;
using importing::NameAnswer;
using importing::NewStudents;
using importing::Preview;
using importing::PreviewEntry;
using importing::PreviewKind;
using importing::ScoreTarget;
using runtime::Answer;

/// A sheet, and how it is imported.
struct Case
{
    const char* name;
    std::vector<std::vector<runtime::Value>> rows;
    ExamChoice choice = ExamChoice::Typed;
    /// Another exam, which has the students' first rows.
    bool hasEarlierExam = false;
    bool hasExam = false;
    std::optional<ScoreTarget> overwritten = {};
    NewStudents newStudents = NewStudents::Add;
    NameAnswer names = NameAnswer::Ask;
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name;
}

class PreviewedImport : public ExamPreviewTest, public testing::WithParamInterface<Case>
{
protected:
    PreviewedImport()
    {
        const Case& one = GetParam();
        if (one.hasEarlierExam) {
            library.addExam(u"期初"_s, u"文"_s, 0, {{u"语文"_s, 150}});
            library.addScores(u"期初"_s, 1, 1, {{u"考试编号"_s, 0}, {u"语文"_s, 10}});
            library.reload();
        }
        if (one.hasExam)
            addExam();
        Rows rows{heads({u"语文"_s, u"数学"_s})};
        rows.insert(rows.end(), one.rows.begin(), one.rows.end());
        sheet(rows);
        request.examChoice = one.choice;
        request.newStudents = one.newStudents;
        overwritten = one.overwritten;
        names = one.names;
    }

    void import()
    {
        dialogs.always(u"原有数据将被新数据替换"_s, Answer::Ok);
        dialogs.always(u"不一致"_s, names == NameAnswer::Keep ? Answer::No : Answer::Yes);
        dialogs.always(u"是否添加新学生"_s, Answer::Ok);
        dialogs.always(u"人的成绩重复"_s, u"继续"_s);
        dialogs.always(u"既不是缺考也不是作弊"_s, u"继续"_s);
        dialogs.always(u"还没有学生，科类设为"_s, u"文"_s);
        dialogs.always(u"[只更新本考试]"_s, overwritten == ScoreTarget::FirstRows
                                                ? u"按原规则导入"_s
                                                : u"只更新本考试"_s);
        EXPECT_EQ(run(), ImportResult::Finished);
    }

    int number(const QString& sql) { return library.rows(sql).toInt(); }
    int students() { return number(u"select count(*) from 信息表"_s); }
    int scores() { return number(u"select count(*) from 成绩表"_s); }

    /// The scores of the exam by row, subject by subject.
    QStringList cells()
    {
        return library
            .rows(u"select rowid||'语', 语文 from 成绩表 where 考试名称='期中' union all "
                  "select rowid||'数', 数学 from 成绩表 where 考试名称='期中'"_s)
            .split(u" / "_s);
    }

    /// How many of the former cells have another value now.
    int changed(const QStringList& former)
    {
        const QStringList now = cells();
        int count = 0;
        for (const QString& cell : former)
            count += cell.isEmpty() || now.contains(cell) ? 0 : 1;
        return count;
    }

    /// Each student has the name that was told; without one all have those of before.
    void expectNames(const Preview& found, const QString& before)
    {
        if (found.count(PreviewKind::OtherName) == 0) {
            EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where ID<=3"_s), before);
        }
        std::map<QString, PreviewEntry> last;
        for (const PreviewEntry& entry : found.entries(PreviewKind::OtherName))
            last[entry.classNumber + u'|' + entry.number] = entry;
        for (const auto& [number, entry] : last)
            EXPECT_EQ(library.rows(u"select 姓名 from 信息表 where 班级=%1 and 学号=%2"_s.arg(
                          entry.classNumber, entry.number)),
                      names == NameAnswer::Keep ? entry.before : entry.after);
    }

    /// A subject of a student in the exam, as the preview shows it.
    QString score(const PreviewEntry& entry)
    {
        const QString text = library.rows(
            u"select %1 from 成绩表 where 考试名称='期中' and 班级=%2 and 学号=%3 and 姓名='%4'"_s
                .arg(entry.subject, entry.classNumber, entry.number, entry.name));
        return text == u"-1"_s ? u"缺考"_s : text;
    }
};

TEST_P(PreviewedImport, DoesWhatWasCounted)
{
    const Preview found = preview();
    const int knownBefore = students();
    const int scoresBefore = scores();
    const QString namesBefore = library.rows(u"select 姓名 from 信息表"_s);
    const QStringList cellsBefore = cells();
    const bool isNew = request.examChoice == ExamChoice::Typed;
    import();
    EXPECT_EQ(students() - knownBefore,
              found.count(PreviewKind::NewStudent) + found.count(PreviewKind::UnknownStudent));
    EXPECT_EQ(dialogs.shown.filter(u"不一致"_s).size(), found.count(PreviewKind::OtherName));
    EXPECT_EQ(scores() - scoresBefore, isNew ? found.rows : found.count(PreviewKind::NewInExam));
    expectNames(found, namesBefore);
    EXPECT_EQ(int(state.ErrorCount), found.count(PreviewKind::BadCell));
    for (const PreviewEntry& entry : found.entries(PreviewKind::BadCell)) {
        if (isNew) {
            EXPECT_EQ(library.rows(u"select typeof(%1) from 成绩表 where 班级=%2 and 学号=%3"_s.arg(
                          entry.subject, entry.classNumber, entry.number)),
                      entry.after.isEmpty() ? u"null"_s : u"real"_s)
                << told(entry).toStdString();
        }
    }
    if (isNew)
        return;
    if (overwritten != ScoreTarget::FirstRows) {
        EXPECT_EQ(changed(cellsBefore), found.count(PreviewKind::Changed));
    }
    for (const PreviewEntry& entry : found.entries(PreviewKind::Changed))
        EXPECT_EQ(score(entry), entry.after) << told(entry).toStdString();
}

using V = runtime::Value;
const V wang = u"王芳"_s;
const V chen = u"陈静"_s;
const V absent = u"缺考"_s;

const Case cases[] = {
    {"NewExam", {{1, 1, wang, 90, 80}, {2, 1, V(u"李强"_s), 70, 60}}},
    {"NewStudents", {{1, 1, wang, 90, 80}, {1, 7, V(u"新生"_s), 1, 2}, {9, 1, V(u"新班"_s), 3, 4}}},
    {"AskedStudents",
     {{1, 7, V(u"新生"_s), 1, 2}, {1, 7, V(u"新生"_s), 1, 2}, {9, 1, V(u"新班"_s), 3, 4}},
     ExamChoice::Typed,
     false,
     false,
     {},
     NewStudents::Ask},
    {"Renamed", {{1, 1, V(u"王芬"_s), 90, 80}}},
    {"Twice", {{1, 1, wang, 90, 80}, {1, 1, wang, 91, 81}, {1, 2, chen, 70, 60}}},
    {"AbsentAndTexts",
     {{1, 1, wang, absent, V(u"作弊"_s)}, {1, 2, chen, V(u"abc"_s), V(u"87分"_s)}}},
    {"Bad",
     {{1, 1, wang, V(), -1}, {1, 2, chen, 151, V(u"160分"_s)}, {2, 1, V(u"李强"_s), -5, 150}}},
    {"RowsLeft", {{1, 1, wang, 90, 80}, {1, V(), chen, 70, 60}}},
    {"SecondSet", {{1, 1, wang, 90, 80}, {1, 2, chen, 1, 2}}, ExamChoice::Typed, false, true},
    {"Overwritten",
     {{1, 1, wang, 90, 81}, {1, 2, chen, absent, 60}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenTwice",
     {{1, 1, wang, 1, 2},
      {1, 1, wang, 90, 80},
      {2, 1, V(u"李强"_s), 5, 6},
      {2, 1, V(u"李强"_s), 7, 8}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenTwiceWithTwoNames",
     {{1, 1, wang, 91, 82},
      {1, 1, V(u"换名"_s), 90, 81},
      {1, 2, V(u"换名"_s), 5, 6},
      {1, 2, V(u"又换"_s), 7, 8},
      {1, 2, V(u"换名"_s), 9, 10}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenTwiceAtLastWithTheNameOfBefore",
     {{1, 1, V(u"换名"_s), 90, 81}, {1, 1, wang, 91, 82}, {1, 1, wang, 92, 83}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"NewExamTwiceAtLastWithTheNameOfBefore",
     {{1, 1, V(u"换名"_s), 90, 81}, {1, 1, V(u"换名"_s), 90, 81}, {1, 1, wang, 91, 82}}},
    {"NewStudentAtLastWithTheFirstName",
     {{1, 7, V(u"新生"_s), 1, 2}, {1, 7, V(u"换名"_s), 3, 4}, {1, 7, V(u"新生"_s), 5, 6}}},
    {"OverwrittenTwiceWithTwoNamesThatAreKept",
     {{1, 1, V(u"换名"_s), 90, 81}, {1, 1, wang, 91, 82}, {1, 2, V(u"换名"_s), 5, 6}},
     ExamChoice::PickedFromList,
     false,
     true,
     {},
     NewStudents::Add,
     NameAnswer::Keep},
    {"NewTwiceWithTwoNames",
     {{1, 7, V(u"新生"_s), 1, 2}, {1, 7, V(u"换名"_s), 3, 4}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"TooLarge", {{1, 1, wang, 1e300, 80}, {1, 2, chen, -1e300, V(u"1E+300"_s)}}},
    {"OverwrittenWithTooLarge",
     {{1, 1, wang, 1e300, 81}, {1, 2, chen, 70, 1e300}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenTwiceAtLastWithTooLarge",
     {{1, 1, wang, 91, 81}, {1, 1, wang, 1e300, 82}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenAndRenamed",
     {{1, 1, V(u"王芬"_s), 90, 81}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"OverwrittenWithBadCells",
     {{1, 1, wang, V(), 151}, {1, 2, chen, -1, 70.25}},
     ExamChoice::PickedFromList,
     false,
     true},
    {"ThisExamAlone",
     {{1, 1, wang, 91, 80}, {1, 2, chen, 70, 60}, {1, 9, V(u"新生"_s), 5, 6}},
     ExamChoice::PickedFromList,
     true,
     true},
    {"ThisExamAloneTwice",
     {{1, 1, wang, 91, 80}, {2, 1, V(u"李强"_s), 5, 6}, {2, 1, V(u"李强"_s), 7, 8}},
     ExamChoice::PickedFromList,
     true,
     true},
    {"ThisExamAloneRenamed",
     {{1, 1, V(u"王芬"_s), 91, 80}},
     ExamChoice::PickedFromList,
     true,
     true},
    {"OriginalRule",
     {{1, 1, wang, 91, 80}, {1, 2, chen, 71, 60}},
     ExamChoice::PickedFromList,
     true,
     true,
     ScoreTarget::FirstRows},
};

INSTANTIATE_TEST_SUITE_P(Sheets, PreviewedImport, testing::ValuesIn(cases),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace
