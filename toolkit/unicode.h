#pragma once

#include "toolkit/export.h"

#include <cstddef>
#include <string_view>

namespace toolkit {

/// The bytes of the character that a UTF-8 text begins with; 0 where it begins with a broken one. The text must not be
/// empty.
[[nodiscard]] CV_TOOLKIT_EXPORT std::size_t characterLength(std::string_view text);

/// Takes the first character off a UTF-8 text and returns its code point; a broken byte counts as one character
/// (U+FFFD). The text must not be empty.
char32_t takeCharacter(std::string_view& text);

/// Whether a character is set twice as wide as a Latin one (East Asian Width W or F).
bool isWideCharacter(char32_t character);

} // namespace toolkit
