#pragma once

#include <vector>

#include "import/tidy/HeadingWords.h"

namespace tidy {

/// A row of a student as it stands on its sheet.
struct SourceRow
{
    int sheet = 0;
    int row = 0;
    /// As it is written; a class from a title or a name, too.
    QString classText = {};
    QString number = {};
    QString name = {};
    QString examNumber = {};
    QString schoolNumber = {};
    /// Why nobody knows whose scores these are; empty for a row of a student.
    QString whyNobody = {};
};

/// The rows below the headings: which are students, and why the others are none.
class RowReading
{
public:
    RowReading(const SheetView& view, SheetProposal& sheet, int sheetNumber,
               const HeadingWords& words);

    /// Fills the left-out rows of the sheet and gives the others, and scores of nobody.
    std::vector<SourceRow> read();
    /// The first row with other headings than those that the sheet is read by; 0 if there is none.
    int otherHeading() const { return m_otherHeading; }
    /// The first title between the rows that names another class than the sheet or the file; 0 if
    /// there is none.
    int otherClassTitle() const { return m_otherClassTitle; }

private:
    struct Filled;

    SourceRow studentOf(int row) const;
    RowKind kindOf(const SourceRow& student, const Filled& filled) const;
    bool isRepeatedHeading(const std::vector<FilledCell>& cells) const;
    bool hasOtherMeaning(const FilledCell& cell) const;
    bool isOtherHeading(const std::vector<FilledCell>& cells) const;
    void findOtherHeadingAbove();
    bool isClassTitle(const SourceRow& student, const Filled& filled) const;
    bool isUnnamedSum(const SourceRow& student, const Filled& filled) const;
    Filled filledOf(int row) const;
    void beginClass(const QString& name, int row);
    void noteNobody(SourceRow student, RowKind kind, std::vector<SourceRow>& rows) const;
    RowKind kindOfFew(const SourceRow& student, const Filled& filled) const;
    void noteGap(int from, int to);
    void leaveOut(int row, RowKind kind, const QString& reason);
    void leaveOutHead();
    std::optional<Taking> chosen(int row) const;
    void spreadClasses(std::vector<SourceRow>& rows) const;
    QString classFor(const SourceRow& student) const;

    const SheetView& m_view;
    SheetProposal& m_sheet;
    int m_sheetNumber;
    const HeadingWords& m_words;
    std::vector<HeadingCell> m_headings;
    std::vector<int> m_contentColumns;
    int m_classColumn;
    int m_numberColumn;
    int m_nameColumn;
    int m_examNumberColumn;
    int m_schoolNumberColumn;
    /// The class that the latest title names.
    QString m_titleClass;
    /// Students with names since the latest title.
    int m_named = 0;
    int m_otherHeading = 0;
    int m_otherClassTitle = 0;
};

/// The first class that the rows above the headings name; empty if they name none.
QString classInTitles(const SheetView& view, const HeadingRows& heading);

} // namespace tidy
