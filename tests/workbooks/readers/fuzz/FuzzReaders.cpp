// Reads mutated workbooks; `--only xls` or `--only xlsx` takes those of one kind.

#include <map>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <zip.h>

#include "support/FuzzRun.h"
#include "workbooks/readers/Reader.h"

namespace {

using namespace Qt::StringLiterals;

enum class Kinds { All, Xls, Xlsx };

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

/// An XML part with what XML is made of thrown in.
QByteArray mutatedXml(support::ByteMutator& mutator, QByteArray bytes)
{
    bytes = mutator.mutated(bytes);
    for (qsizetype left = mutator.below(4); left > 0; --left)
        bytes.insert(mutator.below(bytes.size() + 1), mutator.pick(markup));
    return bytes;
}

/// Replaces attribute values and texts by others, so that the part stays well-formed.
QByteArray withOtherValues(support::ByteMutator& mutator, QByteArray bytes)
{
    for (qsizetype left = 1 + mutator.below(8); left > 0; --left) {
        const bool isText = mutator.below(2) == 0;
        const qsizetype start = bytes.indexOf(isText ? '>' : '"', mutator.below(bytes.size()));
        const qsizetype end = bytes.indexOf(isText ? '<' : '"', start + 1);
        if (start >= 0 && end >= 0 && bytes[start] != '?')
            bytes.replace(start + 1, end - start - 1, mutator.pick(values));
    }
    return bytes;
}

Kinds kindsOf(const QStringList& arguments)
{
    const qsizetype at = arguments.indexOf(u"--only"_s);
    if (at < 0)
        return Kinds::All;
    return arguments.value(at + 1) == u"xls" ? Kinds::Xls : Kinds::Xlsx;
}

class FuzzReaders : public support::FuzzRun
{
public:
    explicit FuzzReaders(const QStringList& arguments)
        : FuzzRun(arguments), m_seeds(loadSeeds(kindsOf(arguments)))
    {
    }

protected:
    void writeInput(const QString& path) override;
    Outcome readInput(const QString& path) override;

private:
    std::vector<Seed> m_seeds;
};

void FuzzReaders::writeInput(const QString& path)
{
    const Seed& seed = mutator().pick(m_seeds);
    if (seed.parts.empty() || mutator().below(4) == 0) {
        save(path, mutator().mutated(seed.bytes));
        return;
    }
    Parts parts = seed.parts;
    auto part = parts.begin();
    std::advance(part, mutator().below(qsizetype(parts.size())));
    part->second = mutator().below(3) == 0 ? mutatedXml(mutator(), part->second)
                                           : withOtherValues(mutator(), part->second);
    pack(path, parts);
}

FuzzReaders::Outcome FuzzReaders::readInput(const QString& path)
{
    try {
        excel::readWorkbook(path);
        return Outcome::Read;
    } catch (const excel::ReadError&) {
        return Outcome::Refused;
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return FuzzReaders(QCoreApplication::arguments()).run();
}
