#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

namespace support {

using runtime::Answer;
using runtime::Buttons;

ScriptedDialogs::~ScriptedDialogs()
{
    for (const Planned& planned : m_planned)
        ADD_FAILURE() << "never asked: " << planned.part.toStdString();
}

void ScriptedDialogs::expect(const QString& part, Answer answer)
{
    m_planned.push_back({part, answer});
}

void ScriptedDialogs::always(const QString& part, Answer answer)
{
    m_standing.push_back({part, answer});
}

Answer ScriptedDialogs::message(const QString& text, const QString& title, Buttons buttons,
                                runtime::Icon)
{
    shown.append(title.isEmpty() ? text : title + QStringLiteral(": ") + text);
    if (buttons == Buttons::Ok)
        return Answer::Ok;
    questions.append(text);
    if (!m_planned.empty() && text.contains(m_planned.front().part)) {
        const Answer answer = m_planned.front().answer;
        m_planned.pop_front();
        return answer;
    }
    for (const Planned& standing : m_standing) {
        if (text.contains(standing.part))
            return standing.answer;
    }
    ADD_FAILURE() << "unexpected question: " << text.toStdString();
    return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

void ScriptedDialogs::failure(const QString& text)
{
    shown.append(text);
    failures.append(text);
}

std::optional<QString> ScriptedDialogs::chooseFile(const QString& title, const QString& filter,
                                                   runtime::FileMode)
{
    fileTitle = title;
    fileFilter = filter;
    return file;
}

std::optional<int> ScriptedDialogs::chooseColor(const QString&, int)
{
    return color;
}

} // namespace support
