#pragma once

#include <QString>

namespace workbench {

/// What a sort key shows while no column is chosen.
inline const QString SortPrompt = QStringLiteral("请选择项目");
/// What the statistics list shows while no item is chosen.
inline const QString StatisticsPrompt = QStringLiteral("请选择要统计的项目");
/// The answer to a command for exams while none is selected.
inline const QString NoExamMessage = QStringLiteral("没有选择考试，请选择考试继续。");

} // namespace workbench
