#include "toolkit/text_measuring.h"

#include "toolkit/unicode.h"

#include <cmath>

namespace toolkit {
namespace {

constexpr double kAdvance = 0.5, kWideAdvance = 1.0, kLineHeight = 1.25; // of the font's size

// Counts the lines of a text that is set into a width, character by character.
class LineCounter {
public:
    explicit LineCounter(double width) : width_(width) {}

    void add(char32_t character, double advance) {
        if (character == '\n') {
            ++lines_;
            line_ = word_ = 0;
            return;
        }
        if (character == ' ' || character == '\t') { // a blank at the end of a line hangs over it
            line_ += word_ + advance;
            word_ = 0;
            return;
        }
        if (isWideCharacter(character)) { // a line may break before and after it
            line_ += word_;
            word_ = 0;
        }
        if (line_ > 0 && line_ + word_ + advance > width_) { // the word goes to the next line
            ++lines_;
            line_ = 0;
        } else if (line_ <= 0 && word_ > 0 && word_ + advance > width_) { // a word wider than the line breaks inside
            ++lines_;
            word_ = 0;
        }
        word_ += advance;
        if (isWideCharacter(character)) {
            line_ += word_;
            word_ = 0;
        }
    }

    [[nodiscard]] int lines() const { return lines_; }

private:
    double width_;
    double line_ = 0, word_ = 0; // what stands on the line already, and the word that is being set
    int lines_ = 1;
};

double advanceOf(char32_t character, const Font& font) {
    return font.size * (isWideCharacter(character) ? kWideAdvance : kAdvance);
}

} // namespace

TextMeasurer::~TextMeasurer() = default;
FixedAdvanceMeasurer::~FixedAdvanceMeasurer() = default;

double FixedAdvanceMeasurer::widthOfText(std::string_view text, const Font& font) const {
    double width = 0;
    while (!text.empty())
        width += advanceOf(takeCharacter(text), font);
    return width;
}

double FixedAdvanceMeasurer::heightOfText(std::string_view text, const Font& font, double width) const {
    if (text.empty())
        return 0;
    LineCounter counter(width);
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        counter.add(character, advanceOf(character, font));
    }
    return counter.lines() * kLineHeight * font.size;
}

} // namespace toolkit
