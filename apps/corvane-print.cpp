// The print command: a stand-in for lp that prints through the panels, and the print dialog.

#include "host/command_line/command_line.h"

#include <string>
#include <vector>

int main(int argumentCount, char* arguments[]) {
    return host::runPrintCommand(std::vector<std::string>(arguments, arguments + argumentCount), CV_VERSION);
}
