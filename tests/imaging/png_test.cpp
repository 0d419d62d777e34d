#include "imaging/png.h"

#include "tests/imaging/pixels.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

namespace imaging_tests {
namespace {

using imaging::Bitmap;
using imaging::writePng;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

class PngWriting : public testing::Test {
protected:
    test_support::ScratchFolder folder_;
    std::string error_;
};

TEST_F(PngWriting, AReaderGetsTheSamePixels) {
    Noise noise;
    const Bitmap bitmap = makeBitmap(37, 11, [&](int, int) { return noise.pixel(); });
    const std::string path = folder_.pathOf("picture.png");
    ASSERT_TRUE(writePng(bitmap, path, error_)) << error_;
    EXPECT_THAT(error_, IsEmpty());

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, path.c_str()), 0);
    EXPECT_EQ(image.format, png_uint_32{PNG_FORMAT_RGBA});
    ASSERT_EQ(image.width, 37U);
    ASSERT_EQ(image.height, 11U);
    Bitmap read(37, 11);
    ASSERT_NE(png_image_finish_read(&image, nullptr, read.row(0), static_cast<int>(read.stride()), nullptr), 0);
    for (int y = 0; y < 11; ++y)
        for (int x = 0; x < 37; ++x)
            ASSERT_EQ(pixelAt(read, x, y), pixelAt(bitmap, x, y));
}

TEST_F(PngWriting, ReplacesAFileThatIsThere) {
    const std::string path = folder_.write("picture.png", Bytes(10000, 'x'));
    ASSERT_TRUE(writePng(Bitmap(1, 1), path, error_)) << error_;
    EXPECT_LT(std::filesystem::file_size(path), 1000U);
}

TEST_F(PngWriting, AnEmptyBitmapIsRefusedAndLeavesNoFile) {
    const std::string path = folder_.pathOf("empty.png");
    EXPECT_FALSE(writePng(Bitmap(), path, error_));
    EXPECT_THAT(error_, EndsWith("empty.png: the picture has no pixels"));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(PngWriting, AMissingFolderIsTheReason) {
    EXPECT_FALSE(writePng(Bitmap(1, 1), folder_.pathOf("missing/picture.png"), error_));
    EXPECT_THAT(error_, HasSubstr("No such file or directory"));
}

TEST_F(PngWriting, AFullDiskIsAnErrorAndADeviceStays) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "this system has no device that is always full";
    EXPECT_FALSE(writePng(Bitmap(100, 100), "/dev/full", error_));
    EXPECT_THAT(error_, HasSubstr("/dev/full: "));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}

} // namespace
} // namespace imaging_tests
