#pragma once

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/FoldedFailures.h"

class QCheckBox;
class QWidget;

namespace widgets {

/// The program's name, which is also the title of a box without one.
extern const QString ProductTitle;

/// The dialogs as windows. Within a command a trapped failure is shown once, and its repeats are
/// told as a number when the command ends. A box offers to show no more failures at all; those that
/// follow are told as a number too.
class ScreenDialogs : public runtime::Dialogs
{
public:
    ScreenDialogs() : m_installed(*this) {}

    runtime::Answer message(const QString& text, const QString& title, runtime::Buttons buttons,
                            runtime::Icon icon) override;
    runtime::StandingAnswer messageOfMany(const QString& text, const QString& title,
                                          runtime::Buttons buttons, runtime::Icon icon) override;
    int choose(const runtime::Choice& choice) override;
    std::optional<QString> askPassword(const QString& question) override;
    bool fold(const QString& failure) override;
    void failure(const QString& text) override;
    void phaseFailed(const QString& text) override;
    std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                      runtime::FileMode mode) override;
    std::optional<QString> chooseFolder(const QString& title) override;
    std::optional<int> chooseColor(const QString& title, int start) override;

    /// The folder that the next dialog for a file or a folder begins with.
    void startIn(const QString& folder) { m_startFolder = folder; }

    /// A command of the user begins or ends; commands can nest (a screen opened by a menu item).
    void beginCommand();
    void endCommand();
    bool inCommand() const { return m_commandDepth > 0; }

private:
    /// `forRest` is the box's check box; null for a box without one.
    static runtime::StandingAnswer ask(const QString& text, const QString& title,
                                       runtime::Buttons buttons, runtime::Icon icon,
                                       QCheckBox* forRest);

    int m_commandDepth = 0;
    bool m_quiet = false;
    qint64 m_passedOver = 0;
    runtime::FoldedFailures m_folded;
    QString m_startFolder;
    runtime::InstalledDialogs m_installed;
};

/// One command of the user, from a click to the end of what it does.
class CommandScope
{
public:
    explicit CommandScope(ScreenDialogs& dialogs) : m_dialogs(dialogs) { dialogs.beginCommand(); }
    ~CommandScope() { m_dialogs.endCommand(); }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

private:
    ScreenDialogs& m_dialogs;
};

} // namespace widgets
