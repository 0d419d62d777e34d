#include "imaging/loading.h"

#include "tests/imaging/pixels.h"
#include "tests/support/scratch_folder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <tiffio.h>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::Extent;
using imaging::loadPicture;
using imaging::LoadResult;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

/// How a test's file is laid out.
struct Format {
    std::uint16_t bits = 8;
    std::uint16_t samples = 3;
    std::uint16_t photometric = PHOTOMETRIC_RGB;
    std::uint16_t compression = COMPRESSION_NONE;
    std::uint16_t planar = PLANARCONFIG_CONTIG;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    std::uint16_t extraSample = EXTRASAMPLE_UNASSALPHA; ///< what the last of 2 or 4 samples is
    std::uint32_t rowsPerStrip = 3;
    std::uint32_t tile = 0; ///< side of a tile; 0: strips
    const char* mode = "w"; ///< "wb", "wl": byte order, "w8": 64-bit offsets
};

constexpr std::uint32_t kWidth = 21;
constexpr std::uint32_t kHeight = 10;

/// A file's sample, 0 to 255, of which 16-bit files hold 257 times the value.
std::uint8_t sampleAt(std::uint32_t x, std::uint32_t y, std::uint32_t sample) {
    return static_cast<std::uint8_t>(x * 11 + y * 7 + sample * 60);
}

void putSample(Bytes& bytes, const Format& format, std::uint8_t sample) {
    bytes.push_back(sample);
    if (format.bits == 16)
        bytes.push_back(sample);
}

/// The samples of a rectangle, of all planes or of one; beyond the picture they are 0.
Bytes samplesIn(const Format& format, std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height,
                std::uint32_t firstSample, std::uint32_t samples) {
    Bytes bytes;
    for (std::uint32_t y = top; y < top + height; ++y)
        for (std::uint32_t x = left; x < left + width; ++x)
            for (std::uint32_t sample = firstSample; sample < firstSample + samples; ++sample)
                putSample(bytes, format, x < kWidth && y < kHeight ? sampleAt(x, y, sample) : std::uint8_t{0});
    return bytes;
}

void setFields(TIFF* tiff, const Format& format) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, format.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, format.samples);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, format.photometric);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, format.compression);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, format.planar);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, format.orientation);
    if (format.samples == 2 || format.samples == 4)
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &format.extraSample);
    if (format.tile != 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, format.tile);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, format.tile);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, format.rowsPerStrip);
    }
    if (format.photometric == PHOTOMETRIC_PALETTE) {
        std::array<std::uint16_t, 256> red{}, green{}, blue{};
        for (std::size_t i = 0; i < 256; ++i) { // the palette turns the sample round, halves it, and blackens it
            red[i] = static_cast<std::uint16_t>(257 * (255 - i));
            green[i] = static_cast<std::uint16_t>(257 * (i / 2));
        }
        TIFFSetField(tiff, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data());
    }
}

void writeSamples(TIFF* tiff, const Format& format) {
    const bool isPlanar = format.planar == PLANARCONFIG_SEPARATE;
    const std::uint32_t planes = isPlanar ? format.samples : 1;
    const std::uint32_t samples = isPlanar ? 1 : format.samples;
    for (std::uint32_t plane = 0; plane < planes; ++plane) {
        if (format.tile == 0) {
            for (std::uint32_t y = 0; y < kHeight; y += format.rowsPerStrip) {
                Bytes strip =
                    samplesIn(format, 0, y, kWidth, std::min(format.rowsPerStrip, kHeight - y), plane, samples);
                ASSERT_GE(TIFFWriteEncodedStrip(tiff, TIFFComputeStrip(tiff, y, static_cast<std::uint16_t>(plane)),
                                                strip.data(), static_cast<tmsize_t>(strip.size())),
                          0);
            }
            continue;
        }
        for (std::uint32_t y = 0; y < kHeight; y += format.tile)
            for (std::uint32_t x = 0; x < kWidth; x += format.tile) {
                Bytes tile = samplesIn(format, x, y, format.tile, format.tile, plane, samples);
                ASSERT_GE(TIFFWriteEncodedTile(tiff, TIFFComputeTile(tiff, x, y, 0, static_cast<std::uint16_t>(plane)),
                                               tile.data(), static_cast<tmsize_t>(tile.size())),
                          0);
            }
    }
}

