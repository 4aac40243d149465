#pragma once

#include <functional>
#include <optional>

#include <QString>
#include <QStringList>

namespace runtime {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

/// What a message box says by its picture. A box of kind Warning or Critical reports that something
/// was refused or failed; the command line ends with exit code 1 then.
enum class Icon { None, Question, Warning, Critical };

enum class FileMode { Save = 1, Open = 2 };

/// A question whose buttons say in words of their own what they do.
struct Choice
{
    QString text;
    /// Captions of the buttons, from left to right.
    QStringList buttons;
    /// The button, counted from 0, that harms nothing: Enter and Esc press it.
    int safe = 0;
    QString title = {};
};

/// The answer to one of many like questions, and whether it stands for the rest of them.
struct StandingAnswer
{
    Answer answer = Answer::Ok;
    bool forRest = false;
};

/// The one door through which every layer speaks with the user. The shell installs the real screen,
/// the command line its own, tests a scripted one.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    virtual Answer message(const QString& text, const QString& title, Buttons buttons,
                           Icon icon) = 0;

    /// Asks one of many like questions; where it can be shown, the box offers to let the answer
    /// stand for the rest of them.
    virtual StandingAnswer messageOfMany(const QString& text, const QString& title, Buttons buttons,
                                         Icon icon);

    /// The button that was pressed, counted from 0; the safe one where nobody can press any.
    virtual int choose(const Choice& choice);

    /// A text that is not shown while it is typed; nothing when cancelled, and where nobody can
    /// type.
    virtual std::optional<QString> askPassword(const QString& question);

    /// Counts a failure that was shown before, or is like many that were; false if it has to be
    /// shown. What was counted is told when the running command ends.
    virtual bool fold(const QString& failure);

    /// A trapped error: `text` is the description with the tag of the routine behind it. A screen
    /// may offer to show no more of them until the running command ends.
    virtual void failure(const QString& text) = 0;

    /// A failure after which nothing of a phase counts. It is shown whatever the user said of
    /// failures.
    virtual void phaseFailed(const QString& text) { failure(text); }

    /// The file dialog. `filter` is of the form "成绩库|*.CJK". The full path of the file chosen,
    /// or nothing when cancelled; asking before overwriting is the caller's.
    virtual std::optional<QString> chooseFile(const QString& title, const QString& filter,
                                              FileMode mode);

    /// The folder dialog: the full path of the folder chosen, or nothing when cancelled.
    virtual std::optional<QString> chooseFolder(const QString& title);

    /// The colour dialog, colours as 0xBBGGRR; nothing when cancelled.
    virtual std::optional<int> chooseColor(const QString& title, int start);

    /// The dialogs in force, for one box. Throws std::logic_error if none are installed.
    static Dialogs& current();

    /// Has the dialogs in force count a failure, as fold does. Nobody waits for the user then.
    static bool folded(const QString& failure);
};

/// Puts `dialogs` in force as long as it lives, and the former ones back afterwards.
class InstalledDialogs
{
public:
    explicit InstalledDialogs(Dialogs& dialogs);
    ~InstalledDialogs();
    InstalledDialogs(const InstalledDialogs&) = delete;
    InstalledDialogs& operator=(const InstalledDialogs&) = delete;

private:
    Dialogs* m_former;
};

/// As long as it lives, calls `action` each time before the user is told or asked something: for
/// what must not wait until he answers.
class BeforeDialogs
{
public:
    explicit BeforeDialogs(std::function<void()> action);
    ~BeforeDialogs();
    BeforeDialogs(const BeforeDialogs&) = delete;
    BeforeDialogs& operator=(const BeforeDialogs&) = delete;

private:
    friend class Dialogs;

    std::function<void()> m_action;
};

/// Shows a message box and gives the button that was pressed.
Answer MsgBox(const QString& text, const QString& title = {}, Buttons buttons = Buttons::Ok,
              Icon icon = Icon::None);

/// Asks one of many like questions, with a box that offers 对其余都如此.
StandingAnswer MsgBoxOfMany(const QString& text, const QString& title, Buttons buttons,
                            Icon icon = Icon::None);

/// Asks which way to go and gives the button that was pressed, counted from 0.
int choose(const Choice& choice);

/// Asks for a password; nothing when cancelled.
std::optional<QString> askPassword(const QString& question);

/// Tells that something was refused or is wrong.
void warn(const QString& text);

/// Asks whether an existing file may be overwritten; true for yes.
bool mayOverwrite();

/// What becomes of changes that nobody saved yet.
enum class Unsaved { Save, Discard, Stay };

/// Asks before such changes would be lost: 保存, 不保存, or 取消, the safe one, which stays with
/// them.
Unsaved askAboutUnsaved(const QString& text);

/// Asks for a file. Saving under the name of an existing one is asked about once more. "" when
/// cancelled or refused, and, without a message, when the dialog failed.
QString ShowFileDialog(const QString& filter, FileMode mode);

/// Asks for a folder; "" when cancelled, and, without a message, when the dialog failed.
QString OpenDirectoryTV(const QString& title);

/// Asks for a colour: its number as text, or "err" when cancelled.
QString GetColor(int start);
QString GetColor(int start, const QString& title);

} // namespace runtime
