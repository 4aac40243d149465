#include "platform/runtime/Pinyin.h"

#include <QStringList>

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include "platform/runtime/Error.h"

namespace runtime {

using namespace Qt::StringLiterals;

struct Pinyin::Rules
{
    Rules();

    std::unique_ptr<icu::Transliterator> names;
};

Pinyin::Rules::Rules()
{
    UErrorCode status = U_ZERO_ERROR;
    names.reset(icu::Transliterator::createInstance(u"Han-Latin/Names; Latin-ASCII; Any-Lower",
                                                    UTRANS_FORWARD, status));
    if (U_FAILURE(status))
        throw Error(u"系统里没有拼音规则，不能按拼音查找（%1）。"_s.arg(
            QString::fromLatin1(u_errorName(status))));
}

Pinyin::Pinyin() = default;
Pinyin::~Pinyin() = default;

Spelling Pinyin::spell(const QString& name)
{
    if (!m_rules)
        m_rules = std::make_unique<Rules>();
    const auto* const begin = reinterpret_cast<const char16_t*>(name.utf16());
    icu::UnicodeString text(begin, int32_t(name.size()));
    m_rules->names->transliterate(text);
    const QString spoken = QString::fromUtf16(text.getBuffer(), text.length());
    Spelling spelling;
    for (const QString& syllable : spoken.split(u' ', Qt::SkipEmptyParts)) {
        const QString letters = folded(syllable);
        spelling.letters += letters;
        const bool isPair = !letters.isEmpty() && letters.front().isHighSurrogate();
        spelling.initials += letters.left(isPair ? 2 : 1);
    }
    return spelling;
}

QString Pinyin::folded(const QString& typed)
{
    QString letters;
    for (const QChar letter : typed) {
        if (letter.isSpace() || letter == u'\'')
            continue;
        const QChar small = letter.toLower();
        letters += small == u'v' || small == u'ü' ? u'u' : small;
    }
    return letters;
}

} // namespace runtime
