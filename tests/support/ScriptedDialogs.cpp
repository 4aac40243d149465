#include "support/ScriptedDialogs.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace support {

using namespace Qt::StringLiterals;

using runtime::Answer;
using runtime::Buttons;

std::ostream& operator<<(std::ostream& out, const BoxLook& look)
{
    constexpr const char* buttonNames[] = {"Ok", "OkCancel", "YesNo", "YesNoCancel"};
    constexpr const char* iconNames[] = {"None", "Question", "Warning", "Critical"};
    return out << '"' << look.title.toStdString() << "\" " << buttonNames[int(look.buttons)] << ' '
               << iconNames[int(look.icon)];
}

ScriptedDialogs::~ScriptedDialogs()
{
    for (const Planned& planned : m_planned)
        ADD_FAILURE() << "never asked: " << planned.part.toStdString();
    for (const PlannedChoice& planned : m_plannedChoices)
        ADD_FAILURE() << "never asked: " << planned.part.toStdString();
    for (const PlannedPassword& planned : m_plannedPasswords)
        ADD_FAILURE() << "never asked: " << planned.part.toStdString();
}

void ScriptedDialogs::expect(const QString& part, Answer answer)
{
    m_planned.push_back({part, answer, false});
}

void ScriptedDialogs::expectForRest(const QString& part, Answer answer)
{
    m_planned.push_back({part, answer, true});
}

void ScriptedDialogs::expectPassword(const QString& part, const std::optional<QString>& typed)
{
    m_plannedPasswords.push_back({part, typed});
}

void ScriptedDialogs::always(const QString& part, Answer answer)
{
    m_standing.push_back({part, answer, false});
}

void ScriptedDialogs::expect(const QString& part, const QString& caption)
{
    m_plannedChoices.push_back({part, caption});
}

void ScriptedDialogs::always(const QString& part, const QString& caption)
{
    m_standingChoices.push_back({part, caption});
}

int ScriptedDialogs::choose(const runtime::Choice& choice)
{
    shown.append(choice.title.isEmpty() ? choice.text : choice.title + u": "_s + choice.text);
    questions.append(choice.text);
    m_choices.push_back(choice);
    const auto button = [&choice](const PlannedChoice& planned) {
        const qsizetype found = choice.buttons.indexOf(planned.caption);
        if (found < 0)
            ADD_FAILURE() << "no such button: " << planned.caption.toStdString();
        return int(found);
    };
    if (!m_plannedChoices.empty() && choice.text.contains(m_plannedChoices.front().part)) {
        const PlannedChoice planned = m_plannedChoices.front();
        m_plannedChoices.pop_front();
        return button(planned);
    }
    for (const PlannedChoice& standing : m_standingChoices) {
        if (choice.text.contains(standing.part))
            return button(standing);
    }
    ADD_FAILURE() << "unexpected question: " << choice.text.toStdString();
    return choice.safe;
}

std::optional<QString> ScriptedDialogs::askPassword(const QString& question)
{
    shown.append(question);
    questions.append(question);
    if (!m_plannedPasswords.empty() && question.contains(m_plannedPasswords.front().part)) {
        const PlannedPassword planned = m_plannedPasswords.front();
        m_plannedPasswords.pop_front();
        return planned.typed;
    }
    ADD_FAILURE() << "unexpected question: " << question.toStdString();
    return std::nullopt;
}

Answer ScriptedDialogs::message(const QString& text, const QString& title, Buttons buttons,
                                runtime::Icon icon)
{
    return answerTo(text, title, buttons, icon).answer;
}

runtime::StandingAnswer ScriptedDialogs::messageOfMany(const QString& text, const QString& title,
                                                       Buttons buttons, runtime::Icon icon)
{
    questionsOfMany.append(text);
    return answerTo(text, title, buttons, icon);
}

runtime::StandingAnswer ScriptedDialogs::answerTo(const QString& text, const QString& title,
                                                  Buttons buttons, runtime::Icon icon)
{
    m_boxes.push_back({text, {title, buttons, icon}});
    shown.append(title.isEmpty() ? text : title + u": "_s + text);
    if (buttons == Buttons::Ok)
        return {Answer::Ok};
    questions.append(text);
    if (!m_planned.empty() && text.contains(m_planned.front().part)) {
        const Planned planned = m_planned.front();
        m_planned.pop_front();
        return {planned.answer, planned.forRest};
    }
    for (const Planned& standing : m_standing) {
        if (text.contains(standing.part))
            return {standing.answer};
    }
    ADD_FAILURE() << "unexpected question: " << text.toStdString();
    return {buttons == Buttons::YesNo ? Answer::No : Answer::Cancel};
}

BoxLook ScriptedDialogs::look(const QString& part) const
{
    const auto box = std::find_if(m_boxes.rbegin(), m_boxes.rend(),
                                  [&](const Box& b) { return b.text.contains(part); });
    if (box != m_boxes.rend())
        return box->look;
    ADD_FAILURE() << "no such box: " << part.toStdString();
    return {};
}

QString ScriptedDialogs::safeOf(const QString& part) const
{
    const auto choice =
        std::find_if(m_choices.rbegin(), m_choices.rend(),
                     [&](const runtime::Choice& c) { return c.text.contains(part); });
    if (choice != m_choices.rend())
        return choice->buttons.value(choice->safe);
    ADD_FAILURE() << "no such question: " << part.toStdString();
    return {};
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
    if (files.empty())
        return file;
    const QString first = files.front();
    files.pop_front();
    return first;
}

std::optional<QString> ScriptedDialogs::chooseFolder(const QString& title)
{
    fileTitle = title;
    return folder;
}

std::optional<int> ScriptedDialogs::chooseColor(const QString&, int start)
{
    startColors.append(start);
    return color;
}

} // namespace support
