// The scripted host: one command a line on standard input, one answer a line on standard output.

#include "host/script/script_host.h"
#include "host/session/program_files.h"

#include <cstdio>
#include <cstdlib>
#include <getopt.h>
#include <iostream>
#include <string>

namespace {

constexpr const char* kUsage =
    "Usage: corvane-panel-session [--strict] [--bundle PATH] < SESSION\n"
    "Drives the print panels without a window: reads one JSON command a line, answers one JSON line each.\n"
    "\n"
    "  --strict        end with status 1 at the first error\n"
    "  --bundle PATH   use this plug-in bundle\n"
    "  --help          show this help and end\n"
    "  --version       show the version and end\n";

constexpr int kStatusError = 1, kStatusUsage = 2;

// The exit status after all was written to standard output.
int finishOutput() {
    if (std::cout.flush())
        return EXIT_SUCCESS;
    std::fputs(
        "corvane-panel-session: Standard output cannot be written to its end: check the disk or the program that "
        "takes it.\n",
        stderr);
    return kStatusError;
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    enum Option { kStrict = 1, kBundle, kHelp, kVersion };
    constexpr option kOptions[] = {{"strict", no_argument, nullptr, kStrict},
                                   {"bundle", required_argument, nullptr, kBundle},
                                   {"help", no_argument, nullptr, kHelp},
                                   {"version", no_argument, nullptr, kVersion},
                                   {nullptr, 0, nullptr, 0}};
    bool strict = false;
    std::filesystem::path bundle = host::pathOfPlugInBundle();
    for (int found; (found = getopt_long(argumentCount, arguments, "", kOptions, nullptr)) != -1;) {
        switch (found) {
        case kStrict:
            strict = true;
            break;
        case kBundle:
            bundle = optarg;
            break;
        case kHelp:
            std::cout << kUsage;
            return finishOutput();
        case kVersion:
            std::cout << "corvane-panel-session " CV_VERSION "\n";
            return finishOutput();
        default:
            std::fputs(kUsage, stderr);
            return kStatusUsage;
        }
    }
    if (optind < argumentCount) {
        std::fprintf(stderr, "corvane-panel-session: commands come on standard input, not as \"%s\".\n%s",
                     arguments[optind], kUsage);
        return kStatusUsage;
    }

    host::ScriptHost scriptHost(bundle);
    for (std::string line; std::getline(std::cin, line);) {
        if (!host::ScriptHost::isCommand(line))
            continue;
        std::cout << scriptHost.answerLine(line) << std::endl; // a front end waits for each answer
        if (!std::cout)
            break; // nobody gets an answer
        if (strict && scriptHost.lastFailed())
            return kStatusError;
    }
    return finishOutput();
}
