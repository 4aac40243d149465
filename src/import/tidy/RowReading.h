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
};

/// The rows below the headings: which are students, and why the others are none.
class RowReading
{
public:
    RowReading(const SheetView& view, SheetProposal& sheet, int sheetNumber,
               const Aliases& aliases);

    /// Fills the left-out rows of the sheet and gives the others.
    std::vector<SourceRow> read();

private:
    struct Filled;

    SourceRow studentOf(int row) const;
    RowKind kindOf(const SourceRow& student, const Filled& filled) const;
    bool isRepeatedHeading(const std::vector<FilledCell>& cells) const;
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
    const Aliases& m_aliases;
    std::vector<HeadingCell> m_headings;
    std::vector<int> m_contentColumns;
    int m_classColumn;
    int m_numberColumn;
    int m_nameColumn;
    int m_examNumberColumn;
    int m_schoolNumberColumn;
    /// The class that the latest title names.
    QString m_titleClass;
};

/// The first class that the rows above the headings name; empty if they name none.
QString classInTitles(const SheetView& view, const HeadingRows& heading);

} // namespace tidy
