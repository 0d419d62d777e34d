#include "imaging/picture.h"

#include "imaging/filter_nodes.h"
#include "tests/imaging/pixels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::ColorControls;
using imaging::ColorMatrix;
using imaging::ColorMonochrome;
using imaging::Extent;
using imaging::Filter;
using imaging::FilterNode;
using imaging::Picture;
using testing::ElementsAre;
using testing::IsEmpty;

Picture onePixel(const Pixel& pixel) {
    return {std::make_shared<const Bitmap>(makeBitmap(1, 1, [&](int, int) { return pixel; })), "pixel"};
}

Pixel rendered(const Picture& picture) {
    Bitmap target;
    picture.renderInto(target);
    return pixelAt(target, 0, 0);
}

TEST(Picture, HasTheSourcesExtentAndItsName) {
    const Picture picture(std::make_shared<const Bitmap>(7, 5), "Sunset");
    EXPECT_EQ(picture.extent(), (Extent{7, 5}));
    EXPECT_EQ(picture.sourceName(), "Sunset");
    EXPECT_THAT(picture.filters(), IsEmpty());
}

TEST(Picture, FilteringAddsBehindAndLeavesTheOriginalAlone) {
    const Picture plain = onePixel({1, 2, 3, 4});
    const Filter controls = ColorControls{.brightness = 0.1F};
    const Filter grey = ColorMonochrome{{1, 1, 1}, 1};
    const Picture filtered = plain.filteredBy(controls).filteredBy(grey);
    EXPECT_THAT(filtered.filters(), ElementsAre(controls, grey));
    EXPECT_EQ(filtered.sourceName(), "pixel");
    EXPECT_THAT(plain.filters(), IsEmpty());
}

TEST(Picture, RendersUnfilteredPixelsUnchanged) {
    EXPECT_EQ(rendered(onePixel({10, 20, 30, 40})), (Pixel{10, 20, 30, 40}));
}

TEST(Picture, RendersTheFiltersInTheirOrder) {
    const ColorControls brighter{.brightness = 0.2F}; // 51 levels
    const ColorMatrix halved{.r = {0.5, 0, 0, 0}, .g = {0, 0.5, 0, 0}, .b = {0, 0, 0.5, 0}};
    const Picture picture = onePixel({100, 50, 0, 77});
    EXPECT_EQ(rendered(picture.filteredBy(halved).filteredBy(brighter)), (Pixel{101, 76, 51, 77}));
    EXPECT_EQ(rendered(picture.filteredBy(brighter).filteredBy(halved)), (Pixel{76, 51, 26, 77}));
}

TEST(Picture, ValuesAreCutOnlyAtTheEnd) {
    const ColorControls brighter{.brightness = 1};
    const ColorControls darker{.brightness = -1};
    EXPECT_EQ(rendered(onePixel({200, 100, 0, 255}).filteredBy(brighter).filteredBy(darker)),
              (Pixel{200, 100, 0, 255}));
    EXPECT_EQ(rendered(onePixel({200, 100, 0, 255}).filteredBy(brighter)), (Pixel{255, 255, 255, 255}));
}

TEST(Picture, RenderingAgainReusesTheTargetsMemory) {
    const Picture picture(std::make_shared<const Bitmap>(30, 20), "");
    Bitmap target(60, 40);
    const std::uint8_t* const memory = target.row(0);
    picture.filteredBy(ColorControls{.contrast = 1.1F}).renderInto(target);
    EXPECT_EQ(target.row(0), memory);
    EXPECT_EQ(target.extent(), (Extent{30, 20}));
}

TEST(Picture, RendersIntoItsOwnSource) {
    const auto source = std::make_shared<Bitmap>(makeBitmap(33, 9, [](int, int) { return Pixel{1, 2, 3, 4}; }));
    const ColorMatrix matrix{.r = {3, 0, 0, 0}, .b = {0, 1, 1, 0}};
    Picture(source, "").filteredBy(matrix).renderInto(*source);
    EXPECT_EQ(pixelAt(*source, 0, 0), (Pixel{3, 2, 5, 4}));
    EXPECT_EQ(pixelAt(*source, 32, 8), (Pixel{3, 2, 5, 4}));
}

TEST(Picture, WithoutPixelsRendersAnEmptyBitmap) {
    for (const auto& source : {std::shared_ptr<const Bitmap>(), std::make_shared<const Bitmap>()}) {
        const Picture picture = Picture(source, "nothing").filteredBy(ColorControls{.brightness = 1});
        EXPECT_EQ(picture.extent(), (Extent{0, 0}));
        Bitmap target(4, 4);
        picture.renderInto(target);
        EXPECT_TRUE(target.isEmpty());
    }
}

TEST(FilterNode, HasNoOutputWithoutAnInput) {
    FilterNode<ColorControls> node;
    EXPECT_FALSE(node.outputImage());
    node.setInputImage(onePixel({1, 2, 3, 4}));
    EXPECT_TRUE(node.outputImage());
    node.setInputImage(std::nullopt);
    EXPECT_FALSE(node.outputImage());
}

TEST(FilterNode, TheOutputTakesTheParametersAsTheyStandWhenItIsRead) {
    FilterNode<ColorControls> node;
    node.setInputImage(onePixel({100, 100, 100, 255}));
    node.parameters.brightness = 0.2F;
    const auto brighter = node.outputImage();
    node.parameters.brightness = 0;
    EXPECT_THAT(brighter->filters(), ElementsAre(Filter(ColorControls{.brightness = 0.2F})));
    EXPECT_THAT(node.outputImage()->filters(), ElementsAre(Filter(ColorControls())));
}

TEST(FilterNode, DefaultsComeBackAndTheInputStays) {
    FilterNode<ColorMatrix> node;
    node.setInputImage(onePixel({1, 2, 3, 4}));
    node.parameters.r = {0, 0, 0, 0};
    node.setDefaults();
    EXPECT_EQ(node.parameters, ColorMatrix());
    EXPECT_EQ(node.inputImage()->sourceName(), "pixel");
}

TEST(FilterNode, ReadingAnOutputOfAnOutputComposes) {
    FilterNode<ColorControls> controls;
    FilterNode<ColorMonochrome> monochrome;
    controls.setInputImage(onePixel({1, 2, 3, 4}));
    monochrome.setInputImage(controls.outputImage());
    EXPECT_THAT(monochrome.outputImage()->filters(), ElementsAre(Filter(ColorControls()), Filter(ColorMonochrome())));
}

} // namespace
} // namespace imaging_tests
