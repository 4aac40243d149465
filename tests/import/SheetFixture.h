#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "import/WorkbookIntake.h"
#include "platform/runtime/Progress.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

using namespace Qt::StringLiterals;

/// Progress that notes the texts that it was given, repetitions left out and an empty one at the
/// end, and is cancelled once it was told more than so many times.
class NotedProgress : public runtime::Progress
{
public:
    int cancelAfter = -1;
    QStringList texts;

    void report(const QString& text, int, int) override
    {
        ++m_reports;
        if (texts.isEmpty() || texts.last() != text)
            texts.append(text);
    }
    void finish() override { texts.append(QString()); }

    bool cancelled() const override { return cancelAfter >= 0 && m_reports > cancelAfter; }

private:
    int m_reports = 0;
};

/// A library with 语文, 数学 and 总分, and a workbook in memory that stands for a file in its
/// folder.
class SheetFixture : public testing::Test
{
protected:
    using Rows = std::vector<std::vector<runtime::Value>>;

    explicit SheetFixture(const importing::SheetRules& rules) : intake(applications, rules) {}

    /// Opens a new workbook whose first sheet holds these rows.
    void sheet(const Rows& rows)
    {
        applications.push_back(std::make_unique<excel::Application>());
        excel::Workbook& book = applications.back()->Workbooks().Add();
        m_sheet = &book.Worksheets().Item(1);
        m_sheet->setName(sheetName);
        for (size_t row = 0; row < rows.size(); ++row) {
            for (size_t column = 0; column < rows[row].size(); ++column)
                setCell(int(row) + 1, int(column) + 1, rows[row][column]);
        }
        intake.use(*applications.back(), book, library.file(u"成绩.xlsx"_s));
    }

    void setCell(int row, int column, const runtime::Value& value)
    {
        m_sheet->setCell(row, column, value);
    }

    excel::Worksheet& worksheet() { return *m_sheet; }

    QString scoreRows(const QString& columns)
    {
        return library.rows(u"select "_s + columns + u" from 成绩表"_s);
    }

    /// A box with one button that tells an error.
    const support::BoxLook errorBox{u"错误"_s, runtime::Buttons::Ok, runtime::Icon::Critical};
    const QString sheetName = u"一年级"_s;
    support::TestLibrary library{{u"语文"_s, u"数学"_s, u"总分"_s}};
    support::ScriptedDialogs& dialogs = library.dialogs;
    importing::Applications applications;
    importing::WorkbookIntake intake;
    NotedProgress progress;

private:
    excel::Worksheet* m_sheet = nullptr;
};
