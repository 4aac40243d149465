#include "import/tidy/Aliases.h"

#include <algorithm>

#include <QRegularExpression>

#include "platform/runtime/TextFile.h"

namespace tidy {

using namespace Qt::StringLiterals;

namespace {

/// Letters that stand in half width as well.
QChar halfLetter(QChar letter)
{
    constexpr char16_t first = 0xFF01;
    constexpr char16_t last = 0xFF5E;
    constexpr char16_t distance = 0xFEE0;
    const char16_t code = letter.unicode();
    return code >= first && code <= last ? QChar(char16_t(code - distance)) : letter;
}

/// Blanks of all widths, line breaks, and marks that show nothing.
bool isBlank(QChar letter)
{
    return letter.isSpace() || letter.category() == QChar::Other_Format
           || letter.category() == QChar::Other_Control;
}

bool isBracket(QChar letter)
{
    return letter.category() == QChar::Punctuation_Open
           || letter.category() == QChar::Punctuation_Close || letter == u'<' || letter == u'>';
}

} // namespace

QString halfWidth(const QString& text)
{
    QString result = text;
    for (QChar& letter : result)
        letter = halfLetter(letter);
    return result;
}

QString folded(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar letter : text) {
        const QChar half = halfLetter(letter);
        if (!isBlank(half) && !isBracket(half))
            result.append(half.toLower());
    }
    return result;
}

QString withoutBlanks(const QString& text)
{
    QString result = text;
    result.removeIf([](QChar letter) { return isBlank(letter); });
    return result;
}

Aliases Aliases::load(const runtime::AppPaths& paths)
{
    return Aliases(runtime::readAllLines(paths.dataFile(u"别名.txt"_s)));
}

Aliases::Aliases(const QStringList& lines)
{
    int number = 0;
    for (const QString& line : lines)
        takeLine(line, ++number);
}

void Aliases::takeLine(const QString& line, int number)
{
    const QString text = line.trimmed();
    if (text.isEmpty() || text.startsWith(u'#'))
        return;
    const qsizetype equals = text.indexOf(u'=');
    const QString name = text.left(equals).trimmed();
    if (equals < 0 || name.isEmpty()) {
        m_complaints.append(u"别名.txt 第 %1 行没有用上：应该写成“名称=别名 别名”。"_s.arg(number));
        return;
    }
    static const QRegularExpression blanks(u"[\\s、，,;；]+"_s);
    Group group{name};
    group += text.mid(equals + 1).split(blanks, Qt::SkipEmptyParts);
    for (const QString& alias : std::as_const(group)) {
        const int other = m_groupOf.value(folded(alias), int(m_groups.size()));
        if (other != int(m_groups.size()))
            m_complaints.append(u"别名.txt 第 %1 行的“%2”已经是“%3”的别名，没有用上。"_s.arg(
                QString::number(number), alias, m_groups[size_t(other)].first()));
        else
            m_groupOf.insert(folded(alias), other);
    }
    m_groups.push_back(group);
}

QString Aliases::nameOf(const QString& text) const
{
    const auto found = m_groupOf.constFind(folded(text));
    return found == m_groupOf.constEnd() ? QString() : m_groups[size_t(*found)].first();
}

Aliases::Group Aliases::namesOf(const QString& name) const
{
    const auto found = m_groupOf.constFind(folded(name));
    return found == m_groupOf.constEnd() ? Group{name} : m_groups[size_t(*found)];
}

} // namespace tidy
