#pragma once

/// Between the program corvane-print and its command, which is a module: loaded, its libraries are not searched for
/// the names of those that the window brings (docs/decisions/the-print-command-is-a-module.md).

namespace host {

constexpr const char* kPrintCommandModule = "libcv_print_command.so"; ///< in lib/corvane-print
constexpr const char* kPrintCommandSymbol = "CVRunPrintCommand";      ///< a PrintCommandEntry
/// The program's own arguments, as main() takes them; returns the exit status.
using PrintCommandEntry = int(int argumentCount, char* arguments[]);

} // namespace host
