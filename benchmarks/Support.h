#pragma once

#include <vector>

#include <QElapsedTimer>
#include <QString>

#include "platform/runtime/AppPaths.h"
#include "platform/runtime/Dialogs.h"

namespace benchmark {

/// Prints every text, which a run on sound data never shows; questions get their safe answer.
class PrintedDialogs : public runtime::Dialogs
{
public:
    runtime::Answer message(const QString& text, const QString& title, runtime::Buttons buttons,
                            runtime::Icon icon) override;
    void failure(const QString& text) override;

private:
    runtime::InstalledDialogs m_installed{*this};
};

/// The template and data/ beside the program.
runtime::AppPaths programPaths(const char* program);

/// Since the timer was started.
double milliseconds(const QElapsedTimer& timer);

double median(std::vector<double> values);

/// The most memory that this process ever held, in MB.
double peakMemory();

} // namespace benchmark
