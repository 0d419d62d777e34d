#include "toolkit/text_measuring.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

constexpr double kHalf = 5, kWide = 10, kLine = 12.5; // what a font of 10 points gives

// Measures in a font of 10 points; widths are given in half-width characters.
class FixedMeasuring : public testing::Test {
protected:
    [[nodiscard]] double width(std::string_view text) const { return measurer.widthOfText(text, font); }
    [[nodiscard]] double lines(std::string_view text, double characters) const {
        return measurer.heightOfText(text, font, characters * kHalf) / kLine;
    }
    FixedAdvanceMeasurer measurer;
    Font font{.role = "control", .size = 10};
};

TEST_F(FixedMeasuring, ACharacterIsHalfTheSizeWide) {
    EXPECT_EQ(width(""), 0);
    EXPECT_EQ(width("a"), kHalf);
    EXPECT_EQ(width("a b."), 4 * kHalf);
    EXPECT_EQ(width("\xC3\xBC"), kHalf); // U+00FC
}

TEST_F(FixedMeasuring, AWideCharacterIsTheSizeWide) {
    const char* kWideTexts[] = {
        "\xE1\x84\x80",     // U+1100, Hangul Jamo
        "\xE3\x80\x81",     // U+3001, ideographic comma
        "\xE3\x81\x82",     // U+3042, Hiragana
        "\xE3\x82\xA2",     // U+30A2, Katakana
        "\xE6\x97\xA5",     // U+65E5, ideograph
        "\xEA\xB0\x80",     // U+AC00, Hangul syllable
        "\xEF\xBC\xA1",     // U+FF21, full-width A
        "\xEF\xBF\xA5",     // U+FFE5, full-width yen sign
        "\xF0\xA0\x80\x80", // U+20000, ideograph
    };
    for (const char* text : kWideTexts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(width(text), kWide);
    }
}

TEST_F(FixedMeasuring, HalfWidthAndOtherCharactersAreNotWide) {
    const char* kNarrowTexts[] = {
        "\xEF\xBD\xB1",     // U+FF71, half-width Katakana
        "\xE2\x82\xAC",     // U+20AC, euro sign
        "\xE1\x85\xA0",     // U+1160, just after the wide Jamo
        "\xE3\x80\xBF",     // U+303F, half fill space
        "\xD0\x96",         // U+0416, Cyrillic
        "\xF0\x90\x8C\xB0", // U+10330, Gothic
    };
    for (const char* text : kNarrowTexts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(width(text), kHalf);
    }
}

TEST_F(FixedMeasuring, ABrokenByteCountsAsOneCharacter) {
    EXPECT_EQ(width("\xFF"), kHalf);
    EXPECT_EQ(width("\x80\x80"), 2 * kHalf);
    EXPECT_EQ(width("\xC3("), 2 * kHalf);
    EXPECT_EQ(width("\xE6\x97"), 2 * kHalf);
    EXPECT_EQ(width("\xE6\x97("), 3 * kHalf);
    EXPECT_EQ(width("\xE0\x80\xAF"), 3 * kHalf); // over-long
    EXPECT_EQ(width("\xED\xA0\x80"), 3 * kHalf); // a surrogate
}

TEST_F(FixedMeasuring, NoTextHasNoHeight) {
    EXPECT_EQ(lines("", 10), 0);
    EXPECT_EQ(lines("", 0), 0);
}

TEST_F(FixedMeasuring, ALineIsFiveQuartersOfTheSizeHigh) {
    EXPECT_EQ(measurer.heightOfText("a", {.role = "control", .size = 13}, 100), 16.25);
    EXPECT_EQ(measurer.heightOfText("a b", {.role = "control", .size = 13}, 6.5), 32.5);
}

TEST_F(FixedMeasuring, LinesBreakAtBlanks) {
    EXPECT_EQ(lines("one two", 7), 1);
    EXPECT_EQ(lines("one two", 6), 2);
    EXPECT_EQ(lines("one two", 3), 2);
    EXPECT_EQ(lines("one two three", 7), 2);
    EXPECT_EQ(lines("one two three", 5), 3);
    EXPECT_EQ(lines("one\ttwo", 6), 2);
}

TEST_F(FixedMeasuring, ABlankAtALinesEndHangsOverIt) {
    EXPECT_EQ(lines("one ", 3), 1);
    EXPECT_EQ(lines("one  two", 3), 2);
}

TEST_F(FixedMeasuring, AWordGoesToTheNextLineWhole) {
    EXPECT_EQ(lines("a bcd ef", 5), 2); // "a bcd" and "ef"
    EXPECT_EQ(lines("ab cde f", 4), 3); // "ab", "cde" and "f" would not fit with "cde": "cde f" has 5
}

TEST_F(FixedMeasuring, AWordWiderThanTheLineBreaksInside) {
    EXPECT_EQ(lines("abcdefg", 3), 3);
    EXPECT_EQ(lines("ab cdefgh", 3), 3);
    EXPECT_EQ(lines("abcd ef", 3), 3); // "abc", "d", "ef": "d ef" has 4
    EXPECT_EQ(lines("abcd e", 3), 2);  // "abc", "d e"
}

TEST_F(FixedMeasuring, LinesBreakBetweenWideCharacters) {
    const std::string kFour = "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE6\x96\x87";
    EXPECT_EQ(lines(kFour, 8), 1);
    EXPECT_EQ(lines(kFour, 7), 2);
    EXPECT_EQ(lines(kFour, 4), 2);
    EXPECT_EQ(lines(kFour, 2), 4);
    EXPECT_EQ(lines("ab" + kFour, 4), 3); // "ab" and one, then two, then one
    EXPECT_EQ(lines(kFour + "abc", 8), 2);
    EXPECT_EQ(lines("\xE6\x97\xA5"
                    "abcd"
                    "\xE6\x9C\xAC",
                    4),
              3); // one, the word, one
}

TEST_F(FixedMeasuring, LinesBreakAtLineEndsInTheText) {
    EXPECT_EQ(lines("a\nb", 10), 2);
    EXPECT_EQ(lines("a\n\nb", 10), 3);
    EXPECT_EQ(lines("one two\nthree", 3), 4); // "three" is wider than the line
}

TEST_F(FixedMeasuring, ACharacterWiderThanTheLineStandsAlone) {
    EXPECT_EQ(lines("abc", 0), 3);
    EXPECT_EQ(lines("\xE6\x97\xA5\xE6\x9C\xAC", 1), 2);
}

} // namespace
} // namespace toolkit
