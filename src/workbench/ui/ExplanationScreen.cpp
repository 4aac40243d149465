#include "workbench/ui/ExplanationScreen.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>

namespace workbench {

using namespace Qt::StringLiterals;
using statistics::Explanation;
using statistics::SettingInForce;
using widgets::named;

namespace {

QString section(const QString& heading, const QStringList& sentences)
{
    QString html = u"<h3>%1</h3>"_s.arg(heading);
    for (const QString& sentence : sentences)
        html += u"<p>%1</p>"_s.arg(sentence.toHtmlEscaped());
    return html;
}

QStringList sentencesOf(const SettingInForce& setting)
{
    const QString value = setting.value.isEmpty() ? u"（空）"_s : setting.value;
    return QStringList{u"“%1”现在是：%2"_s.arg(setting.name, value)} + setting.meaning;
}

QString page(const Explanation& shown)
{
    QStringList settings;
    for (const SettingInForce& setting : shown.settings)
        settings += sentencesOf(setting);
    if (settings.isEmpty())
        settings.append(u"没有可以改的设置。"_s);
    settings.append(u"设置和类别都是现在的。已经统计出来的表格用的是统计时的设置和类别，"
                    "之后改过的要重新统计才起作用。"_s);
    return section(u"统计什么"_s, {shown.counted}) + section(u"统计哪些人"_s, shown.over)
           + section(u"不算哪些人"_s, {shown.leftOut}) + section(u"现在的设置"_s, settings)
           + section(u"怎样计算"_s, shown.formulas);
}

} // namespace

ExplanationScreen::ExplanationScreen(library::ScoreLibrary& scoreLibrary, ReportRequest request,
                                     QWidget* parent)
    : DialogScreen(u"ExplanationScreen"_s, u"口径"_s, parent),
      m_library(scoreLibrary),
      m_request(std::move(request))
{
    build();
    const QString report = statistics::explainedName(reportOf(m_request));
    m_report->setCurrentIndex(std::max(0, m_report->findText(report)));
    connect(m_report, &QComboBox::currentIndexChanged, this, &ExplanationScreen::showReport);
    showReport();
}

void ExplanationScreen::build()
{
    m_report = named(new QComboBox(this), u"comboReport"_s, u"统计项目"_s);
    m_report->addItems(statistics::explainedReports());
    m_text = named(new QTextBrowser(this), u"textExplanation"_s, u"口径说明"_s);
    m_text->setTabChangesFocus(true);
    m_close = widgets::defaultButton(u"buttonClose"_s, u"关闭(&C)"_s, this);
    auto* top = new QHBoxLayout;
    top->addWidget(widgets::label(u"labelReport"_s, u"统计项目(&X)"_s, m_report, this));
    top->addWidget(m_report, 1);
    m_settings = new QHBoxLayout;
    auto* bottom = new QHBoxLayout;
    bottom->addLayout(m_settings);
    bottom->addStretch();
    bottom->addWidget(m_close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_text, 1);
    layout->addLayout(bottom);
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    resize(fontMetrics().averageCharWidth() * 90, fontMetrics().lineSpacing() * 32);
}

void ExplanationScreen::refresh()
{
    m_text->setHtml(page(explanation()));
}

Explanation ExplanationScreen::explanation() const
{
    const QString report = m_report->currentText();
    const bool isRequested = report == statistics::explainedName(reportOf(m_request));
    return statistics::explain(report, m_library, m_request.exams,
                               isRequested ? m_request.tables : ExamGrouping::Together);
}

void ExplanationScreen::showReport()
{
    refresh();
    showSettings(explanation().settings);
}

/// A button for each; their numbers are their access keys.
void ExplanationScreen::showSettings(const std::vector<SettingInForce>& settings)
{
    while (const QLayoutItem* item = m_settings->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    QWidget* before = m_text;
    for (const SettingInForce& setting : settings) {
        const int number = m_settings->count() + 1;
        QPushButton* change =
            widgets::enterButton(u"buttonSetting%1"_s.arg(number),
                                 u"修改“%1”(&%2)…"_s.arg(setting.name).arg(number), this);
        connect(change, &QPushButton::clicked, this,
                [this, name = setting.name] { Q_EMIT settingRequested(name); });
        m_settings->addWidget(change);
        setTabOrder(before, change);
        before = change;
    }
    setTabOrder(before, m_close);
}

} // namespace workbench
