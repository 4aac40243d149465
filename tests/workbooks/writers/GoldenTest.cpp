#include <gtest/gtest.h>

#include <map>

#include <QDir>
#include <QTemporaryDir>

#include <zip.h>

#include "support/PrintQString.h"
#include "workbooks/writers/SampleBook.h"
#include "workbooks/writers/XlsxWriter.h"

// The parts of a written workbook against the ones that were reviewed, in golden/, one element a
// line. `YUNSHAN_ACCEPT=1 build/…/bin/test_workbooks --gtest_filter='Golden*'` takes what is
// written now for reviewed.

using namespace Qt::StringLiterals;

namespace {

const QString golden = u"" YUNSHAN_GOLDEN "/"_s;

/// Part names and contents; properties with the time of writing, and pictures, are left out.
std::map<QString, QByteArray> partsOf(const QString& path)
{
    std::map<QString, QByteArray> parts;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t stat;
        zip_stat_index(archive, zip_uint64_t(i), 0, &stat);
        const QString name = QString::fromUtf8(stat.name);
        if (name.startsWith(u"docProps/"_s) || name.startsWith(u"xl/theme/"_s)
            || name.endsWith(u".png"_s))
            continue;
        QByteArray bytes(qsizetype(stat.size), Qt::Uninitialized);
        zip_file_t* part = zip_fopen_index(archive, zip_uint64_t(i), 0);
        zip_fread(part, bytes.data(), stat.size);
        zip_fclose(part);
        parts[name] = bytes.replace("><", ">\n<");
    }
    zip_discard(archive);
    return parts;
}

/// Where a part stands in golden/: folders joined into the name.
QString goldenPath(QString part)
{
    return golden + part.replace(u'/', u'-');
}

QByteArray reviewed(const QString& part)
{
    QFile file(goldenPath(part));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void accept(const std::map<QString, QByteArray>& parts)
{
    for (const QString& old : QDir(golden).entryList(QDir::Files))
        QFile::remove(golden + old);
    for (const auto& [name, bytes] : parts) {
        QFile file(goldenPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
}

} // namespace

TEST(Golden, TheSampleWorkbookIsWrittenAsReviewed)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.xlsx"_s);
    excel::Workbook book;
    fillSampleBook(book);
    excel::writeXlsx(book, path);
    const std::map<QString, QByteArray> parts = partsOf(path);
    if (qEnvironmentVariableIsSet("YUNSHAN_ACCEPT"))
        accept(parts);
    EXPECT_EQ(QDir(golden).entryList(QDir::Files).size(), qsizetype(parts.size()));
    for (const auto& [name, bytes] : parts)
        EXPECT_EQ(bytes.toStdString(), reviewed(name).toStdString()) << name.toStdString();
}
