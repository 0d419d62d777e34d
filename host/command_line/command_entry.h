#pragma once

/// Between the program corvane-print and its command, which is a module: loaded, its libraries are searched for names
/// after those that the window brings, and not before each of them (docs/decisions/the-print-command-is-a-module.md).

namespace host {

constexpr const char* kPrintCommandModule = "libcv_print_command.so"; ///< found by the program's run path
constexpr const char* kPrintCommandSymbol = "CVRunPrintCommand";      ///< a PrintCommandEntry
/// The program's own arguments, as main() takes them; returns the exit status.
using PrintCommandEntry = int(int argumentCount, char* arguments[]);

} // namespace host
