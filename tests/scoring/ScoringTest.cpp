// The whole run against a slow, straight one written row by row.
#include "scoring/Scoring.h"

#include <random>

#include <gtest/gtest.h>

#include "platform/database/Error.h"
#include "platform/database/WriteBatch.h"
#include "platform/runtime/Numbers.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using runtime::Value;
using support::TestLibrary;

const QStringList subjects{u"语文"_s, u"数学"_s, u"物理"_s, u"历史"_s};
const QStringList totals{u"三科总分"_s, u"总分"_s};
const QString exam = u"期末"_s;

/// Two streams of three classes, with ties, absent students and scores never entered.
void fill(TestLibrary& test, unsigned seed)
{
    database::WriteBatch batch(test.scores.Conn);
    std::mt19937 random(seed);
    const auto below = [&](unsigned limit) { return int(random() % limit); };
    for (const QString& stream : {u"文"_s, u"理"_s})
        test.addExam(exam, stream, 1,
                     {{u"语文"_s, 150},
                      {u"数学"_s, 150},
                      {u"物理"_s, 100},
                      {u"历史"_s, 100},
                      {u"三科总分"_s, u"语文+数学+物理"_s},
                      {u"总分"_s, u"语文+数学+物理+历史"_s}});
    for (int student = 0; student < 60; ++student) {
        const int classNumber = student % 6 + 1;
        test.addStudent(classNumber, student, u"学生%1"_s.arg(student),
                        classNumber < 4 ? u"文"_s : u"理"_s);
        const auto score = [&]() -> Value {
            const int kind = below(20);
            return kind == 0 ? Value() : kind == 1 ? Value(-1) : Value(below(60) / 2.0 + 40.1);
        };
        test.addScores(exam, classNumber, student,
                       {{u"语文"_s, score()},
                        {u"数学"_s, score()},
                        {u"物理"_s, score()},
                        {u"历史"_s, score()}});
    }
    batch.commit();
    test.reload();
}

/// The same scoring by one statement after the other.
class SlowScoring
{
public:
    explicit SlowScoring(TestLibrary& test) : m_conn(test.scores.Conn) {}

    void run()
    {
        database::WriteBatch batch(m_conn);
        for (const QString& stream : {u"文"_s, u"理"_s}) {
            for (const QString& subject : subjects)
                standardScores(subject, stream);
        }
        for (const QString& stream : {u"文"_s, u"理"_s})
            totalScores(stream);
        for (const QString& stream : {u"文"_s, u"理"_s}) {
            ranks(stream, u""_s, u"年名"_s);
            database::Recordset classes;
            classes.Open(u"select distinct 班级 from 信息表 where 科类='"_s + stream + u"'"_s,
                         m_conn);
            for (; !classes.Eof(); classes.MoveNext())
                ranks(stream, u" and 班级="_s + classes.Fields(0).Value().text(), u"班名"_s);
        }
        batch.commit();
    }

private:
    QString where(const QString& stream) const
    {
        return u" from 成绩表 where 考试名称='"_s + exam + u"' and 科类='"_s + stream + u"'"_s;
    }

    double aggregate(const QString& function, const QString& subject, const QString& stream)
    {
        database::Recordset rows;
        rows.Open(u"select "_s + function + u'(' + subject + u')' + where(stream) + u" and "_s
                      + subject + u">=0"_s,
                  m_conn);
        return rows.Fields(0).Value().toDouble();
    }

    void standardScores(const QString& subject, const QString& stream)
    {
        const double mean = aggregate(u"avg"_s, subject, stream);
        const double deviation = aggregate(u"stdev"_s, subject, stream);
        database::Recordset rows;
        for (rows.Open(u"select *"_s + where(stream), m_conn); !rows.Eof(); rows.MoveNext()) {
            const Value score = rows.Fields(subject).Value();
            Value z;
            if (!score.isNull())
                z = runtime::Round((std::max(score.toDouble(), 0.0) - mean) / deviation, 2);
            rows.Fields(subject + u"Z分"_s).setValue(z);
            rows.Fields(subject + u"T分"_s)
                .setValue(z.isNull() ? Value() : Value(runtime::Round(10 * z.toDouble() + 50)));
            rows.Update();
        }
    }

