#pragma once

#include <vector>

#include <QLabel>

#include "workbench/StatisticsRun.h"

namespace workbench {

/// Notes on a report with a link each, which mouse and keyboard reach. Hidden while there are none.
class NoteLabel : public QLabel
{
    Q_OBJECT

public:
    explicit NoteLabel(const QString& objectName, QWidget* parent = nullptr);

    void showNotes(const std::vector<ReportNote>& notes);

Q_SIGNALS:
    /// A link was followed.
    void reportRequested(const workbench::ReportRequest& request);

private:
    std::vector<ReportNote> m_notes;
};

} // namespace workbench
