#pragma once

#include "oldlibraries/ConversionReport.h"
#include "platform/grid/FlexGrid.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/ScreenDialogs.h"

namespace oldlibraries {

/// "转换报告": what became of an old library, to read, search, copy and save.
class ReportScreen : public widgets::Screen
{
    Q_OBJECT

public:
    ReportScreen(ConversionReport report, widgets::ScreenDialogs& dialogs, QWidget* parent);

private:
    void makeWidgets();
    void save();

    const ConversionReport m_report;
    widgets::ScreenDialogs& m_dialogs;
    grid::FlexGrid m_grid;
};

} // namespace oldlibraries
