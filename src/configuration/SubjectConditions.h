#pragma once

#include <functional>

#include "library/ScoreLibrary.h"
#include "platform/grid/FlexGrid.h"
#include "statistics/BandConditions.h"

namespace configuration {

class AnalysisSettings;

/// The conditions of one setting, a row for each stream and subject: two comparisons with raw
/// scores, which both have to hold. They are edited as a grid and then saved whole.
class SubjectConditions
{
public:
    static constexpr int StreamCol = 0;
    static constexpr int SubjectCol = 1;
    static constexpr int FirstOperatorCol = 2;
    static constexpr int FirstScoreCol = 3;
    static constexpr int SecondOperatorCol = 4;
    static constexpr int SecondScoreCol = 5;

    /// A row of headings alone.
    explicit SubjectConditions(library::ScoreLibrary& scoreLibrary);

    grid::FlexGrid conditions;
    /// The row of the settings' grid whose interval the rows were made from; 0 for stored rows.
    int SetRow = 0;

    /// The caption of the screen that shows the conditions of a setting, and the setting's name in
    /// such a caption.
    static QString captionOf(const QString& name);
    static QString nameIn(const QString& caption);

    /// ">", ">=", "<", "<=".
    static const QStringList& operators();
    static bool isOperator(int col) { return col == FirstOperatorCol || col == SecondOperatorCol; }
    static bool isScore(int col) { return col == FirstScoreCol || col == SecondScoreCol; }

    /// How many conditions of the setting are stored.
    int storedCount(const QString& name) const;
    /// Takes the stored conditions of a setting.
    void loadStored(const QString& name);
    /// Makes a row for each stream and subject: shares of the full marks that the stream's latest
    /// exam has, 100 where it has none.
    void makeFrom(const statistics::Interval& interval);

    /// The row of a stream and subject, or -1.
    int rowOf(const QString& stream, const QString& subject) const;
    /// Something was changed since the rows were loaded, made or saved.
    bool isChanged() const;

    /// Saves all rows under the setting's name and has the setting say that it uses them. False,
    /// after a message, if nothing could be stored.
    bool save(const QString& name, AnalysisSettings& settings);
    /// Deletes the stored conditions of the setting; the rows stay in the grid. False, after a
    /// message, if that failed.
    bool remove(const QString& name);

    /// False, which has been told, if the rows could not be loaded or made; there is nothing to
    /// save then.
    bool isRead() const { return m_isRead; }

private:
    void read(const std::function<void()>& fill);
    void makeStream(int stream, const statistics::Interval& interval);
    void setRow(int row, const QStringList& cells);
    bool saveRow(const QString& name, int row);

    library::ScoreLibrary& m_library;
    bool m_isRead = true;
    /// The grid's text when nothing was changed.
    QString m_unchanged;
};

} // namespace configuration
