#include "tests/reliability/walk.h"

#include <algorithm>
#include <ctime>
#include <deque>
#include <stdexcept>
#include <unordered_map>

namespace reliability {
namespace {

constexpr std::uint32_t kNoState = UINT32_MAX;
constexpr int kNotRefused = -1, kRound = -1;
constexpr std::size_t kReplayedOneIn = 97; // states
constexpr int kRoundsToSettle = 4;

// How a state was reached first.
struct Step {
    std::uint32_t from = kNoState;
    std::int16_t action = kRound;
    std::int16_t refused = kNotRefused; // the number of the request
    bool controlsAhead = false;         // see Moment
};

// This process's own time on a processor: others on the machine do not count.
double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

std::uint64_t hashOf(const Snapshot& snapshot) {
    std::uint64_t hash = 0x9e3779b97f4a7c15;
    for (const std::uint32_t word : snapshot) { // the mixing of splitmix64
        hash += word + 0x9e3779b97f4a7c15;
        hash = (hash ^ (hash >> 30)) * 0xbf58476d1ce4e5b9;
        hash = (hash ^ (hash >> 27)) * 0x94d049bb133111eb;
        hash ^= hash >> 31;
    }
    return hash;
}

class Walk {
public:
    Walk(const WalkPlan& plan, std::size_t mostStates)
        : plan_(plan), mostStates_(mostStates), dialog_(plan.languages) {}

    WalkResult run() {
        const double start = processorSeconds();
        reached(dialog_.capture(), {});
        while (!waiting_.empty() && steps_.size() < mostStates_) {
            const Snapshot state = std::move(waiting_.front());
            waiting_.pop_front();
            leave(state);
            ++left_;
        }
        result_.complete = waiting_.empty();
        result_.states = steps_.size();
        result_.seconds = processorSeconds() - start;
        return std::move(result_);
    }

private:
    // Keeps the state if it is new.
    void reached(Snapshot state, Step step) {
        const auto [entry, isNew] = known_.try_emplace(hashOf(state), static_cast<std::uint32_t>(steps_.size()));
        if (!isNew)
            return;
        steps_.push_back(step);
        waiting_.push_back(std::move(state));
    }

    // Takes every way out of a state.
    void leave(const Snapshot& state) {
        if (left_ % kReplayedOneIn == 0)
            replay(state);
        doRound(state);
        for (std::size_t index = 0; index < plan_.actions.size(); ++index) {
            const int requests = doAction(state, static_cast<std::int16_t>(index), kNotRefused);
            for (int number = 0; plan_.refusals && number < requests; ++number)
                doAction(state, static_cast<std::int16_t>(index), static_cast<std::int16_t>(number));
        }
    }

    // How many requests the action made; 0 where it could not be done.
    int doAction(const Snapshot& state, std::int16_t action, std::int16_t refused) {
        Step step{.from = left_, .action = action, .refused = refused};
        put(state);
        const Action& done = plan_.actions[static_cast<std::size_t>(action)];
        Moment moment = momentBeforeAction(dialog_);
        const bool refusesUser = refused == 0 && showsPendingChoice(dialog_, done.control);
        dialog_.refuseAt(refused == kNotRefused ? std::nullopt : std::optional<int>(refused));
        try {
            if (!done.run(dialog_))
                return 0;
        } catch (const std::exception& error) {
            fault(error.what(), step);
            current_.clear(); // nothing is known of the dialog
            return 0;
        }
        ++result_.transitions;
        result_.refused += refused == kNotRefused ? 0 : 1;
        const int requests = dialog_.asked();
        result_.requests += static_cast<std::size_t>(requests);
        for (const std::string& each : dialog_.faults())
            fault(each, step);
        step.controlsAhead = steps_[left_].controlsAhead || dialog_.wasRefused() || done.leavesControlsAhead;
        moment.controlsAhead = step.controlsAhead;
        moment.newPaper = done.changesPaper;
        note(disagreements(dialog_, moment), step);
        note(disabledControls(dialog_, moment), step);
        current_ = dialog_.capture();
        reached(current_, step);
        if (refusesUser)
            saveAfterRefusal(step);
        return requests;
    }

    // What a user was refused is not marked, and does not wait on screen to be marked by the next saving. A restore may
    // mark it: there a rule may want the same, as with bi-directional printing.
    void saveAfterRefusal(const Step& step) {
        dialog_.saveAll();
        current_.clear();
        if (dialog_.firstRefusedIsMarked())
            fault("a choice that was refused is marked with the next saving", step);
    }

