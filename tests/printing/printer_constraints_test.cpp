#include "tests/printing/ppd_text.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;
using Conflicts = std::vector<MarkedChoice>;

// A printer with media types, qualities, two-sided printing and a cover, under these constraints.
std::unique_ptr<PrinterDescription> constrained(const std::string& constraints) {
    return openMarkedPrinter(ppdWith(option("CVMediaType/Media", "Plain", {"Plain", "Glossy", "None"}) +
                                     option("CVResolution/Quality", "Standard", {"Draft", "Standard", "High"}) +
                                     option("Duplex/Sides", "Off", {"Off", "Long", "none", "FALSE"}) +
                                     option("CVCover/Cover", "OFF", {"OFF", "ON"}) + pageSizes(kCustomSizes) +
                                     constraints));
}

TEST(PpdConstraints, WithoutConstraintsNothingConflicts) {
    const auto printer = constrained("");
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
}

TEST(PpdConstraints, AnExcludedChoiceIsNamed) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n");
    ASSERT_TRUE(printer->mark("CVResolution", "Draft"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts({{"CVResolution", "Draft"}}));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Plain"), Conflicts());
}

TEST(PpdConstraints, WorkFromEitherSide) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n");
    ASSERT_TRUE(printer->mark("CVMediaType", "Glossy"));
    EXPECT_EQ(printer->conflictsOf("CVResolution", "Draft"), Conflicts({{"CVMediaType", "Glossy"}}));
}

TEST(PpdConstraints, AskingMarksNothing) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n");
    const auto before = printer->marks();
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
    EXPECT_EQ(printer->marks(), before);
}

TEST(PpdConstraints, ChoicesAreComparedExactly) {
    const auto printer = constrained("*UIConstraints: *CVMediaType glossy *CVResolution Draft\n"
                                     "*UIConstraints: *cvmediatype Plain *CVResolution Draft\n");
    ASSERT_TRUE(printer->mark("CVResolution", "Draft"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Plain"), Conflicts());
}

TEST(PpdConstraints, WithoutAChoiceEveryChoiceButTheOffOnesIsMeant) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *Duplex\n");
    const std::pair<const char*, bool> kChoices[] = {{"Long", true}, {"Off", false}, {"none", false}, {"FALSE", false}};
    for (const auto& [choice, excluded] : kChoices) {
        SCOPED_TRACE(choice);
        ASSERT_TRUE(printer->mark("Duplex", choice));
        EXPECT_EQ(!printer->conflictsOf("CVMediaType", "Glossy").empty(), excluded);
    }
}

TEST(PpdConstraints, WithoutAnyChoiceBothOptionsMustBeOn) {
    const auto printer = constrained("*UIConstraints: *CVMediaType *Duplex\n");
    EXPECT_EQ(printer->conflictsOf("Duplex", "Long"), Conflicts({{"CVMediaType", "Plain"}}));
    EXPECT_EQ(printer->conflictsOf("Duplex", "Off"), Conflicts());
    ASSERT_TRUE(printer->mark("CVMediaType", "None"));
    EXPECT_EQ(printer->conflictsOf("Duplex", "Long"), Conflicts());
}

TEST(PpdConstraints, AnOptionWithNothingMarkedExcludesNothing) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution\n");
    ASSERT_TRUE(printer->unmark("CVResolution"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
}

TEST(PpdConstraints, AnOptionThatThePpdLacksExcludesNothing) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVMissing On\n");
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
}

TEST(PpdConstraints, ThreeOptionsConflictOnlyTogether) {
    const auto printer =
        constrained("*cupsUIConstraints Slow: \"*CVMediaType Glossy *CVResolution High *Duplex Long\"\n");
    ASSERT_TRUE(printer->mark("CVMediaType", "Glossy"));
    ASSERT_TRUE(printer->mark("CVResolution", "High"));
    EXPECT_EQ(printer->conflictsOf("Duplex", "Long"), Conflicts({{"CVMediaType", "Glossy"}, {"CVResolution", "High"}}));
    EXPECT_EQ(printer->conflictsOf("Duplex", "Off"), Conflicts());
    ASSERT_TRUE(printer->mark("CVResolution", "Standard"));
    EXPECT_EQ(printer->conflictsOf("Duplex", "Long"), Conflicts());
}

TEST(PpdConstraints, ThreeOptionsMayGoWithoutChoices) {
    const auto printer = constrained("*cupsUIConstraints Slow: \"*CVMediaType Glossy *Duplex *CVCover\"\n");
    ASSERT_TRUE(printer->mark("Duplex", "Long"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
    ASSERT_TRUE(printer->mark("CVCover", "ON"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts({{"Duplex", "Long"}, {"CVCover", "ON"}}));
}

TEST(PpdConstraints, OnlyThoseCountOfWhichTheChoiceIsAPart) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n"
                                     "*UIConstraints: *CVCover ON *CVResolution High\n");
    ASSERT_TRUE(printer->mark("CVMediaType", "Glossy"));
    ASSERT_TRUE(printer->mark("CVResolution", "Draft")); // these two exclude each other already
    EXPECT_EQ(printer->conflictsOf("CVCover", "ON"), Conflicts());
    EXPECT_EQ(printer->conflictsOf("Duplex", "Long"), Conflicts());
}

TEST(PpdConstraints, EachExcludedChoiceIsNamedOnceInThePpdsOrder) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *Duplex Long\n"
                                     "*UIConstraints: *Duplex Long *CVMediaType Glossy\n"
                                     "*UIConstraints: *CVMediaType Glossy *CVCover ON\n"
                                     "*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n"
                                     "*UIConstraints: *CVMediaType *CVCover ON\n");
    for (const auto& [option, choice] : Conflicts({{"Duplex", "Long"}, {"CVCover", "ON"}, {"CVResolution", "Draft"}}))
        ASSERT_TRUE(printer->mark(option, choice));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"),
              Conflicts({{"Duplex", "Long"}, {"CVCover", "ON"}, {"CVResolution", "Draft"}}));
}