/// The pixel that a file of the format means at a place of the file.
Pixel meantPixel(const Format& format, std::uint32_t x, std::uint32_t y) {
    const auto sample = [&](std::uint32_t index) { return sampleAt(x, y, index); };
    switch (format.photometric) {
    case PHOTOMETRIC_MINISBLACK:
        return {sample(0), sample(0), sample(0), format.samples == 2 ? sample(1) : std::uint8_t{255}};
    case PHOTOMETRIC_MINISWHITE: {
        const auto grey = static_cast<std::uint8_t>(255 - sample(0));
        return {grey, grey, grey, 255};
    }
    case PHOTOMETRIC_PALETTE:
        return {static_cast<std::uint8_t>(255 - sample(0)), static_cast<std::uint8_t>(sample(0) / 2), 0, 255};
    default:
        return {sample(0), sample(1), sample(2), format.samples == 4 ? sample(3) : std::uint8_t{255}};
    }
}

class TiffLoading : public testing::Test {
protected:
    std::string write(const Format& format) {
        const std::string path = folder_.pathOf("picture.tiff");
        const Tiff tiff(TIFFOpen(path.c_str(), format.mode));
        setFields(tiff.get(), format);
        writeSamples(tiff.get(), format);
        return path;
    }

    static Bitmap load(const std::string& path) {
        const LoadResult result = loadPicture(path);
        EXPECT_TRUE(result.picture) << result.error;
        Bitmap bitmap;
        if (result.picture)
            result.picture->renderInto(bitmap);
        return bitmap;
    }

    void expectPixels(const Format& format) {
        const Bitmap bitmap = load(write(format));
        ASSERT_EQ(bitmap.extent(), (Extent{kWidth, kHeight}));
        for (std::uint32_t y = 0; y < kHeight; ++y)
            for (std::uint32_t x = 0; x < kWidth; ++x)
                ASSERT_EQ(pixelAt(bitmap, int(x), int(y)), meantPixel(format, x, y)) << x << ", " << y;
    }

    /// Loads what is expected to be refused, and checks that nothing is printed.
    LoadResult refuse(const Bytes& bytes) {
        const std::string path = folder_.write("bad.tiff", bytes);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        LoadResult result = loadPicture(path);
        EXPECT_THAT(testing::internal::GetCapturedStdout(), IsEmpty());
        EXPECT_THAT(testing::internal::GetCapturedStderr(), IsEmpty());
        return result;
    }

    test_support::ScratchFolder folder_;
};

TEST_F(TiffLoading, ReadsColorGreyAndPaletteOf8And16BitsInStripsAndTiles) {
    struct Kind {
        const char* name;
        std::uint16_t bits, samples, photometric;
    };
    const Kind kinds[] = {
        {"RGB", 8, 3, PHOTOMETRIC_RGB},
        {"RGBA", 8, 4, PHOTOMETRIC_RGB},
        {"grey", 8, 1, PHOTOMETRIC_MINISBLACK},
        {"grey and alpha", 8, 2, PHOTOMETRIC_MINISBLACK},
        {"grey from white", 8, 1, PHOTOMETRIC_MINISWHITE},
        {"palette", 8, 1, PHOTOMETRIC_PALETTE},
        {"RGB of 16 bits", 16, 3, PHOTOMETRIC_RGB},
        {"RGBA of 16 bits", 16, 4, PHOTOMETRIC_RGB},
        {"grey of 16 bits", 16, 1, PHOTOMETRIC_MINISBLACK},
    };
    for (const Kind& kind : kinds)
        for (const std::uint32_t tile : {0, 16}) {
            SCOPED_TRACE(std::string(kind.name) + (tile != 0 ? ", tiles" : ", strips"));
            expectPixels({.bits = kind.bits, .samples = kind.samples, .photometric = kind.photometric, .tile = tile});
        }
}

TEST_F(TiffLoading, ReadsSeparatePlanes) {
    for (const std::uint16_t bits : {8, 16})
        for (const std::uint16_t samples : {3, 4})
            for (const std::uint32_t tile : {0, 16}) {
                SCOPED_TRACE(testing::Message() << bits << " bits, " << samples << " samples, tile " << tile);
                expectPixels({.bits = bits, .samples = samples, .planar = PLANARCONFIG_SEPARATE, .tile = tile});
            }
}

TEST_F(TiffLoading, ReadsTheCommonCompressions) {
    for (const std::uint16_t compression :
         {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_PACKBITS, COMPRESSION_ADOBE_DEFLATE})
        for (const std::uint16_t bits : {8, 16}) {
            SCOPED_TRACE(testing::Message() << "compression " << compression << ", " << bits << " bits");
            expectPixels({.bits = bits, .compression = compression});
            expectPixels({.bits = bits, .compression = compression, .tile = 16});
        }
}

