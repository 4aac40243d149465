#pragma once

#include <sqlite3.h>

#include <QFile>

#include "SheetFixture.h"
#include "import/StudentImport.h"

/// The import of a student list from the sheet that the test writes.
class StudentImportTest : public SheetFixture
{
protected:
    StudentImportTest() : SheetFixture(importing::studentSheet) {}

    importing::ImportResult run(importing::Backup backup = importing::Backup::SwitchedOff)
    {
        return importing::StudentImport(library.scores, intake, progress).run(sheetName, backup);
    }

    QString students(const QString& columns)
    {
        return library.rows(u"select "_s + columns + u" from 信息表"_s);
    }

    void writeFile(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    /// The values of one column below its heading, one student each.
    void column(const QString& heading, const std::vector<runtime::Value>& cells)
    {
        Rows rows{{u"班级"_s, u"学号"_s, u"姓名"_s, heading}};
        int number = 0;
        for (const runtime::Value& cell : cells)
            rows.push_back({1, ++number, u"学生"_s, cell});
        sheet(rows);
    }

    /// Lets the library file grow by so many pages and no further, as a full disk does.
    void allowPages(int pages)
    {
        const int present = library.rows(u"select * from pragma_page_count"_s).toInt();
        const std::string limit = "pragma max_page_count=" + std::to_string(present + pages);
        sqlite3_exec(library.scores.Conn.handle(), limit.c_str(), nullptr, nullptr, nullptr);
    }

    const QString tag = u" - Private Sub Command1_Click/FormDaoRuXinXi"_s;
};
