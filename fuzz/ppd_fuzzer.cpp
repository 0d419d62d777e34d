// A printer's PPD: opened, bound to both panels, every control used and every choice marked, summarised and closed.

#include "fuzz/panel_walk.h"

#include <cstdint>

namespace {

constexpr int kUses = 60; // of controls and marks: enough for each rule, few enough for many inputs a second

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto session = fuzz::openSession(text, {.languages = {"ja", "en"}}))
        fuzz::walkPanels(*session, kUses);
    return 0;
}
