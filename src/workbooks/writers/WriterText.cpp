#include "workbooks/writers/WriterText.h"

#include <algorithm>
#include <set>

#include "workbooks/model/Worksheet.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longestText = 32767;
constexpr qsizetype escapeLength = 7; // _x0001_

/// The first `length` characters, without half of a surrogate pair at the end.
QStringView cut(QStringView text, qsizetype length)
{
    if (text.size() <= length)
        return text;
    return text.left(text[length - 1].isHighSurrogate() ? length - 1 : length);
}

bool isNameLetter(QChar letter)
{
    return letter >= u' ' && !u":\\/?*[]"_s.contains(letter) && !letter.isNonCharacter();
}

QString legalName(const QString& name)
{
    QString legal = cut(name, Worksheet::longestName).toString();
    std::replace_if(
        legal.begin(), legal.end(), [](QChar letter) { return !isNameLetter(letter); }, u'_');
    if (legal.startsWith(u'\''))
        legal[0] = u'_';
    if (legal.endsWith(u'\''))
        legal.back() = u'_';
    // A name that spreadsheet programs keep for themselves.
    if (legal.compare(u"History"_s, Qt::CaseInsensitive) == 0)
        legal += u'_';
    return legal.isEmpty() ? u"Sheet"_s : legal;
}

QString numbered(const QString& name, int number)
{
    const QString tail = u"_%1"_s.arg(number);
    return cut(name, Worksheet::longestName - tail.size()) + tail;
}

/// "_x0041_" in a text would be read as the letter that it names.
bool looksEscaped(QStringView text, qsizetype place)
{
    const QStringView piece = text.mid(place, escapeLength);
    if (piece.size() < escapeLength || piece[1] != u'x' || piece[6] != u'_')
        return false;
    return std::all_of(piece.begin() + 2, piece.begin() + 6, [](QChar letter) {
        return QStringView(u"0123456789abcdefABCDEF").contains(letter);
    });
}

bool needsEscape(QStringView text, qsizetype place)
{
    const QChar letter = text[place];
    if (letter < u' ')
        return letter != u'\n' && letter != u'\t';
    return letter == u'_' ? looksEscaped(text, place) : letter >= u'\xFFFE';
}

bool isPlain(QStringView text)
{
    for (const QChar letter : text) {
        if (letter < u' ' || letter == u'_' || letter >= u'\xFFFE')
            return false;
    }
    return true;
}

QString escaped(QStringView text)
{
    QString result;
    for (qsizetype place = 0; place < text.size(); ++place) {
        const bool escape = needsEscape(text, place);
        if (result.size() + (escape ? escapeLength : 1) > longestText)
            break;
        if (escape)
            result += u"_x%1_"_s.arg(uint(text[place].unicode()), 4, 16, QChar(u'0'))
                          .toUpper()
                          .replace(u'X', u'x');
        else
            result += text[place];
    }
    return cut(result, longestText).toString();
}

} // namespace

QStringList legalSheetNames(const QStringList& names)
{
    QStringList legal;
    std::set<QString> taken;
    for (const QString& name : names) {
        const QString wanted = legalName(name);
        QString free = wanted;
        for (int number = 2; !taken.insert(free.toCaseFolded()).second; ++number)
            free = numbered(wanted, number);
        legal.append(free);
    }
    return legal;
}

QByteArray fileText(const QString& text)
{
    const QStringView whole = cut(text, longestText);
    return isPlain(whole) ? whole.toUtf8() : escaped(whole).toUtf8();
}

QString drawnText(const QString& text)
{
    QString drawn = cut(text, longestText).toString();
    for (QChar& letter : drawn) {
        if (letter < u' ' || letter >= u'\xFFFE')
            letter = u' ';
    }
    return drawn;
}

} // namespace excel
