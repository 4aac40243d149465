#include "benchmarks/OldLibraries.h"

#include <cmath>
#include <limits>

#include "support/OldFileWriter.h"

namespace benchmark {

using namespace Qt::StringLiterals;
using oldlibraries::OldType;
using runtime::Value;
using support::OldColumnPlan;
using support::OldFileWriter;

namespace {

const QString total = u"总分"_s;

/// Pseudo-random numbers, as cheap as they can be.
quint32 next(quint32 random)
{
    return random * 1664525 + 1013904223;
}

std::vector<OldColumnPlan> studentColumns()
{
    std::vector<OldColumnPlan> columns{{u"ID"_s, OldType::Long, 0, 0, true},
                                       {u"班级"_s, OldType::Double},
                                       {u"学号"_s, OldType::Double},
                                       {u"姓名"_s},
                                       {u"科类"_s},
                                       {u"类别代码"_s, OldType::Double}};
    for (const char* name :
         {"类别", "性别", "出生时间", "入学时间", "学籍号", "原毕业学校", "身份证", "民族", "籍贯"})
        columns.push_back({QString::fromUtf8(name)});
    columns.push_back({u"备注"_s, OldType::Memo});
    columns.push_back({u"照片名"_s});
    columns.push_back({u"照片"_s, OldType::LongBinary});
    return columns;
}

std::vector<Value> studentRow(int student)
{
    return {student + 1,
            SchoolScores::classOf(student),
            SchoolScores::numberOf(student),
            SchoolScores::studentName(student),
            u"理"_s,
            1,
            {},
            student % 2 == 0 ? u"男"_s : u"女"_s,
            u"2004-6-11"_s,
            u"2020-9-1"_s,
            u"G%1"_s.arg(2004000000 + student),
            u"第三中学"_s,
            u"63760440199765%1"_s.arg(1000 + student),
            u"汉"_s,
            u""_s,
            {},
            {},
            {}};
}

void addStudents(OldFileWriter& file)
{
    file.addTable(u"信息表"_s, studentColumns());
    for (int student = 0; student < SchoolScores::students; ++student)
        file.addRow(studentRow(student));
}

std::vector<OldColumnPlan> scoreColumns()
{
    std::vector<OldColumnPlan> columns{{u"id"_s, OldType::Long},
                                       {u"班级"_s, OldType::Double},
                                       {u"学号"_s, OldType::Double},
                                       {u"姓名"_s},
                                       {u"类别代码"_s, OldType::Double},
                                       {u"科类"_s},
                                       {u"考试名称"_s},
                                       {u"考试编号"_s, OldType::Integer}};
    const QStringList names = SchoolScores::numberColumnNames();
    const QStringList declarations = SchoolScores::numberDeclarations();
    for (qsizetype i = 0; i < names.size(); ++i) {
        const OldType type = declarations[i].startsWith("Single"_L1) ? OldType::Single
                             : declarations[i].startsWith("Long"_L1) ? OldType::Long
                                                                     : OldType::Double;
        columns.push_back({names[i], type});
    }
    columns.push_back({u"备注"_s, OldType::Memo});
    return columns;
}

std::vector<Value> scoreRow(int exam, int student)
{
    std::vector<Value> row{student + 1,
                           SchoolScores::classOf(student),
                           SchoolScores::numberOf(student),
                           SchoolScores::studentName(student),
                           1,
                           u"理"_s,
                           SchoolScores::examName(exam),
                           exam + 1};
    for (const double number : SchoolScores::numbers(exam, student)) {
        row.emplace_back();
        if (!std::isnan(number))
            row.back() = number;
    }
    const QString note = SchoolScores::note(student);
    row.emplace_back();
    if (!note.isEmpty())
        row.back() = note;
    return row;
}

void addScores(OldFileWriter& file, int exams)
{
    file.addTable(u"成绩表"_s, scoreColumns());
    for (int exam = 0; exam < exams; ++exam) {
        for (int student = 0; student < SchoolScores::students; ++student)
            file.addRow(scoreRow(exam, student));
    }
}

void addExams(OldFileWriter& file, int exams)
{
    std::vector<OldColumnPlan> columns{{u"ID"_s, OldType::Long, 0, 0, true},
                                       {u"考试名称"_s},
                                       {u"科类"_s},
                                       {u"考试编号"_s, OldType::Integer},
                                       {u"备注"_s, OldType::Memo}};
    const QStringList subjects = SchoolScores::subjectNames();
    for (const QString& subject : subjects)
        columns.push_back({subject, subject == total ? OldType::Text : OldType::Single});
    file.addTable(u"考试名称表"_s, columns);
    for (int exam = 0; exam < exams; ++exam) {
        std::vector<Value> row{exam + 1, SchoolScores::examName(exam), u"理"_s, exam + 1, {}};
        for (const QString& subject : subjects)
            row.push_back(subject == total ? Value(u"语文+数学+英语"_s) : Value(150.0));
        file.addRow(row);
    }
}

void addTeachers(OldFileWriter& file, int exams)
{
    std::vector<OldColumnPlan> columns{{u"考试名称"_s}, {u"班级"_s, OldType::Double}};
    const QStringList subjects = SchoolScores::subjectNames();
    for (const QString& subject : subjects)
        columns.push_back({subject});
    file.addTable(u"教师表"_s, columns);
    const int classes = SchoolScores::classOf(SchoolScores::students - 1);
    for (int row = 0; row < exams * classes; ++row) {
        std::vector<Value> values{SchoolScores::examName(row / classes), row % classes + 1};
        values.resize(columns.size(), Value(u"李老师"_s));
        file.addRow(values);
    }
}

void addEmptyTable(OldFileWriter& file, const QString& name, const QStringList& texts)
{
    std::vector<OldColumnPlan> columns;
    for (const QString& text : texts)
        columns.push_back({text, OldType::Text, 255});
    file.addTable(name, columns);
}

/// All but 信息表, which comes first.
void addTables(OldFileWriter& file, int exams)
{
    addScores(file, exams);
    addExams(file, exams);
    addTeachers(file, exams);
    file.addTable(u"分班表"_s, {{u"班级"_s, OldType::Double},
                                {u"学号"_s, OldType::Double},
                                {u"姓名"_s},
                                {u"新班级"_s, OldType::Double},
                                {u"新学号"_s, OldType::Double},
                                {u"已分班"_s, OldType::Boolean},
                                {u"ID"_s, OldType::Long, 0, 0, true}});
    addEmptyTable(file, u"总分公式"_s, {u"总分"_s, u"公式"_s});
    file.addTable(u"设置表"_s, {{u"ID"_s, OldType::Long},
                                {u"名称"_s},
                                {u"设置"_s, OldType::Text, 255},
                                {u"加入综合分析"_s},
                                {u"各科条件"_s, OldType::Text, 255},
                                {u"选项"_s, OldType::Text, 255},
                                {u"自定义"_s, OldType::Long}});
    addEmptyTable(
        file, u"详细设置表"_s,
        {u"设置名称"_s, u"科类"_s, u"科目"_s, u"条件1"_s, u"分数1"_s, u"条件2"_s, u"分数2"_s});
    addEmptyTable(file, u"自定义显示表"_s, {u"项目名称"_s, u"显示项目"_s});
    file.addTable(u"颜色表"_s, {{u"ID"_s, OldType::Long}, {u"颜色"_s, OldType::Long}});
    file.addTable(u"特值表"_s, {{u"txt"_s}, {u"z"_s, OldType::Double}});
}

} // namespace

QStringList SchoolScores::subjectNames()
{
    return {u"语文"_s, u"数学"_s, u"英语"_s, u"物理"_s, u"化学"_s, u"生物"_s, u"政治"_s,
            u"历史"_s, u"地理"_s, u"信息"_s, u"音乐"_s, u"美术"_s, u"体育"_s, total};
}

QStringList SchoolScores::numberColumnNames()
{
    QStringList names;
    for (const QString& subject : subjectNames()) {
        for (const QString& what : {u""_s, u"年名"_s, u"班名"_s, u"Z分"_s, u"T分"_s})
            names.append(subject + what);
    }
    return names << total + u"T分年名"_s;
}

QStringList SchoolScores::numberDeclarations()
{
    QStringList declarations;
    for (int subject = 0; subject < subjects; ++subject)
        declarations << u"Single REAL"_s << u"Long INTEGER"_s << u"Long INTEGER"_s
                     << u"Double REAL"_s << u"Double REAL"_s;
    return declarations << u"Long INTEGER"_s;
}

QString SchoolScores::examName(int exam)
{
    return u"第%1次考试"_s.arg(exam + 1);
}

QString SchoolScores::studentName(int student)
{
    return u"学生%1"_s.arg(student);
}

SchoolScores::Numbers SchoolScores::numbers(int exam, int student)
{
    constexpr int alwaysExamined = 10;
    Numbers numbers;
    quint32 random = quint32(exam * students + student);
    size_t i = 0;
    for (int subject = 0; subject < subjects; ++subject) {
        random = next(random);
        const int points = int(random >> 16) % 301;
        const bool isExamined = subject < alwaysExamined || exam % 2 == 0;
        const double none = std::numeric_limits<double>::quiet_NaN();
        numbers[i++] = isExamined ? points / 2.0 : none;
        numbers[i++] = isExamined ? 1 + (300 - points) * 10 : none;
        numbers[i++] = isExamined ? 1 + (300 - points) / 6 : none;
        numbers[i++] = isExamined ? (points - 150) / 100.0 : none;
        numbers[i++] = isExamined ? points / 5 + 20 : none;
    }
    numbers[i] = student + 1;
    return numbers;
}

QString SchoolScores::note(int student)
{
    constexpr int studentsWithoutNote = 40;
    return student % studentsWithoutNote == 0 ? u"缺席一次，已补考。"_s : QString();
}

SchoolPhotos::SchoolPhotos() : m_noise(2 * size, Qt::Uninitialized)
{
    quint32 random = 1;
    for (char& byte : m_noise) {
        random = next(random);
        byte = char(random >> 24);
    }
}

QByteArray SchoolPhotos::photo(int student) const
{
    return m_noise.mid(student, size);
}

void makeOldScores(const QString& path)
{
    OldFileWriter file(path);
    file.setTextForm(support::OldTextForm::Compressed);
    addStudents(file);
    addTables(file, SchoolScores::exams);
    file.save();
}

void makeOldPhotos(const QString& path)
{
    const SchoolPhotos photos;
    OldFileWriter file(path);
    file.addTable(u"信息表"_s, studentColumns());
    for (int student = 0; student < SchoolPhotos::students; ++student) {
        std::vector<Value> row = studentRow(student);
        row.pop_back();
        row.back() = u"%1.jpg"_s.arg(SchoolScores::numberOf(student));
        row.emplace_back(photos.photo(student));
        file.addRow(row);
    }
    addTables(file, 0);
    file.save();
}

} // namespace benchmark
