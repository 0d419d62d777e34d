#pragma once

#include "tests/reliability/dialog_rules.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace reliability {

/// Something that a user or a host does. Answers whether it could be done.
struct Action {
    std::string name;
    std::function<bool(WalkedDialog&)> run;
    bool leavesControlsAhead = false; ///< see Moment
    bool changesPaper = false;
    std::string control = {}; ///< what a user chooses with; empty: it is no option's
};

/// A walk: which actions take part, and what bounds it.
struct WalkPlan {
    std::string name;
    std::vector<std::string> languages = {"en"};
    std::vector<Action> actions;
    bool refusals = false; ///< each action is also done with each of its requests refused, one at a time
};

/// The walks. "media", "papers", "feed", "color" and "postcards" were seen to end; the others want a bound.
std::vector<WalkPlan> walkPlans();

struct WalkResult {
    std::size_t states = 0, transitions = 0, refused = 0, requests = 0;
    std::size_t replayed = 0; ///< states that were reached again from the start, in a dialog of their own
    bool complete = false;    ///< no new state is left; else the bound was reached
    double seconds = 0;       ///< on the processor
    std::map<std::string, std::size_t> expected;                       ///< findings with a reason, by the reason
    std::map<std::string, std::pair<std::size_t, std::string>> faults; ///< how often, and the shortest way to the first
};

/// Walks breadth first from the start, each state once, until no new one is found or so many were.
WalkResult walk(const WalkPlan& plan, std::size_t mostStates);

} // namespace reliability
