#include "platform/database/Sql.h"

#include <algorithm>

#include <sqlite3.h>

#include "platform/database/Error.h"

namespace database {

namespace {

using namespace Qt::StringLiterals;
using Kind = SqlToken::Kind;
using Tokens = std::vector<SqlToken>;

bool isWordStart(QChar c)
{
    return c.isLetter() || c == u'_' || c.unicode() >= 0x80;
}

bool isWordPart(QChar c)
{
    return isWordStart(c) || c.isDigit() || c == u'$';
}

/// Reads the tokens of one text from left to right.
class Lexer
{
public:
    explicit Lexer(const QString& sql) : m_sql(sql) {}

    /// False if a quote or bracket stays open, or at a comment.
    bool run(Tokens& tokens)
    {
        while (skipBlanks()) {
            const QChar c = m_sql[m_at];
            if (standsAtComment())
                return false;
            if (c == u'\'' || c == u'"') {
                if (!quoted(tokens, c, Kind::Text))
                    return false;
            } else if (c == u'[' || c == u'`') {
                if (!quoted(tokens, c == u'[' ? u']' : u'`', Kind::Bracketed))
                    return false;
            } else if (isWordStart(c)) {
                take(tokens, Kind::Word, isWordPart);
            } else if (c.isDigit()) {
                take(tokens, Kind::Number,
                     [](QChar d) { return d.isLetterOrNumber() || d == u'.'; });
            } else {
                tokens.push_back({Kind::Sign, QString(c), m_at, m_at + 1});
                ++m_at;
            }
        }
        return true;
    }

    bool standsAtComment() const
    {
        const QStringView rest = QStringView(m_sql).mid(m_at, 2);
        return rest == "--"_L1 || rest == "/*"_L1;
    }

private:
    /// Steps over white space; false at the end.
    bool skipBlanks()
    {
        while (m_at < m_sql.size() && m_sql[m_at].isSpace())
            ++m_at;
        return m_at < m_sql.size();
    }

    bool quoted(Tokens& tokens, QChar close, Kind kind)
    {
        QString text;
        for (qsizetype i = m_at + 1; i < m_sql.size(); ++i) {
            if (m_sql[i] != close) {
                text += m_sql[i];
            } else if (close != u']' && i + 1 < m_sql.size() && m_sql[i + 1] == close) {
                text += close;
                ++i;
            } else {
                tokens.push_back({kind, text, m_at, i + 1});
                m_at = i + 1;
                return true;
            }
        }
        return false;
    }

    template <class Accept> void take(Tokens& tokens, Kind kind, Accept accept)
    {
        qsizetype end = m_at + 1;
        while (end < m_sql.size() && accept(m_sql[end]))
            ++end;
        tokens.push_back({kind, m_sql.mid(m_at, end - m_at), m_at, end});
        m_at = end;
    }

