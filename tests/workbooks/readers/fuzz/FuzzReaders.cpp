// Reads mutated workbooks and fails on a crash, on any exception but ReadError, and on an input
// that takes too long. The same seed gives the same inputs. An input that fails stays in the
// working folder as fuzz-failure.bin.

#include <cstdio>
#include <ctime>
#include <map>
#include <random>

#include <sys/resource.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <zip.h>

#include "workbooks/readers/Reader.h"

namespace {

using namespace Qt::StringLiterals;

constexpr double longestSeconds = 2;

enum class Kinds { All, Xls, Xlsx };

struct Options
{
    qint64 inputs = 2000;
    double minutes = 0; // 0: as many inputs as asked for
    unsigned seed = 1;
    Kinds kinds = Kinds::All;
};

using Parts = std::map<QByteArray, QByteArray>;

/// A workbook to start from; zip files also unpacked.
struct Seed
{
    QByteArray bytes;
    Parts parts;
};

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Parts unpack(const QString& path)
{
    Parts parts;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
    if (archive == nullptr)
        return parts;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t entry;
        zip_stat_index(archive, zip_uint64_t(i), 0, &entry);
        QByteArray bytes(qsizetype(entry.size), 0);
        zip_file_t* file = zip_fopen_index(archive, zip_uint64_t(i), 0);
        zip_fread(file, bytes.data(), entry.size);
        zip_fclose(file);
        parts[entry.name] = bytes;
    }
    zip_discard(archive);
    return parts;
}

void pack(const QString& path, const Parts& parts)
{
    zip_t* archive =
        zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [name, bytes] : parts) {
        const zip_int64_t index = zip_file_add(
            archive, name.constData(),
            zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0), 0);
        zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_STORE, 0);
    }
    zip_close(archive);
}

std::vector<Seed> loadSeeds(Kinds kinds)
{
    std::vector<Seed> seeds;
    const QDir folder(QStringLiteral(YUNSHAN_FIXTURES));
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        Seed seed{readAll(folder.filePath(name)), {}};
        const bool isZip = seed.bytes.startsWith("PK");
        if (seed.bytes.isEmpty() || (kinds == Kinds::Xlsx && !isZip)
            || (kinds == Kinds::Xls && isZip))
            continue;
        if (isZip)
            seed.parts = unpack(folder.filePath(name));
        seeds.push_back(seed);
    }
    return seeds;
}

/// Processor time used up to here; a machine busy with other work must not make inputs slow.
double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

/// Pieces of XML that the reader knows, and some that it must refuse.
const std::vector<QByteArray> markup{R"(<c r="XFD1048576">)",
                                     "</c>",
                                     "<row>",
                                     "<v>",
                                     "</v>",
                                     "<si>",
                                     "<t>",
                                     R"(t="s")",
                                     R"(t="d")",
                                     R"(t="inlineStr")",
                                     "<!DOCTYPE x>",
                                     "<![CDATA[",
                                     "&#x10FFFF;",
                                     "&amp;",
                                     R"(<mergeCell ref="A1:XFD9"/>)",
                                     R"(hidden="1")",
                                     "<rPh>",
                                     "\"",
                                     "<",
                                     ">",
                                     R"(<autoFilter ref="B9:A1"/>)"};

/// Values on the edge of what attributes and texts may hold.
const std::vector<QByteArray> values{"",
                                     "0",
                                     "1",
                                     "-1",
                                     "A0",
                                     "A1",
                                     "XFD1048576",
                                     "XFE1",
                                     "A1:XFD1048576",
                                     "1048576",
                                     "1048577",
                                     "2147483647",
                                     "-2147483648",
                                     "4294967296",
                                     "99999999999999999999",
                                     "1e308",
                                     "1e999",
                                     "nan",
                                     "2958465.99999999999",
                                     "0.5",
                                     "-0",
                                     "_x0000_",
                                     "_xD800_",
                                     "_xFFFF_",
                                     "true",
                                     "hidden",
                                     "s",
                                     "d",
                                     "b",
                                     "e",
                                     "str",
                                     "inlineStr",
                                     "2009-07-31",
                                     "2009-99-99T25:61:61",
                                     "14",
                                     "rId1",
                                     "../../x",
                                     "/xl/workbook.xml",
                                     "xl/worksheets/sheet1.xml",
                                     "yyyy",
                                     "[",
                                     "\xE6\xB1\x89"};

class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) {}

    qsizetype below(qsizetype bound)
    {
        return bound <= 1 ? 0 : qsizetype(m_random() % quint64(bound));
    }

    /// Changes bytes, numbers and blocks at one to eight places.
    QByteArray mutated(QByteArray bytes)
    {
        const bool keepsPlaces = below(2) == 0; // most shifted files fail at once
        for (qsizetype left = 1 + below(8); left > 0 && !bytes.isEmpty(); --left)
            mutateOnce(bytes, keepsPlaces ? 5 : 0);
        return bytes;
    }

    /// The same for one XML part, with what XML is made of thrown in.
    QByteArray mutatedXml(QByteArray bytes)
    {
        bytes = mutated(bytes);
        for (qsizetype left = below(4); left > 0; --left)
            bytes.insert(below(bytes.size() + 1), pick(markup));
        return bytes;
    }

    /// Replaces attribute values and texts by others, so that the part stays well-formed.
    QByteArray withOtherValues(QByteArray bytes)
    {
        for (qsizetype left = 1 + below(8); left > 0; --left) {
            const bool isText = below(2) == 0;
            const qsizetype start = bytes.indexOf(isText ? '>' : '"', below(bytes.size()));
            const qsizetype end = bytes.indexOf(isText ? '<' : '"', start + 1);
            if (start >= 0 && end >= 0 && bytes[start] != '?')
                bytes.replace(start + 1, end - start - 1, pick(values));
        }
        return bytes;
    }

