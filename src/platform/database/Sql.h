#pragma once

#include <optional>
#include <vector>

#include <QString>

namespace database {

/// One word, number, text or sign of an SQL text, with its place there.
struct SqlToken
{
    enum class Kind { Word, Bracketed, Text, Number, Sign };

    Kind kind;
    /// Words, numbers and signs as they stand; of names in brackets and texts what is inside.
    QString text;
    qsizetype begin;
    qsizetype end;

    /// Compares a bare word, ignoring case.
    bool is(QStringView word) const;
    bool isName() const { return kind == Kind::Word || kind == Kind::Bracketed; }
    bool isSign(char16_t sign) const;
};

/// The tokens of a text, comments left out; nothing if a quote or bracket is not closed.
std::optional<std::vector<SqlToken>> sqlTokens(const QString& sql);

/// A `select * from T [where ...] [order by ...]` taken apart.
struct TableQuery
{
    QString table;
    /// Text behind `where`, and behind `order by`; empty where there is none.
    QString where;
    QString orderBy;
};

/// The parts, if the text is of that form and nothing else (no join, group, limit).
std::optional<TableQuery> tableQuery(const QString& sql);

/// The text in the engine's own words: `delete * from`, `ALTER TABLE … add COLUMN` with our types,
/// texts in double quotes, and the order that Recordset promises. A text that cannot be taken apart
/// comes back as it is, for the engine to refuse. Throws Error for an add-column that is not one
/// name and one known type.
QString translated(const QString& sql);

/// The first word is one that a user may type: the statement reads or changes tables of the
/// library. False for a text that cannot be taken apart. What it may reach is for the engine's
/// guard to say.
bool isUserStatement(const QString& sql);

/// The statement changes tables, not rows.
bool changesSchema(const QString& sql);

/// The same text without the order that was added to it, for statements that the engine refuses
/// with it.
QString translatedWithoutOrder(const QString& sql);

} // namespace database
