#include "oldlibraries/ui/ReportScreen.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "oldlibraries/ReportForms.h"
#include "platform/grid/ui/FlexGridView.h"
#include "platform/runtime/Trap.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using widgets::button;

ReportScreen::ReportScreen(ConversionReport report, widgets::ScreenDialogs& dialogs,
                           QWidget* parent)
    : Screen(u"ReportScreen"_s, u"转换报告"_s, parent),
      m_report(std::move(report)),
      m_dialogs(dialogs),
      m_grid(reportGrid(m_report))
{
    makeWidgets();
}

void ReportScreen::makeWidgets()
{
    auto* view =
        widgets::named(new grid::FlexGridView(m_grid, this), u"ReportGrid"_s, u"转换报告"_s);
    // What was done is a sentence, which the columns before it leave the rest of the width.
    view->horizontalHeader()->setStretchLastSection(true);
    QPushButton* saving = button(u"ReportSave"_s, u"保存(&S)…"_s, this);
    QPushButton* closing = button(u"ReportClose"_s, u"关闭(&C)"_s, this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(saving);
    buttons->addWidget(closing);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(view, 1);
    layout->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * 140, fontMetrics().lineSpacing() * 32);
    connect(saving, &QPushButton::clicked, this, &ReportScreen::save);
    connect(closing, &QPushButton::clicked, this, &QDialog::close);
    view->setFocus();
}

void ReportScreen::save()
{
    const widgets::CommandScope command(m_dialogs);
    m_dialogs.startIn(QFileInfo(m_report.newPath).path());
    const QString file =
        runtime::ShowFileDialog(u"工作簿或文本文件|*.xlsx;*.txt"_s, runtime::FileMode::Save);
    const runtime::Trap trap{" - Sub SaveReport/OldLibraries"};
    if (!file.isEmpty())
        trap([&] { saveReport(m_report, file); });
}

} // namespace oldlibraries
