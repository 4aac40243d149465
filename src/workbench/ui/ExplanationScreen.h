#pragma once

#include "library/ScoreLibrary.h"
#include "platform/widgets/DialogScreen.h"
#include "statistics/ReportExplanation.h"
#include "workbench/StatisticsRun.h"

class QComboBox;
class QHBoxLayout;
class QPushButton;
class QTextBrowser;

namespace workbench {

/// "口径": what the figures of a report stand for, to read and copy, with the way to its settings.
class ExplanationScreen : public widgets::DialogScreen
{
    Q_OBJECT

public:
    /// Begins with the report of this request; with one that cannot be explained, or none, with the
    /// first. The others are explained for the same exams as "执行统计" runs them.
    ExplanationScreen(library::ScoreLibrary& scoreLibrary, ReportRequest request, QWidget* parent);

    /// Shows what holds now, after a setting was changed.
    void refresh();

Q_SIGNALS:
    /// A setting, by its name in 设置表, is to be changed.
    void settingRequested(const QString& name);

private:
    void build();
    statistics::Explanation explanation() const;
    void showReport();
    void showSettings(const std::vector<statistics::SettingInForce>& settings);

    library::ScoreLibrary& m_library;
    const ReportRequest m_request;
    QComboBox* m_report = nullptr;
    QTextBrowser* m_text = nullptr;
    QHBoxLayout* m_settings = nullptr;
    QPushButton* m_close = nullptr;
};

} // namespace workbench