    const QString& m_sql;
    qsizetype m_at = 0;
};

bool startsWithOneOf(const Tokens& tokens, std::initializer_list<QStringView> words)
{
    return !tokens.empty() && std::any_of(words.begin(), words.end(), [&](QStringView word) {
        return tokens.front().is(word);
    });
}

/// Position of a word outside all round brackets, from `from` on; -1 if there is none.
int topLevel(const Tokens& tokens, QStringView word, int from = 0)
{
    int depth = 0;
    for (int i = 0; i < int(tokens.size()); ++i) {
        if (tokens[i].isSign(u'('))
            ++depth;
        else if (tokens[i].isSign(u')'))
            --depth;
        else if (i >= from && depth == 0 && tokens[i].is(word))
            return i;
    }
    return -1;
}

bool hasAnyTopLevel(const Tokens& tokens, std::initializer_list<QStringView> words)
{
    for (const QStringView word : words) {
        if (topLevel(tokens, word) >= 0)
            return true;
    }
    return false;
}

/// Drops a semicolon at the end.
void dropEnd(Tokens& tokens)
{
    while (!tokens.empty() && tokens.back().isSign(u';'))
        tokens.pop_back();
}

/// The engine's declaration for a type as our statements write it; empty for an unknown one.
QString declaration(const Tokens& tokens, int first)
{
    const int count = int(tokens.size()) - first;
    const QString word = count > 0 ? tokens[first].text.toLower() : QString();
    if (count == 4 && word == "text"_L1 && tokens[first + 1].isSign(u'(')
        && tokens[first + 3].isSign(u')')) {
        const int length = tokens[first + 2].text.toInt();
        return length >= 1 && length <= 255 ? u"text(%1) COLLATE NOCASE"_s.arg(length) : QString();
    }
    if (count != 1 || tokens[first].kind != Kind::Word)
        return {};
    static const std::pair<QString, QString> types[] = {
        {u"single"_s, u"Single REAL"_s},
        {u"double"_s, u"Double REAL"_s},
        {u"number"_s, u"Double REAL"_s},
        {u"long"_s, u"Long INTEGER"_s},
        {u"integer"_s, u"Integer INTEGER"_s},
        {u"short"_s, u"Integer INTEGER"_s},
        {u"text"_s, u"text(255) COLLATE NOCASE"_s},
        {u"memo"_s, u"Memo TEXT COLLATE NOCASE"_s},
        {u"yesno"_s, u"Boolean INTEGER"_s},
        {u"longbinary"_s, u"LongBinary BLOB"_s},
    };
    for (const auto& [name, declared] : types) {
        if (word == name)
            return declared;
    }
    return {};
}

/// A column of this name would hide the row ids.
bool isRowId(const QString& name)
{
    return name.compare("rowid"_L1, Qt::CaseInsensitive) == 0;
}

/// `ALTER TABLE T add [COLUMN] name type`.
std::optional<QString> addColumn(const Tokens& tokens)
{
    if (tokens.size() < 4 || !tokens[0].is(u"alter") || !tokens[1].is(u"table")
        || !tokens[3].is(u"add"))
        return std::nullopt;
    const int name = tokens.size() > 4 && tokens[4].is(u"column") ? 5 : 4;
    const bool named = int(tokens.size()) > name && tokens[name].isName()
                       && !tokens[name].text.trimmed().isEmpty()
                       && !tokens[name].text.contains(u']');
    const QString declared = named ? declaration(tokens, name + 1) : QString();
    if (declared.isEmpty())
        throw Error(Failure::Sql, u"添加列的语句不正确：需要一个列名和一个已知的类型。"_s);
    if (isKeyword(tokens[name]) || isRowId(tokens[name].text))
        throw Error(Failure::Sql, u"“%1”是数据库的保留字，不能作列名。"_s.arg(tokens[name].text));
    return u"ALTER TABLE %1 ADD COLUMN %2 %3"_s.arg(bracketed(tokens[2].text),
                                                    bracketed(tokens[name].text), declared);
}

bool isAggregate(const Tokens& tokens, int until)
{
    for (int i = 0; i + 1 < until; ++i) {
        if (!tokens[i + 1].isSign(u'('))
            continue;
        for (const QStringView name :
             {u"avg", u"stdev", u"max", u"min", u"count", u"sum", u"total"}) {
            if (tokens[i].is(name))
                return true;
        }
    }
    return false;
}

/// ` order by 1,2,…` for as many columns as stand ahead of `from`.
QString orderOfColumns(const Tokens& tokens, int from)
{
    int depth = 0;
    int columns = 1;
    QString order = u" order by 1"_s;
    for (int i = 0; i < from; ++i) {
        if (tokens[i].isSign(u'('))
            ++depth;
        else if (tokens[i].isSign(u')'))
            --depth;
        else if (depth == 0 && tokens[i].isSign(u','))
            order += u',' + QString::number(++columns);
    }
    return order;
}

/// The part that names the tables ends ahead of this word.
bool endsTables(const SqlToken& token)
{
    return token.is(u"where") || token.is(u"order") || token.is(u"having") || token.is(u"window");
}

} // namespace

bool isKeyword(const SqlToken& token)
{
    const QByteArray word = token.text.toUtf8();
    return token.kind == Kind::Word && sqlite3_keyword_check(word.constData(), int(word.size()));
}

bool isReservedName(const QString& name)
{
    return isKeyword({Kind::Word, name, 0, name.size()}) || isRowId(name);
}

QString bracketed(const QString& name)
{
    return u'[' + name + u']';
}

bool SqlToken::is(QStringView word) const
{
    return kind == Kind::Word && QStringView(text).compare(word, Qt::CaseInsensitive) == 0;
}

bool SqlToken::isSign(char16_t sign) const
{
    return kind == Kind::Sign && text == QChar(sign);
}

std::optional<std::vector<SqlToken>> sqlTokens(const QString& sql)
{
    Tokens tokens;
    if (!Lexer(sql).run(tokens))
        return std::nullopt;
    return tokens;
}

SqlText::SqlText(const QString& sql) : m_sql(sql)
{
    Tokens read;
    Lexer lexer(sql);
    std::optional<Tokens> tokens;
    if (lexer.run(read))
        tokens = std::move(read);
    // To the engine, what stands behind would be no part of the statement.
    else if (lexer.standsAtComment())
        throw Error(Failure::Sql, u"语句有语法错误：语句里不能有注释（-- 或 /*）。"_s);
    if (!tokens) {
        m_engineText = sql;
        return;
    }
    m_tokens = std::move(*tokens);
    // A semicolon inside means a second statement: the engine's door refuses it.
    dropEnd(m_tokens);
    if (const std::optional<QString> alter = addColumn(m_tokens))
        m_engineText = *alter;
    else
        m_engineText = engineWords(0, int(m_tokens.size()));
}

/// The text with `delete *` made `delete`, and texts in double quotes put in single ones.
QString SqlText::engineWords(int first, int last) const
{
    if (first >= last)
        return {};
    QString out;
    qsizetype copied = m_tokens[size_t(first)].begin;
    for (int i = first; i < last; ++i) {
        const SqlToken& token = m_tokens[size_t(i)];
        const bool star = i == 1 && m_tokens[0].is(u"delete") && token.isSign(u'*');
        const bool doubleQuoted = token.kind == Kind::Text && m_sql[token.begin] == u'"';
        if (!star && !doubleQuoted)
            continue;
        out += QStringView(m_sql).mid(copied, token.begin - copied);
        if (doubleQuoted)
            out += u'\'' + QString(token.text).replace(u"'"_s, u"''"_s) + u'\'';
        copied = token.end;
    }
    return out + QStringView(m_sql).mid(copied, m_tokens[size_t(last) - 1].end - copied);
}

std::optional<TableQuery> SqlText::tableQuery() const
{
    const Tokens& tokens = m_tokens;
    const int size = int(tokens.size());
    if (size < 4 || !tokens[0].is(u"select") || !tokens[1].isSign(u'*') || !tokens[2].is(u"from")
        || !tokens[3].isName()
        || hasAnyTopLevel(tokens,
                          {u"union", u"except", u"intersect", u"limit", u"group", u"having"}))
        return std::nullopt;
    for (const SqlToken& token : tokens) {
        if (token.isSign(u';'))
            return std::nullopt;
    }
    const int where = topLevel(tokens, u"where", 4);
    const int order = topLevel(tokens, u"order", 4);
    const int tableEnd = where >= 0 ? where : order >= 0 ? order : size;
    const bool ordered = order >= 0 && order + 1 < size && tokens[order + 1].is(u"by");
    if (tableEnd != 4 || (order >= 0 && (!ordered || order < where)))
        return std::nullopt;
    TableQuery query;
    query.table = tokens[3].text;
    const int whereEnd = order >= 0 ? order : size;
    if (where >= 0 && where + 1 < whereEnd)
        query.where = engineWords(where + 1, whereEnd);
    else if (where >= 0)
        return std::nullopt;
    if (ordered)
        query.orderBy = engineWords(order + 2, size);
    if (ordered && query.orderBy.isEmpty())
        return std::nullopt;
    return query;
}

/// The table that stands alone behind `from`, with or without the name of its file and a short name
/// of its own; empty where there is more.
QString SqlText::onlyTable(int from) const
{
    const int size = int(m_tokens.size());
    int name = from + 1;
    if (name + 2 < size && m_tokens[size_t(name)].isName()
        && m_tokens[size_t(name) + 1].isSign(u'.'))
        name += 2;
    if (name >= size || !m_tokens[size_t(name)].isName())
        return {};
    // Behind the name: another table, the arguments of a function.
    for (int i = name + 1; i < size && !endsTables(m_tokens[size_t(i)]); ++i) {
        if (m_tokens[size_t(i)].isSign(u',') || m_tokens[size_t(i)].isSign(u'('))
            return {};
    }
    return m_tokens[size_t(name)].text;
}

PromisedOrder SqlText::promisedOrder() const
{
    const int from = topLevel(m_tokens, u"from");
    if (m_tokens.empty() || !m_tokens[0].is(u"select") || from < 0
        || hasAnyTopLevel(m_tokens,
                          {u"union", u"except", u"intersect", u"limit", u"group", u"join"}))
        return {};
    const bool ordered = topLevel(m_tokens, u"order") >= 0;
    if (m_tokens.size() > 1 && m_tokens[1].is(u"distinct"))
        return {ordered ? QString() : orderOfColumns(m_tokens, from), {}};
    const QString table = isAggregate(m_tokens, from) ? QString() : onlyTable(from);
    if (table.isEmpty())
        return {};
    return {ordered ? u", rowid"_s : u" order by rowid"_s, table};
}

bool SqlText::changesSchema() const
{
    return startsWithOneOf(m_tokens, {u"create", u"alter", u"drop"});
}

bool isUserStatement(const QString& sql)
{
    const std::optional<Tokens> tokens = sqlTokens(sql);
    return tokens
           && startsWithOneOf(*tokens, {u"select", u"with", u"values", u"insert", u"replace",
                                        u"update", u"delete", u"create", u"alter", u"drop"});
}

} // namespace database
