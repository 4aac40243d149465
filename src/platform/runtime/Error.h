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

    /// It ended a phase: nothing of it counts, which no user may miss.
    bool endsPhase() const { return m_endsPhase; }
    void setEndsPhase() { m_endsPhase = true; }

private:
    QString m_description;
    bool m_endsPhase = false;
    mutable QByteArray m_utf8;
};

/// A failure after which nothing of a phase may count: the file could not be read or written, or
/// memory is short. It passes the traps of single statements and ends the phase.
class PhaseError : public Error
{
public:
    explicit PhaseError(QString description) : Error(std::move(description)) { setEndsPhase(); }
};

} // namespace runtime
