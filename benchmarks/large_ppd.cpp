// Writes the PPD of a printer with many options, for a program of its own to open.

#include "generated_ppd.h"

#include <iostream>

int main() {
    std::cout << benchmarks::ppdText(benchmarks::kPrinters[1]);
    return std::cout.flush() ? 0 : 1;
}
