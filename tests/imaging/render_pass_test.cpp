#include "imaging/render_pass.h"

#include "imaging/picture.h"
#include "tests/imaging/pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <vector>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::ColorControls;
using imaging::ColorMatrix;
using imaging::ColorMonochrome;
using imaging::ColorTransform;
using imaging::Filter;
using imaging::Picture;
using imaging::renderPass;
using imaging::renderPassPlainly;
using imaging::renderPassWithVectors;
using imaging::SourcePixels;
using imaging::TargetPixels;
using imaging::vectorsOfThisMachine;

// The reference: one filter after the other on double-precision pixels, written from the filters' definitions.

using Color = std::array<double, 4>;

double luminance(const Color& color) {
    return 0.2126 * color[0] + 0.7152 * color[1] + 0.0722 * color[2];
}

Color filtered(const ColorControls& controls, Color color) {
    for (std::size_t channel = 0; channel < 3; ++channel)
        color[channel] = (color[channel] + controls.brightness - 0.5) * controls.contrast + 0.5;
    const double grey = luminance(color);
    for (std::size_t channel = 0; channel < 3; ++channel)
        color[channel] = grey + (color[channel] - grey) * controls.saturation;
    return color;
}

Color filtered(const ColorMatrix& matrix, const Color& color) {
    const auto dot = [&](const std::array<double, 4>& vector) {
        return vector[0] * color[0] + vector[1] * color[1] + vector[2] * color[2] + vector[3] * color[3];
    };
    return {dot(matrix.r) + matrix.bias[0], dot(matrix.g) + matrix.bias[1], dot(matrix.b) + matrix.bias[2],
            dot(matrix.a) + matrix.bias[3]};
}

Color filtered(const ColorMonochrome& monochrome, Color color) {
    const double grey = luminance(color);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double tinted = grey * monochrome.color[channel];
        color[channel] = color[channel] * (1 - monochrome.intensity) + tinted * monochrome.intensity;
    }
    return color;
}

Pixel referencePixel(const std::vector<Filter>& filters, const Pixel& pixel) {
    Color color{};
    for (std::size_t channel = 0; channel < 4; ++channel)
        color[channel] = pixel[channel] / 255.0;
    for (const Filter& filter : filters)
        color = std::visit([&](const auto& parameters) { return filtered(parameters, color); }, filter);
    Pixel result{};
    for (std::size_t channel = 0; channel < 4; ++channel)
        result[channel] = static_cast<std::uint8_t>(std::lround(std::clamp(color[channel] * 255, 0.0, 255.0)));
    return result;
}

int largestDifference(const Pixel& one, const Pixel& other) {
    int largest = 0;
    for (std::size_t channel = 0; channel < 4; ++channel)
        largest = std::max(largest, std::abs(one[channel] - other[channel]));
    return largest;
}

/// How far the rendered picture is from the reference at its worst pixel, in levels.
int largestError(const std::shared_ptr<const Bitmap>& source, const std::vector<Filter>& filters, Bitmap& target) {
    Picture picture(source, "");
    for (const Filter& filter : filters)
        picture = picture.filteredBy(filter);
    picture.renderInto(target);
    int largest = 0;
    for (int y = 0; y < source->height(); ++y)
        for (int x = 0; x < source->width(); ++x)
            largest = std::max(
                largest, largestDifference(pixelAt(target, x, y), referencePixel(filters, pixelAt(*source, x, y))));
    return largest;
}

/// Every byte value in every channel.
std::shared_ptr<const Bitmap> everyByte() {
    return std::make_shared<const Bitmap>(makeBitmap(256, 1, [](int x, int) {
        const auto byte = static_cast<std::uint8_t>(x);
        return Pixel{byte, byte, byte, static_cast<std::uint8_t>(255 - x)};
    }));
}

/// Every byte value in every channel, and the corners and many points of the colour cube.
std::shared_ptr<const Bitmap> manyColors() {
    Noise noise;
    return std::make_shared<const Bitmap>(makeBitmap(256, 8, [&](int x, int y) {
        const auto byte = static_cast<std::uint8_t>(x);
        switch (y) {
        case 0:
            return Pixel{byte, 0, 255, 0};
        case 1:
            return Pixel{255, byte, 0, 255};
        case 2:
            return Pixel{0, 255, byte, byte};
        case 3:
            return Pixel{byte, byte, byte, 128};
        case 4: {
            const auto corner = [x](int bit) { return static_cast<std::uint8_t>((x >> bit & 1) * 255); };
            return Pixel{corner(0), corner(1), corner(2), corner(3)};
        }
        default:
            return noise.pixel();
        }
    }));
}

