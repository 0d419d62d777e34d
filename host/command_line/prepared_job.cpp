#include "host/command_line/prepared_job.h"

#include "framework/option_keywords.h"
#include "host/jobs/job_text.h"
#include "host/session/panel_choices.h"
#include "toolkit/number_field.h"

#include <algorithm>
#include <map>

namespace host {
namespace {

using printing::PrinterDescription;
using Marks = std::map<std::string, std::string>;

constexpr std::string_view kPageRegion = "PageRegion"; // follows the page size
constexpr const char* kShowing = "showing the panels";
constexpr const char* kAsking = "asking the panels before printing";

std::string inWords(const JobOption& option) {
    return option.name + "=" + plainText(option.value, 200);
}

/// Of options with one name the last one holds.
void put(std::vector<JobOption>& options, const JobOption& option) {
    std::erase_if(options, [&](const JobOption& each) { return each.name == option.name; });
    options.push_back(option);
}

Marks marksOf(const PrinterDescription& description) {
    Marks marks;
    for (const auto& [option, choice] : description.marks())
        if (option != kPageRegion)
            marks.emplace(option, choice.value_or("-"));
    return marks;
}

} // namespace

template <typename Action>
JobStep& PreparedJob::step(std::string what, const std::string& chosen, Action&& action) {
    const Marks before = marksOf(session_->description());
    JobStep made{.what = std::move(what), .refusal = {}, .changes = {}};
    (void)session_->takeRecord();
    action(made);
    for (const auto& [option, choice] : marksOf(session_->description()))
        if (const std::string& old = before.at(option); option != chosen && old != choice)
            made.changes.push_back(option + ": " + old + " -> " + choice);
    return steps_.emplace_back(std::move(made));
}

std::unique_ptr<PreparedJob> PreparedJob::prepare(JobSource source, std::string& error) {
    std::unique_ptr<PreparedJob> job(new PreparedJob());
    if (source.ppdText.empty()) {
        for (const auto* list : {&source.kept, &source.preset, &source.given})
            for (const JobOption& option : *list)
                put(job->attributes_, option);
        return job;
    }
    return job->open(source, error) ? std::move(job) : nullptr;
}

bool PreparedJob::open(JobSource& source, std::string& error) {
    SessionOptions options;
    options.description = PrinterDescription::openText(source.ppdText, source.languages, error);
    if (options.description == nullptr) {
        error = source.ppdName + " cannot be used: " + error;
        return false;
    }
    options.plugIn = PlugIn::load(source.bundle, error);
    if (options.plugIn == nullptr)
        return false;
    PrinterDescription& description = *options.description;
    description.markDefaults();
    const std::set<std::string> installable = installableOptions(source.ppdText);
    std::vector<JobOption> presetChoices;
    readOptions(source.kept, description, installable, keptChoices_);
    readOptions(source.preset, description, installable, presetChoices);
    readOptions(source.given, description, installable, givenChoices_);
    for (const JobOption& choice : presetChoices)
        if (std::ranges::find(givenChoices_, choice.name, &JobOption::name) == givenChoices_.end()) {
            givenChoices_.push_back(choice);
            presetsOptions_.insert(choice.name);
        }
    for (const JobOption& choice : keptChoices_)
        description.mark(choice.name, choice.value);
    // The host's own controls that panels read as they are restored.
    for (const JobOption& choice : givenChoices_)
        if (choice.name == keywords::kOutput)
            description.mark(choice.name, choice.value);
    for (const JobOption& setting : settings_)
        options.settings->setValueForKey(setting.value, setting.name);
    options.bundleView.languages = source.languages;
    options.userDefaults = source.defaults;
    options.presenter = source.alerts;
    session_ = Session::open(std::move(options), error);
    if (session_ == nullptr)
        return false;
    hasPanels_ = std::ranges::any_of(session_->panels(), [](const auto& panel) {
        return !panel->supportedPPDOptionKeys().value_or(std::vector<std::string>()).empty();
    });
    choose();
    return true;
}

void PreparedJob::readOptions(const std::vector<JobOption>& options, const PrinterDescription& description,
                              const std::set<std::string>& installable, std::vector<JobOption>& choices) {
    const bool areGiven = &choices == &givenChoices_;
    for (const JobOption& each : options)
        for (const MeantOption& meant : meaningOf(each, description, installable))
            switch (meant.kind) {
            case OptionKind::Choice:
                put(choices, meant.option);
                break;
            case OptionKind::PrintSetting:
                put(settings_, meant.option);
                break;
            case OptionKind::UnknownOption:
                unknownOptions_.push_back(meant.reason);
                put(attributes_, meant.option);
                break;
            case OptionKind::Attribute:
                put(attributes_, meant.option);
                break;
            case OptionKind::UnknownChoice:
                problems_.push_back(meant.reason);
                break;
            case OptionKind::Unusable:
                if (areGiven) // what is kept for a queue may name what is installed
                    problems_.push_back(meant.reason);
                break;
            }
}

void PreparedJob::choose() {
    const framework::PanelList panels = hasPanels_ ? session_->panels() : framework::PanelList();
    std::vector<std::pair<CVPrintQualityPDE*, std::string>> managed;
    for (const auto& panel : panels)
        for (std::string& key : panel->supportedPPDOptionKeys().value_or(std::vector<std::string>()))
            managed.emplace_back(panel.get(), std::move(key));
    if (hasPanels_)
        step(kShowing, "", [&](JobStep&) {
            for (const auto& panel : panels)
                session_->showPanel(*panel);
        });
    for (const JobOption& choice : givenChoices_)
        if (std::ranges::find(managed, choice.name, [](const auto& each) { return each.second; }) == managed.end())
            chooseOutside(choice);
    for (const auto& [panel, key] : managed)
        if (const auto choice = std::ranges::find(givenChoices_, key, &JobOption::name); choice != givenChoices_.end())
            chooseOnPanel(*panel, *choice);
    for (const auto& panel : panels)
        panel->saveValuesAndReturnError(); // adjustments reach the print settings only so
    tellWhatDidNotHold();
    tellConflicts();
}

bool PreparedJob::holdsAlready(const JobOption& choice) const {
    return presetsOptions_.contains(choice.name) && session_->description().markedChoice(choice.name) == choice.value;
}

void PreparedJob::chooseOutside(const JobOption& choice) {
    if (holdsAlready(choice))
        return;
    step(inWords(choice), choice.name, [&](JobStep& made) {
        if (choice.name == keywords::kPageSize) {
            session_->setPaper(session_->paperForPageSize(choice.value), hasPanels_);
            if (!hasPanels_)
                session_->markFromOutside(choice.name, choice.value, false, made.refusal);
        } else {
            session_->markFromOutside(choice.name, choice.value, hasPanels_, made.refusal);
        }
    });
}

void PreparedJob::chooseOnPanel(CVPrintQualityPDE& panel, const JobOption& choice) {
    if (holdsAlready(choice)) // a preset's mark of an adjustment must not take the place of its print setting
        return;
    const JobStep& made = step(inWords(choice), choice.name, [&](JobStep& unfinished) {
        toolkit::View* const control = controlForOption(panel, choice.name);
        if (dynamic_cast<toolkit::NumberField*>(control) != nullptr)
            adjustments_.insert(choice.name);
        const bool used = useControl(control, choice.value);
        if (!used && session_->description().markedChoice(choice.name) != choice.value)
            unfinished.refusal =
                "The panel " + quotedText(panel.panelName()) + " does not offer it with the other choices.";
        for (const RefusedMark& refused : session_->takeRecord().refused)
            if (refused.option == choice.name && refused.choice == choice.value)
                unfinished.refusal = refused.reason;
    });
    if (!made.refusal.empty())
        problems_.push_back("The choice " + made.what + " was refused: " + made.refusal);
}

void PreparedJob::tellWhatDidNotHold() {
    for (const JobOption& choice : givenChoices_) {
        const bool wasRefused = std::ranges::any_of(
            steps_, [&](const JobStep& each) { return each.what == inWords(choice) && !each.refusal.empty(); });
        const auto marked = session_->description().markedChoice(choice.name);
        const bool isTwoSidedPlain = choice.value == keywords::kPlain && marked == keywords::kPlainDuplex;
        if (choice.name != keywords::kPageSize && !wasRefused && !adjustments_.contains(choice.name) &&
            !isTwoSidedPlain && marked != choice.value)
            problems_.push_back("The choice " + inWords(choice) + " did not hold: the panels' rules set " +
                                choice.name + "=" + marked.value_or("nothing") + ".");
    }
}

void PreparedJob::tellConflicts() {
    const PrinterDescription& description = session_->description();
    const auto words = [&](const std::string& option, const std::string& choice) {
        const printing::Option* own = description.option(option);
        const printing::Choice* ownChoice = own == nullptr ? nullptr : own->choice(choice);
        return "\"" + (own == nullptr ? option : own->text) + ": " + (ownChoice == nullptr ? choice : ownChoice->text) +
               "\"";
    };
    const auto isChosen = [&](const std::string& option) { // the PPD's own defaults are nobody's mistake
        return std::ranges::find(keptChoices_, option, &JobOption::name) != keptChoices_.end() ||
               std::ranges::find(givenChoices_, option, &JobOption::name) != givenChoices_.end();
    };
    std::set<std::set<std::string>> told; // each pair once
    for (const auto& [option, choice] : marksOf(description))
        for (const auto& [otherOption, otherChoice] : description.conflictsOf(option, choice))
            if (otherOption != kPageRegion && (isChosen(option) || isChosen(otherOption)) &&
                told.insert({option, otherOption}).second)
                problems_.push_back(words(option, choice) + " cannot be used together with " +
                                    words(otherOption, otherChoice) + ".");
}

bool PreparedJob::shouldPrint() {
    if (!hasPanels_)
        return true;
    bool prints = false;
    step(kAsking, "", [&](JobStep& made) {
        prints = session_->shouldPrint();
        if (!prints)
            made.refusal = "The job is not printed.";
    });
    return prints;
}

std::vector<JobOption> PreparedJob::options() const {
    std::vector<JobOption> options;
    if (hasPanels_) {
        options = session_->jobOptions();
    } else if (session_ != nullptr) {
        for (const auto* list : {&keptChoices_, &givenChoices_})
            for (const JobOption& choice : *list)
                put(options, choice);
    }
    for (const JobOption& attribute : attributes_)
        if (std::ranges::find(options, attribute.name, &JobOption::name) == options.end())
            options.push_back(attribute);
    std::ranges::sort(options, {}, &JobOption::name);
    return options;
}

PreparedJob::Summary PreparedJob::summary() {
    Summary summary;
    if (!hasPanels_)
        return summary;
    const framework::PanelList panels = session_->panels();
    for (const auto& panel : panels)
        panel->saveValuesAndReturnError();
    for (const auto& panel : panels) {
        const auto info = panel->summaryInfo();
        if (!info)
            continue;
        auto& [name, lines] =
            summary.emplace_back(panel->panelName(), std::vector<std::pair<std::string, std::string>>());
        if (const auto* titles = toolkit::valueInMap(*info, keywords::kSummaryDisplayOrder).as<toolkit::ValueList>())
            for (const toolkit::Value& title : *titles)
                lines.emplace_back(title.textReading(), toolkit::valueInMap(*info, title.textReading()).textReading());
    }
    return summary;
}

} // namespace host
