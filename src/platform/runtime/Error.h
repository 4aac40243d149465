#pragma once

#include <exception>

#include <QByteArray>
#include <QString>

namespace runtime {

/// A run-time error that a user may read: a Chinese description, with the engine's own words behind
/// it where there are any. Every layer throws this type or one derived from it.
class Error : public std::exception
{
public:
    explicit Error(QString description) : m_description(std::move(description)) {}

    /// What a message box shows, without the tag of the routine.
    const QString& description() const { return m_description; }

    const char* what() const noexcept override;

private:
    QString m_description;
    mutable QByteArray m_utf8;
};

/// A failure after which nothing of a phase may count: the file could not be read or written, or
/// memory is short. It passes the traps of single statements and ends the phase.
class PhaseError : public Error
{
public:
    using Error::Error;
};

} // namespace runtime
