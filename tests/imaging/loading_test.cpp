#include "imaging/loading.h"

#include "tests/imaging/pixels.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace imaging_tests {
namespace {

using imaging::Extent;
using imaging::loadPicture;
using imaging::LoadResult;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// One blue pixel.
const Bytes kBmp = {'B', 'M', 30, 0, 0, 0, 0, 0, 0, 0, 26, 0, 0, 0, 12, 0, 0, 0, 1, 0, 1, 0, 1, 0, 24, 0, 255, 0, 0, 0};

class Loading : public testing::Test {
protected:
    test_support::ScratchFolder folder_;
};

TEST_F(Loading, TheSourceNameIsTheFilesWithoutFolderAndExtension) {
    for (const auto& [file, name] : {std::pair{"Sunset.bmp", "Sunset"}, {"a.b.tiff", "a.b"}, {"None", "None"}}) {
        const LoadResult result = loadPicture(folder_.write(file, kBmp));
        ASSERT_TRUE(result.picture) << result.error;
        EXPECT_EQ(result.picture->sourceName(), name);
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST_F(Loading, TheContentDecidesNotTheExtension) {
    const LoadResult result = loadPicture(folder_.write("picture.tiff", kBmp));
    ASSERT_TRUE(result.picture) << result.error;
    EXPECT_EQ(result.picture->extent(), (Extent{1, 1}));
}

TEST_F(Loading, AMissingFileSaysSo) {
    const LoadResult result = loadPicture(folder_.pathOf("missing.tiff"));
    EXPECT_FALSE(result.picture);
    EXPECT_EQ(result.error, "missing.tiff: No such file or directory");
}

TEST_F(Loading, AFolderIsNoPicture) {
    const std::string path = folder_.pathOf("folder.tiff");
    std::filesystem::create_directory(path);
    EXPECT_EQ(loadPicture(path).error, "folder.tiff: not a file");
}

TEST_F(Loading, APipeIsNoPictureAndIsNotWaitedFor) {
    const std::string path = folder_.pathOf("pipe.tiff");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(loadPicture(path).error, "pipe.tiff: not a file");
}

TEST_F(Loading, OtherContentsAreRefused) {
    for (const Bytes& bytes : {Bytes{}, Bytes{'B'}, Bytes{'I', 'I', '*'}, Bytes{0x89, 'P', 'N', 'G', 13, 10, 26, 10}}) {
        const LoadResult result = loadPicture(folder_.write("other", bytes));
        EXPECT_FALSE(result.picture);
        EXPECT_EQ(result.error, "other: neither a TIFF nor a BMP file");
    }
}

TEST_F(Loading, TheErrorIsOneLineWhateverTheFilesName) {
    const LoadResult result = loadPicture(folder_.pathOf("two\nlines\x1B[31m.tiff"));
    EXPECT_THAT(result.error, AllOf(StartsWith("two?lines?[31m.tiff: "), Each(Ge(' '))));
}

} // namespace
} // namespace imaging_tests
