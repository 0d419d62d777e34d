#include "imaging/loading.h"

#include "tests/imaging/pixels.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::Extent;
using imaging::loadPicture;
using imaging::LoadResult;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::StartsWith;

/// A BMP file, put together by its fields.
struct Bmp {
    std::uint32_t headerSize = 40;
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::uint16_t planes = 1;
    std::uint16_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t colorsUsed = 0;
    std::vector<std::uint32_t> masks{}; ///< at byte 40 of the header, or behind a shorter one
    Bytes palette{};
    Bytes pixels{};

    [[nodiscard]] Bytes bytes() const {
        Bytes header;
        const auto put = [&header](std::uint32_t number, int size) {
            for (int i = 0; i < size; ++i)
                header.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
        };
        put(headerSize, 4);
        if (headerSize == 12) {
            put(static_cast<std::uint32_t>(width), 2);
            put(static_cast<std::uint32_t>(height), 2);
            put(planes, 2);
            put(bits, 2);
        } else {
            put(static_cast<std::uint32_t>(width), 4);
            put(static_cast<std::uint32_t>(height), 4);
            put(planes, 2);
            put(bits, 2);
            put(compression, 4);
            for (int unread = 0; unread < 3; ++unread) // size of the pixels, resolution
                put(0, 4);
            put(colorsUsed, 4);
            put(0, 4);
            for (const std::uint32_t mask : masks)
                put(mask, 4);
            if (header.size() < headerSize)
                header.resize(headerSize);
        }
        header.insert(header.end(), palette.begin(), palette.end());
        Bytes file = {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0};
        const auto pixelsAt = static_cast<std::uint32_t>(14 + header.size());
        for (int i = 0; i < 4; ++i)
            file.push_back(static_cast<std::uint8_t>(pixelsAt >> (8 * i)));
        file.insert(file.end(), header.begin(), header.end());
        file.insert(file.end(), pixels.begin(), pixels.end());
        return file;
    }
};

class BmpLoading : public testing::Test {
protected:
    /// The rows of pixels, from the top down.
    std::vector<std::vector<Pixel>> load(const Bmp& bmp) {
        const LoadResult result = loadPicture(folder_.write("picture.bmp", bmp.bytes()));
        EXPECT_TRUE(result.picture) << result.error;
        std::vector<std::vector<Pixel>> rows;
        if (!result.picture)
            return rows;
        Bitmap bitmap;
        result.picture->renderInto(bitmap);
        for (int y = 0; y < bitmap.height(); ++y) {
            auto& row = rows.emplace_back();
            for (int x = 0; x < bitmap.width(); ++x)
                row.push_back(pixelAt(bitmap, x, y));
        }
        return rows;
    }

    std::string errorOf(const Bytes& bytes) {
        const LoadResult result = loadPicture(folder_.write("bad.bmp", bytes));
        EXPECT_FALSE(result.picture);
        return result.error;
    }

    test_support::ScratchFolder folder_;
};

using Rows = std::vector<std::vector<Pixel>>;
constexpr Pixel kBlack = {0, 0, 0, 255};
constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kGreen = {0, 255, 0, 255};
constexpr Pixel kBlue = {0, 0, 255, 255};
const Bytes kBlueGreenRedPalette = {255, 0, 0, 0, 0, 255, 0, 0, 0, 0, 255, 0};

TEST_F(BmpLoading, Reads24BitsFromTheBottomUp) {
    EXPECT_EQ(load({.width = 2, .height = 2, .pixels = {255, 0, 0, 0, 255, 0, 0, 0, 0, 0, 255, 1, 2, 3, 0, 0}}),
              (Rows{{kRed, {3, 2, 1, 255}}, {kBlue, kGreen}}));
}

TEST_F(BmpLoading, ReadsFromTheTopDownWhenTheHeightIsNegative) {
    EXPECT_EQ(load({.width = 1, .height = -2, .pixels = {255, 0, 0, 0, 0, 255, 0, 0}}), (Rows{{kBlue}, {kGreen}}));
}

TEST_F(BmpLoading, Reads1BitFromTheHighestBitOn) {
    const Bytes palette = {255, 0, 0, 0, 0, 0, 255, 0};
    EXPECT_EQ(load({.width = 9, .bits = 1, .palette = palette, .pixels = {0b01000001, 0b10000000, 0, 0}}),
              (Rows{{kBlue, kRed, kBlue, kBlue, kBlue, kBlue, kBlue, kRed, kRed}}));
}

