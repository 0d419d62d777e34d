#include "tests/printing/ppd_text.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;
using Words = std::vector<std::string>;

// A printer with one option and these further lines of its header.
std::unique_ptr<PrinterDescription> printerWith(const std::string& lines) {
    return openPrinter(ppdWith(lines + option("CVMediaType/Media", "Plain", {"Plain", "Glossy"})));
}

TEST(PrinterProperties, AnOptionHasItsKeywordTextDefaultAndChoicesInOrder) {
    const auto printer = openPrinter(ppdWith(
        option("CVMediaType/Media Type", "Plain", {"Plain/Plain Paper", "Glossy/Glossy Paper", "Env/Envelope"})));
    const Option& media = *printer->option("CVMediaType");
    EXPECT_EQ(media.keyword, "CVMediaType");
    EXPECT_EQ(media.text, "Media Type");
    EXPECT_EQ(media.defaultChoice, "Plain");
    Words choices;
    for (const Choice& choice : media.choices)
        choices.push_back(choice.keyword + "=" + choice.text);
    EXPECT_EQ(choices, Words({"Plain=Plain Paper", "Glossy=Glossy Paper", "Env=Envelope"}));
}

TEST(PrinterProperties, TheDefaultIsAsThePpdDeclaresItHoweverOdd) {
    const auto printer =
        openPrinter(ppdWith(option("CVNone", "", {"A", "B"}) + option("CVOdd", "Elsewhere", {"A", "B"})));
    EXPECT_EQ(printer->option("CVNone")->defaultChoice, "");
    EXPECT_EQ(printer->option("CVOdd")->defaultChoice, "Elsewhere");
}

TEST(PrinterProperties, OptionsComeInTheOrderOfTheGroups) {
    const auto printer =
        openPrinter(ppdWith("*OpenGroup: Second/Second\n" + option("CVZebra", "A", {"A"}) +
                            option("CVApple", "A", {"A"}) + "*CloseGroup: Second\n" + "*OpenGroup: First/First\n" +
                            option("CVMiddle", "A", {"A"}) + "*CloseGroup: First\n"));
    Words keywords;
    for (const Option& each : printer->options())
        keywords.push_back(each.keyword);
    EXPECT_EQ(keywords, Words({"CVZebra", "CVApple", "CVMiddle"}));
}

TEST(PrinterProperties, OptionsInSubgroupsAreFoundToo) {
    const auto printer =
        openPrinter(ppdWith("*OpenGroup: Outer/Outer\n*OpenSubGroup: Inner/Inner\n" + option("CVInner", "A", {"A"}) +
                            "*CloseSubGroup: Inner\n" + option("CVOuter", "A", {"A"}) + "*CloseGroup: Outer\n"));
    EXPECT_NE(printer->option("CVInner"), nullptr);
    EXPECT_NE(printer->option("CVOuter"), nullptr);
}

TEST(PrinterProperties, KeywordsAreComparedExactly) {
    const auto printer = printerWith("");
    for (const char* keyword : {"cvmediatype", "CVMEDIATYPE", "CVMedia", "CVMediaType ", ""}) {
        SCOPED_TRACE(keyword);
        EXPECT_EQ(printer->option(keyword), nullptr);
        EXPECT_EQ(printer->markedChoice(keyword), std::nullopt);
        EXPECT_FALSE(printer->mark(keyword, "Plain"));
        EXPECT_FALSE(printer->unmark(keyword));
    }
    const Option& media = *printer->option("CVMediaType");
    for (const char* choice : {"plain", "PLAIN", "Pla", ""}) {
        SCOPED_TRACE(choice);
        EXPECT_EQ(media.choice(choice), nullptr);
        EXPECT_FALSE(printer->mark("CVMediaType", choice));
    }
    ASSERT_NE(media.choice("Glossy"), nullptr);
    EXPECT_EQ(media.choice("Glossy")->keyword, "Glossy");
}

