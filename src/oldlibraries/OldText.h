#pragma once

#include <string_view>

#include <QString>

namespace oldlibraries {

/// Two bytes a character, the lower one first; a last odd byte is left out.
QString utf16Text(std::string_view bytes);

/// A text as rows and memos hold it: two bytes a character, or behind the mark FF FE in stretches
/// of one and of two bytes a character, which a zero byte ends.
QString storedText(std::string_view bytes);

/// True for what can name a table or a column: whole characters, none of them a control character.
bool isName(const QString& text);

} // namespace oldlibraries
