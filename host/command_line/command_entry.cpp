// What the module exports: the print command as the program runs it.

#include "host/command_line/command_entry.h"

#include "host/command_line/command_line.h"

extern "C" __attribute__((visibility("default"))) int CVRunPrintCommand(int argumentCount, char* arguments[]) {
    return host::runPrintCommand(std::vector<std::string>(arguments, arguments + argumentCount), CV_VERSION);
}
