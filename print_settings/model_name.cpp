// Which models of the printer family count as later ones.

#include "print_settings/CVInkPrintSetting12PDE.h"

#include <algorithm>

namespace {

constexpr int kFirstLaterModelNumber = 11;

bool isLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

// The character at the position; NUL, which no rule matches, where the text is shorter.
char characterAt(std::string_view text, std::size_t position) {
    return position < text.size() ? text[position] : '\0';
}

bool isBetween(char character, char first, char last) {
    return character >= first && character <= last;
}

std::string_view withoutLettersAtEnds(std::string_view text) {
    while (!text.empty() && isLetter(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isLetter(text.back()))
        text.remove_suffix(1);
    return text;
}

// The part behind the only "-" of an ASCII name.
std::optional<std::string_view> suffixOfName(std::string_view name) {
    const bool ascii = std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!ascii || std::ranges::count(name, '-') != 1)
        return std::nullopt;
    return name.substr(name.find('-') + 1);
}

bool isLaterSuffix(std::string_view suffix) {
    if (characterAt(suffix, 0) == 'J') {
        const std::string_view series = withoutLettersAtEnds(suffix);
        if (series.size() > 3)
            return true;
        if (characterAt(series, 0) == '6')
            return isBetween(characterAt(series, 1), '1', '9');
        return isBetween(characterAt(series, 0), '7', '9');
    }
    if (characterAt(suffix, 3) != 'C')
        return true;
    if (characterAt(suffix, 0) == '3')
        return isBetween(characterAt(suffix, 1), '8', '9');
    return isBetween(characterAt(suffix, 0), '4', '9');
}

} // namespace

void CVInkPrintSetting12PDE::checkModelName() {
    CVPrintQualityPDE::checkModelName();
    if (ppd->modelNumber() >= kFirstLaterModelNumber) {
        setFlag(kImageModeLaterModel, true);
        return;
    }
    setFlag(kImageModeLaterModel, false);
    const std::optional<std::string> name = ppd->modelName();
    const auto suffix = name ? suffixOfName(*name) : std::nullopt;
    if (suffix)
        setFlag(kImageModeLaterModel, isLaterSuffix(*suffix));
}
