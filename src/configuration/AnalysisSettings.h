#pragma once

#include <vector>

#include "configuration/SubjectConditions.h"

namespace configuration {

/// The analysis settings of a library as a grid: below the headings a row for each setting, with
/// its name, its value, whether its report is part of 综合分析, the way to its conditions by
/// subject, what can be chosen, and 1 where the conditions by subject are in force. It is edited
/// and then saved whole.
class AnalysisSettings
{
public:
    static constexpr int NameCol = 0;
    static constexpr int ValueCol = 1;
    static constexpr int AnalysisCol = 2;
    static constexpr int ConditionsCol = 3;
    static constexpr int ChoicesCol = 4;
    static constexpr int FlagCol = 5;
    /// The first setting, whose report does not exist: its 是 or 否 stays.
    static constexpr int FirstRow = 1;

    explicit AnalysisSettings(library::ScoreLibrary& scoreLibrary);

    /// No row is fixed, so that the heading of the values can be edited as well; it is not saved.
    grid::FlexGrid settings;

    /// Fills the grid from the library. False after the message if it could not be read; there is
    /// nothing to save then.
    bool load();

    /// The row of a setting, blanks at the end of its name aside, or -1.
    int rowOf(const QString& name) const;

    /// The value is put together of choices, instead of typed.
    bool isListEdited(int row) const;
    /// What the value of a list-edited row can be put together of.
    QStringList choices(int row) const;
    /// The choices are what the library holds, and "(全部)" stands for all of them.
    bool offersLibrary(int row) const;

    /// Turns 是 to 否, and anything else to 是. The heading and the first row stay: false then.
    bool flip(int row);

    /// A value is going to be typed into the row: its flag is kept until restoreFlag().
    void noteFlag(int row);
    /// A value was typed: the row does not use conditions by subject any more.
    void clearFlag(int row);
    /// The typing was taken back: the row uses what it used when noteFlag() was called.
    void restoreFlag(int row);
    /// Types a value.
    void setValue(int row, const QString& value);
    /// Why the report cannot read the row's value as it is meant, or "".
    QString complaint(int row) const;

    /// The row leads to conditions by subject.
    bool offersConditions(int row) const;
    /// The conditions of a row that offers them: the stored ones where the row uses them, otherwise
    /// made from its interval. Where a value that only stands for stored conditions would be read
    /// as an interval, the user is asked first.
    SubjectConditions SzGekE(int row);
    /// Writes into the row that it uses conditions by subject; its flag stays as it is.
    void useConditions(int row);

    /// A setting was changed since the grid was filled or saved.
    bool isChanged() const;

    /// Saves all rows under the IDs that they were read with. False, after a message, if nothing
    /// could be stored.
    bool save();

private:
    QString allRows() const;
    void loadRows();
    void loadRow(database::Recordset& rows, int row);
    void offerValues(int row, const QString& name);
    bool wantsStored(const QString& name, const SubjectConditions& conditions) const;
    void saveRow(int row);
    void saveFields(database::Recordset& rows, int row);

    library::ScoreLibrary& m_library;
    bool m_isRead = true;
    /// The IDs of the rows, the first one for the heading.
    std::vector<runtime::Value> m_ids{runtime::Value()};
    /// The rows when nothing was changed.
    QString m_unchanged;
    QString m_notedFlag;
};

} // namespace configuration
