#pragma once

#include <vector>

#include <QString>
#include <QStringList>

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/FoldedFailures.h"

namespace cli {

/// The dialogs of the command line: every text goes to stderr, a question is answered as a flag
/// said, and by its safe button otherwise. A failure is said once; how often it came is said at the
/// end.
class CliDialogs : public runtime::Dialogs
{
public:
    CliDialogs() : m_installed(*this) {}
    /// Says what endCommand has not said yet.
    ~CliDialogs() override { endCommand(); }

    /// Answers every question whose text contains `part`.
    void answer(const QString& part, runtime::Answer answer);

    /// Presses the button of that caption in every question whose text contains `part`.
    void answer(const QString& part, const QString& caption);

    /// Says how often failures came that were said once.
    void endCommand();

    /// True once a text was shown that reports an error.
    bool errorShown() const { return m_errorShown; }
    /// True once a question was answered by 取消.
    bool cancelled() const { return m_cancelled; }
    /// All texts shown, in order.
    const QStringList& messages() const { return m_messages; }

    runtime::Answer message(const QString& text, const QString& title, runtime::Buttons buttons,
                            runtime::Icon icon) override;
    int choose(const runtime::Choice& choice) override;
    bool fold(const QString& failure) override;
    void failure(const QString& text) override;

private:
    struct Planned
    {
        QString part;
        runtime::Answer answer;
    };

    struct PlannedChoice
    {
        QString part;
        QString caption;
    };

    runtime::Answer answerFor(const QString& text, runtime::Buttons buttons) const;
    void say(const QString& text);

    std::vector<Planned> m_planned;
    std::vector<PlannedChoice> m_plannedChoices;
    QStringList m_messages;
    runtime::FoldedFailures m_folded;
    bool m_errorShown = false;
    bool m_cancelled = false;
    runtime::InstalledDialogs m_installed;
};

/// One line on stderr.
void printError(const QString& text);

/// Text on stdout as it stands. Throws Error if results are lost, as on a full disk; a reader that
/// went away lost nothing that it wanted.
void printResult(const QString& text);

} // namespace cli