TEST(PrinterProperties, ModelNumberAndNamesAreThoseOfThePpd) {
    const auto printer = printerWith("*cupsModelNumber: 22\n*ModelName: \"Corvane QT20\"\n"
                                     "*ShortNickName: \"Corvane QT20 S\"\n*NickName: \"Corvane QT20, 1.0\"\n");
    EXPECT_EQ(printer->modelNumber(), 22);
    EXPECT_EQ(printer->modelName(), "Corvane QT20");
    EXPECT_EQ(printer->shortNickname(), "Corvane QT20 S");
}

TEST(PrinterProperties, NamesThatThePpdLacksAreNotMadeUp) {
    const auto printer = printerWith("*NickName: \"Corvane QT20, 1.0\"\n");
    EXPECT_EQ(printer->modelNumber(), 0);
    EXPECT_EQ(printer->modelName(), std::nullopt);
    EXPECT_EQ(printer->shortNickname(), std::nullopt);
}

TEST(PrinterProperties, TheModelNameIsGivenByteForByteAndTheNicknameAsACleanText) {
    const auto printer = printerWith("*ModelName: \"Cor\avane\xFF\"\n*ShortNickName: \"Cor\x1B[1mvane\xFF\"\n");
    EXPECT_EQ(printer->modelName(), "Cor\avane\xFF");
    EXPECT_EQ(printer->shortNickname(), "Cor[1mvane");
}

TEST(PrinterProperties, TheNicknameIsReadFromATextThatIsNotOpened) {
    const auto nickname = [](const char* text) { return PrinterDescription::shortNicknameIn(text); };
    EXPECT_EQ(nickname("*PPD-Adobe: \"4.3\"\r\n*ShortNickName: \"Corvane \x1BQT20\"\r\n*% end"), "Corvane QT20");
    EXPECT_EQ(nickname("*ShortNickName: \"First\"\n*ShortNickName: \"Second\"\n"), "First");
    EXPECT_EQ(nickname("*NickName: \"Corvane QT20\"\n"), std::nullopt);
    EXPECT_EQ(nickname("*ShortNickName: Corvane\n"), std::nullopt);
    EXPECT_EQ(nickname("*ShortNickName: \"Corvane\n"), std::nullopt);
    EXPECT_EQ(nickname(""), std::nullopt);
}

TEST(PrinterProperties, AttributesAreFoundWithAnySpecifier) {
    const auto printer = printerWith("*APSupportsCustomColorMatching: True\n*APVendor Profile/Any: \"x\"\n");
    EXPECT_TRUE(printer->hasAttribute("APSupportsCustomColorMatching"));
    EXPECT_TRUE(printer->hasAttribute("APVendor"));
    EXPECT_FALSE(printer->hasAttribute("APSupports"));
    EXPECT_FALSE(printer->hasAttribute(""));
}

TEST(PrinterProperties, APrinterWithoutAnyOptionAnswersEmptily) {
    PrinterDescription none;
    EXPECT_TRUE(none.options().empty());
    EXPECT_TRUE(none.marks().empty());
    EXPECT_EQ(none.option("CVMediaType"), nullptr);
    EXPECT_EQ(none.markedChoice("CVMediaType"), std::nullopt);
    EXPECT_FALSE(none.hasAttribute("APSupportsCustomColorMatching"));
    EXPECT_EQ(none.modelNumber(), 0);
    EXPECT_EQ(none.modelName(), std::nullopt);
    EXPECT_EQ(none.shortNickname(), std::nullopt);
    EXPECT_FALSE(none.allowsCustomSizes());
    EXPECT_EQ(none.customSizeLimits().maxWidth, 0);
    EXPECT_FALSE(none.pageSize("A4").has_value());
    EXPECT_FALSE(none.mark("CVMediaType", "Plain"));
    EXPECT_FALSE(none.mark("PageSize", "Custom.200x300"));
    EXPECT_FALSE(none.unmark("CVMediaType"));
    EXPECT_FALSE(none.isDefaultMarked(Option()));
    EXPECT_TRUE(none.conflictsOf("CVMediaType", "Plain").empty());
    none.markDefaults();
    EXPECT_TRUE(none.marks().empty());
}

} // namespace
} // namespace printing
