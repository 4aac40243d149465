#include "library/CopyDifferences.h"

namespace library {

using namespace Qt::StringLiterals;

namespace {

QString count(qint64 number)
{
    return QString::number(number);
}

QString examText(const ExamDifference& exam)
{
    QStringList parts;
    if (exam.scores > 0)
        parts.append(u"成绩不同 %1 个"_s.arg(exam.scores));
    if (exam.rowsAdded > 0)
        parts.append(u"备份里没有的成绩 %1 行"_s.arg(exam.rowsAdded));
    if (exam.rowsGone > 0)
        parts.append(u"只有备份里有的成绩 %1 行"_s.arg(exam.rowsGone));
    if (exam.otherRows > 0)
        parts.append(u"总分、名次、班级或姓名不同 %1 行"_s.arg(exam.otherRows));
    if (exam.isDescribedOtherwise)
        parts.append(u"满分、公式或次序不同"_s);
    return exam.exam + u"："_s + parts.join(u"，"_s);
}

/// What becomes of the scores of all exams. A student counts once in each of them.
QString sumText(const ExamDifference& sum)
{
    QString text;
    if (sum.scores > 0)
        text += u"，不同的成绩共 "_s + count(sum.scores) + u" 个"_s;
    if (sum.rowsAdded > 0)
        text += u"，"_s + count(sum.rowsAdded) + u" 人次的成绩恢复后没有"_s;
    if (sum.rowsGone > 0)
        text += u"，"_s + count(sum.rowsGone) + u" 人次的成绩恢复后又有"_s;
    return text;
}

QStringList labels(const std::vector<StudentLabel>& students)
{
    QStringList texts;
    for (const StudentLabel& student : students)
        texts.append(student.text());
    return texts;
}

/// The students as they are now, and behind each what `before` says of the copy.
template <class Before>
QStringList changes(const std::vector<StudentDifference>& students, const Before& before)
{
    QStringList texts;
    for (const StudentDifference& student : students)
        texts.append(student.now.text() + before(student.before));
    return texts;
}

/// Lines for what is there; a line without names behind it says nothing.
class Lines
{
public:
    void add(const QString& text, const QStringList& details)
    {
        if (!details.isEmpty())
            m_lines.push_back({text.arg(count(details.size())), details});
    }
    std::vector<DifferenceLine> take() { return std::move(m_lines); }

private:
    std::vector<DifferenceLine> m_lines;
};

void addExams(Lines& lines, const CopyDifferences& found)
{
    lines.add(u"备份以后增加、恢复后没有的考试：%1 次"_s, found.examsAdded);
    lines.add(u"备份以后删除、恢复后又有的考试：%1 次"_s, found.examsGone);
    ExamDifference sum;
    QStringList texts;
    for (const ExamDifference& exam : found.examsChanged) {
        sum.scores += exam.scores;
        sum.rowsAdded += exam.rowsAdded;
        sum.rowsGone += exam.rowsGone;
        texts.append(examText(exam));
    }
    lines.add(u"恢复后回到备份内容的考试：%1 次"_s + sumText(sum), texts);
    lines.add(u"备份以后增加、恢复后没有的科目：%1 个"_s, found.subjectsAdded);
    lines.add(u"备份以后删除、恢复后又有的科目：%1 个"_s, found.subjectsGone);
}

void addStudents(Lines& lines, const CopyDifferences& found)
{
    lines.add(u"备份以后增加、恢复后没有的学生：%1 名"_s, labels(found.studentsAdded));
    lines.add(u"备份以后删除、恢复后又有的学生：%1 名"_s, labels(found.studentsGone));
    lines.add(u"恢复后回到原来班级和学号的学生：%1 名"_s,
              changes(found.studentsMoved, [](const StudentLabel& before) -> QString {
                  return u"，备份里是 "_s + before.text();
              }));
    lines.add(u"恢复后改回原来姓名的学生：%1 名"_s,
              changes(found.studentsRenamed, [](const StudentLabel& before) -> QString {
                  return u"，备份里的姓名是 "_s + before.name;
              }));
    lines.add(u"其他信息回到备份内容的学生：%1 名"_s,
              changes(found.studentsChanged, [](const StudentLabel&) { return QString(); }));
}

} // namespace

std::vector<DifferenceLine> differenceLines(const CopyDifferences& differences)
{
    Lines lines;
    addExams(lines, differences);
    addStudents(lines, differences);
    lines.add(u"也回到备份内容的：%1 项"_s, differences.others);
    return lines.take();
}

QString noDifferenceText()
{
    return u"这份备份和现在的成绩库内容相同（照片只比较了大小）。"_s;
}

} // namespace library
