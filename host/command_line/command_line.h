#pragma once

#include <string>
#include <vector>

namespace host {

/// The exit statuses of the print command.
enum ExitStatus : int {
    kExitDone = 0,
    kExitNotPrinted = 1, ///< the server, the queue, a document or the bundle cannot be used
    kExitUsage = 2,
    kExitStoppedByAlert = 3,
    kExitCheckFailed = 4, ///< --check found a conflict, an unknown option or an unknown choice
    kExitNoDialog = 5,    ///< there is no display, or no window module
};

/// Runs the print command: the arguments begin with the program's own name, as it was called. Reads standard input
/// where that is printed, writes to standard output and standard error, and returns an exit status. It sets the
/// environment variables that tell the printing library of a user or of encryption, so call it before any thread runs.
int runPrintCommand(const std::vector<std::string>& arguments, const std::string& version);

} // namespace host