private:
    const QByteArray& pick(const std::vector<QByteArray>& from)
    {
        return from[size_t(below(qsizetype(from.size())))];
    }

    void mutateOnce(QByteArray& bytes, qsizetype leastKind)
    {
        static const quint32 numbers[] = {0,          1,          0x7F,       0x80,
                                          0xFF,       0x7FFF,     0x8000,     0xFFFF,
                                          0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};
        const qsizetype at = below(bytes.size());
        const qsizetype length = 1 + below(std::min<qsizetype>(bytes.size() - at, 64));
        switch (leastKind + below(9 - leastKind)) {
        case 0:
            bytes.remove(at, length);
            break;
        case 1:
            bytes.insert(at, bytes.mid(below(bytes.size()), length));
            break;
        case 2:
            bytes.truncate(at);
            break;
        case 3:
        case 4:
            bytes.replace(at, length, bytes.mid(below(bytes.size()), length));
            break;
        case 5:
            bytes[at] = char(m_random());
            break;
        case 6:
            bytes[at] = char(bytes[at] ^ (1 << below(8)));
            break;
        default: {
            const quint32 number = numbers[below(std::size(numbers))];
            const qsizetype width =
                std::min<qsizetype>(qsizetype{1} << below(3), bytes.size() - at);
            for (qsizetype i = 0; i < width; ++i)
                bytes[at + i] = char(number >> (8 * i));
        }
        }
    }

    std::mt19937_64 m_random;
};

/// Runs the inputs and keeps count of what they cost.
class Run
{
public:
    explicit Run(const Options& options)
        : m_options(options), m_seeds(loadSeeds(options.kinds)), m_mutator(options.seed)
    {
    }

    int run();

private:
    bool goesOn() const;
    void writeInput();
    bool readInput();
    bool fail(const char* reason) const;
    void report() const;

    Options m_options;
    std::vector<Seed> m_seeds;
    Mutator m_mutator;
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"input.xls"_s);
    QElapsedTimer m_clock;
    qint64 m_done = 0;
    qint64 m_read = 0;
    double m_slowest = 0;
};

bool Run::goesOn() const
{
    if (m_options.minutes > 0)
        return double(m_clock.elapsed()) < m_options.minutes * 60'000;
    return m_done < m_options.inputs;
}

void Run::writeInput()
{
    const Seed& seed = m_seeds[size_t(m_mutator.below(qsizetype(m_seeds.size())))];
    if (!seed.parts.empty() && m_mutator.below(4) != 0) {
        Parts parts = seed.parts;
        auto part = parts.begin();
        std::advance(part, m_mutator.below(qsizetype(parts.size())));
        part->second = m_mutator.below(3) == 0 ? m_mutator.mutatedXml(part->second)
                                               : m_mutator.withOtherValues(part->second);
        pack(m_path, parts);
        return;
    }
    QFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(m_mutator.mutated(seed.bytes));
}

bool Run::fail(const char* reason) const
{
    QFile::remove(u"fuzz-failure.bin"_s);
    const bool kept = QFile::copy(m_path, u"fuzz-failure.bin"_s);
    std::fprintf(stderr, "input %lld of seed %u: %s; %s fuzz-failure.bin\n",
                 static_cast<long long>(m_done), m_options.seed, reason,
                 kept ? "kept as" : "could not be kept as");
    return false;
}

bool Run::readInput()
{
    const double before = processorSeconds();
    try {
        excel::readWorkbook(m_path);
        ++m_read;
    } catch (const excel::ReadError&) {
    } catch (...) {
        return fail("an exception of another kind");
    }
    const double seconds = processorSeconds() - before;
    m_slowest = std::max(m_slowest, seconds);
    return seconds < longestSeconds || fail("too slow");
}

void Run::report() const
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%lld inputs (%lld of them readable) in %.1f s, slowest %.3f s, peak %ld MB\n",
                static_cast<long long>(m_done), static_cast<long long>(m_read),
                double(m_clock.elapsed()) / 1000, m_slowest, usage.ru_maxrss / 1024);
}

int Run::run()
{
    if (m_seeds.empty())
        return 2;
    m_clock.start();
    for (; goesOn(); ++m_done) {
        writeInput();
        if (!readInput())
            return 1;
    }
    report();
    return 0;
}

Options parse(const QStringList& arguments)
{
    Options options;
    for (qsizetype i = 1; i + 1 < arguments.size(); i += 2) {
        const QString& value = arguments[i + 1];
        if (arguments[i] == u"--inputs")
            options.inputs = value.toLongLong();
        else if (arguments[i] == u"--minutes")
            options.minutes = value.toDouble();
        else if (arguments[i] == u"--seed")
            options.seed = value.toUInt();
        else if (arguments[i] == u"--only")
            options.kinds = value == u"xls" ? Kinds::Xls : Kinds::Xlsx;
    }
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Run(parse(QCoreApplication::arguments())).run();
}