    void totalScores(const QString& stream)
    {
        const QHash<QString, double> weights{
            {u"语文"_s, 1.5}, {u"数学"_s, 1.5}, {u"物理"_s, 1.0}, {u"历史"_s, 1.0}};
        database::Recordset rows;
        for (rows.Open(u"select *"_s + where(stream), m_conn); !rows.Eof(); rows.MoveNext()) {
            double z = 0;
            double t = 0;
            for (const QString& total : totals) {
                const QStringList terms = total == totals[0] ? subjects.mid(0, 3) : subjects;
                float sum = 0;
                int count = 0;
                for (const QString& term : terms) {
                    const Value score = rows.Fields(term).Value();
                    if (!score.isNull() && score.toDouble() >= 0) {
                        ++count;
                        sum = float(double(sum) + score.toDouble());
                    }
                    z += rows.Fields(term + u"Z分"_s).Value().toDouble() * weights[term];
                    t += rows.Fields(term + u"T分"_s).Value().toDouble() * weights[term];
                }
                rows.Fields(total).setValue(count == 0 ? -1.0f : sum);
                rows.Fields(total + u"Z分"_s).setValue(z);
                rows.Fields(total + u"T分"_s).setValue(t);
            }
            rows.Update();
        }
    }

    void ranks(const QString& stream, const QString& filter, const QString& suffix)
    {
        for (const QString& column : subjects + totals) {
            rankBy(column, column + suffix, stream, filter);
            if (totals.contains(column) && filter.isEmpty())
                rankBy(column + u"T分"_s, column + u"T分年名"_s, stream, filter);
        }
    }

    void rankBy(const QString& column, const QString& rankColumn, const QString& stream,
                const QString& filter)
    {
        database::Recordset rows;
        rows.Open(u"select *"_s + where(stream) + filter + u" order by "_s + column + u" desc"_s,
                  m_conn);
        double last = rows.Fields(column).Value().toDouble();
        int rank = 1;
        for (int i = 1; !rows.Eof(); ++i, rows.MoveNext()) {
            const Value value = rows.Fields(column).Value();
            if (!value.isNull() && value.toDouble() < 0 && !column.endsWith("T分"_L1)) {
                rows.Fields(rankColumn).setValue(value);
            } else {
                if (!value.isNull() && value.toDouble() < last) {
                    rank = i;
                    last = value.toDouble();
                }
                rows.Fields(rankColumn).setValue(rank);
            }
            rows.Update();
        }
    }

    database::Connection& m_conn;
};

QString everything(TestLibrary& test)
{
    return test.rows(u"select * from 成绩表"_s);
}

/// The first row in which two tables differ, or "".
QString firstDifference(const QString& one, const QString& other)
{
    const QStringList rows = one.split(u" / "_s);
    const QStringList others = other.split(u" / "_s);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (rows[i] != others.value(i))
            return rows[i] + u"\n"_s + others.value(i);
    }
    return rows.size() == others.size() ? QString() : u"different numbers of rows"_s;
}

class WholeRun : public testing::TestWithParam<unsigned>
{
};

TEST_P(WholeRun, GivesWhatOneStatementAfterTheOtherGives)
{
    TestLibrary quick(subjects + totals);
    TestLibrary slow(subjects + totals);
    fill(quick, GetParam());
    fill(slow, GetParam());
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(quick.scores).score(exam, progress));
    SlowScoring(slow).run();
    EXPECT_EQ(firstDifference(everything(quick), everything(slow)), u""_s);
    EXPECT_TRUE(quick.dialogs.shown.isEmpty());
}

