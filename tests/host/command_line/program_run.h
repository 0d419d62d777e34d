#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace test_support {

/// What a program left behind.
struct ProgramResult {
    int status = -1; ///< its exit status; -1 where a signal ended it
    std::string output, errors;
    long peakMemory = 0; ///< resident, bytes
};

/// A program to run: without a shell, and with nothing in its environment but what is named here and PATH.
struct ProgramRun {
    std::filesystem::path program{};
    std::vector<std::string> arguments{}; ///< the first is the name that the program is called by
    std::map<std::string, std::string> environment{};
    std::string input{};
    /// In place of the input: writes it, to a pipe, on a thread of its own.
    std::function<void(int descriptor)> writeInput{};
};

/// Runs it to its end. Failures to start it are exceptions (std::runtime_error), which fail the test.
ProgramResult runProgram(const ProgramRun& run);

} // namespace test_support