TEST_F(TiffLoading, ReadsJpegNearly) {
    const std::string path = folder_.pathOf("jpeg.tiff");
    {
        const Tiff tiff(TIFFOpen(path.c_str(), "w"));
        setFields(tiff.get(), {.photometric = PHOTOMETRIC_YCBCR, .compression = COMPRESSION_JPEG, .rowsPerStrip = 16});
        TIFFSetField(tiff.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        Bytes strip;
        for (std::uint32_t i = 0; i < kWidth * kHeight; ++i)
            strip.insert(strip.end(), {200, 100, 50});
        ASSERT_GE(TIFFWriteEncodedStrip(tiff.get(), 0, strip.data(), static_cast<tmsize_t>(strip.size())), 0);
    }
    const Bitmap bitmap = load(path);
    ASSERT_EQ(bitmap.extent(), (Extent{kWidth, kHeight}));
    const Pixel pixel = pixelAt(bitmap, 10, 5);
    EXPECT_NEAR(pixel[0], 200, 3); // JPEG rounds colours
    EXPECT_NEAR(pixel[1], 100, 3);
    EXPECT_NEAR(pixel[2], 50, 3);
    EXPECT_EQ(pixel[3], 255);
}

TEST_F(TiffLoading, ReadsBothByteOrdersAndLargeOffsets) {
    for (const char* mode : {"wl", "wb", "wl8", "wb8"}) {
        SCOPED_TRACE(mode);
        expectPixels({.bits = 16, .mode = mode});
    }
}

TEST_F(TiffLoading, ReadsOneStripForAllRowsAndOnePerRow) {
    expectPixels({.rowsPerStrip = 1});
    expectPixels({.rowsPerStrip = 1000});
}

TEST_F(TiffLoading, TurnsEveryOrientationUpright) {
    struct Turn {
        std::uint16_t orientation;
        bool isTurned, fromRight, fromBottom; ///< rows become columns; which corner the file's first pixel is
    };
    const Turn turns[] = {
        {ORIENTATION_TOPLEFT, false, false, false}, {ORIENTATION_TOPRIGHT, false, true, false},
        {ORIENTATION_BOTRIGHT, false, true, true},  {ORIENTATION_BOTLEFT, false, false, true},
        {ORIENTATION_LEFTTOP, true, false, false},  {ORIENTATION_RIGHTTOP, true, true, false},
        {ORIENTATION_RIGHTBOT, true, true, true},   {ORIENTATION_LEFTBOT, true, false, true},
    };
    for (const Turn& turn : turns)
        for (const std::uint32_t tile : {0, 16}) {
            SCOPED_TRACE(testing::Message() << "orientation " << turn.orientation << ", tile " << tile);
            const Format format{.orientation = turn.orientation, .tile = tile};
            const Bitmap bitmap = load(write(format));
            const Extent extent = turn.isTurned ? Extent{kHeight, kWidth} : Extent{kWidth, kHeight};
            ASSERT_EQ(bitmap.extent(), extent);
            for (std::uint32_t y = 0; y < kHeight; ++y)
                for (std::uint32_t x = 0; x < kWidth; ++x) {
                    const int along = int(turn.isTurned ? y : x);
                    const int down = int(turn.isTurned ? x : y);
                    ASSERT_EQ(pixelAt(bitmap, turn.fromRight ? extent.width - 1 - along : along,
                                      turn.fromBottom ? extent.height - 1 - down : down),
                              meantPixel(format, x, y))
                        << x << ", " << y;
                }
        }
}

TEST_F(TiffLoading, ColorsMultipliedByTheirAlphaAreDividedByIt) {
    const std::string path = folder_.pathOf("multiplied.tiff");
    {
        const Tiff tiff(TIFFOpen(path.c_str(), "w"));
        setFields(tiff.get(), {.samples = 4, .extraSample = EXTRASAMPLE_ASSOCALPHA, .rowsPerStrip = kHeight});
        Bytes strip(std::size_t{kWidth} * kHeight * 4);
        const Bytes pixels = {100, 50, 0, 100, 10, 20, 30, 255, 0, 0, 0, 0, 9, 9, 9, 0};
        std::ranges::copy(pixels, strip.begin());
        ASSERT_GE(TIFFWriteEncodedStrip(tiff.get(), 0, strip.data(), static_cast<tmsize_t>(strip.size())), 0);
    }
    const Bitmap bitmap = load(path);
    EXPECT_EQ(pixelAt(bitmap, 0, 0), (Pixel{255, 128, 0, 100}));
    EXPECT_EQ(pixelAt(bitmap, 1, 0), (Pixel{10, 20, 30, 255}));
    EXPECT_EQ(pixelAt(bitmap, 2, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(bitmap, 3, 0), (Pixel{0, 0, 0, 0}));
}

// Files that are not to be trusted.

/// A field of the first directory of a little-endian file.
std::size_t fieldAt(const Bytes& bytes, std::uint16_t tag) {
    const auto number = [&](std::size_t at, std::size_t size) {
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value |= std::size_t{bytes[at + i]} << (8 * i);
        return value;
    };
    const std::size_t directory = number(4, 4);
    for (std::size_t i = 0; i < number(directory, 2); ++i)
        if (number(directory + 2 + 12 * i, 2) == tag)
            return directory + 2 + 12 * i;
    ADD_FAILURE() << "no tag " << tag;
    return 0;
}

/// Makes the field a 32-bit number.
void setFieldTo(Bytes& bytes, std::uint16_t tag, std::uint32_t value) {
    const std::size_t at = fieldAt(bytes, tag);
    bytes[at + 2] = TIFF_LONG;
    bytes[at + 3] = 0;
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + 8 + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

TEST_F(TiffLoading, MoreThan64MegapixelsAreRefused) {
    Bytes bytes = test_support::contentsOf<Bytes>(write({.mode = "wl"}));
    for (const auto& [width, height] : {std::pair{8001U, 8000U}, {0xFFFFFFFFU, 0xFFFFFFFFU}, {65536U, 65536U}}) {
        setFieldTo(bytes, TIFFTAG_IMAGEWIDTH, width);
        setFieldTo(bytes, TIFFTAG_IMAGELENGTH, height);
        const LoadResult result = refuse(bytes);
        EXPECT_FALSE(result.picture);
        EXPECT_THAT(result.error, StartsWith("bad.tiff: "));
    }
    setFieldTo(bytes, TIFFTAG_IMAGEWIDTH, 64'000'001);
    setFieldTo(bytes, TIFFTAG_IMAGELENGTH, 1);
    EXPECT_EQ(refuse(bytes).error, "bad.tiff: the picture is larger than 64 megapixels");
}

TEST_F(TiffLoading, APictureWithoutPixelsIsRefused) {
    Bytes bytes = test_support::contentsOf<Bytes>(write({.mode = "wl"}));
    setFieldTo(bytes, TIFFTAG_IMAGEWIDTH, 0);
    EXPECT_FALSE(refuse(bytes).picture);
}

TEST_F(TiffLoading, TilesOutOfProportionAreRefused) {
    Bytes bytes = test_support::contentsOf<Bytes>(write({.tile = 16, .mode = "wl"}));
    setFieldTo(bytes, TIFFTAG_TILEWIDTH, 16384);
    setFieldTo(bytes, TIFFTAG_TILELENGTH, 16384);
    EXPECT_EQ(refuse(bytes).error, "bad.tiff: the picture's tiles do not fit its size");
}

TEST_F(TiffLoading, TooManySamplesPerPixelAreRefused) {
    Bytes bytes = test_support::contentsOf<Bytes>(write({.mode = "wl"}));
    setFieldTo(bytes, TIFFTAG_SAMPLESPERPIXEL, 60000);
    EXPECT_FALSE(refuse(bytes).picture);
}

TEST_F(TiffLoading, KindsThatCannotBecomeRgbAreRefusedWithTheReason) {
    Bytes bytes = test_support::contentsOf<Bytes>(write({.mode = "wl"}));
    setFieldTo(bytes, TIFFTAG_PHOTOMETRIC, 12345);
    const LoadResult result = refuse(bytes);
    EXPECT_FALSE(result.picture);
    EXPECT_THAT(result.error, HasSubstr("12345"));
}

TEST_F(TiffLoading, AFileCutOffAnywhereGivesNoPictureAndOneLine) {
    for (const std::uint16_t compression : {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE}) {
        const Bytes whole = test_support::contentsOf<Bytes>(write({.compression = compression}));
        for (std::size_t size = 0; size < whole.size(); size += 7) {
            SCOPED_TRACE(testing::Message() << "compression " << compression << ", " << size << " bytes");
            const LoadResult result = refuse(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)));
            EXPECT_FALSE(result.picture);
            EXPECT_THAT(result.error, AllOf(StartsWith("bad.tiff: "), Each(Ge(' '))));
        }
    }
}

TEST_F(TiffLoading, DamagedBytesNeverPrintAndNeverGiveAPictureAndAnErrorAtOnce) {
    Noise noise;
    for (const std::uint32_t tile : {0, 16})
        for (const std::uint16_t compression : {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE}) {
            const Bytes whole = test_support::contentsOf<Bytes>(write({.compression = compression, .tile = tile}));
            for (int round = 0; round < 100; ++round) {
                Bytes damaged = whole;
                for (int change = 0; change < 3; ++change) {
                    const std::size_t at = std::size_t{noise.byte()} << 8 | noise.byte();
                    damaged[at % damaged.size()] = noise.byte();
                }
                const LoadResult result = refuse(damaged);
                EXPECT_EQ(result.picture.has_value(), result.error.empty()) << result.error;
            }
        }
}

} // namespace
} // namespace imaging_tests
