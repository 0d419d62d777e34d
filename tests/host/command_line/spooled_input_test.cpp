#include "host/command_line/spooled_input.h"
#include "tests/host/jobs/plain_user.h"
#include "tests/support/scratch_folder.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace host {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(SpooledInputFile, IsReadAnyNumberOfTimesAndHasNoName) {
    const test_support::ScratchFolder folder;
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ASSERT_EQ(::write(pipe[1], "a page", 6), 6);
    ::close(pipe[1]);
    ::setenv("TMPDIR", folder.path().c_str(), 1);
    SpooledInput input;
    EXPECT_EQ(input.readFrom(pipe[0], "Standard input"), "");
    ::unsetenv("TMPDIR");
    ::close(pipe[0]);
    EXPECT_EQ(test_support::contentsOf(input.path()), "a page");
    EXPECT_EQ(test_support::contentsOf(input.path()), "a page");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(SpooledInputFile, ThatFindsNoRoomSaysWhereAndWhatToDo) {
    const test_support::ScratchFolder folder;
    const std::string document = folder.write("document", "more than there is room for");
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    const std::string error = test_support::asPlainUser([&] {
        constexpr rlimit kRoom{4, 4};
        std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &kRoom);
        ::setenv("TMPDIR", folder.path().c_str(), 1);
        SpooledInput input;
        return input.readPipe(document);
    });
    EXPECT_THAT(error, AllOf(HasSubstr("\"" + document + "\" cannot be kept"), HasSubstr(folder.path().string()),
                             HasSubstr("TMPDIR")));
}

TEST(SpooledInputFile, ThatCannotBeMadeSaysWhereAndWhatToDo) {
    const test_support::ScratchFolder folder;
    const std::string document = folder.write("document", "a page");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    const std::string error = test_support::asPlainUser([&] {
        ::setenv("TMPDIR", folder.path().c_str(), 1);
        SpooledInput input;
        return input.readPipe(document);
    });
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
    EXPECT_THAT(error, AllOf(HasSubstr(folder.path().string()), HasSubstr("Permission denied"), HasSubstr("TMPDIR")));
}

} // namespace
} // namespace host
