#include "library/NewLibrary.h"

#include <QFile>

#include <gtest/gtest.h>

#include "platform/database/WriteBatch.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

namespace {

using namespace Qt::StringLiterals;
using support::TestLibrary;

/// The library and its journal as a crash leaves them in the middle of an import of students.
void leaveCrashedLibrary(const QString& path)
{
    TestLibrary old({u"语文"_s});
    for (int number = 1; number <= 50; ++number)
        old.addStudent(1, number, QString(40, u'甲'), u"理"_s);
    // A small cache makes the engine write pages before the end of the batch.
    old.execute(u"PRAGMA cache_size=5"_s);
    database::WriteBatch batch(old.scores.Conn);
    old.execute(u"with recursive n(i) as (select 1 union all select i+1 from n where i<3000) "
                "insert into 信息表(班级,学号,姓名,科类) select 2,i,'乙','理' from n"_s);
    const QString file = old.scores.Conn.path();
    ASSERT_TRUE(QFile::copy(file, path));
    ASSERT_TRUE(QFile::copy(file + u"-journal"_s, path + u"-journal"_s));
}

class ACrashedLibrary : public testing::Test
{
protected:
    ACrashedLibrary() { leaveCrashedLibrary(path); }

    TestLibrary test{{u"语文"_s}};
    QString path = test.file(u"旧.CJK"_s);
};

TEST_F(ACrashedLibrary, IsAsBeforeTheImportWhenItIsOpened)
{
    test.scores.LibPath = path;
    test.scores.OpenDB();
    EXPECT_EQ(test.rows(u"select count(*) from 信息表"_s), u"50"_s);
    EXPECT_EQ(test.rows(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(ACrashedLibrary, LeavesNothingToTheOneThatReplacesIt)
{
    test.scores.LibPath = path;
    library::NewLibrary(test.scores).create({u"数学"_s});
    EXPECT_EQ(test.dialogs.failures, QStringList());
    EXPECT_EQ(test.scores.catalogue.AllColumns, QStringList{u"数学"_s});
    EXPECT_EQ(test.rows(u"select count(*) from 信息表"_s), u"0"_s);
    EXPECT_EQ(test.rows(u"PRAGMA integrity_check"_s), u"ok"_s);
}

} // namespace
