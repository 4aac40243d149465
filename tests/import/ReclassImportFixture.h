#pragma once

#include <functional>

#include "SheetFixture.h"
#include "import/ReclassImport.h"

/// A re-classing from the sheet that the test writes.
class ReclassImportTest : public SheetFixture
{
protected:
    ReclassImportTest() : SheetFixture(importing::classChangeSheet) {}

    /// A sheet of these rows below the headings.
    void changes(Rows rows)
    {
        rows.insert(rows.begin(), headings);
        sheet(rows);
    }

    importing::ImportResult run(importing::Backup backup = importing::Backup::SwitchedOff)
    {
        return importing::ReclassImport(library.scores, intake, progress).run(sheetName, backup);
    }

    /// Runs with the box of the counts answered by 继续.
    importing::ImportResult goOn()
    {
        dialogs.expect(counted, u"继续"_s);
        return run();
    }

    QString students(const QString& columns = u"班级,学号,姓名"_s)
    {
        return library.rows(u"select "_s + columns + u" from 信息表"_s);
    }

    QString table(const QString& columns = u"班级,学号,姓名,新班级,新学号,已分班"_s)
    {
        return library.rows(u"select "_s + columns + u" from 分班表"_s);
    }

    static QString missing(const QString& student)
    {
        return u"分班表中没有下列学生的信息： ["_s + student
               + u"] ，是否从数据库中删除当前学生记录！"_s;
    }

    const std::vector<runtime::Value> headings{u"班级"_s, u"学号"_s, u"姓名"_s, u"新班级"_s,
                                               u"新学号"_s};
    /// Part of the box with the counts.
    const QString counted = u"移到新班级和新学号"_s;
    const QString isMissing = u"分班表中没有下列学生的信息"_s;
    const QString isOtherName = u"与数据库中记录的不一致"_s;
    const QString tag = u" - Private Sub Command1_Click/FormDaoRuFenBanXinXi"_s;
};

/// Dialogs in front of the scripted ones that call `whileWaiting` whenever a question waits.
class WatchedQuestions : public support::ScriptedDialogs
{
public:
    std::function<void()> whileWaiting = [] {};

    runtime::StandingAnswer messageOfMany(const QString& text, const QString& title,
                                          runtime::Buttons buttons, runtime::Icon icon) override
    {
        whileWaiting();
        return ScriptedDialogs::messageOfMany(text, title, buttons, icon);
    }

    int choose(const runtime::Choice& choice) override
    {
        whileWaiting();
        return ScriptedDialogs::choose(choice);
    }
};
