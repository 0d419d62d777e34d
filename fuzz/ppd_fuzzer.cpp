// A printer's PPD: opened, bound to both panels, every control used and every choice marked, summarised and closed.

#include "fuzz/panel_walk.h"

#include <cstdint>

namespace {

// More than the seeds have, few enough for many inputs a second.
constexpr int kUses = 200; // of each panel's controls
constexpr int kMarks = 400;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto session = fuzz::openSession(text, {.languages = {"ja", "en"}}))
        fuzz::walkPanels(*session, kUses, kMarks);
    return 0;
}