TEST_F(BmpLoading, Reads4Bits) {
    EXPECT_EQ(
        load({.width = 3, .bits = 4, .colorsUsed = 3, .palette = kBlueGreenRedPalette, .pixels = {0x12, 0x00, 0, 0}}),
        (Rows{{kGreen, kRed, kBlue}}));
}

TEST_F(BmpLoading, Reads8BitsAndColorsBeyondThePaletteAreBlack) {
    EXPECT_EQ(load({.width = 4, .bits = 8, .colorsUsed = 3, .palette = kBlueGreenRedPalette, .pixels = {2, 1, 0, 3}}),
              (Rows{{kRed, kGreen, kBlue, kBlack}}));
}

TEST_F(BmpLoading, APaletteThatSaysItIsLongerThanItsPlaceEndsWithIt) {
    EXPECT_EQ(load({.width = 4,
                    .bits = 8,
                    .colorsUsed = 0xFFFFFFFF,
                    .palette = kBlueGreenRedPalette,
                    .pixels = {2, 1, 0, 255}}),
              (Rows{{kRed, kGreen, kBlue, kBlack}}));
}

TEST_F(BmpLoading, ReadsTheOldestHeaderWithItsShorterPalette) {
    EXPECT_EQ(
        load({.headerSize = 12, .width = 2, .bits = 8, .palette = {255, 0, 0, 0, 255, 0}, .pixels = {1, 0, 0, 0}}),
        (Rows{{kGreen, kBlue}}));
}

TEST_F(BmpLoading, Reads16BitsAsFiveFiveFive) {
    EXPECT_EQ(load({.width = 3, .bits = 16, .pixels = {0x00, 0x7C, 0xE0, 0x03, 0x10, 0x80, 0, 0}}),
              (Rows{{kRed, kGreen, {0, 0, 132, 255}}}));
}

TEST_F(BmpLoading, Reads16BitFields) {
    EXPECT_EQ(load({.width = 2,
                    .bits = 16,
                    .compression = 3,
                    .masks = {0xF800, 0x07E0, 0x001F},
                    .pixels = {0xE0, 0x07, 0x20, 0x84}}),
              (Rows{{kGreen, {132, 134, 0, 255}}}));
}

TEST_F(BmpLoading, Reads32BitsWithoutTheirUnusedByte) {
    EXPECT_EQ(load({.bits = 32, .pixels = {1, 2, 3, 0}}), (Rows{{{3, 2, 1, 255}}}));
}

TEST_F(BmpLoading, Reads32BitFieldsWithAlphaWhereverTheMasksAre) {
    const std::vector<std::uint32_t> masks = {0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000};
    for (const std::uint32_t headerSize : {56U, 108U, 124U})
        EXPECT_EQ(
            load({.headerSize = headerSize, .bits = 32, .compression = 3, .masks = masks, .pixels = {1, 2, 3, 4}}),
            (Rows{{{1, 2, 3, 4}}}));
    EXPECT_EQ(load({.bits = 32, .compression = 6, .masks = masks, .pixels = {1, 2, 3, 4}}), (Rows{{{1, 2, 3, 4}}}));
}

TEST_F(BmpLoading, FieldsOfMoreThan8BitsKeepTheHighestAndAFieldWithoutBitsIsBlack) {
    EXPECT_EQ(
        load({.bits = 32, .compression = 3, .masks = {0x3FF00000, 0x000FFC00, 0}, .pixels = {0x00, 0x00, 0xF8, 0x3F}}),
        (Rows{{{255, 128, 0, 255}}}));
}

TEST_F(BmpLoading, ReadsAPictureOfManyBands) {
    constexpr int kWidth = 1000;
    constexpr int kHeight = 301;
    Bmp bmp{.width = kWidth, .height = kHeight, .bits = 32};
    for (int y = kHeight - 1; y >= 0; --y)
        for (int x = 0; x < kWidth; ++x)
            bmp.pixels.insert(bmp.pixels.end(), {std::uint8_t(x), std::uint8_t(y), std::uint8_t(x / 256 + y / 256), 0});
    const Rows rows = load(bmp);
    ASSERT_EQ(rows.size(), std::size_t{kHeight});
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (std::size_t x = 0; x < rows[y].size(); ++x)
            ASSERT_EQ(rows[y][x], (Pixel{std::uint8_t(x / 256 + y / 256), std::uint8_t(y), std::uint8_t(x), 255}));
}

