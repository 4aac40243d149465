#pragma once

#include "platform/widgets/ScreenProgress.h"

namespace widgets {

/// ScreenProgress whose text also stands in a label of the screen until the work is over. The
/// label's panel, where it has one, is there only as long as there is a text.
class LabelProgress : public ScreenProgress
{
public:
    LabelProgress(QWidget* screen, QLabel& text, QWidget* panel = nullptr);
    ~LabelProgress() override;

    void report(const QString& text, int done, int total) override;
    void finish() override;

private:
    void show(const QString& text);

    QLabel& m_text;
    QWidget* m_panel;
};

} // namespace widgets
