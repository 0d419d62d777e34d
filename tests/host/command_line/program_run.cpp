#include "tests/host/command_line/program_run.h"

#include "tests/host/jobs/temporary_folder.h"

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>

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
    const TemporaryFolder folder;
    const std::string input = folder.write("input", run.input);
    const std::string output = folder.path() / "output", errors = folder.path() / "errors";
    std::vector<std::string> arguments = run.arguments;
    std::vector<std::string> environment = {std::string("PATH=") + std::getenv("PATH")};
    for (const auto& [name, value] : run.environment)
        environment.push_back(name + "=" + value);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), O_WRONLY | O_CREAT, 0600);
    pid_t child = 0;
    const int error = ::posix_spawn(&child, run.program.c_str(), &actions, nullptr, pointersTo(arguments).data(),
                                    pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + run.program.string());
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        throw std::runtime_error("lost " + run.program.string());
    return {.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            .output = contentsOf(output),
            .errors = contentsOf(errors)};
}

} // namespace test_support
