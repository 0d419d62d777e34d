#include "print_settings/paper_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

namespace print_settings_tests {
namespace {

using framework::MessageResult;
using framework::MessageValue;
using paper_names::Keyword;
using toolkit::Font;

enum class Matching { Exact, BaseName };

struct Predicate {
    std::string name;
    bool (*ask)(Keyword keyword);
    Matching matching;
    std::set<std::string> list;
};

const std::vector<Predicate>& predicates() {
    static const std::vector<Predicate> all = {
        {"isKindOfPlainPaper",
         paper_names::isKindOfPlainPaper,
         Matching::Exact,
         {"Plain", "PlainDuplex", "HagakiAtena"}},
        {"isKindOfPostcardPaperSize",
         paper_names::isKindOfPostcardPaperSize,
         Matching::Exact,
         {"Postcard", "Postcard.Fullbleed", "CvHagaki_B", "DoublePostcardRotated"}},
        {"allowTray2PaperSize",
         paper_names::allowTray2PaperSize,
         Matching::BaseName,
         {"A3", "Tabloid", "B4", "A3.LongGrain", "A3.ShortGrain", "Tabloid.ShortGrain", "B4.ShortGrain", "A4", "Letter",
          "Legal", "Executive", "B5", "CvA3", "CvA3_S", "CvLedger_S", "CvB4_S"}},
        {"isKindOfLandscapePaper",
         paper_names::isKindOfLandscapePaper,
         Matching::BaseName,
         {"A4", "Letter", "Executive", "B5"}},
        {"isKindOfPortraitPaper",
         paper_names::isKindOfPortraitPaper,
         Matching::Exact,
         {"A5", "A6", "A6.Fullbleed", "Postcard", "Postcard.Fullbleed", "DoublePostcardRotated", "4x6", "4x6.Fullbleed",
          "5x8", "5x8.Fullbleed", "3.5x5", "3.5x5.Fullbleed", "5x7", "5x7.Fullbleed", "Env10", "EnvDL", "EnvMonarch"}},
        {"isKindOfManualFeedPaper",
         paper_names::isKindOfManualFeedPaper,
         Matching::BaseName,
         {"A3", "B4", "Tabloid", "Legal", "EnvC5"}},
        {"isKindOfJPEnvelope",
         paper_names::isKindOfJPEnvelope,
         Matching::BaseName,
         {"EnvYou4", "EnvChou3", "EnvChou4", "EnvKaku2"}},
    };
    return all;
}

std::string withCase(std::string text, int (*convert)(int)) {
    std::ranges::transform(text, text.begin(), [&](unsigned char c) { return static_cast<char>(convert(c)); });
    return text;
}

// The keywords of every list, and of each what nearly looks like it.
std::set<std::string> keywordsAndNearMisses() {
    std::set<std::string> all = {"", ".", "PlainNormal", "PlainFast", "Glossy", "Transparencies", "HagakiUra"};
    for (const Predicate& predicate : predicates())
        for (const std::string& keyword : predicate.list)
            all.insert({keyword, withCase(keyword, std::tolower), withCase(keyword, std::toupper),
                        keyword + ".Fullbleed", keyword + ".Rotated", keyword + ".", keyword + ".One.Two",
                        keyword.substr(1), keyword.substr(0, keyword.size() - 1), " " + keyword, keyword + " ",
                        keyword + "s", "Cv" + keyword, keyword + "_B", "." + keyword});
    return all;
}

bool isMember(const Predicate& predicate, const std::string& keyword) {
    const std::size_t dot = keyword.rfind('.');
    const bool reduced = predicate.matching == Matching::BaseName && dot != std::string::npos;
    return predicate.list.contains(reduced ? keyword.substr(0, dot) : keyword);
}

MessageValue textValue(const std::string& text) {
    return {toolkit::Value(text)};
}

MessageResult send(const std::optional<std::string>& receiver, std::string_view name,
                   const std::vector<MessageValue>& arguments = {}) {
    static const toolkit::FixedAdvanceMeasurer measurer;
    return framework::PanelInspection(paper_names::messages())
        .sendToText({.text = receiver, .measurer = measurer}, name, arguments);
}

TEST(PaperNames, EachPredicateKnowsItsListAndNothingElse) {
    const std::set<std::string> asked = keywordsAndNearMisses();
    for (const Predicate& predicate : predicates())
        for (const std::string& keyword : asked) {
            SCOPED_TRACE(predicate.name + " of \"" + keyword + "\"");
            EXPECT_EQ(predicate.ask(keyword), isMember(predicate, keyword));
        }
}

TEST(PaperNames, AMissingKeywordIsInNoList) {
    for (const Predicate& predicate : predicates()) {
        SCOPED_TRACE(predicate.name);
        EXPECT_FALSE(predicate.ask(std::nullopt));
    }
}

TEST(PaperNames, AnyExtensionOfALandscapePaperIsOneButNotOfAPortraitPaper) {
    EXPECT_TRUE(paper_names::isKindOfLandscapePaper("A4.Fullbleed"));
    EXPECT_TRUE(paper_names::allowTray2PaperSize("A4.Fullbleed"));
    EXPECT_FALSE(paper_names::isKindOfPortraitPaper("A4.Fullbleed"));
    EXPECT_FALSE(paper_names::isKindOfPortraitPaper("A5.Fullbleed"));
    EXPECT_TRUE(paper_names::isKindOfPortraitPaper("A6.Fullbleed"));
    EXPECT_FALSE(paper_names::isKindOfPortraitPaper("Env10.Fullbleed"));
}

TEST(PaperNames, OnlyTheLastExtensionIsTakenAway) {
    EXPECT_TRUE(paper_names::allowTray2PaperSize("A3.ShortGrain"));
    EXPECT_TRUE(paper_names::allowTray2PaperSize("A3.ShortGrain.Fullbleed"));
    EXPECT_FALSE(paper_names::allowTray2PaperSize("A4.ShortGrain.Fullbleed"));
    EXPECT_FALSE(paper_names::isKindOfManualFeedPaper("A3.ShortGrain.Fullbleed"));
}

TEST(PaperNames, AJapaneseEnvelopeMayBeRotated) {
    EXPECT_TRUE(paper_names::isKindOfJPEnvelope("EnvChou3.Rotated"));
    EXPECT_FALSE(paper_names::isKindOfJPEnvelope("envchou3"));
}

TEST(PaperNames, ABorderlessVariantBeginsWithItsSizesName) {
    struct Row {
        Keyword paper, base;
        bool borderless;
    };
    const std::vector<Row> rows = {
        {"A4.Fullbleed", "A4", true},
        {"A4.Fullbleed.Extra", "A4", true},
        {"A4.FullbleedX", "A4", true},
        {"A4.Fullblee", "A4", false},
        {"A4", "A4", false},
        {"A4.fullbleed", "A4", false},
        {"a4.Fullbleed", "A4", false},
        {"XA4.Fullbleed", "A4", false},
        {"A4Fullbleed", "A4", false},
        {"A3.Fullbleed", "A4", false},
        {"A4.Fullbleed", "A3", false},
        {"CvHagaki_B", "Hagaki", true},
        {"CvHagaki_BX", "Hagaki", true},
        {"CvHagaki_B.Extra", "Hagaki", true},
        {"CvHagaki", "Hagaki", false},
        {"CvHagakiB", "Hagaki", false},
        {"Hagaki_B", "Hagaki", false},
        {"cvHagaki_B", "Hagaki", false},
        {"CvHagaki_b", "Hagaki", false},
        {"XCvHagaki_B", "Hagaki", false},
        {"CvHagaki_B", "CvHagaki", false},
        {"Hagaki.Fullbleed", "Hagaki", true},
        {"Cv_B", "", true},
        {".Fullbleed", "", true},
        {"", "A4", false},
        {std::nullopt, "A4", false},
        {"A4.Fullbleed", std::nullopt, false},
        {std::nullopt, std::nullopt, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.paper.value_or("null")) + " of " + std::string(row.base.value_or("null")));
        EXPECT_EQ(paper_names::isBorderelessForPaperSize(row.paper, row.base), row.borderless);
    }
}

TEST(PaperNames, TextIsMeasuredInTheGivenFontWrappedToTheGivenWidth) {
    const toolkit::FixedAdvanceMeasurer measurer; // a character is half the size wide, a line 1.25 of it high
    const Font font{.role = "control", .size = 10};
    const auto height = [&](Keyword text, double width) {
        return paper_names::heightForSpecifiedFontSpecifiedWidth(text, font, width, measurer);
    };
    EXPECT_EQ(height("", 100), 0);
    EXPECT_EQ(height(std::nullopt, 100), 0);
    EXPECT_EQ(height("four word line s", 100), 12.5);
    EXPECT_EQ(height("four word line s", 50), 25);
    EXPECT_EQ(height("four word line s", 25), 50);
    EXPECT_EQ(height("one\n\nthree", 1000), 37.5);
    EXPECT_EQ(paper_names::heightForSpecifiedFontSpecifiedWidth("x", {.role = "control", .size = 13}, 100, measurer),
              16.25);
}

TEST(PaperNames, HasPrefixIsAnchoredAtTheStart) {
    EXPECT_TRUE(paper_names::hasPrefix("Custom.200x300", "Custom"));
    EXPECT_TRUE(paper_names::hasPrefix("Custom", "Custom"));
    EXPECT_FALSE(paper_names::hasPrefix("XCustom", "Custom"));
    EXPECT_FALSE(paper_names::hasPrefix("custom", "Custom"));
    EXPECT_FALSE(paper_names::hasPrefix(std::nullopt, "Custom"));
}

TEST(PaperNameMessages, EachPredicateAnswersUnderItsOwnName) {
    const std::set<std::string> asked = keywordsAndNearMisses();
    for (const Predicate& predicate : predicates())
        for (const std::string& keyword : asked) {
            SCOPED_TRACE(predicate.name + " of \"" + keyword + "\"");
            const MessageResult result = send(keyword, predicate.name);
            ASSERT_TRUE(result.value);
            EXPECT_EQ(std::get<toolkit::Value>(result.value->content), toolkit::Value(isMember(predicate, keyword)));
        }
}

TEST(PaperNameMessages, AMissingReceiverAnswersNo) {
    for (const Predicate& predicate : predicates()) {
        SCOPED_TRACE(predicate.name);
        EXPECT_EQ(std::get<toolkit::Value>(send(std::nullopt, predicate.name).value->content), toolkit::Value(false));
    }
}

TEST(PaperNameMessages, TheBorderlessQuestionTakesTheBaseSize) {
    const auto ask = [](const std::optional<std::string>& paper, const MessageValue& base) {
        return std::get<toolkit::Value>(send(paper, "isBorderelessForPaperSize:", {base}).value->content);
    };
    EXPECT_EQ(ask("A4.Fullbleed", textValue("A4")), toolkit::Value(true));
    EXPECT_EQ(ask("A4.Fullbleed", textValue("A3")), toolkit::Value(false));
    EXPECT_EQ(ask("A4.Fullbleed", {}), toolkit::Value(false));
    EXPECT_EQ(ask(std::nullopt, textValue("A4")), toolkit::Value(false));
}

TEST(PaperNameMessages, MeasuringTakesTheFontAndTheWidth) {
    const auto measure = [](const std::optional<std::string>& text, double size, double width) {
        return std::get<toolkit::Value>(send(text, "heightForSpecifiedFont:specifiedWidth:",
                                             {{Font{.role = "control", .size = size}}, {toolkit::Value(width)}})
                                            .value->content);
    };
    EXPECT_EQ(measure("one two", 8, 1000), toolkit::Value(10.0));
    EXPECT_EQ(measure("one two", 8, 16), toolkit::Value(20.0));
    EXPECT_EQ(measure(std::nullopt, 8, 16), toolkit::Value(0.0));
}

TEST(PaperNameMessages, AnUnknownNameOrAnArgumentTooManyIsAnError) {
    EXPECT_EQ(send("A4", "isKindOfBorderlessPaper").error, "There is no operation \"isKindOfBorderlessPaper\".");
    EXPECT_EQ(send("A4", "isKindOfPortraitPaper", {textValue("A4")}).error,
              "\"isKindOfPortraitPaper\" takes 0 argument(s), not 1.");
}

} // namespace
} // namespace print_settings_tests
