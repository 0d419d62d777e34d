#include "imaging/bitmap.h"

#include "tests/imaging/pixels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::Extent;
using testing::ElementsAre;

TEST(Bitmap, BeginsEmpty) {
    const Bitmap bitmap;
    EXPECT_TRUE(bitmap.isEmpty());
    EXPECT_EQ(bitmap.extent(), (Extent{0, 0}));
}

TEST(Bitmap, NewPixelsAreTransparentBlack) {
    const Bitmap bitmap(3, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(pixelAt(bitmap, x, y), (Pixel{0, 0, 0, 0}));
}

TEST(Bitmap, RowsBeginAlignedAndHoldTheWidth) {
    for (const int width : {1, 15, 16, 17, 640}) {
        SCOPED_TRACE(width);
        const Bitmap bitmap(width, 3);
        EXPECT_GE(bitmap.stride(), static_cast<std::size_t>(width) * 4);
        for (int y = 0; y < 3; ++y)
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bitmap.row(y)) % Bitmap::kRowAlignment, 0U);
    }
}

TEST(Bitmap, ShrinkingAndGrowingBackKeepsTheMemory) {
    Bitmap bitmap(100, 50);
    const std::uint8_t* const memory = bitmap.row(0);
    bitmap.resize(20, 10);
    EXPECT_EQ(bitmap.row(0), memory);
    bitmap.resize(0, 0);
    bitmap.resize(100, 50);
    EXPECT_EQ(bitmap.row(0), memory);
    EXPECT_EQ(bitmap.extent(), (Extent{100, 50}));
}

TEST(Bitmap, ASideThatIsNotPositiveMakesItEmpty) {
    for (const Extent extent : {Extent{0, 5}, Extent{5, 0}, Extent{-1, 5}, Extent{5, -1}}) {
        Bitmap bitmap(2, 2);
        bitmap.resize(extent.width, extent.height);
        EXPECT_TRUE(bitmap.isEmpty());
        EXPECT_EQ(bitmap.width(), 0);
        EXPECT_EQ(bitmap.height(), 0);
    }
}

TEST(Bitmap, ACopyHasItsOwnPixels) {
    Bitmap original = makeBitmap(5, 4, [](int x, int y) { return Pixel{Pixel::value_type(x), Pixel::value_type(y)}; });
    const Bitmap copy = original;
    Bitmap assigned(1, 1);
    assigned = original;
    setPixel(original, 4, 3, {9, 9, 9, 9});
    EXPECT_EQ(pixelAt(copy, 4, 3), (Pixel{4, 3, 0, 0}));
    EXPECT_EQ(pixelAt(assigned, 4, 3), (Pixel{4, 3, 0, 0}));
}

TEST(Bitmap, MovingLeavesAnEmptyBitmapThatCanBeUsed) {
    Bitmap original(5, 4);
    const std::uint8_t* const memory = original.row(0);
    Bitmap moved = std::move(original);
    EXPECT_EQ(moved.row(0), memory);
    EXPECT_TRUE(original.isEmpty()); // NOLINT(bugprone-use-after-move): the state after a move is promised
    original.resize(5, 4);
    EXPECT_NE(original.row(0), memory);

    Bitmap assigned(1, 1);
    assigned = std::move(moved);
    EXPECT_EQ(assigned.extent(), (Extent{5, 4}));
    EXPECT_EQ(assigned.row(0), memory);
}

TEST(MeanColor, OfAnEmptyBitmapIsZero) {
    EXPECT_THAT(meanColor(Bitmap()), ElementsAre(0, 0, 0));
}

TEST(MeanColor, IsTheMeanOfEachChannelWhateverTheAlpha) {
    Bitmap bitmap(3, 1);
    setPixel(bitmap, 0, 0, {255, 0, 30, 255});
    setPixel(bitmap, 1, 0, {255, 255, 60, 0});
    setPixel(bitmap, 2, 0, {0, 0, 90, 7});
    const auto mean = meanColor(bitmap);
    EXPECT_DOUBLE_EQ(mean[0], 2.0 / 3);
    EXPECT_DOUBLE_EQ(mean[1], 1.0 / 3);
    EXPECT_DOUBLE_EQ(mean[2], 60.0 / 255);
}

} // namespace
} // namespace imaging_tests
