#pragma once

#include "platform/widgets/ScreenProgress.h"

class QLabel;

namespace importing {

/// Progress whose text also stands in a label of the screen. An empty text takes the window away,
/// and the label is empty once the work is over.
class LabelProgress : public widgets::ScreenProgress
{
public:
    LabelProgress(QWidget* screen, QLabel& text);
    ~LabelProgress() override;

    void report(const QString& text, int done, int total) override;

private:
    QLabel& m_text;
};

} // namespace importing