ColorControls controlsFor(int brightness, int contrast) {
    return {static_cast<float>(brightness) / 200, static_cast<float>(contrast) / 160 + 1, 1};
}

ColorMatrix matrixFor(int red, int green, int blue) {
    return {.r = {red / 70.0 + 1, 0, 0, 0}, .g = {0, green / 70.0 + 1, 0, 0}, .b = {0, 0, blue / 70.0 + 1, 0}};
}

constexpr int kLeast = -20; // the range of the five adjustments
constexpr int kMost = 20;
constexpr int kFurthestOff = 1; // level

TEST(RenderPass, ColorIsWithinOneLevelForAllAdjustmentsAndBytesInBothOrders) {
    // A channel sees brightness, contrast and its own value, so three of the values are tried at a time.
    const auto source = everyByte();
    Bitmap target;
    for (int brightness = kLeast; brightness <= kMost; ++brightness)
        for (int contrast = kLeast; contrast <= kMost; ++contrast)
            for (int value = kLeast; value <= kMost; value += 3) {
                const ColorControls controls = controlsFor(brightness, contrast);
                const ColorMatrix matrix = matrixFor(value, std::min(value + 1, kMost), std::min(value + 2, kMost));
                ASSERT_LE(largestError(source, {controls, matrix}, target), kFurthestOff)
                    << brightness << ' ' << contrast << ' ' << value;
                ASSERT_LE(largestError(source, {matrix, controls}, target), kFurthestOff)
                    << brightness << ' ' << contrast << ' ' << value;
            }
}

TEST(RenderPass, MonoIsWithinOneLevelForAllAdjustmentsWithTheControlsOnEitherSide) {
    const auto source = manyColors();
    const ColorMonochrome white{{1, 1, 1}, 1};
    Bitmap target;
    for (int brightness = kLeast; brightness <= kMost; ++brightness)
        for (int contrast = kLeast; contrast <= kMost; ++contrast) {
            const ColorControls controls = controlsFor(brightness, contrast);
            ASSERT_LE(largestError(source, {controls, white}, target), kFurthestOff) << brightness << ' ' << contrast;
            ASSERT_LE(largestError(source, {white, controls}, target), kFurthestOff) << brightness << ' ' << contrast;
        }
}

TEST(RenderPass, MonoWithAMatrixOnEitherSideIsWithinOneLevel) {
    const auto source = manyColors();
    const ColorMonochrome white{{1, 1, 1}, 1};
    Bitmap target;
    for (int value = kLeast; value <= kMost; value += 4) {
        const ColorMatrix matrix = matrixFor(value, -value, value / 2);
        const ColorControls controls = controlsFor(value, -value);
        EXPECT_LE(largestError(source, {white, matrix, controls}, target), kFurthestOff) << value;
        EXPECT_LE(largestError(source, {controls, matrix, white}, target), kFurthestOff) << value;
    }
}

TEST(RenderPass, AdjustmentsOfZeroRenderTheSourceItself) {
    const auto source = manyColors();
    Bitmap target;
    EXPECT_EQ(largestError(source, {controlsFor(0, 0), matrixFor(0, 0, 0)}, target), 0);
    for (int y = 0; y < source->height(); ++y)
        for (int x = 0; x < source->width(); ++x)
            ASSERT_EQ(pixelAt(target, x, y), pixelAt(*source, x, y));
}

TEST(RenderPass, GreyPixelsStayWhatTheyAreInMono) {
    const auto source = everyByte();
    Bitmap target;
    Picture(source, "").filteredBy(ColorMonochrome{{1, 1, 1}, 1}).renderInto(target);
    for (int x = 0; x < source->width(); ++x)
        EXPECT_LE(largestDifference(pixelAt(target, x, 0), pixelAt(*source, x, 0)), kFurthestOff) << x;
}