    // A complete round, and further ones until nothing changes any more.
    void doRound(const Snapshot& state) {
        const Step step{.from = left_, .action = kRound};
        put(state);
        const Moment moment{.afterRound = true};
        const std::vector<std::int64_t> entered = dialog_.adjustments();
        Snapshot before = state;
        for (int rounds = 1;; ++rounds) {
            dialog_.refuseAt(std::nullopt);
            dialog_.round();
            ++result_.transitions;
            result_.requests += static_cast<std::size_t>(dialog_.asked());
            for (const std::string& each : dialog_.faults())
                fault(each, step);
            if (dialog_.adjustments() != entered)
                fault("a round changed an adjustment", step);
            note(forbiddenCombinations(dialog_), step);
            note(disagreements(dialog_, moment), step);
            note(disabledControls(dialog_, moment), step);
            current_ = dialog_.capture();
            if (rounds == 1)
                reached(current_, step);
            if (current_ == before)
                return;
            if (rounds == kRoundsToSettle) {
                fault("saving and restoring do not come to rest", step);
                return;
            }
            before = current_;
        }
    }

    void put(const Snapshot& state) {
        if (current_ == state)
            return;
        dialog_.establish(state);
        current_ = state;
    }

    // What is put back must be what was reached: the same way, from the start of another dialog, leads to it.
    void replay(const Snapshot& state) {
        put(state);
        if (dialog_.capture() != state)
            fault("a state that was put back is another one", steps_[left_]);
        WalkedDialog other(plan_.languages);
        for (const Step& step : wayTo(left_)) {
            other.refuseAt(step.refused == kNotRefused ? std::nullopt : std::optional<int>(step.refused));
            if (step.action == kRound)
                other.round();
            else
                plan_.actions[static_cast<std::size_t>(step.action)].run(other);
        }
        if (other.capture() != state)
            fault("the same way leads to another state in a dialog of its own", steps_[left_]);
        current_.clear(); // papers and two-sided printing are told to every dialog of the process
        ++result_.replayed;
    }

    std::vector<Step> wayTo(std::uint32_t state) const {
        std::vector<Step> way;
        for (; steps_[state].from != kNoState; state = steps_[state].from)
            way.push_back(steps_[state]);
        std::ranges::reverse(way);
        return way;
    }

    std::string inWords(const Step& step) const {
        if (step.action == kRound)
            return "round";
        const std::string& name = plan_.actions[static_cast<std::size_t>(step.action)].name;
        return step.refused == kNotRefused ? name : name + " (request " + std::to_string(step.refused) + " refused)";
    }

    void note(const std::vector<Finding>& findings, const Step& step) {
        for (const Finding& finding : findings)
            if (finding.reason.empty())
                fault(finding.what, step);
            else
                ++result_.expected[std::string(finding.reason)];
    }

    void fault(const std::string& what, const Step& last) {
        const auto [entry, isNew] = result_.faults.try_emplace(what);
        ++entry->second.first;
        if (!isNew)
            return;
        std::string& way = entry->second.second;
        if (last.from != kNoState)
            for (const Step& step : wayTo(last.from))
                way += inWords(step) + ", ";
        way += inWords(last);
    }

