#pragma once

#include <gtest/gtest.h>

#include "export/ScoreExport.h"
#include "support/PrintQString.h"
#include "support/TestLibrary.h"

/// Counts what was reported; can press 取消 and do something else while the export runs.
class WatchedProgress : public runtime::Progress
{
public:
    QStringList texts;
    std::vector<std::pair<int, int>> counts;
    /// Called at each report with the number of students done.
    std::function<void(int)> onReport;
    bool stopped = false;
    int finished = 0;

    void report(const QString& text, int done, int total) override
    {
        texts.append(text);
        counts.emplace_back(done, total);
        if (onReport)
            onReport(done);
    }
    void finish() override { ++finished; }
    bool cancelled() const override { return stopped; }
};

/// A library with two exams, and an export of it.
class ExportFixture : public testing::Test
{
protected:
    ExportFixture();

    exporting::ScoreExportResult run();
    excel::Worksheet& sheet(int number = 1);
    /// The texts of a row, joined by "|", as many as the sheet has columns.
    QString row(int number);
    /// The texts of rows, a line each.
    QStringList rows(int first, int last);
    QString cell(int row, int column) { return sheet().Cells(row, column).text(); }
    /// The failures shown that end with the export's tag, without it.
    QStringList exportFailures() const;

    support::TestLibrary test{
        {QStringLiteral("语文"), QStringLiteral("数学"), QStringLiteral("总分")}};
    exporting::ScoreExportRequest request;
    excel::Applications applications;
    WatchedProgress progress;
    exporting::ScoreExportResult result;
};
