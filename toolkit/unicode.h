#pragma once

#include <string_view>

namespace toolkit {

/// Takes the first character off a UTF-8 text and returns its code point; a broken byte counts as one character
/// (U+FFFD). The text must not be empty.
char32_t takeCharacter(std::string_view& text);

/// Whether a character is set twice as wide as a Latin one (East Asian Width W or F).
bool isWideCharacter(char32_t character);

} // namespace toolkit
