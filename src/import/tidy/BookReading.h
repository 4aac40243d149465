#pragma once

#include "import/tidy/ClassReadings.h"
#include "import/tidy/Scores.h"
#include "import/tidy/SheetJoin.h"

namespace tidy {

/// The rows that become a sheet of the result, and its columns.
struct ResultSheet
{
    QString name;
    std::vector<ResultRow> rows;
    /// Subjects, or columns of 信息表; those without a single content are left.
    QStringList columns = {};
};

/// Reads a workbook by a proposal: decides anew what the program decides in it, finds the students,
/// puts the sheets together and counts.
class BookReading
{
public:
    /// Throws runtime::Error for a workbook that was closed.
    BookReading(excel::Workbook& book, Proposal& proposal, const Sources& sources);
    BookReading(const BookReading&) = delete;
    BookReading& operator=(const BookReading&) = delete;

    const std::vector<ResultSheet>& result() const { return m_result; }
    /// Rows of students that are not in the result.
    std::vector<const StudentRow*> leftOut() const;
    /// What is written for a student below a column of the result.
    runtime::Value cell(const ResultRow& row, const QString& column) const;
    /// A row as it stands on its sheet.
    std::vector<FilledCell> sourceCells(const SourceRow& row) const;

private:
    void readSheets(excel::Workbook& book);
    void leaveDoubtfulSheets();
    void readClasses();
    void findStudents();
    void noteLostDigits();
    void makeSheets(const SheetJoin& join);
    QStringList streamsOf(const std::vector<ResultRow>& rows) const;
    QString streamOf(const ResultRow& row) const;
    QStringList possibleColumns() const;
    void findColumns(ResultSheet& sheet);
    void noteEmptyColumns();
    void countScores();
    void countScore(const ResultRow& row, const QString& subject);
    bool isOnAllSheets(const QString& subject) const;
    bool hasColumn(const ResultRow& row, const QString& subject) const;
    void noteMissingColumns();
    void noteMissingColumn(const ResultSheet& sheet, const QString& subject);
    void noteRemarks();
    void countStudents();
    void keep(const Remark& remark, int sheet);
    runtime::Value scoreCell(const runtime::Value& cell) const;
    runtime::Value studentCell(const runtime::Value& cell, const QString& column) const;

    Proposal& m_proposal;
    const Sources& m_sources;
    HeadingWords m_words;
    SheetReadings m_sheets;
    std::vector<StudentRow> m_students;
    std::vector<ResultSheet> m_result;
    MarkCounts m_marks;
    QHash<QString, MarkUse> m_useOf;
    QStringList m_joinQuestions;
};

} // namespace tidy