TEST(RenderPass, TintsSaturationsAndChannelMixersAreWithinOneLevel) {
    const std::vector<std::vector<Filter>> chains = {
        {ColorMonochrome()},
        {ColorMonochrome{{0.2, 0.5, 0.9}, 0.4}},
        {ColorControls{0.1F, 1.2F, 0}},
        {ColorControls{-0.1F, 0.8F, 1.8F}},
        {ColorMatrix{.r = {0, 0, 1, 0}, .b = {1, 0, 0, 0}}},
        {ColorMatrix{.r = {-1, 0, 0, 0}, .g = {0, -1, 0, 0}, .b = {0, 0, -1, 0}, .bias = {1, 1, 1, 0}}},
        {ColorMatrix{.r = {0.5, -8, 7.5, 0.5}, .a = {0.3, 0.3, 0.3, -1}, .bias = {-0.2, 0, 0, 0.5}}},
        {ColorMatrix{.a = {0, 0, 0, 0.5}, .bias = {3, -0.9, -2, 0.1}}},
        {ColorMatrix{.r = {0.7, 0.8, 0.9, 0}, .g = {0.7, 0.8, 0.9, 0}, .b = {0.7, 0.8, 0.9, 0}}},
    };
    const auto source = manyColors();
    Bitmap target;
    for (std::size_t i = 0; i < chains.size(); ++i)
        EXPECT_LE(largestError(source, chains[i], target), kFurthestOff) << i;
}

TEST(RenderPass, HugeWeightsAndConstantsAreWithinOneLevel) {
    const std::vector<std::vector<Filter>> chains = {
        {ColorMatrix{.r = {1000, -1000, 1, 0}, .g = {0, 1e6, 0, 0}, .bias = {0, -5e5, 0, 0}}},
        {ColorMatrix{.g = {0, 1, 0.5, 0}, .bias = {1e9, -1e9, 1e9, 0}}},
        {ColorMatrix{.bias = {1e300, -1e300, 0, 0}}},
        {ColorMatrix{.r = {2, 0, 0, 0}, .bias = {-1.5, 0, 0, 0}}},
    };
    const auto source = manyColors();
    Bitmap target;
    for (std::size_t i = 0; i < chains.size(); ++i)
        EXPECT_LE(largestError(source, chains[i], target), kFurthestOff) << i;
}

TEST(RenderPass, WhatIsNoNumberIsBlack) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    ColorTransform transform;
    transform.rows[0] = {kNotANumber, 0, 0, 0, 0};
    transform.rows[1] = {kInfinity, 0, 0, 0, 0};
    transform.rows[2] = {-kInfinity, kInfinity, 0, 0, 0};
    const Pixel source = {1, 2, 3, 4};
    Pixel target{};
    renderPass(transform, {source.data(), 1, 1, 4}, {target.data(), 4});
    EXPECT_EQ(target, (Pixel{0, 255, 0, 4}));
}

// Wide vectors and the plain pass, byte by byte.

constexpr std::size_t kColor = 1; // indices of the preview's own kinds
constexpr std::size_t kMono = 3;

/// Transforms for each kind of arithmetic.
std::vector<ColorTransform> transformsOfAllKinds() {
    const auto fold = [](std::vector<Filter> filters) { return imaging::foldFilters(filters); };
    return {
        fold({}),
        fold({controlsFor(7, -3), matrixFor(20, -20, 11)}),
        fold({ColorMatrix{.r = {1.99, 0, 0, 0}, .a = {0, 0, 0, 0.5}, .bias = {-0.9, 0.9, 0, 0.25}}}),
        fold({controlsFor(-20, 20), ColorMonochrome{{1, 1, 1}, 1}}),
        fold({ColorMonochrome{{1, 1, 1}, 1}, controlsFor(13, 20)}),
        fold({ColorMonochrome()}),
        fold({ColorMatrix{.r = {-3, 2, 1, 0.5}, .g = {16, -16, 16, -16}, .bias = {0.5, 0, -7, 0}}}),
        fold({ColorMatrix{.r = {100, -100, 0, 0}}}),
    };
}

std::vector<std::uint8_t> noiseBytes(std::size_t count) {
    Noise noise;
    std::vector<std::uint8_t> bytes(count);
    std::ranges::generate(bytes, [&] { return noise.byte(); });
    return bytes;
}

/// Rows anywhere in memory, with noise between them.
struct Layout {
    std::size_t width, height, sourceOffset, targetOffset, gap;
};

