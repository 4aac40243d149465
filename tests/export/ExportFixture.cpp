#include "ExportFixture.h"

using namespace Qt::StringLiterals;

ExportFixture::ExportFixture()
{
    test.addStudent(1, 1, u"甲"_s, u"理"_s);
    test.addStudent(1, 2, u"乙"_s, u"理"_s);
    test.addStudent(2, 1, u"丙"_s, u"文"_s);
    for (const QString& stream : {u"理"_s, u"文"_s}) {
        test.addExam(u"期中"_s, stream, 1, {{u"语文"_s, 150}, {u"总分"_s, u"语文+数学"_s}});
        test.addExam(u"期末"_s, stream, 2, {{u"语文"_s, 150}, {u"总分"_s, u"语文+数学"_s}});
    }
    const auto add = [&](const QString& exam, int number, double chinese, int rank) {
        test.addScores(exam, 1, number,
                       {{u"语文"_s, chinese},
                        {u"语文年名"_s, rank},
                        {u"总分"_s, chinese},
                        {u"总分年名"_s, rank}});
    };
    // The later exam first: the rows come by the exams' numbers.
    add(u"期末"_s, 1, 90, 1);
    add(u"期中"_s, 1, 72.1, 2);
    add(u"期中"_s, 2, 80.5, 1);
    add(u"期末"_s, 2, -1, -1);
    test.execute(u"update 成绩表 set 考试编号=case 考试名称 when '期中' then 1 else 2 end"_s);
    test.reload();
    request.exams = QStringList{u"期中"_s, u"期末"_s};
    request.subjects = QStringList{u"语文"_s, u"总分"_s};
    request.classes = QStringList{u"1"_s};
}

exporting::ScoreExportResult ExportFixture::run()
{
    result = exporting::exportScores(test.scores, request, applications, progress);
    return result;
}

excel::Worksheet& ExportFixture::sheet(int number)
{
    return result.book->Worksheets().Item(number);
}

QString ExportFixture::row(int number)
{
    QStringList texts;
    for (int column = 1; column <= sheet().lastUsedColumn(); ++column)
        texts.append(cell(number, column));
    return texts.join(u'|');
}

QStringList ExportFixture::rows(int first, int last)
{
    QStringList lines;
    for (int number = first; number <= last; ++number)
        lines.append(row(number));
    return lines;
}

QStringList ExportFixture::exportFailures() const
{
    const QString tag = u" - Private Sub Command1_Click/FormDaoChu"_s;
    QStringList failures;
    for (const QString& failure : test.dialogs.failures) {
        if (failure.endsWith(tag))
            failures.append(failure.chopped(tag.size()));
    }
    return failures;
}
