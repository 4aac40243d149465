#pragma once

#include <QWidget>

#include "workbench/StatisticsRun.h"

class QPushButton;

namespace workbench {
class NoteLabel;
}

namespace shell {

class StaleNote;

/// Whether the result grid shows a report, which can be explained, or anything else.
enum class ResultKind { Report, Other };

/// What stands above the result grid: the notes on a report, the word that the library has changed
/// since, and the way to what the report counts. It takes no room while there is nothing to say.
class ResultHead : public QWidget
{
    Q_OBJECT

public:
    explicit ResultHead(QWidget* parent);

    void showNotes(const std::vector<workbench::ReportNote>& notes, ResultKind kind);
    void showStale(const QString& text);
    void clear();

Q_SIGNALS:
    /// The link of a note was followed.
    void reportRequested(const workbench::ReportRequest& request);
    /// "口径" was pressed.
    void explanationRequested();

private:
    workbench::NoteLabel* LabelResultNote = nullptr;
    StaleNote* LabelStale = nullptr;
    QPushButton* m_explain = nullptr;
};

} // namespace shell
