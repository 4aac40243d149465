#include "platform/database/SqlPieces.h"

#include <algorithm>

#include "platform/database/Error.h"
#include "platform/database/Sql.h"

namespace database {

using namespace Qt::StringLiterals;

namespace {

QString inBrackets(const QString& name)
{
    if (name.isEmpty() || name.contains(u']'))
        throw Error(Failure::Sql, u"“%1”不能作为列名用在语句里。"_s.arg(name.left(60)));
    return bracketed(name);
}

QString placeText(int place)
{
    return u'?' + QString::number(place);
}

bool isConditionWord(const SqlToken& token)
{
    constexpr QStringView joiners[] = {u"and", u"or", u"not", u"is", u"null", u"between"};
    return !isKeyword(token) || std::any_of(std::begin(joiners), std::end(joiners), [&](auto word) {
        return token.is(word);
    });
}

bool isConditionPart(const SqlToken& token)
{
    constexpr QStringView signs = u"<>=!+-*/%.,()";
    switch (token.kind) {
    case SqlToken::Kind::Word:
        return isConditionWord(token);
    case SqlToken::Kind::Sign:
        return signs.contains(token.text);
    case SqlToken::Kind::Text:
        return false;
    case SqlToken::Kind::Bracketed:
    case SqlToken::Kind::Number:
        break;
    }
    return true;
}

/// Brackets pair up, and no "or" stands outside of them, where it would undo the conditions before
/// it.
bool isClosedInItself(const std::vector<SqlToken>& tokens)
{
    int depth = 0;
    for (const SqlToken& token : tokens) {
        depth += token.isSign(u'(') ? 1 : token.isSign(u')') ? -1 : 0;
        if (depth < 0 || (depth == 0 && token.is(u"or")))
            return false;
    }
    return depth == 0;
}

} // namespace

SqlPiece SqlPiece::name(const QString& name)
{
    if (!isBareName(name))
        throw Error(Failure::Sql, u"“%1”不能作为列名用在语句里。"_s.arg(name.left(60)));
    return SqlPiece(name);
}

SqlPiece SqlPiece::names(const QStringList& names)
{
    QStringList bracketedNames;
    for (const QString& name : names)
        bracketedNames.append(inBrackets(name));
    return SqlPiece(bracketedNames.join(u','));
}

SqlPiece SqlPiece::moreNames(const QStringList& names)
{
    return SqlPiece(names.isEmpty() ? QString() : u',' + SqlPiece::names(names).text());
}

SqlPiece SqlPiece::assignments(const QStringList& names)
{
    QStringList assigned;
    for (const QString& name : names)
        assigned.append(inBrackets(name) + u'=' + placeText(int(assigned.size()) + 1));
    return SqlPiece(assigned.join(u','));
}

SqlPiece SqlPiece::places(int first, int count)
{
    QStringList texts;
    for (int place = first; place < first + count; ++place)
        texts.append(placeText(place));
    return SqlPiece(texts.join(u','));
}

SqlPiece SqlPiece::condition(const QString& text)
{
    const std::optional<std::vector<SqlToken>> tokens = sqlTokens(text);
    if (!tokens || !isClosedInItself(*tokens)
        || !std::all_of(tokens->begin(), tokens->end(), isConditionPart))
        throw Error(Failure::Sql, u"“%1”不是可以用在语句里的条件。"_s.arg(text.left(60)));
    return SqlPiece(text);
}

QString sqlWith(const QString& sql, const std::vector<SqlPiece>& pieces)
{
    const QStringList parts = sql.split(u'%');
    QString text = parts.first();
    for (const QString& part : parts.mid(1))
        text += pieces.at(size_t(part.at(0).digitValue()) - 1).text() + part.mid(1);
    return text;
}

bool isBareName(QStringView name)
{
    if (name.isEmpty() || name.front().isDigit())
        return false;
    return std::all_of(name.begin(), name.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c == u'_'; });
}

} // namespace database
