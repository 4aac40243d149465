#include "support/FuzzRun.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include <QFile>

namespace support {

using namespace Qt::StringLiterals;

namespace {

constexpr double longestSeconds = 2;
constexpr qint64 mostMegabytes = 300;

/// Processor time used up to here; a machine busy with other work must not make inputs slow.
double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

/// Megabytes that the system counts under a name in what it says of this process.
qint64 memory(const QByteArray& name)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const QByteArray label = '\n' + name + ':';
    const qsizetype at = text.indexOf(label);
    const QByteArray rest = text.mid(at + label.size()).trimmed();
    return at < 0 ? 0 : rest.left(rest.indexOf(' ')).toLongLong() / 1024;
}

/// The peak is counted from here on.
void forgetPeak()
{
    QFile references(u"/proc/self/clear_refs"_s);
    if (references.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        references.write("5");
}

QString given(const QStringList& arguments, const QString& name, const QString& usual)
{
    const qsizetype at = arguments.indexOf(name);
    return at < 0 ? usual : arguments.value(at + 1);
}

} // namespace

FuzzRun::FuzzRun(const QStringList& arguments)
    : m_inputs(given(arguments, u"--inputs"_s, u"2000"_s).toLongLong()),
      m_minutes(given(arguments, u"--minutes"_s, u"0"_s).toDouble()),
      m_seed(given(arguments, u"--seed"_s, u"1"_s).toUInt()),
      m_mutator(m_seed)
{
}

void FuzzRun::save(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

bool FuzzRun::goesOn() const
{
    if (m_minutes > 0)
        return double(m_clock.elapsed()) < m_minutes * 60'000;
    return m_done < m_inputs;
}

bool FuzzRun::fail(const char* reason) const
{
    QFile::remove(u"fuzz-failure.bin"_s);
    const bool kept = QFile::copy(m_path, u"fuzz-failure.bin"_s);
    std::fprintf(stderr, "input %lld of seed %u: %s; %s fuzz-failure.bin\n",
                 static_cast<long long>(m_done), m_seed, reason,
                 kept ? "kept as" : "could not be kept as");
    return false;
}

bool FuzzRun::tryInput()
{
    forgetPeak();
    const qint64 memoryBefore = memory("VmRSS");
    const double before = processorSeconds();
    try {
        const Outcome outcome = readInput(m_path);
        if (outcome == Outcome::Wrong)
            return fail("read wrongly");
        m_read += outcome == Outcome::Read ? 1 : 0;
    } catch (...) {
        return fail("an exception of another kind");
    }
    const double seconds = processorSeconds() - before;
    const qint64 megabytes = memory("VmHWM") - memoryBefore;
    m_slowest = std::max(m_slowest, seconds);
    m_largest = std::max(m_largest, megabytes);
    return (seconds < longestSeconds || fail("too slow"))
           && (megabytes < mostMegabytes || fail("too much memory"));
}

void FuzzRun::report() const
{
    std::printf("%lld inputs (%lld of them readable) in %.1f s, slowest %.3f s, largest %lld MB\n",
                static_cast<long long>(m_done), static_cast<long long>(m_read),
                double(m_clock.elapsed()) / 1000, m_slowest, static_cast<long long>(m_largest));
}

int FuzzRun::run()
{
    m_clock.start();
    for (; goesOn(); ++m_done) {
        writeInput(m_path);
        if (!tryInput())
            return 1;
    }
    report();
    return 0;
}

} // namespace support
