#pragma once

#include <string>

namespace benchmarks {

/// A generated printer: the sample printer's own options with more of everything.
struct Printer {
    const char* name;
    int options, sizes, constraints; ///< in all
};
inline constexpr Printer kPrinters[] = {
    {"small", 30, 40, 20},
    {"large", 100, 200, 500},
};

/// Its PPD. Ends the program where the sample printer's cannot be used.
std::string ppdText(const Printer& printer);

} // namespace benchmarks
