#include "import/preview/SettledNames.h"

namespace importing {

void SettledNames::add(const SheetStudent& student, const QString& libraryName)
{
    const auto [place, isFirst] = m_names.try_emplace({student.classNumber, student.number});
    Names& names = place->second;
    if (isFirst)
        names.current = libraryName;
    // As the library compares names.
    if (!names.onSheet.contains(student.name, Qt::CaseInsensitive))
        names.onSheet.append(student.name);
    // The import cannot put an apostrophe into names.
    if (names.current.isEmpty() || names.current == student.name || student.name.contains(u'\''))
        return;
    names.current = student.name;
    names.isRenamed = true;
}

std::optional<QString> SettledNames::nameOf(const SheetStudent& student) const
{
    const auto place = m_names.find({student.classNumber, student.number});
    return place == m_names.end() ? std::nullopt : std::optional(place->second.current);
}

std::optional<RowName> SettledNames::rowNameOf(const SheetStudent& student) const
{
    const auto place = m_names.find({student.classNumber, student.number});
    if (place == m_names.end() || !place->second.isRenamed)
        return RowName::OnTheSheet;
    const bool isLast = place->second.current.compare(student.name, Qt::CaseInsensitive) == 0;
    return isLast ? std::optional(RowName::Any) : std::nullopt;
}

QStringList SettledNames::namesOf(const Number& number) const
{
    const auto place = m_names.find(number);
    return place == m_names.end() ? QStringList() : place->second.onSheet;
}

} // namespace importing
