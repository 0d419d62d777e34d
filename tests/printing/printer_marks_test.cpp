#include "tests/printing/ppd_text.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;

class PrinterMarks : public testing::Test {
protected:
    std::unique_ptr<PrinterDescription> printer = openMarkedPrinter(
        ppdWith(option("CVMediaType/Media", "Plain", {"Plain", "Glossy", "Matte"}) +
                option("CVResolution/Quality", "Standard", {"Draft", "Standard", "High"}) +
                option("CVBare/No default", "", {"A", "B"}) + option("CVOdd/Odd default", "Elsewhere", {"A", "B"})));
    [[nodiscard]] std::optional<std::string> media() const { return printer->markedChoice("CVMediaType"); }
};

TEST_F(PrinterMarks, DefaultsAreThoseOfThePpd) {
    EXPECT_EQ(media(), "Plain");
    EXPECT_EQ(printer->markedChoice("CVResolution"), "Standard");
}

TEST_F(PrinterMarks, AnOptionWithoutAUsableDefaultStaysUnmarked) {
    EXPECT_EQ(printer->markedChoice("CVBare"), std::nullopt);
    EXPECT_EQ(printer->markedChoice("CVOdd"), std::nullopt);
}

TEST_F(PrinterMarks, AMarkReplacesTheOneBeforeIt) {
    EXPECT_TRUE(printer->mark("CVMediaType", "Glossy"));
    EXPECT_EQ(media(), "Glossy");
    EXPECT_EQ(printer->markedChoice("CVResolution"), "Standard");
}

TEST_F(PrinterMarks, MarkingWhatIsMarkedSucceeds) {
    EXPECT_TRUE(printer->mark("CVMediaType", "Plain"));
    EXPECT_EQ(media(), "Plain");
}

TEST_F(PrinterMarks, AnUnknownOptionOrChoiceChangesNothing) {
    const auto before = printer->marks();
    EXPECT_FALSE(printer->mark("CVMediaType", "Velvet"));
    EXPECT_FALSE(printer->mark("CVMediaType", "glossy"));
    EXPECT_FALSE(printer->mark("CVUnknown", "Plain"));
    EXPECT_FALSE(printer->mark("CVMediaType", "Custom.200x300"));
    EXPECT_EQ(printer->marks(), before);
}

TEST_F(PrinterMarks, ChoicesThatDifferInCaseAloneAreNotTakenForEachOther) {
    const auto odd = openMarkedPrinter(ppdWith(option("CVMode", "Other", {"ON", "On", "Other"})));
    for (const char* choice : {"ON", "On"}) {
        SCOPED_TRACE(choice);
        odd->mark("CVMode", "Other");
        const std::string expected = odd->mark("CVMode", choice) ? choice : "Other";
        EXPECT_EQ(odd->markedChoice("CVMode"), expected);
    }
}

TEST_F(PrinterMarks, AnUnmarkedOptionHasNoChoice) {
    EXPECT_TRUE(printer->unmark("CVMediaType"));
    EXPECT_EQ(media(), std::nullopt);
    EXPECT_EQ(printer->markedChoice("CVResolution"), "Standard");
}

TEST_F(PrinterMarks, AnUnmarkedOptionIsMarkedAgain) {
    for (const char* choice : {"Plain", "Glossy"}) {
        SCOPED_TRACE(choice);
        ASSERT_TRUE(printer->unmark("CVMediaType"));
        EXPECT_TRUE(printer->mark("CVMediaType", choice));
        EXPECT_EQ(media(), choice);
    }
}

TEST_F(PrinterMarks, UnmarkingWhatHasNoMarkSucceeds) {
    EXPECT_TRUE(printer->unmark("CVBare"));
    EXPECT_EQ(printer->markedChoice("CVBare"), std::nullopt);
    EXPECT_FALSE(printer->unmark("CVUnknown"));
}

TEST_F(PrinterMarks, MarkingTheDefaultsBringsEveryDefaultBack) {
    printer->mark("CVMediaType", "Glossy");
    printer->unmark("CVResolution");
    printer->markDefaults();
    EXPECT_EQ(media(), "Plain");
    EXPECT_EQ(printer->markedChoice("CVResolution"), "Standard");
}

TEST_F(PrinterMarks, TellsWhetherTheDefaultIsMarked) {
    const Option& option = *printer->option("CVMediaType");
    EXPECT_TRUE(printer->isDefaultMarked(option));
    printer->mark("CVMediaType", "Glossy");
    EXPECT_FALSE(printer->isDefaultMarked(option));
    printer->unmark("CVMediaType");
    EXPECT_FALSE(printer->isDefaultMarked(option));
    EXPECT_FALSE(printer->isDefaultMarked(*printer->option("CVBare")));
    EXPECT_FALSE(printer->isDefaultMarked(*printer->option("CVOdd")));
}

TEST_F(PrinterMarks, AllMarksComeInTheOptionsOrder) {
    printer->mark("CVMediaType", "Matte");
    using Marks = std::vector<std::pair<std::string, std::optional<std::string>>>;
    EXPECT_EQ(printer->marks(), Marks({{"CVMediaType", "Matte"},
                                       {"CVResolution", "Standard"},
                                       {"CVBare", std::nullopt},
                                       {"CVOdd", std::nullopt}}));
}

} // namespace
} // namespace printing
