#include "cli/Arguments.h"

#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;

Arguments::Arguments(const QStringList& arguments, const Syntax& syntax)
{
    QStringList rest = arguments;
    while (!rest.isEmpty()) {
        const QString argument = rest.takeFirst();
        if (argument == "--"_L1) {
            m_positionals += std::exchange(rest, {});
        } else if (argument.startsWith("--"_L1)) {
            takeOption(argument.mid(2), syntax, rest);
        } else {
            m_positionals.append(argument);
        }
    }
    if (m_positionals.size() < syntax.fewestPositionals)
        throw UsageError(u"缺少参数。"_s);
    if (m_positionals.size() > syntax.mostPositionals)
        throw UsageError(u"多余的参数：%1"_s.arg(m_positionals[syntax.mostPositionals]));
}

void Arguments::takeOption(const QString& argument, const Syntax& syntax, QStringList& rest)
{
    const qsizetype equals = argument.indexOf(u'=');
    const QString name = equals < 0 ? argument : argument.left(equals);
    if (has(name) && !syntax.repeatable.contains(name))
        throw UsageError(u"选项 --%1 出现了两次。"_s.arg(name));
    if (syntax.switches.contains(name) && equals < 0) {
        m_switches.insert(name);
    } else if (!syntax.options.contains(name)) {
        throw UsageError(u"不认识的选项：--%1"_s.arg(argument));
    } else if (equals >= 0) {
        m_values[name].append(argument.mid(equals + 1));
    } else {
        m_values[name].append(takeValue(name, rest));
    }
}

QString Arguments::takeValue(const QString& name, QStringList& rest)
{
    if (rest.isEmpty())
        throw UsageError(u"选项 --%1 缺少值。"_s.arg(name));
    return rest.takeFirst();
}

QString Arguments::path(int position) const
{
    return QFileInfo(m_positionals.at(position)).absoluteFilePath();
}

bool Arguments::has(const QString& name) const
{
    return m_values.contains(name) || m_switches.contains(name);
}

QString Arguments::value(const QString& name, const QString& otherwise) const
{
    return m_values.value(name, {otherwise}).constFirst();
}

QStringList Arguments::list(const QString& name) const
{
    QStringList parts;
    for (const QString& part : value(name).split(u',')) {
        if (!part.trimmed().isEmpty())
            parts.append(part.trimmed());
    }
    return parts;
}

QString Arguments::oneOf(const QString& name, const QStringList& allowed) const
{
    QString given = value(name, allowed.first());
    if (!allowed.contains(given))
        throw UsageError(u"选项 --%1 的值只能是：%2"_s.arg(name, allowed.join(u'、')));
    return given;
}

} // namespace cli
