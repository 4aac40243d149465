// Reads mutated files of the old engine, every cell of every table. With `--template FILE`, the
// empty library, those that can be read are converted too.

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include "oldlibraries/Conversion.h"
#include "oldlibraries/OldDatabase.h"
#include "oldlibraries/OldFileError.h"
#include "oldlibraries/fuzz/OldFileMutator.h"
#include "support/FuzzRun.h"
#include "support/OldCell.h"
#include "support/OldFileWriter.h"

namespace {

using namespace Qt::StringLiterals;
using oldlibraries::OldDatabase;
using oldlibraries::OldFileError;
using oldlibraries::OldFileFailure;
using oldlibraries::OldRows;
using oldlibraries::OldTable;
using oldlibraries::OldType;
using support::OldFileWriter;

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A small file with all that a file can have: types, forms of texts and of long values, rows
/// moved, deleted and stored ahead of a column.
void writeSmallFile(const QString& path, support::OldMapForm map)
{
    using Form = OldFileWriter::LongForm;
    using Kind = OldFileWriter::RowKind;
    OldFileWriter file(path);
    file.setMapForm(map);
    file.addTable(u"各种"_s, {{u"ID"_s, OldType::Long, 0, 0, true},
                              {u"真"_s, OldType::Boolean},
                              {u"短"_s, OldType::Integer},
                              {u"钱"_s, OldType::Currency},
                              {u"单"_s, OldType::Single},
                              {u"日"_s, OldType::DateTime},
                              {u"文"_s, OldType::Text},
                              {u"片"_s, OldType::LongBinary},
                              {u"备"_s, OldType::Memo},
                              {u"数"_s, OldType::Decimal, 0, 3},
                              {u"号"_s, OldType::Guid},
                              {u"节"_s, OldType::Binary, 20}});
    const QString guid = u"{01234567-89ab-cdef-0123-456789abcdef}"_s;
    for (qint64 i = 0; i < 60; ++i) {
        file.setTextForm(support::OldTextForm(i % 3));
        file.setLongForm(Form(i % 4));
        const Kind kind = i % 7 == 3 ? Kind::Moved : i % 5 == 4 ? Kind::Deleted : Kind::Stored;
        file.addRow({i + 1, i % 2, i, 1.25, 88.1F, 39814.375, u"王𬭎A%1"_s.arg(i),
                     QByteArray(i * 30, char(i)), QString(i * 12, u'班'), u"-12.345"_s, guid,
                     QByteArray("\1\2\3")},
                    kind);
    }
    file.addColumn({u"新"_s, OldType::Text});
    file.addTable(u"空"_s, {{u"ID"_s, OldType::Long}});
    file.addTable(u"成绩表"_s, {{u"考号"_s, OldType::Double}, {u"分"_s, OldType::Single}});
    for (int i = 0; i < 300; ++i)
        file.addRow({double(i), 90.5});
    file.addObject(u"查询"_s, 5);
    file.save();
}

class FuzzOldLibraries : public support::FuzzRun
{
public:
    explicit FuzzOldLibraries(const QStringList& arguments);

protected:
    void writeInput(const QString& path) override;
    Outcome readInput(const QString& path) override;

private:
    Outcome convertInput(const QString& path);

    QString m_templateFile;
    std::vector<QByteArray> m_smallSeeds;
    std::vector<QByteArray> m_samples;
};

FuzzOldLibraries::FuzzOldLibraries(const QStringList& arguments) : FuzzRun(arguments)
{
    if (const qsizetype at = arguments.indexOf(u"--template"_s); at >= 0)
        m_templateFile = arguments.value(at + 1);
    const QString small = QDir(folder()).filePath(u"seed.bin"_s);
    for (const support::OldMapForm map :
         {support::OldMapForm::Bits, support::OldMapForm::PagesOfBits}) {
        writeSmallFile(small, map);
        m_smallSeeds.push_back(readAll(small));
    }
    QFile::remove(small);
    const QDir samples(QStringLiteral(YUNSHAN_FIXTURES));
    for (const QString& name : samples.entryList({u"*.CJK"_s}, QDir::Files, QDir::Name))
        m_samples.push_back(readAll(samples.filePath(name)));
}

void FuzzOldLibraries::writeInput(const QString& path)
{
    const bool isSample = mutator().below(4) == 0;
    const QByteArray& seed = mutator().pick(isSample ? m_samples : m_smallSeeds);
    save(path, fuzz::OldFileMutator(mutator()).mutated(seed));
}

/// Characters and bytes of one cell.
qint64 readCell(OldRows& rows, int column, OldType type)
{
    const runtime::Value value = support::oldCell(rows, column, type);
    switch (type) {
    case OldType::Binary:
    case OldType::LongBinary:
        return value.toBytes().size();
    case OldType::Text:
    case OldType::Memo:
        return value.text().size();
    default:
        return 0;
    }
}

/// Characters and bytes of all cells.
qint64 readTable(OldDatabase& database, const OldTable& table)
{
    qint64 size = 0;
    OldRows rows(database.file(), table);
    while (rows.next()) {
        for (size_t i = 0; i < table.columns.size(); ++i)
            size += readCell(rows, int(i), table.columns[i].type);
    }
    return size;
}

/// No file gives more than its own bytes and those that pointers lead to, which are no more either.
FuzzOldLibraries::Outcome FuzzOldLibraries::readInput(const QString& path)
{
    try {
        OldDatabase database(path);
        database.isPassword(u"1234"_s);
        qint64 size = 0;
        for (const OldTable& table : database.readTables())
            size += readTable(database, table);
        if (size > 2 * database.file().size())
            return Outcome::Wrong;
        return m_templateFile.isEmpty() ? Outcome::Read : convertInput(path);
    } catch (const OldFileError& error) {
        const bool isAnswer = error.failure() != OldFileFailure::Missing
                              && error.failure() != OldFileFailure::Unreadable
                              && error.failure() != OldFileFailure::Changed;
        return isAnswer ? Outcome::Refused : Outcome::Wrong;
    }
}

/// Whatever comes of it, the old file stays as it was, and nothing but a whole new one stands
/// beside.
FuzzOldLibraries::Outcome FuzzOldLibraries::convertInput(const QString& path)
{
    const QByteArray before = readAll(path);
    oldlibraries::ConversionRequest request;
    request.oldPath = path;
    request.newPath = QDir(folder()).filePath(u"new.CJK"_s);
    request.templateFile = m_templateFile;
    runtime::NoProgress progress;
    bool isConverted = false;
    try {
        isConverted = oldlibraries::convert(request, progress).has_value();
    } catch (const runtime::Error&) {
    }
    const bool stands = QFile::remove(request.newPath);
    const bool isLeftClean = QDir(folder()).entryList(QDir::Files | QDir::Hidden)
                             == QStringList{QFileInfo(path).fileName()};
    if (stands != isConverted || !isLeftClean || readAll(path) != before)
        return Outcome::Wrong;
    return isConverted ? Outcome::Read : Outcome::Refused;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return FuzzOldLibraries(QCoreApplication::arguments()).run();
}
