#include "import/tidy/ClassNames.h"

#include <gtest/gtest.h>

#include "import/tidy/ClassReadings.h"
#include "support/PrintQString.h"

namespace tidy {
namespace {

QString numbers(const std::vector<double>& all)
{
    QStringList texts;
    for (const double number : all)
        texts.append(QString::number(number));
    return texts.join(u' ');
}

TEST(ClassNames, GiveTheNumberInTheTextAndThoseThatALibraryMayHave)
{
    const std::pair<QString, QString> known[] = {
        {u"3"_s, u"3"_s},
        {u"301"_s, u"301"_s},
        {u"3班"_s, u"3"_s},
        {u"（3）班"_s, u"3"_s},
        {u"十二班"_s, u"12"_s},
        {u"理3班"_s, u"3"_s},
        {u"高三(1)班"_s, u"1 301 31 1201 121"_s},
        {u"高三（1）班"_s, u"1 301 31 1201 121"_s},
        {u"高三1班"_s, u"1 301 31 1201 121"_s},
        {u"高三 十二班"_s, u"12 312 1212"_s},
        {u"高2(3)班"_s, u"3 203 23 1103 113"_s},
        {u"初一2班"_s, u"2 102 12 702 72"_s},
        {u"九年级(10)班"_s, u"10 910 310"_s},
        {u"八3班"_s, u"3 803 83 203 23"_s},
        {u"2023级12班"_s, u"12 2312 202312"_s},
        {u"高三理(3)班"_s, u"3 303 33 1203 123"_s},
    };
    for (const auto& [text, candidates] : known) {
        const std::optional<ClassName> name = className(text);
        ASSERT_TRUE(name.has_value()) << text.toStdString();
        EXPECT_EQ(numbers(name->candidates), candidates) << text.toStdString();
    }
}

TEST(ClassNames, OtherTextsNameNoClass)
{
    for (const QString& text : {u""_s, u"0班"_s, u"语文"_s, u"Sheet1"_s, u"高三"_s, u"实验班"_s,
                                u"1234567班"_s, u"3²班"_s, u"8①班"_s, u"期中成绩"_s, u"一二班"_s})
        EXPECT_FALSE(className(text).has_value()) << text.toStdString();
}

TEST(ClassNames, AreFoundInTitlesAndFileNamesIfThereIsOneAlone)
{
    EXPECT_EQ(classIn(u"2026年秋 高三（1）班 期中考试成绩"_s), u"高三(1)班"_s);
    EXPECT_EQ(classIn(u"高三(1)班，高三(1)班"_s), u"高三(1)班"_s);
    EXPECT_EQ(classIn(u"高三1班和高三2班"_s), u""_s);
    for (const QString& several : {u"高三1-3班成绩"_s, u"1—3班期中成绩"_s, u"1–3班"_s, u"1/2班"_s,
                                   u"1班、2班成绩"_s, u"1班—3班"_s})
        EXPECT_EQ(classIn(several), u""_s) << several.toStdString();
    EXPECT_EQ(classIn(u"各班成绩"_s), u""_s);
    EXPECT_EQ(classIn(u"年级：高三 班级：1班 班主任：王老师"_s), u"1班"_s);
    EXPECT_EQ(classIn(u"高三班主任"_s), u""_s);
    EXPECT_EQ(gradeIn(u"某校高三年级期中"_s), u"高三"_s);
    EXPECT_EQ(gradeIn(u"高二和高三"_s), u""_s);
}

TEST(ClassNames, NamesOfSheetsThatAreDatesOrSeveralClassesNameNone)
{
    for (const QString& name :
         {u"9.15"_s, u"9-15"_s, u"202511"_s, u"2025"_s, u"1-3班"_s, u"1—3班"_s})
        EXPECT_EQ(classInName(name), u""_s) << name.toStdString();
    for (const QString& name : {u"3"_s, u"301"_s, u"3班"_s, u"高三(1)班"_s})
        EXPECT_EQ(classInName(name), name) << name.toStdString();
}

class Readings : public testing::Test
{
protected:
    QString read(const QString& text, const QString& grade = {})
    {
        ClassReadings readings({}, roster);
        readings.count(text, grade);
        readings.settle();
        const ClassReading& reading = readings.readings().front();
        return reading.number ? QString::number(*reading.number) : reading.reason;
    }

