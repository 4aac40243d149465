#pragma once

#include <vector>

#include <QStringList>

namespace database {

/// What a statement of ours is put together of besides values, which are bound: names of columns,
/// and conditions that stand in settings. Each is looked at when it is made, so that no text of a
/// library becomes more of a statement than it stands for.
class SqlPiece
{
public:
    /// A column's name without brackets. Throws Error for a text that is no such name.
    static SqlPiece name(const QString& name);
    /// "[a],[b]". Throws Error for a name that brackets cannot hold, as the next two do.
    static SqlPiece names(const QStringList& names);
    /// ",[a],[b]"; nothing for no names.
    static SqlPiece moreNames(const QStringList& names);
    /// "[a]=?1,[b]=?2".
    static SqlPiece assignments(const QStringList& names);
    /// "?1,?2": so many places of values from `first` on.
    static SqlPiece places(int first, int count);
    /// A condition on columns and numbers, joined by "and" outside of brackets; it can begin with
    /// "and". Throws Error for a text that holds anything else. An empty one is left to the engine
    /// to refuse.
    static SqlPiece condition(const QString& text);

    const QString& text() const { return m_text; }

private:
    explicit SqlPiece(QString text) : m_text(std::move(text)) {}

    QString m_text;
};

/// A statement with the pieces in the places of %1, %2 and so on.
QString sqlWith(const QString& sql, const std::vector<SqlPiece>& pieces);

/// True for a name that SQL takes for a column without brackets: a letter or an underscore first,
/// then letters, digits and underscores.
bool isBareName(QStringView name);

} // namespace database