/// Compares the wide pass with the plain one, which renders once. The memory serves again and again: fresh pages are
/// dear.
class Passes {
public:
    void renderPlainly(const ColorTransform& transform, const Layout& layout) {
        transform_ = transform;
        layout_ = layout;
        source_.resize(layout.sourceOffset + stride() * layout.height + kRoom);
        for (std::size_t at = 0; at < source_.size(); at += noise_.size())
            std::memcpy(source_.data() + at, noise_.data(), std::min(noise_.size(), source_.size() - at));
        plain_.assign(layout.targetOffset + stride() * layout.height + kRoom, kUntouched);
        renderPassPlainly(transform, pixels(), {plain_.data() + layout.targetOffset, stride()});
    }

    /// Whether the wide pass, with that kind of vectors, writes the same and nothing else. Passes go to and fro, so
    /// that there are two.
    testing::AssertionResult agree(std::size_t vectors) {
        for (const char* pass : {"one way", "the other way"}) {
            wide_.assign(plain_.size(), kUntouched);
            renderPassWithVectors(vectors, transform_, pixels(), {wide_.data() + layout_.targetOffset, stride()});
            if (wide_ == plain_)
                continue;
            const auto [at, other] = std::ranges::mismatch(wide_, plain_);
            return testing::AssertionFailure() << layout_.width << " x " << layout_.height << ", " << pass << ", byte "
                                               << at - wide_.begin() << ": " << int{*at} << ", plainly " << int{*other};
        }
        return testing::AssertionSuccess();
    }

private:
    static constexpr std::size_t kRoom = 64; // behind the pixels, to see what is written there
    static constexpr std::uint8_t kUntouched = 0xA5;

    [[nodiscard]] std::size_t stride() const { return layout_.width * 4 + layout_.gap; }
    [[nodiscard]] SourcePixels pixels() const {
        return {source_.data() + layout_.sourceOffset, layout_.width, layout_.height, stride()};
    }

    ColorTransform transform_;
    Layout layout_{};
    std::vector<std::uint8_t> noise_ = noiseBytes(99'991);
    std::vector<std::uint8_t> source_, wide_, plain_;
};

/// Whether all kinds of vectors of this machine write what the plain pass writes.
void expectAgreement(Passes& passes, const ColorTransform& transform, const Layout& layout) {
    passes.renderPlainly(transform, layout);
    const auto vectors = vectorsOfThisMachine();
    for (std::size_t kind = 0; kind < vectors.size(); ++kind)
        EXPECT_TRUE(passes.agree(kind)) << vectors[kind];
}

TEST(RenderPass, PlainPassWritesOnlyThePixels) {
    std::vector<std::uint8_t> source(3 * 20, 10);
    std::vector<std::uint8_t> target(3 * 20, 0xA5);
    ColorTransform doubled;
    doubled.rows[0][0] = doubled.rows[1][1] = doubled.rows[2][2] = 2;
    renderPassPlainly(doubled, {source.data(), 3, 2, 20}, {target.data() + 1, 20});
    for (std::size_t i = 0; i < target.size(); ++i) {
        const bool isPixel = i >= 1 && i < 1 + 40 && (i - 1) % 20 < 12;
        const int expected = !isPixel ? 0xA5 : (i - 1) % 20 % 4 == 3 ? 10 : 20;
        EXPECT_EQ(target[i], expected) << i;
    }
}

TEST(RenderPass, AllVectorsWriteTheBytesOfThePlainPassAtAnyWidthAndPlace) {
    Passes passes;
    for (const ColorTransform& transform : transformsOfAllKinds()) {
        for (std::size_t width = 0; width <= 70; ++width)
            expectAgreement(passes, transform, {width, 3, width % 5, width % 7, width % 9});
        expectAgreement(passes, transform, {1023, 9, 1, 2, 3});
        expectAgreement(passes, transform, {0, 0, 0, 0, 0});
    }
}

TEST(RenderPass, AllVectorsWriteTheBytesOfThePlainPassInPicturesOfAllSizes) {
    // Pictures from 32 MiB on are written past the caches, where their rows' places allow it.
    const Layout layouts[] = {
        {640, 480, 0, 0, 0},   {641, 479, 4, 3, 8},   {8193, 1100, 0, 0, 0},
        {8192, 1100, 0, 4, 0}, {8192, 1100, 3, 2, 0}, {8191, 1100, 0, 0, 20},
    };
    Passes passes;
    for (const Layout& layout : layouts)
        for (const std::size_t kind : {kColor, kMono})
            expectAgreement(passes, transformsOfAllKinds()[kind], layout);
}

} // namespace
} // namespace imaging_tests
