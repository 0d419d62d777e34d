#include "tests/printing/ppd_text.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;

// The text that a printer gives for a choice of this text, which may hold "<...>" for bytes.
std::string shownTextOf(const std::string& choiceText) {
    const auto printer = openPrinter(ppdWith(option("CVMediaType", "Plain", {"Plain/" + choiceText, "Other"})));
    return printer->option("CVMediaType")->choice("Plain")->text;
}

TEST(PpdTexts, ControlCharactersAreTakenOut) {
    const std::pair<const char*, const char*> kTexts[] = {
        {"Pla<0A>in", "Plain"},
        {"<1B>[31mPlain", "[31mPlain"},
        {"Plain<07><08><7F>", "Plain"},
        {"Pl<C285>ain", "Plain"},       // U+0085, next line
        {"Pl<C29B>31main", "Pl31main"}, // U+009B, control sequence introducer
        {"Pl<C2A0>ain", "Pl\xC2\xA0"
                        "ain"}, // U+00A0, a blank that is no control character
    };
    for (const auto& [written, shown] : kTexts) {
        SCOPED_TRACE(written);
        EXPECT_EQ(shownTextOf(written), shown);
    }
}

TEST(PpdTexts, BrokenUtf8IsTakenOut) {
    const std::pair<const char*, const char*> kTexts[] = {
        {"A<FF>B", "AB"},       // no lead byte
        {"A<80>B", "AB"},       // a continuation alone
        {"A<C3>B", "AB"},       // cut
        {"A<E697>B", "AB"},     // cut
        {"A<C0AF>B", "AB"},     // over-long
        {"A<E0808A>B", "AB"},   // over-long
        {"A<F080808A>B", "AB"}, // over-long
        {"A<EDA080>B", "AB"},   // a surrogate
        {"A<F4908080>B", "AB"}, // beyond the last character
        {"A<F5808080>B", "AB"}, // no lead byte
        {"A<C3BC>B", "A\xC3\xBC"
                     "B"},
        {"A<E697A5>B", "A\xE6\x97\xA5"
                       "B"},
        {"A<F09F96A8>B", "A\xF0\x9F\x96\xA8"
                         "B"},
        {"A<F48FBFBF>B", "A\xF4\x8F\xBF\xBF"
                         "B"},
        {"A<EFBFBD>B", "A\xEF\xBF\xBD"
                       "B"},
    };
    for (const auto& [written, shown] : kTexts) {
        SCOPED_TRACE(written);
        EXPECT_EQ(shownTextOf(written), shown);
    }
}

TEST(PpdTexts, ACharacterThatWasCutAtTheLimitGoesWithTheRest) {
    constexpr int kLimit = 80; // bytes
    for (const int before : {77, 78, 79, 80}) {
        SCOPED_TRACE(before);
        const std::string letters(static_cast<std::size_t>(before), 'x');
        EXPECT_EQ(shownTextOf(letters + "\xE6\x97\xA5"
                                        "end"),
                  before + 3 <= kLimit ? letters + "\xE6\x97\xA5" : letters);
    }
}

TEST(PpdTexts, AnOptionsTextIsCleanToo) {
    const auto printer = openPrinter(ppdWith(option("CVMediaType/Me<0A>dia<FF>", "Plain", {"Plain"})));
    EXPECT_EQ(printer->option("CVMediaType")->text, "Media");
}

TEST(PpdTexts, TextsOfOtherEncodingsAreGivenInUtf8) {
    std::string text = ppdWith(option("CVMediaType/Qualit\xE4t", "Plain",
                                      {"Plain/Gr\xFC\xDF"
                                       "e"}));
    text.replace(text.find("UTF-8"), 5, "ISOLatin1");
    const auto printer = openPrinter(text);
    EXPECT_EQ(printer->option("CVMediaType")->text, "Qualit\xC3\xA4t");
    EXPECT_EQ(printer->option("CVMediaType")->choice("Plain")->text, "Gr\xC3\xBC\xC3\x9F"
                                                                     "e");
}

TEST(PpdTexts, WithoutATextTheKeywordIsShown) {
    const auto printer = openPrinter(ppdWith(option("CVMediaType", "Plain", {"Plain"})));
    EXPECT_EQ(printer->option("CVMediaType")->text, "CVMediaType");
    EXPECT_EQ(printer->option("CVMediaType")->choice("Plain")->text, "Plain");
}

} // namespace
} // namespace printing
