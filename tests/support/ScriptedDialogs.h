#pragma once

#include <deque>
#include <map>
#include <ostream>
#include <vector>

#include <QString>
#include <QStringList>

#include "platform/runtime/Dialogs.h"

namespace support {

/// What a message box says besides its text.
struct BoxLook
{
    QString title;
    runtime::Buttons buttons = runtime::Buttons::Ok;
    runtime::Icon icon = runtime::Icon::None;

    friend bool operator==(const BoxLook&, const BoxLook&) = default;
    friend std::ostream& operator<<(std::ostream& out, const BoxLook& look);
};

/// Dialogs with planned answers. A question that nobody planned fails the test and is answered by
/// its safe button; boxes with one button and failures are only noted.
class ScriptedDialogs : public runtime::Dialogs
{
public:
    ScriptedDialogs() : m_installed(*this) {}
    ~ScriptedDialogs() override;

    /// Plans the answer to the next question whose text contains `part`.
    void expect(const QString& part, runtime::Answer answer);

    /// Plans the answer to the next of many like questions whose text contains `part`: it stands
    /// for the rest of them.
    void expectForRest(const QString& part, runtime::Answer answer);

    /// Plans the button, by its caption, of the next question of that kind whose text contains
    /// `part`.
    void expect(const QString& part, const QString& caption);

    /// Plans what is typed as the next password, asked for by a text that contains `part`; nothing
    /// stands for 取消.
    void expectPassword(const QString& part, const std::optional<QString>& typed);

    /// Answers every question whose text contains `part`.
    void always(const QString& part, runtime::Answer answer);
    void always(const QString& part, const QString& caption);

    /// Texts of all boxes shown, questions and failures in one order; a titled box as "title:
    /// text".
    QStringList shown;
    /// Texts of the questions that offer an answer for all that follow.
    QStringList questionsOfMany;
    /// Texts of the questions alone, and of the trapped failures alone.
    QStringList questions;
    QStringList failures;

    /// How the last message box with `part` in its text looked; fails the test if there was none.
    BoxLook look(const QString& part) const;

    /// The caption of the safe button of the last question put by runtime::choose() with `part` in
    /// its text; fails the test if there was none.
    QString safeOf(const QString& part) const;

    runtime::Answer message(const QString& text, const QString& title, runtime::Buttons buttons,
                            runtime::Icon icon) override;
    runtime::StandingAnswer messageOfMany(const QString& text, const QString& title,
                                          runtime::Buttons buttons, runtime::Icon icon) override;
    int choose(const runtime::Choice& choice) override;
    std::optional<QString> askPassword(const QString& question) override;
    void failure(const QString& text) override;

    /// What the file dialog gives one time after another, before it gives `file`.
    std::deque<QString> files;
    /// What the file, the folder and the colour dialog give; nothing stands for 取消.
    std::optional<QString> file;
    std::optional<QString> folder;
    std::optional<int> color;
    /// Colours that the colour dialog began with.
    QList<int> startColors;
    /// Title and filter that the file dialog was shown with.
    QString fileTitle;
    QString fileFilter;

    std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                      runtime::FileMode mode) override;
    std::optional<QString> chooseFolder(const QString& title) override;
    std::optional<int> chooseColor(const QString& title, int start) override;

private:
    runtime::StandingAnswer answerTo(const QString& text, const QString& title,
                                     runtime::Buttons buttons, runtime::Icon icon);

    struct Planned
    {
        QString part;
        runtime::Answer answer;
        bool forRest = false;
    };

    struct PlannedChoice
    {
        QString part;
        QString caption;
    };

    struct PlannedPassword
    {
        QString part;
        std::optional<QString> typed;
    };

    struct Box
    {
        QString text;
        BoxLook look;
    };

    std::vector<Box> m_boxes;
    std::vector<runtime::Choice> m_choices;
    std::deque<Planned> m_planned;
    std::vector<Planned> m_standing;
    std::deque<PlannedChoice> m_plannedChoices;
    std::vector<PlannedChoice> m_standingChoices;
    std::deque<PlannedPassword> m_plannedPasswords;
    runtime::InstalledDialogs m_installed;
};

} // namespace support