TEST_P(WholeRun, GivesWhatTheThreeRoutinesGiveByThemselves)
{
    TestLibrary together(subjects + totals);
    TestLibrary apart(subjects + totals);
    fill(together, GetParam());
    fill(apart, GetParam());
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(together.scores).score(exam, progress));
    scoring::Scoring scoring(apart.scores);
    scoring.Zfen(exam);
    scoring.JiSuanZF(exam);
    scoring.PanNJBjMC(exam);
    EXPECT_EQ(firstDifference(everything(together), everything(apart)), u""_s);
}

INSTANTIATE_TEST_SUITE_P(Seeds, WholeRun, testing::Values(1u, 2u, 3u));

/// Progress that is cancelled once a step was reported.
class CancelledAfter : public runtime::Progress
{
public:
    explicit CancelledAfter(int steps) : m_left(steps) {}
    void report(const QString& text, int, int) override
    {
        texts.append(text);
        --m_left;
    }
    void finish() override {}
    bool cancelled() const override { return m_left <= 0; }

    QStringList texts;

private:
    int m_left;
};

TEST(ScoringRun, CancellingLeavesTheExamAsItWas)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    const QString before = everything(test);
    CancelledAfter progress(3);
    EXPECT_FALSE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(everything(test), before);
    EXPECT_EQ(progress.texts.first(), u"计算总分：期末..."_s);
}

TEST(ScoringRun, ScoringAgainChangesNothing)
{
    TestLibrary test(subjects + totals);
    fill(test, 2);
    runtime::NoProgress progress;
    scoring::Scoring scoring(test.scores);
    EXPECT_TRUE(scoring.score(exam, progress));
    const QString once = everything(test);
    EXPECT_TRUE(scoring.score(exam, progress));
    EXPECT_EQ(everything(test), once);
}

TEST(ScoringRun, OtherExamsStayAsTheyWere)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    test.addExam(u"期末2"_s, u"文"_s, 2, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addScores(u"期末2"_s, 1, 0, {{u"语文"_s, 100}});
    const QString other = u"select * from 成绩表 where 考试名称='期末2'"_s;
    const QString before = test.rows(other);
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(test.rows(other), before);
}

/// Where each failure happened.
QStringList tags(const QStringList& failures)
{
    QStringList found;
    for (const QString& failure : failures)
        found.append(failure.mid(failure.lastIndexOf(u" - "_s)));
    return found;
}

