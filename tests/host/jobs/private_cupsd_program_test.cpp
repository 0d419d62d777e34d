#include "tests/support/scratch_folder.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kProgram = PRIVATE_CUPSD_PROGRAM;
const std::string kPpd = CV_SOURCE_DIR "/tests/support/recording.ppd";

/// Runs it with a shell script as its command; the exit status.
int runBeside(const test_support::ScratchFolder& folder, const std::string& script) {
    const std::string file = folder.write("script", script);
    const std::string output = folder.path() / "output";
    const int status = std::system( // paths of our own, without quotes or blanks
        (kProgram + " --ppd '" + kPpd + "' --queue Session -- sh " + file + " >" + output + " 2>" + output + ".errors")
            .c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(PrivateCupsdProgram, TheCommandFindsTheServerAndItsQueue) {
    const test_support::ScratchFolder folder;
    const int status = runBeside(folder, "test -S \"$PRIVATE_CUPSD_SOCKET\" || exit 1\n"
                                         "test -d \"$PRIVATE_CUPSD_RECORDS\" || exit 2\n"
                                         "lpstat -h \"$PRIVATE_CUPSD_ADDRESS\" -a \"$PRIVATE_CUPSD_QUEUE\" || exit 3\n"
                                         "echo \"$PRIVATE_CUPSD_RECORDS\" >&2\n"
                                         "lpstat -a\n");
    EXPECT_EQ(status, 0) << test_support::contentsOf(folder.path() / "output.errors");
    EXPECT_THAT(test_support::contentsOf(folder.path() / "output"), StartsWith("Session accepting requests"));
    EXPECT_THAT(test_support::contentsOf(folder.path() / "output.errors"), HasSubstr("PRIVATE_CUPSD_RECORDS=/"));
}

TEST(PrivateCupsdProgram, TheExitStatusIsTheCommandsAndTheServerIsGone) {
    const test_support::ScratchFolder folder;
    EXPECT_EQ(runBeside(folder, "echo \"$PRIVATE_CUPSD_SOCKET\"\nexit 37\n"), 37);
    std::string socket = test_support::contentsOf(folder.path() / "output");
    socket.pop_back();
    EXPECT_THAT(socket, StartsWith("/"));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(socket).parent_path()));
}

} // namespace
