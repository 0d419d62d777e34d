// private-cupsd: runs a command with a print server of its own.

#include "tests/support/private_cupsd.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <getopt.h>
#include <iostream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char* kUsage =
    "Usage: private-cupsd --ppd FILE --queue NAME [--pause] [--reject] -- COMMAND [ARGUMENT...]\n"
    "Starts a print server of its own with one queue of this PPD, runs the command, and ends the server.\n"
    "The exit status is the command's. Of the server, the command's environment tells:\n"
    "  CUPS_SERVER            its socket, so that print clients find it\n"
    "  PRIVATE_CUPSD_SOCKET   its socket\n"
    "  PRIVATE_CUPSD_ADDRESS  its host and port\n"
    "  PRIVATE_CUPSD_QUEUE    the queue's name\n"
    "  PRIVATE_CUPSD_RECORDS  the folder in which a job N leaves job-N.arguments (job, user, title, copies, options,\n"
    "                         each ended by a null byte), written last, and job-N.data, the document\n"
    "The same is printed to standard error, NAME=VALUE, one a line.\n";

constexpr int kUsageStatus = 64;
constexpr int kServerStatus = 125;
constexpr int kNotRunStatus = 127;
constexpr int kSignalStatus = 128;

volatile std::sig_atomic_t commandPid = -1;

/// The command gets the signals that were meant to end this program; it ends in turn, once its server is gone.
void passOn(int signal) {
    if (commandPid > 0)
        ::kill(commandPid, signal);
}

void tell(const char* name, const std::string& value) {
    ::setenv(name, value.c_str(), 1);
    std::cerr << name << '=' << value << '\n';
}

int runCommand(char** command) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::execvp(command[0], command);
        std::perror(command[0]);
        ::_exit(kNotRunStatus);
    }
    if (child < 0) {
        std::perror("private-cupsd");
        return kNotRunStatus;
    }
    commandPid = child;
    std::signal(SIGTERM, passOn);
    std::signal(SIGINT, passOn);
    int status = 0;
    while (::waitpid(child, &status, 0) != child) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalStatus + WTERMSIG(status);
}

} // namespace

int main(int argc, char** argv) {
    std::string ppd;
    std::string queue;
    bool pause = false;
    bool reject = false;
    const option kOptions[] = {{"ppd", required_argument, nullptr, 'f'},
                               {"queue", required_argument, nullptr, 'q'},
                               {"pause", no_argument, nullptr, 'p'},
                               {"reject", no_argument, nullptr, 'r'},
                               {nullptr, 0, nullptr, 0}};
    for (int letter = 0; (letter = ::getopt_long(argc, argv, "+", kOptions, nullptr)) != -1;) {
        switch (letter) {
        case 'f':
            ppd = optarg;
            break;
        case 'q':
            queue = optarg;
            break;
        case 'p':
            pause = true;
            break;
        case 'r':
            reject = true;
            break;
        default:
            std::cerr << kUsage;
            return kUsageStatus;
        }
    }
    if (ppd.empty() || queue.empty() || optind == argc) {
        std::cerr << kUsage;
        return kUsageStatus;
    }
    try {
        test_support::PrivateCupsd server;
        server.addQueue(queue, ppd);
        if (pause)
            server.pauseQueue(queue);
        if (reject)
            server.rejectJobs(queue);
        tell("CUPS_SERVER", server.socket());
        tell("PRIVATE_CUPSD_SOCKET", server.socket());
        tell("PRIVATE_CUPSD_ADDRESS", server.hostAndPort());
        tell("PRIVATE_CUPSD_QUEUE", queue);
        tell("PRIVATE_CUPSD_RECORDS", server.recordFolder().string());
        return runCommand(argv + optind);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kServerStatus;
    }
}
