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

// What may follow a first byte. The second byte's range keeps out overlong forms, surrogates and what lies above
// U+10FFFF.
struct SequenceForm {
    unsigned char firstLow, firstHigh;
    unsigned char secondLow, secondHigh;
    std::size_t length;
};

constexpr SequenceForm kSequenceForms[] = {
    // first byte   second byte  bytes
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

} // namespace

std::size_t characterLength(std::string_view text) {
    const auto byteAt = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80U)
        return 1;
    const auto form = std::ranges::find_if(
        kSequenceForms, [first](const auto& row) { return row.firstLow <= first && first <= row.firstHigh; });
    if (form == std::end(kSequenceForms) || text.size() < form->length || byteAt(1) < form->secondLow ||
        byteAt(1) > form->secondHigh)
        return 0;
    for (std::size_t index = 2; index < form->length; ++index)
        if ((byteAt(index) & 0xC0U) != 0x80U)
            return 0;
    return form->length;
}

char32_t takeCharacter(std::string_view& text) {
    constexpr char32_t kReplacement = 0xFFFD;
    const std::size_t length = characterLength(text);
    if (length == 0) {
        text.remove_prefix(1);
        return kReplacement;
    }
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(0);
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
