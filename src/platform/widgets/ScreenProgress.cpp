#include "platform/widgets/ScreenProgress.h"

#include <QCoreApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/widgets/Screen.h"

namespace widgets {

using namespace Qt::StringLiterals;

namespace {

constexpr int paintEveryMs = 40;

} // namespace

ScreenProgress::ScreenProgress(QWidget* parent, std::chrono::milliseconds appearAfter)
    : m_window(std::make_unique<Screen>(u"ProgressWindow"_s, u"请稍候"_s, parent)),
      m_text(named(new QLabel, u"ProgressText"_s, u"正在进行"_s)),
      m_counts(namedText(new QLabel, u"ProgressCounts"_s)),
      m_bar(named(new QProgressBar, u"ProgressBar"_s, u"进度"_s)),
      m_cancel(button(u"ProgressCancel"_s, u"取消(&C)"_s, m_window.get())),
      m_appearAfter(appearAfter)
{
    m_text->setTextFormat(Qt::PlainText);
    auto* layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(m_counts);
    layout->addWidget(m_cancel, 0, Qt::AlignRight);
    QObject::connect(m_cancel, &QPushButton::clicked, m_window.get(), [this] { cancel(); });
    QObject::connect(m_window.get(), &QDialog::rejected, m_window.get(), [this] { cancel(); });
    m_window->setModal(true);
    m_window->setMinimumWidth(m_window->fontMetrics().averageCharWidth() * 50);
    m_started.start();
}

ScreenProgress::~ScreenProgress() = default;

void ScreenProgress::report(const QString& text, int done, int total)
{
    if (!m_window->isVisible() && m_started.elapsed() < m_appearAfter.count())
        return;
    const bool last = total > 0 && done >= total;
    if (m_painted.isValid() && m_painted.elapsed() < paintEveryMs && !last)
        return;
    if (!m_cancelled)
        m_text->setText(text);
    m_bar->setMaximum(total);
    m_bar->setValue(done);
    m_counts->setText(total > 0 ? u"%1 / %2"_s.arg(done).arg(total) : QString());
    paint();
}

void ScreenProgress::stepAside()
{
    m_window->hide();
}

void ScreenProgress::cancel()
{
    m_cancelled = true;
    m_cancel->setEnabled(false);
    m_text->setText(u"正在取消..."_s);
}

void ScreenProgress::paint()
{
    m_window->show();
    m_painted.restart();
    // The modal window keeps every other one from taking input.
    QCoreApplication::processEvents();
}

} // namespace widgets