    const WalkPlan& plan_;
    const std::size_t mostStates_;
    WalkedDialog dialog_;
    Snapshot current_; // the dialog's state; empty where it is not known
    std::unordered_map<std::uint64_t, std::uint32_t> known_;
    std::vector<Step> steps_;      // of every state
    std::deque<Snapshot> waiting_; // states that were not left yet, in the order of their numbers
    std::uint32_t left_ = 0;       // the number of the state that is being left
    WalkResult result_;
};

// The actions

using Actions = std::vector<Action>;

Actions operator+(Actions one, const Actions& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

Actions choosing(Which panel, const std::string& control, const std::vector<std::string>& choices) {
    Actions actions;
    for (const std::string& choice : choices)
        actions.push_back({.name = control + " " + choice,
                           .run = [=](WalkedDialog& dialog) { return dialog.choose(panel, control, choice); },
                           .control = control});
    return actions;
}

Actions toggling(Which panel, const std::string& box) {
    return {{.name = box, .run = [=](WalkedDialog& dialog) { return dialog.toggle(panel, box); }, .control = box}};
}

Actions entering(const std::string& field, const std::vector<int>& values) {
    Actions actions;
    for (const int value : values)
        actions.push_back(
            {field + " " + std::to_string(value), [=](WalkedDialog& dialog) { return dialog.enter(field, value); }});
    return actions;
}

// What a host does can always be done.
Action hosts(std::string name, std::function<void(WalkedDialog&)> run) {
    return {std::move(name), [run = std::move(run)](WalkedDialog& dialog) {
                run(dialog);
                return true;
            }};
}

Actions papers(std::size_t count = WalkedDialog::papers().size()) {
    Actions actions;
    for (std::size_t index = 0; index < count; ++index) {
        actions.push_back(hosts("paper " + *WalkedDialog::papers()[index].name,
                                [=](WalkedDialog& dialog) { dialog.setPaper(index); }));
        actions.back().changesPaper = true;
    }
    return actions;
}

Actions marking(const std::string& option, const std::vector<std::string>& choices) {
    Actions actions;
    for (const std::string& choice : choices)
        actions.push_back(
            hosts(option + "=" + choice, [=](WalkedDialog& dialog) { dialog.markFromOutside(option, choice); }));
    return actions;
}

Actions output() {
    Actions actions;
    for (const char* choice : {"None", "FAX"})
        actions.push_back(
            hosts(std::string("output ") + choice, [=](WalkedDialog& dialog) { dialog.setOutput(choice); }));
    return actions;
}

Actions colorMatchingModes() {
    Actions actions;
    for (const char* mode : {"AP_VendorColorMatching", "AP_ApplicationColorMatching"})
        actions.push_back(hosts(mode, [=](WalkedDialog& dialog) { dialog.setColorMatchingMode(mode); }));
    return actions;
}

Actions showing() {
    return {hosts("show print", [](WalkedDialog& dialog) { dialog.bringToFront(kPrint); }),
            hosts("show color", [](WalkedDialog& dialog) { dialog.bringToFront(kColor); })};
}

} // namespace

std::vector<WalkPlan> walkPlans() {
    const std::vector<std::string> listedMedia = {"Plain",          "Inkjet", "CorvaneQT20Matte", "CorvaneGlossy",
                                                  "CorvaneGlossyR", "Glossy", "Transparencies"};
    const Actions media = choosing(kPrint, "mediaTypePopup", listedMedia);
    const Actions fewerMedia = choosing(kPrint, "mediaTypePopup", {"Plain", "Inkjet", "Glossy", "Transparencies"});
    const Actions postcards = choosing(kPrint, "mediaTypePopup", {"HagakiAtena", "HagakiUra"}); // listed in Japanese
    const Actions qualities =
        choosing(kPrint, "resolutionPopup", {"PlainFast", "PlainNormal", "High", "Best", "Fast", "Normal", "Photo"});
    const Actions thickness = choosing(kPrint, "paperThickPopup", {"Regular", "Env"});
    const Actions feed = choosing(kPrint, "paperFeedPopup", {"Tray1", "Tray2", "Manual"});
    const Actions mode = choosing(kPrint, "monoColorPopup", {"Color", "Mono"});
    const Actions boxes = toggling(kPrint, "slowDryButton") + toggling(kPrint, "biDirButton");
    const Actions mirror = toggling(kPrint, "mirrorButton");
    const Actions twoSided = marking("Duplex", {"None", "DuplexNoTumble"});
    const Actions colorOptions = choosing(kColor, "colorMatchingMatrix", {"NONE", "Standard", "Vivid", "Photo"}) +
                                 choosing(kColor, "ditherPopup", {"Dither", "Diffusion"}) +
                                 toggling(kColor, "colorEnhanceButton");
    Actions mediaElsewhere = marking("CVMediaType", {"HagakiAtena", "HagakiUra", "PlainDuplex"});
    for (Action& action : mediaElsewhere)
        action.leavesControlsAhead = true;
    const Actions revert = {
        {"revertButton", [](WalkedDialog& dialog) { return dialog.press(kColor, "revertButton"); }}};
    const std::vector<int> values = {-20, 0, 20};
    const Actions adjustments = entering("brightnessField", values) + entering("contrastField", values) +
                                entering("redField", values) + entering("greenField", values) +
                                entering("blueField", values);
    const Actions disclosures = toggling(kPrint, "optionButton") + toggling(kColor, "optionButton");

    std::vector<WalkPlan> plans;
    plans.push_back({.name = "media",
                     .actions = media + qualities + boxes + twoSided + output() + colorMatchingModes() + showing()});
    plans.push_back({.name = "papers", .actions = fewerMedia + qualities + boxes + thickness + papers() + twoSided});
    plans.push_back({.name = "refusals",
                     .actions = fewerMedia + qualities + boxes + mode + papers(4) + twoSided,
                     .refusals = true});
    plans.push_back({.name = "feed", .actions = media + feed + mirror + mode + twoSided + papers(4)});
    plans.push_back({.name = "color",
                     .actions = mode + colorOptions + entering("brightnessField", values) +
                                entering("redField", values) + revert + output() + colorMatchingModes()});
    plans.push_back({.name = "adjustments",
                     .actions = mode + toggling(kColor, "colorEnhanceButton") + adjustments + revert + output()});
    plans.push_back({.name = "postcards",
                     .languages = {"ja"},
                     .actions = postcards + choosing(kPrint, "mediaTypePopup", {"Plain", "Glossy", "Transparencies"}) +
                                qualities + boxes + mode + papers() + twoSided});
    const Actions everything = media + qualities + thickness + feed + mode + boxes + mirror + colorOptions +
                               adjustments + revert + disclosures + papers() +
                               marking("Duplex", {"None", "DuplexNoTumble", "DuplexTumble"}) + mediaElsewhere +
                               output() + colorMatchingModes() + showing();
    plans.push_back({.name = "everything", .actions = everything, .refusals = true});
    plans.push_back({.name = "japanese", .languages = {"ja"}, .actions = postcards + everything, .refusals = true});
    return plans;
}

WalkResult walk(const WalkPlan& plan, std::size_t mostStates) {
    return Walk(plan, mostStates).run();
}

} // namespace reliability
