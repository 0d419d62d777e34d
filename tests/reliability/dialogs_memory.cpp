// dialogs_memory [COUNT]: opens and closes so many dialogs in one process and says what memory they took. Fails where
// the process grows after the first tenth of them.

#include "tests/reliability/walked_dialog.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr long kAllowedGrowth = 512; // KiB: what an allocator may keep in hand
constexpr int kFewest = 50;

long residentKiB() {
    std::ifstream stream("/proc/self/statm");
    long pages = 0, resident = 0;
    stream >> pages >> resident;
    return resident * ::sysconf(_SC_PAGESIZE) / 1024;
}

// What one user does: looks at both panels, changes something in each, prints.
void useOneDialog(int number) {
    using namespace reliability;
    WalkedDialog dialog({number % 2 == 0 ? "en" : "ja"});
    dialog.choose(kPrint, "mediaTypePopup", number % 3 == 0 ? "Glossy" : "Inkjet");
    dialog.toggle(kColor, "colorEnhanceButton");
    dialog.enter("brightnessField", number % 40 - 20);
    dialog.setPaper(static_cast<std::size_t>(number) % WalkedDialog::papers().size());
    dialog.bringToFront(kColor); // draws the preview
    dialog.round();
}

} // namespace

int main(int argc, char** argv) {
    const int count = std::max(argc > 1 ? std::atoi(argv[1]) : 10'000, kFewest);
    long afterWarmUp = 0;
    for (int number = 0; number < count; ++number) {
        useOneDialog(number);
        if (number + 1 == count / 10)
            afterWarmUp = residentKiB();
    }
    const long atEnd = residentKiB();
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    std::printf("%d dialogs: %ld KiB resident after a tenth of them, %ld KiB at the end, %ld KiB at most\n", count,
                afterWarmUp, atEnd, usage.ru_maxrss);
    return atEnd - afterWarmUp <= kAllowedGrowth ? EXIT_SUCCESS : EXIT_FAILURE;
}
