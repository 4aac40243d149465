#include "cli/CliDialogs.h"

#include <cerrno>
#include <cstdio>

#include "platform/runtime/Error.h"
#include "platform/runtime/Text.h"

namespace cli {

using namespace Qt::StringLiterals;
using runtime::Answer;
using runtime::Buttons;
using runtime::Icon;

namespace {

QString buttonText(Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        return u"确定"_s;
    case Answer::Cancel:
        return u"取消"_s;
    case Answer::Yes:
        return u"是"_s;
    case Answer::No:
        break;
    }
    return u"否"_s;
}

Answer safeButton(Buttons buttons)
{
    switch (buttons) {
    case Buttons::Ok:
        return Answer::Ok;
    case Buttons::YesNo:
        return Answer::No;
    case Buttons::OkCancel:
    case Buttons::YesNoCancel:
        break;
    }
    return Answer::Cancel;
}

} // namespace

void CliDialogs::answer(const QString& part, Answer answer)
{
    m_planned.push_back({part, answer});
}

void CliDialogs::answer(const QString& part, const QString& caption)
{
    m_plannedChoices.push_back({part, caption});
}

int CliDialogs::choose(const runtime::Choice& choice)
{
    int pressed = choice.safe;
    for (const PlannedChoice& planned : m_plannedChoices) {
        const qsizetype button = choice.buttons.indexOf(planned.caption);
        if (choice.text.contains(planned.part) && button >= 0)
            pressed = int(button);
    }
    const QString& caption = choice.buttons.at(pressed);
    m_cancelled = m_cancelled || caption == buttonText(Answer::Cancel);
    say(choice.text + u" → "_s + caption);
    return pressed;
}

Answer CliDialogs::answerFor(const QString& text, Buttons buttons) const
{
    for (const Planned& planned : m_planned) {
        if (text.contains(planned.part))
            return planned.answer;
    }
    return safeButton(buttons);
}

Answer CliDialogs::message(const QString& text, const QString& title, Buttons buttons, Icon icon)
{
    m_errorShown = m_errorShown || icon == Icon::Warning || icon == Icon::Critical;
    const QString line = title.isEmpty() ? text : u"["_s + title + u"] "_s + text;
    if (buttons == Buttons::Ok) {
        say(line);
        return Answer::Ok;
    }
    const Answer given = answerFor(text, buttons);
    m_cancelled = m_cancelled || given == Answer::Cancel;
    say(line + u" → "_s + buttonText(given));
    return given;
}

bool CliDialogs::fold(const QString& failure)
{
    return !m_folded.isNew(failure);
}

void CliDialogs::endCommand()
{
    for (const QString& count : m_folded.takeCounts())
        say(count);
}

void CliDialogs::failure(const QString& text)
{
    m_errorShown = true;
    say(text);
}

void CliDialogs::say(const QString& text)
{
    m_messages.append(text);
    printError(text);
}

void printError(const QString& text)
{
    const QByteArray bytes = runtime::forTerminal(text).toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

void printResult(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const size_t size = size_t(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return;
    if (errno != EPIPE)
        throw runtime::Error(u"结果没有写完：标准输出无法写入。"_s);
}

} // namespace cli
