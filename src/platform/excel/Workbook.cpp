#include "platform/excel/Workbook.h"

#include <algorithm>

#include "platform/runtime/Error.h"

namespace excel {

using namespace Qt::StringLiterals;

int Workbook::SheetList::Count() const
{
    m_book.check();
    return int(m_book.m_sheets.size());
}

Worksheet& Workbook::SheetList::Item(int index) const
{
    if (index < 1 || index > Count())
        throw runtime::Error(u"工作簿中没有第 %1 个工作表。"_s.arg(index));
    return *m_book.m_sheets[size_t(index - 1)];
}

Worksheet& Workbook::SheetList::Item(const QString& name) const
{
    m_book.check();
    const auto& sheets = m_book.m_sheets;
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const auto& sheet) {
        return sheet->Name().compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == sheets.end())
        throw runtime::Error(u"工作簿中没有名为“%1”的工作表。"_s.arg(name));
    return **found;
}

void Workbook::check() const
{
    if (!m_open)
        Worksheet::refuseClosed();
}

const QString& Workbook::path() const
{
    check();
    return m_path;
}

Workbook::SheetList Workbook::Worksheets()
{
    check();
    return SheetList(*this);
}

Worksheet& Workbook::addSheet(const QString& name)
{
    check();
    m_sheets.push_back(std::make_unique<Worksheet>(*this, name));
    if (m_active == nullptr)
        m_active = m_sheets.back().get();
    return *m_sheets.back();
}

Worksheet& Workbook::activeSheet()
{
    check();
    const auto found = std::find_if(m_sheets.begin(), m_sheets.end(),
                                    [this](const auto& sheet) { return sheet.get() == m_active; });
    if (found == m_sheets.end())
        throw runtime::Error(u"工作簿中没有工作表。"_s);
    return **found;
}

void Workbook::setActiveSheet(const Worksheet& sheet)
{
    check();
    m_active = &sheet;
}

void Workbook::Close()
{
    for (const std::unique_ptr<Worksheet>& sheet : m_sheets)
        sheet->close();
    m_open = false;
}

} // namespace excel