TEST_F(BmpLoading, BrokenHeadersAreRefusedWithTheReason) {
    const Bytes pixel = {0, 0, 0, 0};
    EXPECT_EQ(errorOf(Bmp{.width = 0, .pixels = pixel}.bytes()), "bad.bmp: the picture has no pixels");
    EXPECT_EQ(errorOf(Bmp{.width = -1, .pixels = pixel}.bytes()), "bad.bmp: the picture has no pixels");
    EXPECT_EQ(errorOf(Bmp{.height = 0, .pixels = pixel}.bytes()), "bad.bmp: the picture has no pixels");
    EXPECT_EQ(errorOf(Bmp{.planes = 2, .pixels = pixel}.bytes()), "bad.bmp: the picture has an unknown depth");
    EXPECT_EQ(errorOf(Bmp{.bits = 7, .pixels = pixel}.bytes()), "bad.bmp: the picture has an unknown depth");
    EXPECT_EQ(errorOf(Bmp{.bits = 8, .compression = 1, .pixels = pixel}.bytes()), "bad.bmp: the picture is compressed");
    EXPECT_EQ(errorOf(Bmp{.bits = 24, .compression = 3, .masks = {1, 2, 4}, .pixels = pixel}.bytes()),
              "bad.bmp: the picture is compressed");
    EXPECT_EQ(errorOf(Bmp{.bits = 32, .compression = 3, .masks = {5, 2, 8}, .pixels = pixel}.bytes()),
              "bad.bmp: the picture has broken bit fields");
    EXPECT_EQ(errorOf(Bmp{.headerSize = 41, .pixels = pixel}.bytes()),
              "bad.bmp: the header is cut off or of an unknown kind");
}

TEST_F(BmpLoading, MoreThan64MegapixelsAreRefused) {
    for (const auto& [width, height] : {std::pair{8001, 8000}, {0x7FFFFFFF, 0x7FFFFFFF}, {0x7FFFFFFF, INT32_MIN}})
        EXPECT_EQ(errorOf(Bmp{.width = width, .height = height}.bytes()),
                  "bad.bmp: the picture is larger than 64 megapixels");
}

TEST_F(BmpLoading, ASizeThatTheFileCannotHoldIsRefusedBeforeMemoryIsTaken) {
    EXPECT_EQ(errorOf(Bmp{.width = 8000, .height = 8000, .pixels = Bytes(1000)}.bytes()),
              "bad.bmp: the file is cut off");
}

TEST_F(BmpLoading, PixelsThatBeginInTheHeaderAreRefused) {
    Bytes bytes = Bmp{.pixels = Bytes(100)}.bytes();
    bytes[10] = 20;
    EXPECT_EQ(errorOf(bytes), "bad.bmp: the file is cut off");
}

TEST_F(BmpLoading, AFileCutOffAnywhereGivesNoPictureAndOneLine) {
    const Bytes whole =
        Bmp{.width = 4, .height = 2, .bits = 8, .palette = kBlueGreenRedPalette, .pixels = Bytes(8)}.bytes();
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_THAT(errorOf(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size))),
                    AllOf(StartsWith("bad.bmp: "), Each(Ge(' '))));
}

TEST_F(BmpLoading, DamagedHeadersNeverGiveAPictureAndAnErrorAtOnce) {
    Noise noise;
    const Bytes whole = Bmp{.headerSize = 56,
                            .width = 5,
                            .height = 5,
                            .bits = 32,
                            .compression = 3,
                            .masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000},
                            .pixels = Bytes(100)}
                            .bytes();
    for (int round = 0; round < 1000; ++round) {
        Bytes damaged = whole;
        for (int change = 0; change < 3; ++change)
            damaged[2 + noise.byte() % 68U] = noise.byte();
        const LoadResult result = loadPicture(folder_.write("damaged.bmp", damaged));
        EXPECT_EQ(result.picture.has_value(), result.error.empty()) << result.error;
    }
}

} // namespace
} // namespace imaging_tests