TEST(ScoringRun, AStepThatFailsKeepsNoOtherFromRunningAndWhatWasComputedIsWritten)
{
    TestLibrary test({u"语文"_s, u"总分"_s});
    test.addExam(exam, u"文"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    for (const QString& stream : {u"文"_s, u"理'"_s}) {
        for (int number = 1; number <= 2; ++number) {
            const int classNumber = stream == u"文"_s ? 1 : 2;
            test.addStudent(classNumber, number, u"学生"_s, stream);
            test.addScores(exam, classNumber, number, {{u"语文"_s, 50 + number * 10}});
        }
    }
    test.reload();
    test.dialogs.failures.clear();
    runtime::NoProgress progress;
    EXPECT_FALSE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(test.rows(u"select 语文T分, 总分, 总分年名, 总分班名 from 成绩表"_s),
              u"43|60|2|2 / 57|70|1|1 / NULL|NULL|NULL|NULL / NULL|NULL|NULL|NULL"_s);
    const QStringList where = tags(test.dialogs.failures);
    for (const QString& tag :
         {u" - Sub Zfen/Mdl_MDB"_s, u" - Sub JiSuanZF/Mdl_MDB"_s, u" - Sub PaiMC/Mdl_MDB"_s})
        EXPECT_TRUE(where.contains(tag)) << tag.toStdString();
}

TEST(ScoringRun, AStreamThatCannotBeReadKeepsNoLaterStreamFromBeingScored)
{
    TestLibrary test({u"语文"_s, u"总分"_s});
    test.addExam(exam, u"理"_s, 1, {{u"语文"_s, 100}, {u"总分"_s, u"语文"_s}});
    test.addStudent(1, 1, u"学生"_s, u"文'科"_s);
    test.addScores(exam, 1, 1, {{u"语文"_s, 90}});
    for (int number = 1; number <= 2; ++number) {
        test.addStudent(2, number, u"学生"_s, u"理"_s);
        test.addScores(exam, 2, number, {{u"语文"_s, 50 + number * 10}});
    }
    test.reload();
    ASSERT_EQ(test.scores.catalogue.Streams, (QStringList{u"文'科"_s, u"理"_s}));
    test.dialogs.failures.clear();
    runtime::NoProgress progress;
    EXPECT_FALSE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(
        test.rows(u"select 语文Z分, 语文T分, 总分, 语文年名, 语文班名, 总分T分年名 from 成绩表"_s),
        u"NULL|NULL|NULL|NULL|NULL|NULL / -0.71|43|60|2|2|2 / 0.71|57|70|1|1|1"_s);
    EXPECT_EQ(tags(test.dialogs.failures),
              (QStringList{u" - Function GetKSKM/Mdl_MDB"_s, u" - Sub Zfen/Mdl_MDB"_s,
                           u" - Function GetZFKMGS/Mdl_MDB"_s, u" - Sub JiSuanZF/Mdl_MDB"_s,
                           u" - Sub PanNJBjMC/Mdl_MDB"_s, u" - Function GetKSKMZF/Mdl_MDB"_s,
                           u" - Sub PaiMC/Mdl_MDB"_s}));
}

TEST(ScoringRun, ANegativeScoreThatWasImportedIsAnAbsence)
{
    TestLibrary test({u"语文"_s, u"数学"_s, u"总分"_s});
    test.addExam(exam, u"理"_s, 1,
                 {{u"语文"_s, 100}, {u"数学"_s, 100}, {u"总分"_s, u"语文+数学"_s}});
    const int scores[][2] = {{60, 70}, {80, 90}, {-5, 80}};
    int number = 0;
    for (const auto& [chinese, maths] : scores) {
        test.addStudent(1, ++number, u"学生"_s, u"理"_s);
        test.addScores(exam, 1, number, {{u"语文"_s, chinese}, {u"数学"_s, maths}});
    }
    test.reload();
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(
        test.rows(u"select 语文Z分, 语文T分, 语文年名, 语文班名, 总分, 总分年名 from 成绩表"_s),
        u"-0.71|43|2|2|130|2 / 0.71|57|1|1|170|1 / -4.95|0|-5|-5|80|3"_s);
}

TEST(ScoringRun, AnExamWhoseNameBreaksTheStatementsIsNotScoredByTheFormulasOfAnother)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    const QString name = u"小'测"_s;
    test.addExam(name, u"文"_s, 2, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addScores(name, 1, 0, {{u"语文"_s, 100}, {u"数学"_s, 90}});
    runtime::NoProgress progress;
    scoring::Scoring scoring(test.scores);
    EXPECT_TRUE(scoring.score(exam, progress));
    const QString before = everything(test);
    EXPECT_FALSE(scoring.score(name, progress));
    const QStringList perStream{u" - Function GetKSKM/Mdl_MDB"_s,   u" - Sub Zfen/Mdl_MDB"_s,
                                u" - Function GetZFKMGS/Mdl_MDB"_s, u" - Sub JiSuanZF/Mdl_MDB"_s,
                                u" - Function GetKSKMZF/Mdl_MDB"_s, u" - Sub PaiMC/Mdl_MDB"_s};
    const QStringList where = tags(test.dialogs.failures);
    EXPECT_EQ(where.size(), 2 * perStream.size()) << where.join(u'\n').toStdString();
    for (const QString& tag : perStream)
        EXPECT_EQ(where.count(tag), 2) << tag.toStdString();
    scoring.Zfen(name);
    scoring.JiSuanZF(name);
    scoring.PanNJBjMC(name);
    EXPECT_EQ(everything(test), before);
    EXPECT_TRUE(test.dialogs.failures.last().endsWith(u" - Sub PaiMC/Mdl_MDB"_s));
}

TEST(ScoringRun, AFileThatWasMovedAwayCostsOneMessageAndNothingIsWritten)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    const QString path = test.scores.LibPath;
    ASSERT_TRUE(QFile::rename(path, path + u".moved"_s));
    runtime::NoProgress progress;
    EXPECT_FALSE(scoring::Scoring(test.scores).score(exam, progress));
    ASSERT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.first().contains(u"已被移走、删除或替换"_s));
}

