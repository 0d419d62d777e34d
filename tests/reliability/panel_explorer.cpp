// panel_explorer [NAME [MOST-STATES]]: walks through the states of a dialog and says what it saw. Without a name, every
// walk but "everything" and "japanese".

#include "tests/reliability/walk.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const std::string_view wanted = argc > 1 ? argv[1] : "";
    const std::size_t mostStates = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : SIZE_MAX;
    bool sound = true, found = false;
    for (const reliability::WalkPlan& plan : reliability::walkPlans()) {
        if (wanted.empty() ? plan.name == "everything" || plan.name == "japanese" : plan.name != wanted)
            continue;
        found = true;
        const reliability::WalkResult result = reliability::walk(plan, mostStates);
        std::printf(
            "%s: %zu states, %zu transitions (%zu with a refusal), %zu requests, %zu states replayed, %.1f s; %s\n",
            plan.name.c_str(), result.states, result.transitions, result.refused, result.requests, result.replayed,
            result.seconds, result.complete ? "complete" : "stopped at the bound");
        for (const auto& [reason, count] : result.expected)
            std::printf("  on purpose, %zu times: %s\n", count, reason.c_str());
        for (const auto& [what, seen] : result.faults)
            std::printf("  FAULT, %zu times: %s\n    first: %s\n", seen.first, what.c_str(), seen.second.c_str());
        std::fflush(stdout);
        sound = sound && result.faults.empty();
    }
    if (!found)
        std::fprintf(stderr, "panel_explorer: there is no walk of this name\n");
    return sound && found ? EXIT_SUCCESS : EXIT_FAILURE;
}
