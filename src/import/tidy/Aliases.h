#pragma once

#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "platform/runtime/AppPaths.h"

namespace tidy {

/// A text whose letters, digits and signs of full width stand in half width; raised and circled
/// digits stay what they are.
QString halfWidth(const QString& text);

/// A text as headings are compared: without blanks and brackets, in half width and lower case.
QString folded(const QString& text);

/// The same without blanks alone, as names are compared.
QString withoutBlanks(const QString& text);

/// Other names of headings and other marks of absence, by the lines of 别名.txt.
class Aliases
{
public:
    /// The names of one thing; the first is that of the library or of a field.
    using Group = QStringList;

    /// Reads data/别名.txt; a file that is missing gives no alias. Throws runtime::Error where it
    /// cannot be read.
    static Aliases load(const runtime::AppPaths& paths);
    /// Reads lines such as 姓名=学生姓名 考生姓名; those that begin with # say nothing.
    explicit Aliases(const QStringList& lines);

    /// The first name of the group that a text belongs to; empty if there is none.
    QString nameOf(const QString& text) const;
    /// All names of that thing, its own ahead; that alone if there is no such group.
    Group namesOf(const QString& name) const;
    /// All groups in the order of the file.
    const std::vector<Group>& groups() const { return m_groups; }

    /// A sentence for each line that could not be read, with its number.
    const QStringList& complaints() const { return m_complaints; }

private:
    void takeLine(const QString& line, int number);

    std::vector<Group> m_groups;
    QHash<QString, int> m_groupOf; // by folded name
    QStringList m_complaints;
};

} // namespace tidy