TEST(PpdConstraints, AConstraintOnCustomSizesMeansEveryCustomSize) {
    for (const char* constraint : {"*UIConstraints: *CVMediaType Glossy *CustomPageSize True\n",
                                   "*UIConstraints: *CVMediaType Glossy *PageSize Custom\n",
                                   "*cupsUIConstraints Free: \"*CVMediaType Glossy *CustomPageSize True\"\n"}) {
        SCOPED_TRACE(constraint);
        const auto printer = constrained(constraint);
        ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
        EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts({{"PageSize", "Custom.300x400"}}));
        ASSERT_TRUE(printer->mark("PageSize", "A4"));
        EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
        ASSERT_TRUE(printer->mark("CVMediaType", "Glossy"));
        EXPECT_EQ(printer->conflictsOf("PageSize", "Custom.300x400"), Conflicts({{"CVMediaType", "Glossy"}}));
    }
}

TEST(PpdConstraints, AConstraintThatStandsTwiceCountsOnceInItsFirstPlace) {
    const auto printer = constrained("*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n"
                                     "*UIConstraints: *CVMediaType Glossy *CVCover ON\n"
                                     "*UIConstraints: *CVResolution Draft *CVMediaType Glossy\n"
                                     "*cupsUIConstraints Again: \"*CVCover ON *CVMediaType Glossy\"\n");
    ASSERT_TRUE(printer->mark("CVResolution", "Draft"));
    ASSERT_TRUE(printer->mark("CVCover", "ON"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts({{"CVResolution", "Draft"}, {"CVCover", "ON"}}));
}

// Office printers have thousands of constraints on one option.
TEST(PpdConstraints, TheLastOfThousandsCounts) {
    std::string constraints;
    for (int number = 0; number < 4'000; ++number)
        constraints += "*UIConstraints: *CVMediaType Glossy *Tray" + std::to_string(number) + " ON\n";
    const auto printer = constrained(constraints + "*UIConstraints: *CVMediaType Glossy *CVResolution Draft\n");
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
    ASSERT_TRUE(printer->mark("CVResolution", "Draft"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts({{"CVResolution", "Draft"}}));
}

TEST(PpdConstraints, AnEmptyConstraintExcludesNothing) {
    const auto printer = constrained("*cupsUIConstraints Nothing: \"\"\n*cupsUIConstraints Words: \"Glossy Draft\"\n");
    ASSERT_TRUE(printer->mark("CVResolution", "Draft"));
    EXPECT_EQ(printer->conflictsOf("CVMediaType", "Glossy"), Conflicts());
}

TEST(PpdConstraints, AnUnknownOptionHasNoConflicts) {
    const auto printer = constrained("*UIConstraints: *CVMediaType *Duplex\n");
    EXPECT_EQ(printer->conflictsOf("CVUnknown", "Long"), Conflicts());
}

} // namespace
} // namespace printing
