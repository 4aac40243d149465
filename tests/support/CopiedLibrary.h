#pragma once

#include <gtest/gtest.h>

#include "library/LibraryBackup.h"
#include "library/LibraryCopies.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace support {

using namespace Qt::StringLiterals;

/// A library with a copy of its time before an exam was imported.
class CopiedLibrary : public testing::Test
{
protected:
    CopiedLibrary()
    {
        test.addStudent(1, 1, u"王芳"_s, u"理"_s);
        test.addExam(u"期中"_s, u"理"_s, 1, {{u"语文"_s, 150}});
        test.addScores(u"期中"_s, 1, 1, {{u"语文"_s, 90}});
        copy = backUp(library::Occasion::examImport(u"期末"_s), 1);
        test.addStudent(2, 1, u"新生"_s, u"理"_s);
        test.addExam(u"期末"_s, u"理"_s, 2, {{u"语文"_s, 150}});
        test.addScores(u"期末"_s, 1, 1, {{u"语文"_s, 95}});
        test.reload();
        test.dialogs.shown.clear();
    }

    QString backUp(const library::Occasion& occasion, int minute)
    {
        return library::backUpLibrary(path, QDateTime(QDate(2026, 3, 9), QTime(7, minute)),
                                      occasion, progress);
    }
    library::LibraryCopy newest() const { return library::copiesOf(path).front(); }
    QString exams() { return test.rows(u"select distinct 考试名称 from 成绩表"_s); }
    void expectAsBefore()
    {
        EXPECT_TRUE(test.scores.Conn.isOpen());
        EXPECT_EQ(exams(), u"期中 / 期末"_s);
        EXPECT_EQ(test.scores.catalogue.ExamList, (QStringList{u"期中"_s, u"期末"_s}));
    }

    TestLibrary test{{u"语文"_s}};
    const QString path = test.scores.LibPath;
    runtime::NoProgress progress;
    QString copy;
};

} // namespace support
