#pragma once

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace test_support {

/// Starts a process of its own that does the work and ends; its exit status is 0 where the work answers true.
inline pid_t startProcess(const std::function<bool()>& work) {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

/// Waits for its end; -1 where it cannot be waited for.
inline int statusOf(pid_t child) {
    int status = -1;
    return ::waitpid(child, &status, 0) == child ? status : -1;
}

/// Waits for its end; whether the work answered true.
inline bool succeeded(pid_t child) {
    const int status = statusOf(child);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace test_support
