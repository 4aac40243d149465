#pragma once

#include "import/tidy/RowReading.h"

namespace tidy {

/// 文科, 文史 … as the library writes it; any other text as it stands.
QString streamIn(const QString& text);

/// One sheet: its headings, columns, source of the class and rows, as far as the program decides
/// them. Changes its part of the proposal, which must outlive it.
class SheetReading
{
public:
    SheetReading(const excel::Worksheet& sheet, int number, Proposal& proposal,
                 const HeadingWords& words, const Aliases& aliases);

    const SheetView& view() const { return m_view; }
    const SheetProposal& proposal() const { return m_sheet; }
    /// The grade that a title, the sheet's or the file's name tells; empty if none does.
    const QString& grade() const { return m_grade; }
    /// The rows of students; none of a sheet that is not taken.
    const std::vector<SourceRow>& rows() const { return m_rows; }
    /// Formulas of what is read have no results.
    bool lacksResults() const { return m_lacksResults; }
    /// What keeps the sheet from being tidied, beside its open columns.
    const QStringList& questions() const { return m_questions; }
    /// What is not taken though it looks like scores or like something of a student, and what lies
    /// outside of an import's reach.
    const QStringList& warnings() const { return m_warnings; }
    /// The column of a subject or of 信息表; 0 if there is none.
    int columnNamed(const QString& name) const { return m_columnOf.value(name); }
    /// The headings of some columns are plainly those of scores.
    bool hasPlainScores() const;
    /// Nothing but columns such as 语文作业 made the program take the sheet.
    bool isDoubtful() const;
    /// Leaves a doubtful sheet out, whose students have their scores on others.
    void leaveDoubtful();

private:
    void findGrade();
    void readRows();
    void forgetCutNumbers();
    QString chosenClassText(ClassFrom from) const;
    void findClassSource();
    void checkClassSources(const QString& title, const QString& name);
    struct Contents;
    Contents contentsOf(int column) const;
    QString untakenText(const ColumnProposal& column, const HeadingCell& heading) const;
    bool isUnknown(const ColumnProposal& column, const HeadingCell& heading) const;
    void openNamedColumns();
    void openTextColumns();
    void openStreams();
    bool isRead(int row, const std::vector<int>& withoutResult) const;
    struct LostResults;
    void countLost(int row, const std::vector<int>& places, LostResults& lost) const;
    void askForResults();
    void takeOrLeave();
    QString whyNot() const;
    void noteColumns();
    void noteUntakenColumns();
    void noteCuts();
    void noteAssigned();
    void noteOtherLanguages();
    void noteShownZeros();

    SheetView m_view;
    Proposal& m_proposal;
    SheetProposal& m_sheet;
    int m_number;
    const HeadingWords& m_words;
    const Aliases& m_aliases;
    QString m_grade;
    bool m_lacksResults = false;
    std::vector<SourceRow> m_rows;
    QHash<QString, int> m_columnOf;
    /// The columns that have a subject's name with something beside it.
    std::vector<int> m_namedColumns;
    QStringList m_questions;
    QStringList m_warnings;
};

} // namespace tidy
