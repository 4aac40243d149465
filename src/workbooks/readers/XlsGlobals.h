#pragma once

#include <memory>
#include <vector>

#include <QHash>
#include <QString>

#include "workbooks/model/Loss.h"
#include "workbooks/model/Worksheet.h"
#include "workbooks/readers/Budget.h"
#include "workbooks/readers/NumberFormats.h"
#include "workbooks/readers/XlsRecords.h"
#include "workbooks/readers/XlsStrings.h"

namespace excel {

enum class XlsVersion { Biff5, Biff8 };

/// What the sheets of an .xls workbook share, read from the records in front of them.
class XlsGlobals
{
public:
    struct Sheet
    {
        QString name;
        qint64 place = 0; // of its first record in the stream
        Visibility visibility = Visibility::Visible;
    };

    explicit XlsGlobals(Budget& budget) : m_budget(budget) {}

    /// Reads from behind the first BOF up to its EOF.
    void read(XlsStream& stream);
    void readVersion(const XlsRecord& bof);

    /// A text with a length of two bytes in front, laid out as the version has it.
    QString longText(XlsTextReader& reader) const;

    runtime::Value number(double number, int style) const;
    const QString& sharedText(quint32 index) const;

    /// The block that the automatic filter of a sheet covers, if it is known.
    std::optional<CellRange> filterRange(int sheetIndex) const;

    /// True for the sheet that was in front when the file was saved.
    bool isActive(int sheetIndex) const;

    std::vector<Sheet> sheets;
    Losses losses;

private:
    void take(const XlsRecord& record);
    void takeSheet(const XlsRecord& record);
    void takeFormat(const XlsRecord& record);
    void takeStyle(const XlsRecord& record);
    void takeSharedTexts(const XlsRecord& record);
    void takeName(const XlsRecord& record);
    QString shortText(XlsTextReader& reader) const;
    QString text(XlsTextReader& reader, int length) const;

    Budget& m_budget;
    XlsVersion m_version = XlsVersion::Biff8;
    std::unique_ptr<runtime::CodePage> m_page =
        std::make_unique<runtime::CodePage>(runtime::CodePage::chinese);
    DateSystem m_dates = DateSystem::From1900;
    NumberFormats m_formats;
    std::vector<QString> m_texts;
    QHash<int, CellRange> m_filterRanges; // by the number of the sheet, from 1
    int m_activeTab = 0;                  // counts from 0, charts too
    int m_sheetNumber = 0;
    std::vector<int> m_sheetNumbers;
};

} // namespace excel