    static Roster of(std::initializer_list<double> classes)
    {
        std::vector<RosterStudent> students;
        for (const double number : classes)
            students.push_back({number, 1, u"甲"_s});
        return Roster({}, students);
    }

    Roster roster;
};

TEST_F(Readings, TakeTheClassThatTheLibraryHas)
{
    roster = of({301, 302, 201});
    EXPECT_EQ(read(u"高三(1)班"_s), u"301"_s);
    EXPECT_EQ(read(u"1班"_s, u"高二"_s), u"201"_s);
    EXPECT_EQ(read(u"2"_s, u"高三"_s), u"302"_s);
    roster = of({1, 2});
    EXPECT_EQ(read(u"高三(1)班"_s), u"1"_s);
}

TEST_F(Readings, NeverGuessAmongSeveralClasses)
{
    roster = of({1, 301});
    EXPECT_EQ(read(u"高三(1)班"_s), u"成绩库里有几个班都像它：1、301。"_s);
    EXPECT_EQ(read(u"高三(9)班"_s), u"成绩库里没有这个班，可以是：9、309、39、1209、129。"_s);
    EXPECT_EQ(read(u"9"_s), u"9"_s);
    roster = of({201, 301});
    EXPECT_EQ(read(u"1"_s), u"成绩库里没有这个班，可以是：1、201、301。"_s);
    EXPECT_EQ(read(u"实验班"_s), u"看不出是哪个班。"_s);
}

/// What each of several texts, with the grade of its sheet, is read as; ? for an open one.
QString readTogether(const Roster& roster, const std::vector<std::pair<QString, QString>>& cells)
{
    ClassReadings readings({}, roster);
    for (const auto& [text, grade] : cells)
        readings.count(text, grade);
    readings.settle();
    QStringList numbers;
    for (const auto& [text, grade] : cells) {
        const auto number = readings.numberOf(text, grade);
        numbers.append(number ? QString::number(*number) : u"?"_s);
    }
    return numbers.join(u' ');
}

TEST_F(Readings, OneNumberInTwoGradesOrStreamsIsAskedAbout)
{
    EXPECT_EQ(readTogether(roster, {{u"1"_s, u"高一"_s}, {u"1"_s, u"高二"_s}, {u"2"_s, u"高二"_s}}),
              u"? ? 2"_s);
    EXPECT_EQ(readTogether(roster, {{u"高三理1班"_s, {}}, {u"高三文1班"_s, {}}}), u"? ?"_s);
    roster = of({1, 2, 3});
    EXPECT_EQ(readTogether(roster, {{u"1"_s, u"高一"_s}, {u"1"_s, u"高二"_s}}), u"? ?"_s);
    EXPECT_EQ(readTogether(roster, {{u"高三理1班"_s, {}}, {u"高三文1班"_s, {}}}), u"? ?"_s);
    EXPECT_EQ(readTogether(roster, {{u"高三(1)班"_s, {}}, {u"1班"_s, {}}}), u"1 1"_s);
}

TEST_F(Readings, AClassOfTheOtherStreamIsNoneOfTheLibrary)
{
    roster = Roster({}, {{1, 1, u"甲"_s, u"理"_s}});
    EXPECT_EQ(read(u"文1班"_s), u"成绩库里这个班号的班不是文科。"_s);
    EXPECT_EQ(read(u"理1班"_s), u"1"_s);
}

TEST_F(Readings, TheWorkbooksOtherClassesRuleOutWhatTheyAreThemselves)
{
    roster = of({1, 2, 11, 12});
    EXPECT_EQ(
        readTogether(roster, {{u"高一(1)班"_s, {}}, {u"高一(11)班"_s, {}}, {u"高一(2)班"_s, {}}}),
        u"1 11 ?"_s);
}

TEST_F(Readings, WithoutStudentsTakeTheNumberInTheText)
{
    EXPECT_EQ(read(u"高三(1)班"_s), u"1"_s);
    ClassReadings two({}, roster);
    two.count(u"高三(1)班"_s, {});
    two.count(u"高三1班"_s, {});
    two.count(u"高二(1)班"_s, {});
    two.settle();
    EXPECT_EQ(two.readings()[0].reason, u"和别的年级或科类的班号相同，请写出班号。"_s);
    EXPECT_EQ(two.numberOf(u"高二(1)班"_s, {}), std::nullopt);
}

} // namespace
} // namespace tidy
