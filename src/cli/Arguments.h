#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include "platform/runtime/Error.h"

namespace cli {

/// A wrong command line; the description says what is wrong.
class UsageError : public runtime::Error
{
public:
    using runtime::Error::Error;
};

/// What a command accepts behind its name.
struct Syntax
{
    /// Names of options with a value and of switches without one, without the dashes.
    QStringList options;
    QStringList switches;
    int fewestPositionals = 0;
    int mostPositionals = 0;
    /// Those of `options` that can be given several times.
    QStringList repeatable = {};
};

/// The arguments of one command, taken apart.
class Arguments
{
public:
    /// Throws UsageError for an unknown option, one given twice that is not repeatable, a missing
    /// value, too few or many positionals.
    Arguments(const QStringList& arguments, const Syntax& syntax);

    const QStringList& positionals() const { return m_positionals; }
    /// A file path among the positionals, made absolute.
    QString path(int position) const;
    bool has(const QString& name) const;
    /// The value given first.
    QString value(const QString& name, const QString& otherwise = {}) const;
    /// All values of a repeatable option, in the order given.
    QStringList values(const QString& name) const { return m_values.value(name); }
    /// The value split at commas, without blanks around and without empty parts.
    QStringList list(const QString& name) const;
    /// The value, which must be one of these; the first is taken when the option is not given.
    QString oneOf(const QString& name, const QStringList& allowed) const;

private:
    void takeOption(const QString& argument, const Syntax& syntax, QStringList& rest);
    static QString takeValue(const QString& name, QStringList& rest);

    QStringList m_positionals;
    QHash<QString, QStringList> m_values;
    QSet<QString> m_switches;
};

} // namespace cli
