#include "imaging/filters.h"

#include "imaging/color_transform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace imaging_tests {
namespace {

using imaging::ColorControls;
using imaging::ColorMatrix;
using imaging::ColorMonochrome;
using imaging::ColorTransform;
using imaging::Filter;
using imaging::foldFilters;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

constexpr double kRounding = 1e-12;

void expectTransform(const std::vector<Filter>& filters, const ColorTransform& expected) {
    const ColorTransform folded = foldFilters(filters);
    for (std::size_t row = 0; row < 4; ++row) {
        SCOPED_TRACE(row);
        EXPECT_THAT(folded.rows[row], Pointwise(DoubleNear(kRounding), expected.rows[row]));
    }
}

TEST(Filters, DefaultsAreThePublishedOnes) {
    EXPECT_EQ(ColorControls(), (ColorControls{0, 1, 1}));
    EXPECT_EQ(ColorMatrix(), (ColorMatrix{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}, {0, 0, 0, 0}}));
    EXPECT_EQ(ColorMonochrome(), (ColorMonochrome{{0.6, 0.45, 0.3}, 1}));
}

TEST(Filters, LuminanceWeightsAddUpToOne) {
    EXPECT_DOUBLE_EQ(imaging::kLuminanceWeights[0] + imaging::kLuminanceWeights[1] + imaging::kLuminanceWeights[2], 1);
}

TEST(FoldFilters, NoFilterAndDefaultsThatChangeNothingAreTheIdentity) {
    expectTransform({}, ColorTransform());
    expectTransform({ColorControls()}, ColorTransform());
    expectTransform({ColorMatrix()}, ColorTransform());
    expectTransform({ColorMonochrome{{0.2, 0.4, 0.6}, 0}}, ColorTransform());
}

TEST(FoldFilters, BrightnessIsAddedToEachColorChannel) {
    expectTransform({ColorControls{.brightness = 0.25F}},
                    {{{{1, 0, 0, 0, 0.25}, {0, 1, 0, 0, 0.25}, {0, 0, 1, 0, 0.25}, {0, 0, 0, 1, 0}}}});
}

TEST(FoldFilters, ContrastScalesAboutMidGrey) {
    expectTransform(
        {ColorControls{.contrast = 1.125F}},
        {{{{1.125, 0, 0, 0, -0.0625}, {0, 1.125, 0, 0, -0.0625}, {0, 0, 1.125, 0, -0.0625}, {0, 0, 0, 1, 0}}}});
}

TEST(FoldFilters, BrightnessComesBeforeContrast) {
    // (x + 0.25 - 0.5) * 0.5 + 0.5
    const ColorTransform folded = foldFilters(std::vector<Filter>{ColorControls{0.25F, 0.5F, 1}});
    EXPECT_THAT(folded.rows[1], ElementsAre(0, 0.5, 0, 0, 0.375));
}

TEST(FoldFilters, NoSaturationLeavesTheLuminance) {
    const ColorTransform::Row luminance = {0.2126, 0.7152, 0.0722, 0, 0};
    expectTransform({ColorControls{.saturation = 0}}, {{{luminance, luminance, luminance, {0, 0, 0, 1, 0}}}});
}

TEST(FoldFilters, HalfTheSaturationMixesColorAndLuminance) {
    const ColorTransform folded = foldFilters(std::vector<Filter>{ColorControls{.saturation = 0.5F}});
    EXPECT_THAT(folded.rows[0], Pointwise(DoubleNear(kRounding), ColorTransform::Row{0.6063, 0.3576, 0.0361, 0, 0}));
}

TEST(FoldFilters, AMatrixIsTakenAsItStands) {
    const ColorMatrix matrix{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}, {17, 18, 19, 20}};
    expectTransform({matrix}, {{{{1, 2, 3, 4, 17}, {5, 6, 7, 8, 18}, {9, 10, 11, 12, 19}, {13, 14, 15, 16, 20}}}});
}

TEST(FoldFilters, WhiteMonochromeIsTheLuminance) {
    expectTransform({ColorMonochrome{{1, 1, 1}, 1}}, foldFilters(std::vector<Filter>{ColorControls{.saturation = 0}}));
}

TEST(FoldFilters, MonochromeTintsAndMixes) {
    const ColorTransform folded = foldFilters(std::vector<Filter>{ColorMonochrome{{0.5, 1, 0}, 0.5}});
    EXPECT_THAT(folded.rows[0], Pointwise(DoubleNear(kRounding), ColorTransform::Row{0.55315, 0.1788, 0.01805, 0, 0}));
    EXPECT_THAT(folded.rows[2], Pointwise(DoubleNear(kRounding), ColorTransform::Row{0, 0, 0.5, 0, 0}));
    EXPECT_THAT(folded.rows[3], ElementsAre(0, 0, 0, 1, 0));
}

TEST(FoldFilters, TheOrderOfFiltersCounts) {
    const ColorControls brighter{.brightness = 0.125F};
    const ColorMatrix doubled{.r = {2, 0, 0, 0}};
    EXPECT_THAT(foldFilters(std::vector<Filter>{brighter, doubled}).rows[0], ElementsAre(2, 0, 0, 0, 0.25));
    EXPECT_THAT(foldFilters(std::vector<Filter>{doubled, brighter}).rows[0], ElementsAre(2, 0, 0, 0, 0.125));
}

} // namespace
} // namespace imaging_tests
