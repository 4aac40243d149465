#pragma once

#include <memory>

#include <QString>

namespace runtime {

/// How a name is spoken, in small letters without tones; ü is "u".
struct Spelling
{
    /// "zengguofan" of 曾国藩.
    QString letters;
    /// The first letter of each character, "zgf"; of a Latin name, of each word.
    QString initials;
};

/// Spells Chinese names, whose surnames are often spoken otherwise than the character elsewhere
/// (曾 zeng, 单 shan).
class Pinyin
{
public:
    Pinyin();
    ~Pinyin();
    Pinyin(const Pinyin&) = delete;
    Pinyin& operator=(const Pinyin&) = delete;

    /// What cannot be spelled stays as it is. The first call takes a quarter of a second, each
    /// further one some hundredths of a millisecond a character. Throws Error if the rules of
    /// spelling are not installed.
    Spelling spell(const QString& name);

    /// Letters as a user types them, in the form of a Spelling: small, v for ü as "u", without
    /// blanks and apostrophes.
    static QString folded(const QString& typed);

private:
    struct Rules;
    std::unique_ptr<Rules> m_rules; // made at the first use, which is costly
};

} // namespace runtime
