#include "host/command_line/command_line.h"
#include "tests/host/command_line/print_command.h"

#include <fstream>

namespace host {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// The program as it is installed, with or without its window module.
class DialogStart : public PrintCommandTest {
protected:
    void installWindow(const fs::path& module = WINDOW_MODULE) const { fs::copy(module, windowModule()); }
    test_support::ProgramResult open(std::vector<std::string> arguments, const std::string& input = "") const {
        arguments.insert(arguments.begin(), "corvane-print");
        return test_support::runProgram(
            {.program = program_, .arguments = std::move(arguments), .environment = environment_, .input = input});
    }

private:
    const fs::path program_ = installProgram();
};

TEST_F(DialogStart, WithoutADisplayOneLineNamesWhatToDo) {
    installWindow();
    const auto result = open({"page.pdf"});
    EXPECT_EQ(result.status, kExitNoDialog);
    EXPECT_THAT(linesOf(result.errors),
                ElementsAre(AllOf(HasSubstr("--no-dialog"), HasSubstr("corvane-panel-session"))));
}

TEST_F(DialogStart, WithoutItsOwnModuleOneLineSaysSo) {
    fs::remove(commandModule());
    const auto result = open({"--version"});
    EXPECT_EQ(result.status, kExitNotPrinted);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(linesOf(result.errors), ElementsAre(AllOf(HasSubstr("corvane-print: "), HasSubstr("cannot be loaded"),
                                                          HasSubstr("libcv_print_command.so"), HasSubstr("Install"))));
}

TEST_F(DialogStart, WithoutTheWindowModuleOneLineNamesWhatToInstall) {
    environment_["DISPLAY"] = ":99";
    const auto result = open({"page.pdf"});
    EXPECT_EQ(result.status, kExitNoDialog);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(AllOf(HasSubstr("install"), HasSubstr("libcv_window.so"))));
}

TEST_F(DialogStart, AModuleThatIsNoneIsRefused) {
    environment_["DISPLAY"] = ":99";
    installWindow(folder_.write("junk.so", "junk"));
    const auto result = open({"page.pdf"});
    EXPECT_EQ(result.status, kExitNoDialog);
    EXPECT_THAT(result.errors, HasSubstr("cannot be loaded"));
}

TEST_F(DialogStart, TheModuleIsGivenWhatTheCommandLineSays) {
    environment_["WAYLAND_DISPLAY"] = "wayland-9";
    installWindow();
    const std::string one = folder_.write("one", "1"), two = folder_.write("two", "2");
    const auto result = open({"-d",       "Office/photo",
                              "-h",       "server",
                              "-t",       "A title",
                              "-n",       "2",
                              "-q",       "9",
                              "-H",       "night",
                              "-o",       "CVMediaType=Glossy",
                              "-P",       "1-2",
                              "--ppd",    "x.ppd",
                              "--to",     "out",
                              "--bundle", "b.plugin",
                              one,        two});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(linesOf(result.output),
                ElementsAre("document: " + one, "document: " + two, "title: A title", "printer: Office/photo",
                            "server: server", "ppd: x.ppd", "folder: out", "choice: CVMediaType=Glossy",
                            "choice: page-ranges=1-2", "preset: ", "copies: 2", "priority: 9", "hold: night",
                            "bundle: b.plugin"));
}

TEST_F(DialogStart, AFileThatIsNotThereIsToldBeforeAServerThatIsNot) {
    environment_["DISPLAY"] = ":99";
    installWindow();
    const auto result = open({"-d", "Office", "--preset", "photo", "missing.pdf"});
    EXPECT_EQ(result.status, kExitNotPrinted);
    EXPECT_THAT(linesOf(result.errors), ElementsAre(HasSubstr("missing.pdf")));
}

TEST_F(DialogStart, StandardInputIsKeptForTheDialog) {
    environment_["DISPLAY"] = ":99";
    environment_["TMPDIR"] = folder_.path();
    installWindow();
    const auto result = open({}, "a page\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(linesOf(result.output), Contains(HasSubstr("document: /proc/self/fd/")));
    EXPECT_THAT(linesOf(result.output), Contains("title: (stdin)"));
    EXPECT_EQ(test_support::namesIn(folder_.path()).size(), 2U) << "the kept file stayed behind";
}

} // namespace
} // namespace host
