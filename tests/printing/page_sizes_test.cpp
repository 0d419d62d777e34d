#include "tests/printing/ppd_text.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

using namespace printing_tests;

class PageSizes : public testing::Test {
protected:
    [[nodiscard]] std::optional<std::string> marked() const { return printer->markedChoice("PageSize"); }
    std::unique_ptr<PrinterDescription> printer = openMarkedPrinter(ppdWith(pageSizes(kCustomSizes)));
    std::unique_ptr<PrinterDescription> fixed = openMarkedPrinter(ppdWith(pageSizes()));
};

TEST_F(PageSizes, AreThoseOfThePpdInPoints) {
    const auto letter = printer->pageSize("Letter");
    ASSERT_TRUE(letter);
    EXPECT_EQ(letter->keyword, "Letter");
    EXPECT_EQ(letter->width, 612);
    EXPECT_EQ(letter->height, 792);
}

TEST_F(PageSizes, AnUnknownSizeIsNone) {
    for (const char* name : {"A5", "letter", "", "Custom", "custom.200x300"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(printer->pageSize(name).has_value());
    }
}

TEST_F(PageSizes, ACustomSizeIsReadInItsUnit) {
    const struct {
        const char* name;
        double width, height;
    } kSizes[] = {
        {"Custom.200x300", 200, 300}, {"Custom.200.5x300.25", 200.5, 300.25}, {"Custom.400x500pt", 400, 500},
        {"Custom.4x6in", 288, 432},   {"Custom.12.7x25.4cm", 360, 720},       {"Custom.127x254mm", 360, 720},
        {"Custom.0.5x1ft", 432, 864}, {"Custom.0.127x0.254m", 360, 720},
    };
    for (const auto& row : kSizes) {
        SCOPED_TRACE(row.name);
        const auto size = printer->pageSize(row.name);
        ASSERT_TRUE(size);
        EXPECT_EQ(size->keyword, row.name);
        EXPECT_NEAR(size->width, row.width, 1e-9);
        EXPECT_NEAR(size->height, row.height, 1e-9);
    }
}

TEST_F(PageSizes, APrinterWithoutCustomSizesHasNone) {
    EXPECT_FALSE(fixed->pageSize("Custom.200x300").has_value());
}

TEST_F(PageSizes, TheLimitsOfCustomSizesAreThoseOfThePpd) {
    EXPECT_TRUE(printer->allowsCustomSizes());
    const CustomSizeLimits limits = printer->customSizeLimits();
    EXPECT_EQ(limits.minWidth, 200);
    EXPECT_EQ(limits.minHeight, 300);
    EXPECT_EQ(limits.maxWidth, 600);
    EXPECT_EQ(limits.maxHeight, 900);
}

TEST_F(PageSizes, WithoutCustomSizesTheLimitsAreZero) {
    EXPECT_FALSE(fixed->allowsCustomSizes());
    const CustomSizeLimits limits = fixed->customSizeLimits();
    EXPECT_EQ(limits.minWidth, 0);
    EXPECT_EQ(limits.minHeight, 0);
    EXPECT_EQ(limits.maxWidth, 0);
    EXPECT_EQ(limits.maxHeight, 0);
}

TEST_F(PageSizes, ACustomSizeWithinTheLimitsIsMarkedWithItsText) {
    for (const char* size :
         {"Custom.200x300", "Custom.600x900", "Custom.350.5x400", "Custom.4x6in", "Custom.127x254mm"}) {
        SCOPED_TRACE(size);
        EXPECT_TRUE(printer->mark("PageSize", size));
        EXPECT_EQ(marked(), size);
    }
}

TEST_F(PageSizes, ACustomSizeOutsideTheLimitsChangesNothing) {
    for (const char* size : {"Custom.199.9x400", "Custom.600.1x400", "Custom.400x299.9", "Custom.400x900.1",
                             "Custom.20x30in", "Custom.-300x400", "Custom.0x0", "Custom.1e300x400"}) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(printer->mark("PageSize", size));
        EXPECT_EQ(marked(), "A4");
    }
}

TEST_F(PageSizes, AMalformedCustomSizeChangesNothing) {
    for (const char* size :
         {"Custom.", "Custom.300", "Custom.300x", "Custom.x400", "Custom.axb", "Custom.300X400", "Custom.300*400",
          "Custom.nanx400", "Custom.infx400", "Custom.1e999x400", "Custom.300x400yd", "Custom.300x400INCH",
          "custom.300x400", "Custom300x400", "Custom.300x400x500"}) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(printer->mark("PageSize", size));
        EXPECT_EQ(marked(), "A4");
    }
}

TEST_F(PageSizes, BlanksAndWhatFollowsMakeACustomSizeMalformed) {
    for (const char* size : {"Custom. 300x400", "Custom.300 x400", "Custom.300x 400", "Custom.300x400 in",
                             "Custom.300x400pt junk", "Custom.300x400\njunk", "Custom.300x400 "}) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(printer->mark("PageSize", size));
        EXPECT_EQ(marked(), "A4");
    }
}

TEST_F(PageSizes, WithoutCustomSizesNoneIsMarked) {
    EXPECT_FALSE(fixed->mark("PageSize", "Custom.300x400"));
    EXPECT_EQ(fixed->markedChoice("PageSize"), "A4");
}

TEST_F(PageSizes, AnotherSizeReplacesACustomOne) {
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    EXPECT_TRUE(printer->mark("PageSize", "Letter"));
    EXPECT_EQ(marked(), "Letter");
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    ASSERT_TRUE(printer->mark("PageSize", "Custom.500x600"));
    EXPECT_EQ(marked(), "Custom.500x600");
}

TEST_F(PageSizes, ARefusedCustomSizeKeepsTheCustomSizeBeforeIt) {
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    EXPECT_FALSE(printer->mark("PageSize", "Custom.1x1"));
    EXPECT_EQ(marked(), "Custom.300x400");
}

TEST_F(PageSizes, TheDefaultsAndUnmarkingForgetACustomSize) {
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    printer->markDefaults();
    EXPECT_EQ(marked(), "A4");
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    ASSERT_TRUE(printer->unmark("PageSize"));
    EXPECT_EQ(marked(), std::nullopt);
    ASSERT_TRUE(printer->mark("PageSize", "Custom"));
    EXPECT_EQ(marked(), "Custom");
}

TEST_F(PageSizes, ACustomSizeIsNoDefault) {
    ASSERT_TRUE(printer->mark("PageSize", "Custom.300x400"));
    EXPECT_FALSE(printer->isDefaultMarked(*printer->option("PageSize")));
}

} // namespace
} // namespace printing
