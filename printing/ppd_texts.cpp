#include "printing/ppd_texts.h"

namespace printing {
namespace {

// The number of bytes of the sound UTF-8 character that the text begins with; 0 where it begins with none.
std::size_t soundCharacterLength(std::string_view text) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size())
        return 0;
    for (std::size_t index = 1; index < length; ++index)
        if ((byte(index) & 0xC0) != 0x80)
            return 0;
    if (length >= 3) { // over-long forms, surrogates, beyond U+10FFFF
        const unsigned second = byte(1);
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) || (lead == 0xF0 && second < 0x90) ||
            (lead == 0xF4 && second > 0x8F))
            return 0;
    }
    return length;
}

bool isControl(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1)
        return first < 0x20 || first == 0x7F;
    return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0; // U+0080 to U+009F
}

} // namespace

std::string cleanText(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const std::size_t length = soundCharacterLength(text);
        const std::string_view character = text.substr(0, length == 0 ? 1 : length);
        if (length != 0 && !isControl(character))
            clean += character;
        text.remove_prefix(character.size());
    }
    return clean;
}

} // namespace printing
