#include "toolkit/files.h"

#include "tests/support/scratch_folder.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>

using test_support::contentsOf;
using test_support::namesIn;
using test_support::ScratchFolder;
using toolkit::FileDescriptor;
using toolkit::replaceFile;
using toolkit::writeAll;

namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnersOnly = 0600;
constexpr fs::perms kForAll =
    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read | fs::perms::others_read;

} // namespace

TEST(FileDescriptor, ClosesWhatItOwns) {
    int number = -1;
    {
        const FileDescriptor file(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        ASSERT_TRUE(file.isOpen());
        number = file.number();
    }
    EXPECT_EQ(::fcntl(number, F_GETFD), -1);
    EXPECT_FALSE(FileDescriptor(-1).isOpen());
}

TEST(WriteAll, SaysThatADiskIsFull) {
    const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    EXPECT_FALSE(writeAll(full.number(), "text"));
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_TRUE(writeAll(full.number(), ""));
}

TEST(ReplaceFile, PutsTheContentInItsPlaceWithItsPermissions) {
    const ScratchFolder folder;
    const fs::path file = folder.path() / "notes";
    EXPECT_EQ(replaceFile(file, "first", kOwnersOnly), 0);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(replaceFile(file, "second", 0644), 0);
    EXPECT_EQ(contentsOf(file), "second");
    EXPECT_EQ(fs::status(file).permissions(), kForAll);
    EXPECT_EQ(namesIn(folder.path()).size(), 1U);
}

TEST(ReplaceFile, WithoutAPlaceAnswersTheSystemsErrorAndLeavesNothing) {
    const ScratchFolder folder;
    EXPECT_EQ(replaceFile(folder.path() / "missing" / "notes", "text", kOwnersOnly), ENOENT);
    fs::create_directory(folder.path() / "notes");
    EXPECT_EQ(replaceFile(folder.path() / "notes", "text", kOwnersOnly), EISDIR);
    EXPECT_EQ(namesIn(folder.path()).size(), 1U);
}
