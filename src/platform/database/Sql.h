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

/// The tokens of a text; nothing if a quote or bracket is not closed, or behind a comment, which
/// the statements of a library have none of.
std::optional<std::vector<SqlToken>> sqlTokens(const QString& sql);

/// True for a bare word that the engine keeps for itself. A column of that name could be reached by
/// no statement that does not bracket it.
bool isKeyword(const SqlToken& token);

/// True for a bare name that no column can have: the engine keeps it for itself, or it would hide
/// the row ids.
bool isReservedName(const QString& name);

/// A name in brackets, as a statement takes it.
QString bracketed(const QString& name);

/// A `select * from T [where ...] [order by ...]` taken apart.
struct TableQuery
{
    QString table;
    /// Text behind `where`, and behind `order by`; empty where there is none.
    QString where;
    QString orderBy;
};

/// The order that a select is promised and does not say itself.
struct PromisedOrder
{
    /// To be set behind the statement; empty where nothing is added.
    QString tail;
    /// The table by whose row ids the rows come. The tail is none for one without row ids. Empty
    /// where the tail names the selected values.
    QString table;
};

/// A statement as our routines and users write it, taken apart once.
class SqlText
{
public:
    /// Throws Error for a text with a comment, and for an add-column that is not one name and one
    /// known type.
    explicit SqlText(const QString& sql);

    /// The text in the engine's own words: `delete * from`, `ALTER TABLE … add COLUMN` with our
    /// types, texts in double quotes. A text that cannot be taken apart is as it was, for the
    /// engine to refuse.
    const QString& engineText() const { return m_engineText; }

    /// The parts, if the text is of that form and nothing else (no join, group, limit).
    std::optional<TableQuery> tableQuery() const;

    /// What Recordset adds behind the engine's text of a select.
    PromisedOrder promisedOrder() const;

    /// The statement changes tables, not rows.
    bool changesSchema() const;

private:
    /// The tokens from `first` up to `last`, which is not one of them, in the engine's words.
    QString engineWords(int first, int last) const;
    QString onlyTable(int from) const;

    QString m_sql;
    /// Without semicolons at the end; none if the text cannot be taken apart.
    std::vector<SqlToken> m_tokens;
    QString m_engineText;
};

/// The first word is one that a user may type: the statement reads or changes tables of the
/// library. False for a text that cannot be taken apart. What it may reach is for the engine's
/// guard to say.
bool isUserStatement(const QString& sql);

} // namespace database
