#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "support/ByteMutator.h"

namespace support {

/// A program that feeds a reader with mutated files: `--inputs N` or `--minutes N`, `--seed N`. It
/// fails on a crash, on an exception that a reader must not throw, and on an input that takes too
/// long or too much memory. The same seed gives the same inputs. An input that fails stays in the
/// working folder as fuzz-failure.bin.
class FuzzRun
{
public:
    explicit FuzzRun(const QStringList& arguments);
    virtual ~FuzzRun() = default;
    FuzzRun(const FuzzRun&) = delete;
    FuzzRun& operator=(const FuzzRun&) = delete;

    /// The exit code of the program.
    int run();

protected:
    enum class Outcome { Read, Refused, Wrong };

    ByteMutator& mutator() { return m_mutator; }
    QString folder() const { return m_folder.path(); }
    static void save(const QString& path, const QByteArray& bytes);

    virtual void writeInput(const QString& path) = 0;
    /// Exceptions that get out of it count as wrong.
    virtual Outcome readInput(const QString& path) = 0;

private:
    bool goesOn() const;
    bool tryInput();
    bool fail(const char* reason) const;
    void report() const;

    qint64 m_inputs;
    double m_minutes; // 0: as many inputs as asked for
    unsigned m_seed;
    ByteMutator m_mutator;
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("input.bin"));
    QElapsedTimer m_clock;
    qint64 m_done = 0;
    qint64 m_read = 0;
    double m_slowest = 0;
    qint64 m_largest = 0;
};

} // namespace support
