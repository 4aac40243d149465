#pragma once

#include "gui/IntakeFixture.h"
#include "import/ui/FormDaoRu.h"

namespace support {

/// The screen of the exam import over that library with the exams 期初 and 期中.
class ExamImportFixture : public IntakeFixture
{
protected:
    ExamImportFixture()
    {
        addClass();
        library.addExam(u"期初"_s, u"文"_s, 1, {});
        library.addExam(u"期中"_s, u"文"_s, 2, {});
        library.reload();
        open();
    }

    void open()
    {
        form = std::make_unique<importing::FormDaoRu>(library.scores, screenDialogs, applications,
                                                      state, &owner);
        form->show();
        form->activateWindow();
        (void)QTest::qWaitForWindowActive(form.get());
    }

    static Rows sheet(const Rows& students)
    {
        Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s, u"语文"_s, u"数学"_s}};
        rows.insert(rows.end(), students.begin(), students.end());
        return rows;
    }

    QComboBox* exam() { return find<QComboBox>(u"Combo2"_s); }

    void typeExam(const QString& name)
    {
        exam()->lineEdit()->setFocus();
        exam()->lineEdit()->selectAll();
        QTest::keyClick(exam(), Qt::Key_Delete);
        for (const QChar letter : name)
            QTest::sendKeyEvent(QTest::Click, exam(), Qt::Key_unknown, QString(letter),
                                Qt::NoModifier);
    }

    /// Takes the last exam of the list by the arrow keys.
    void pickLastExam()
    {
        for (int i = 0; i <= exam()->count(); ++i)
            QTest::keyClick(exam(), Qt::Key_Up);
        for (int i = 0; i < exam()->count(); ++i)
            QTest::keyClick(exam(), Qt::Key_Down);
    }

    /// The screen of full marks is left by 确定; it offers 150 for both subjects.
    void acceptFullMarks()
    {
        boxes.expect([this](QDialog& window) {
            EXPECT_EQ(window.objectName(), u"FormShuRuMF"_s);
            marksLabel = window.findChild<QLabel*>(u"Label1"_s)->text();
            QTest::mouseClick(window.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
        });
    }

    void import()
    {
        acceptFullMarks();
        press(u"Command1"_s);
    }

    QString scoreRows(const QString& columns)
    {
        return library.rows(u"select "_s + columns + u" from 成绩表"_s);
    }

    importing::ImportState state;
    QString marksLabel;
    const QString tag = u" - Private Sub Command1_Click/FormDaoRu"_s;
    const Rows two = sheet({{1, 1, u"王芳"_s, 120, 90}, {1, 2, u"陈静"_s, u"缺考"_s, u"作弊"_s}});
};

} // namespace support
