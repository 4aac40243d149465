#include "platform/runtime/Dialogs.h"

#include <stdexcept>
#include <vector>

#include <QFileInfo>

#include "platform/runtime/Phase.h"
#include "platform/runtime/Trap.h"

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

Dialogs*& installed()
{
    static Dialogs* dialogs = nullptr;
    return dialogs;
}

std::vector<const BeforeDialogs*>& watchers()
{
    static std::vector<const BeforeDialogs*> all;
    return all;
}

} // namespace

Dialogs& Dialogs::current()
{
    if (!installed())
        throw std::logic_error("no dialogs are installed");
    for (const BeforeDialogs* watcher : watchers())
        watcher->m_action();
    return *installed();
}

bool Dialogs::folded(const QString& failure)
{
    return installed() && installed()->fold(failure);
}

bool Dialogs::fold(const QString&)
{
    return false;
}

StandingAnswer Dialogs::messageOfMany(const QString& text, const QString& title, Buttons buttons,
                                      Icon icon)
{
    return {message(text, title, buttons, icon)};
}

int Dialogs::choose(const Choice& choice)
{
    return choice.safe;
}

std::optional<QString> Dialogs::askPassword(const QString&)
{
    return std::nullopt;
}

std::optional<QString> Dialogs::chooseFile(const QString&, const QString&, FileMode)
{
    return std::nullopt;
}

std::optional<QString> Dialogs::chooseFolder(const QString&)
{
    return std::nullopt;
}

std::optional<int> Dialogs::chooseColor(const QString&, int)
{
    return std::nullopt;
}

InstalledDialogs::InstalledDialogs(Dialogs& dialogs) : m_former(installed())
{
    installed() = &dialogs;
}

InstalledDialogs::~InstalledDialogs()
{
    installed() = m_former;
}

BeforeDialogs::BeforeDialogs(std::function<void()> action) : m_action(std::move(action))
{
    watchers().push_back(this);
}

BeforeDialogs::~BeforeDialogs()
{
    std::erase(watchers(), this);
}

Answer MsgBox(const QString& text, const QString& title, Buttons buttons, Icon icon)
{
    const auto show = [=] { return Dialogs::current().message(text, title, buttons, icon); };
    if (buttons == Buttons::Ok && Phase::keepBack([=] { show(); }))
        return Answer::Ok;
    return show();
}

StandingAnswer MsgBoxOfMany(const QString& text, const QString& title, Buttons buttons, Icon icon)
{
    return Dialogs::current().messageOfMany(text, title, buttons, icon);
}

int choose(const Choice& choice)
{
    return Dialogs::current().choose(choice);
}

std::optional<QString> askPassword(const QString& question)
{
    return Dialogs::current().askPassword(question);
}

void warn(const QString& text)
{
    MsgBox(text, {}, Buttons::Ok, Icon::Warning);
}

bool mayOverwrite()
{
    return MsgBox(u"同名文件已存在，是否覆盖原文件？"_s, u"是否覆盖"_s, Buttons::OkCancel,
                  Icon::Question)
           != Answer::Cancel;
}

Unsaved askAboutUnsaved(const QString& text)
{
    return Unsaved(choose({.text = text,
                           .buttons = {u"保存"_s, u"不保存"_s, u"取消"_s},
                           .safe = int(Unsaved::Stay),
                           .title = u"提示"_s}));
}

QString ShowFileDialog(const QString& filter, FileMode mode)
{
    const QString title = mode == FileMode::Save ? u"保存文件"_s : u"打开文件"_s;
    QString file;
    Trap::silent()(
        [&] { file = Dialogs::current().chooseFile(title, filter, mode).value_or(QString()); });
    if (mode == FileMode::Open || !QFileInfo::exists(file))
        return file;
    return mayOverwrite() ? file : QString();
}

QString OpenDirectoryTV(const QString& title)
{
    QString folder;
    Trap::silent()([&] { folder = Dialogs::current().chooseFolder(title).value_or(QString()); });
    return folder;
}

QString GetColor(int start)
{
    return GetColor(start, u"选择颜色"_s);
}

QString GetColor(int start, const QString& title)
{
    const Trap trap{" - Function GetColor/MDLCommonDialog"};
    QString color = u"err"_s;
    trap([&] {
        if (const std::optional<int> chosen = Dialogs::current().chooseColor(title, start))
            color = QString::number(*chosen);
    });
    return color;
}

} // namespace runtime
