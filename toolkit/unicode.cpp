#include "toolkit/unicode.h"

#include <algorithm>
#include <iterator>

namespace toolkit {
namespace {

struct CharacterRange {
    char32_t first, last;
};

// The blocks of Unicode whose characters are wide or full-width (UAX #11), in ascending order.
constexpr CharacterRange kWideRanges[] = {
    {0x1100, 0x115F},   // Hangul Jamo
    {0x2E80, 0x303E},   // CJK radicals, Kangxi, CJK symbols and punctuation
    {0x3041, 0x33FF},   // Kana, Bopomofo, Hangul compatibility, CJK compatibility
    {0x3400, 0x4DBF},   // CJK extension A
    {0x4E00, 0x9FFF},   // CJK unified ideographs
    {0xA000, 0xA4CF},   // Yi
    {0xAC00, 0xD7A3},   // Hangul syllables
    {0xF900, 0xFAFF},   // CJK compatibility ideographs
    {0xFE30, 0xFE6F},   // CJK compatibility forms, small forms
    {0xFF00, 0xFF60},   // full-width forms
    {0xFFE0, 0xFFE6},   // full-width signs
    {0x1F300, 0x1F64F}, // pictographs
    {0x1F900, 0x1F9FF}, // more pictographs
    {0x20000, 0x3FFFD}, // CJK extensions B and later
};

} // namespace

char32_t takeCharacter(std::string_view& text) {
    constexpr char32_t kReplacement = 0xFFFD;
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    bool sound = length != 0 && length <= text.size();
    for (std::size_t index = 1; sound && index < length; ++index)
        sound = (byte(index) & 0xC0) == 0x80;
    if (!sound) {
        text.remove_prefix(1);
        return kReplacement;
    }
    char32_t character = length == 1 ? lead : lead & (0xFFu >> (length + 1));
    for (std::size_t index = 1; index < length; ++index)
        character = character << 6 | (byte(index) & 0x3F);
    text.remove_prefix(length);
    return character;
}

bool isWideCharacter(char32_t character) {
    const auto range = std::ranges::lower_bound(kWideRanges, character, {}, &CharacterRange::last);
    return range != std::end(kWideRanges) && range->first <= character;
}

} // namespace toolkit