TEST(Scoring, AnExamWhoseNameHoldsAnApostropheIsToldAndScoresNobody)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    for (const QString& name : {u"' or ''='"_s, u"期末' --"_s}) {
        test.addExam(name, u"理"_s, 2, {{u"语文"_s, 150}});
        test.addScores(name, 4, 3, {{u"语文"_s, 90}});
        test.reload();
        const QString before = test.rows(u"select * from 成绩表"_s);
        runtime::NoProgress progress;
        scoring::Scoring(test.scores).score(name, progress);
        EXPECT_FALSE(test.dialogs.failures.isEmpty());
        EXPECT_EQ(test.rows(u"select * from 成绩表"_s), before) << name.toStdString();
        test.dialogs.failures.clear();
    }
}

TEST(Scoring, SignsOfCommentsInANameAreJustItsText)
{
    TestLibrary test(subjects + totals);
    const QString name = u"2024--2025/*期中*/"_s;
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addExam(name, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addScores(name, 1, 1, {{u"语文"_s, 90}});
    test.reload();
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(test.scores).score(name, progress));
    EXPECT_EQ(test.rows(u"select 总分, 语文年名, 总分班名 from 成绩表"_s), u"90|1|1"_s);
}

TEST(Scoring, ALibraryThatAnotherProgramWritesIsToldOnceAndStaysAsItWas)
{
    TestLibrary test(subjects + totals);
    fill(test, 1);
    const QString before = test.rows(u"select * from 成绩表"_s);
    database::Connection other;
    other.Open(test.scores.Conn.path());
    database::runOnEngine(other.handle(), "BEGIN IMMEDIATE");
    runtime::NoProgress progress;
    EXPECT_FALSE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(test.dialogs.failures.size(), 1);
    EXPECT_TRUE(test.dialogs.failures.value(0).startsWith(u"成绩库正被别的程序使用"_s));
    database::runOnEngine(other.handle(), "COMMIT");
    EXPECT_EQ(test.rows(u"select * from 成绩表"_s), before);
    EXPECT_TRUE(scoring::Scoring(test.scores).score(exam, progress)) << "and then it works";
}

TEST(Scoring, AStreamThatAnotherProgramBroughtMeanwhileIsScoredToo)
{
    TestLibrary test(subjects + totals);
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addExam(exam, u"理"_s, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文"_s}});
    test.addScores(exam, 1, 1, {{u"语文"_s, 90}});
    test.reload();
    runtime::NoProgress progress;
    EXPECT_TRUE(scoring::Scoring(test.scores).score(exam, progress));
    {
        database::Connection other;
        other.Open(test.scores.Conn.path());
        other.Execute(u"insert into 信息表(班级,学号,姓名,科类) values(2,1,'乙','文')"_s);
        other.Execute(u"insert into 考试名称表(考试名称,科类,考试编号,语文,总分) "
                      "values('期末','文',1,150,'语文')"_s);
        other.Execute(u"insert into 成绩表(班级,学号,姓名,科类,考试名称,语文) "
                      "values(2,1,'乙','文','期末',80)"_s);
    }
    EXPECT_TRUE(scoring::Scoring(test.scores).score(exam, progress));
    EXPECT_EQ(test.rows(u"select 总分, 总分年名 from 成绩表 where 姓名='乙'"_s), u"80|1"_s);
}

} // namespace
