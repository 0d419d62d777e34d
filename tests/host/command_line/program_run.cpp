#include "tests/host/command_line/program_run.h"

#include "tests/support/scratch_folder.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace test_support {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

ProgramResult runProgram(const ProgramRun& run) {
    const ScratchFolder folder;
    const std::string input = folder.write("input", run.input);
    const std::string output = folder.path() / "output", errors = folder.path() / "errors";
    std::vector<std::string> arguments = run.arguments;
    std::vector<std::string> environment = {std::string("PATH=") + std::getenv("PATH")};
    for (const auto& [name, value] : run.environment)
        environment.push_back(name + "=" + value);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    std::array<int, 2> channel{-1, -1};
    if (run.writeInput && ::pipe2(channel.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    if (run.writeInput)
        posix_spawn_file_actions_adddup2(&actions, channel[0], 0);
    else
        posix_spawn_file_actions_addopen(&actions, 0, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t child = 0;
    const int error = ::posix_spawn(&child, run.program.c_str(), &actions, nullptr, pointersTo(arguments).data(),
                                    pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(channel[0]);
    if (error != 0)
        throw std::runtime_error("cannot start " + run.program.string());
    std::thread writer;
    if (run.writeInput)
        writer = std::thread([&] {
            run.writeInput(channel[1]);
            ::close(channel[1]);
        });
    int status = 0;
    rusage usage{};
    const pid_t ended = ::wait4(child, &status, 0, &usage);
    if (writer.joinable())
        writer.join();
    if (ended != child)
        throw std::runtime_error("lost " + run.program.string());
    return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            .output = contentsOf(output),
            .errors = contentsOf(errors),
            .peakMemory = usage.ru_maxrss * 1024}; // told in kilobytes
}

} // namespace test_support
