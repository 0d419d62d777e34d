#pragma once

#include "tests/host/command_line/program_run.h"
#include "tests/support/scratch_folder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace host {

inline const std::string kModels = CV_SOURCE_DIR "/resources/models/";
inline const std::string kSamplePpd = kModels + "corvane-a3.ppd";

/// The print command in a home of the test's own, without a display.
class PrintCommandTest : public testing::Test {
protected:
    test_support::ProgramResult run(std::vector<std::string> arguments, const std::string& input = "",
                                    const std::string& program = "lp") const {
        arguments.insert(arguments.begin(), program);
        return test_support::runProgram(
            {.program = PRINT_PROGRAM, .arguments = std::move(arguments), .environment = environment_, .input = input});
    }
    /// The program and its command below a folder as they are installed, but for the libraries: those of the build are
    /// used.
    std::filesystem::path installProgram() {
        const std::filesystem::path built = PRINT_PROGRAM, program = folder_.path() / "bin" / "corvane-print";
        std::filesystem::create_directories(program.parent_path());
        std::filesystem::create_directories(windowModule().parent_path());
        std::filesystem::copy(built, program);
        std::filesystem::copy(PRINT_COMMAND_MODULE, commandModule());
        environment_["LD_LIBRARY_PATH"] = built.parent_path().parent_path() / "lib";
        return program;
    }
    /// Where the program that is installed looks for its command.
    [[nodiscard]] std::filesystem::path commandModule() const {
        return folder_.path() / "lib" / "corvane-print" / "libcv_print_command.so";
    }
    /// Where it looks for its window.
    [[nodiscard]] std::filesystem::path windowModule() const {
        return folder_.path() / "lib" / "corvane-print" / "libcv_window.so";
    }
    /// The options of a dry run, as lines "name=value".
    std::vector<std::string> planned(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--dry-run", "--ppd", kSamplePpd});
        const auto result = run(std::move(arguments));
        EXPECT_EQ(result.status, 0) << result.errors;
        return linesOf(result.output);
    }
    static std::vector<std::string> linesOf(const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
            lines.push_back(text.substr(start, end - start));
        return lines;
    }

    const test_support::ScratchFolder folder_;
    std::map<std::string, std::string> environment_ = {
        {"HOME", folder_.path()}, {"LANG", "C"}, {"LANGUAGE", "en"}, {"CUPS_SERVER", folder_.path() / "no-socket"}};
};

} // namespace host
