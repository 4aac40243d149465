#include "workbooks/model/Workbook.h"

#include <algorithm>
#include <utility>

#include "platform/runtime/Error.h"
#include "workbooks/writers/XlsxWriter.h"

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

Worksheet& Workbook::SheetList::Add(Beside side, const Worksheet& neighbour) const
{
    m_book.check();
    auto& sheets = m_book.m_sheets;
    auto place = std::find_if(sheets.begin(), sheets.end(),
                              [&](const auto& sheet) { return sheet.get() == &neighbour; });
    if (place == sheets.end())
        throw runtime::Error(u"工作表不在这个工作簿中，不能在它旁边插入新的工作表。"_s);
    if (side == Beside::After)
        ++place;
    Worksheet& added =
        **sheets.insert(place, std::make_unique<Worksheet>(m_book, m_book.freeName()));
    m_book.setActiveSheet(added);
    m_book.m_changes.note();
    return added;
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
    m_changes.note();
    return *m_sheets.back();
}

std::vector<const Worksheet*> Workbook::sheets() const
{
    check();
    std::vector<const Worksheet*> all;
    for (const std::unique_ptr<Worksheet>& sheet : m_sheets)
        all.push_back(sheet.get());
    return all;
}

bool Workbook::hasSheet(const QString& name) const
{
    return std::any_of(m_sheets.begin(), m_sheets.end(), [&](const auto& sheet) {
        return sheet->Name().compare(name, Qt::CaseInsensitive) == 0;
    });
}

QString Workbook::freeName() const
{
    size_t number = m_sheets.size() + 1;
    while (hasSheet(u"Sheet%1"_s.arg(number)))
        ++number;
    return u"Sheet%1"_s.arg(number);
}

void Workbook::remove(const Worksheet& sheet)
{
    const auto isSeen = [](const auto& other) {
        return other->visibility() == Visibility::Visible;
    };
    if (isSeen(&sheet) && std::count_if(m_sheets.begin(), m_sheets.end(), isSeen) == 1)
        throw runtime::Error(
            u"工作簿中至少要有一个可见的工作表，不能删除“%1”。"_s.arg(sheet.Name()));
    const auto place = std::find_if(m_sheets.begin(), m_sheets.end(),
                                    [&](const auto& other) { return other.get() == &sheet; });
    const auto next = place + 1 != m_sheets.end() ? place + 1 : m_sheets.begin();
    if (m_active == &sheet)
        m_active = next->get();
    m_deleted.push_back(std::move(*place));
    m_sheets.erase(place);
    m_changes.note();
}

Worksheet& Workbook::activeSheet()
{
    // The sheets are ours to change; only the search is shared.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    return const_cast<Worksheet&>(std::as_const(*this).activeSheet());
}

const Worksheet& Workbook::activeSheet() const
{
    check();
    if (m_active == nullptr)
        throw runtime::Error(u"工作簿中没有工作表。"_s);
    return *m_active;
}

void Workbook::setActiveSheet(const Worksheet& sheet)
{
    check();
    m_active = &sheet;
    m_changes.noteSight();
}

bool Workbook::Saved() const
{
    check();
    return m_changes.saved();
}

void Workbook::setSaved(bool saved)
{
    check();
    m_changes.setSaved(saved);
}

QStringList Workbook::notKept() const
{
    check();
    return lossNames(m_losses);
}

void Workbook::addLosses(const Losses& losses)
{
    check();
    m_losses.insert(losses.begin(), losses.end());
}

void Workbook::SaveAs(const QString& path)
{
    check();
    writeXlsx(*this, path);
    m_path = path;
    m_losses.clear();
    m_changes.setSaved(true);
}

void Workbook::Close()
{
    for (const std::unique_ptr<Worksheet>& sheet : m_sheets)
        sheet->close();
    m_open = false;
}

} // namespace excel
