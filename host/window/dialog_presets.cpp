// What the dialog does for its presets: a preset is chosen, or becomes what is chosen now.

#include "host/command_line/option_meaning.h"
#include "host/window/page_ranges.h"
#include "host/window/print_dialog.h"

#include <algorithm>
#include <utility>

namespace host {
namespace {

constexpr const char* kCopiesOption = "copies";

} // namespace

// One that was named when the dialog was opened is its queue's, for which a given PPD may stand.
bool PrintDialog::isPresetMeantFor(const Printer& printer) const {
    return !request_.preset.empty() && (printer.queue ? printer.queue->queue == request_.printer
                                                      : !request_.ppd.empty() && printer.ppdPath == request_.ppd);
}

// Where it could not be looked for before, it is among the queues; null where it is not.
const Printer* PrintDialog::foundPreset() const {
    const auto found = std::ranges::find_if(printers_, [&](const Printer& each) {
        return each.queue && each.queue->queue == request_.printer && each.instance == request_.preset;
    });
    return found == printers_.end() ? nullptr : &*found;
}

bool PrintDialog::awaitsPreset(const Printer& printer) const {
    return isPresetMeantFor(printer) && (!request_.looksForPreset || foundPreset() != nullptr);
}

// What was given beside it goes before what it says.
void PrintDialog::applyGivenPreset() {
    if (session_ == nullptr)
        return;
    const Printer& printer = printers_[static_cast<std::size_t>(printer_)];
    if (!awaitsPreset(printer)) {
        if (isPresetMeantFor(printer)) {
            const QString missing =
                windowText(Text::NoSuchPreset, language_)
                    .arg(QString::fromUtf8(request_.printer), QString::fromUtf8(std::exchange(request_.preset, {})));
            tell((missing + u' ' + message()).trimmed(), !undoButton_->isHidden());
        }
        return;
    }
    if (request_.looksForPreset)
        request_.presetChoices = foundPreset()->options;
    const Preset preset{.name = {.queue = request_.printer, .name = std::exchange(request_.preset, {})},
                        .options = std::move(request_.presetChoices)};
    const QString pages = generalPage_->pages();
    applyPreset(preset, request_.choices);
    if (!pages.isEmpty())
        generalPage_->setPages(pages);
    if (request_.copies != 0)
        generalPage_->setCopies(request_.copies);
    if (given_.priority != 0)
        request_.priority = given_.priority;
    if (!given_.holdUntil.empty())
        request_.holdUntil = given_.holdUntil;
}

// From the printer's own choices on, as the command line does: what the preset does not name is not left over from
// something else. Undo goes back to all that stood before.
void PrintDialog::applyPreset(const Preset& preset, const std::vector<JobOption>& given) {
    if (session_ == nullptr || actions_.isRunning())
        return;
    userHasBegun_ = true;
    commitNumbers(*this);
    savePopulatedPanels();
    const auto goBack = [this, choices = choicesSoFar(), copies = generalPage_->copies(), pages = generalPage_->pages(),
                         priority = request_.priority, holdUntil = request_.holdUntil] {
        beginAnew(printers_[static_cast<std::size_t>(printer_)], choices);
        generalPage_->setCopies(copies);
        generalPage_->setPages(pages);
        request_.priority = priority;
        request_.holdUntil = holdUntil;
    };

    StartChoices start{.choices = {}, .preset = preset.options, .given = given, .freePaper = {}};
    JobRequest fields;
    QStringList told;
    for (const std::string& complaint : takeJobFields(start.preset, fields))
        told << QString::fromUtf8(complaint);
    const auto pages = std::ranges::find(start.preset, kPageRangesOption, &JobOption::name);
    generalPage_->setPages(pages == start.preset.end() ? QString() : QString::fromUtf8(pages->value));
    std::erase_if(start.preset, [](const JobOption& each) { return each.name == kPageRangesOption; });
    generalPage_->setCopies(fields.copies);
    request_.priority = fields.priority != 0 ? fields.priority : given_.priority;
    request_.holdUntil = fields.holdUntil.empty() ? given_.holdUntil : fields.holdUntil;
    const QString name = QString::fromUtf8(preset.name.name);
    QStringList words(windowText(Text::ThePreset, language_).arg(name));
    if (!given.empty())
        words << windowText(Text::GivenOptions, language_);
    beginAnew(printers_[static_cast<std::size_t>(printer_)], start, words.join(windowText(Text::And, language_)));
    if (!message().isEmpty())
        told << message();
    if (told.isEmpty())
        told << windowText(Text::PresetChosen, language_).arg(name);
    actions_.tellStep(told.join(u' '), goBack);
}

// As the command line keeps them: a single copy is nothing to keep.
std::optional<std::vector<JobOption>> PrintDialog::choicesForPreset() {
    if (actions_.isRunning())
        return std::nullopt;
    userHasBegun_ = true;
    commitNumbers(*this);
    if (session_ == nullptr) {
        tell(windowText(Text::NoPrinter, language_));
        return std::nullopt;
    }
    const auto pages = checkedPages();
    if (!pages)
        return std::nullopt;
    savePopulatedPanels();
    std::vector<JobOption> options;
    for (JobOption& option : jobOptions(*pages)) {
        std::erase_if(options, [&](const JobOption& each) { return each.name == option.name; });
        options.push_back(std::move(option));
    }
    std::erase_if(options, [](const JobOption& each) { return each.name == kCopiesOption; });
    if (generalPage_->copies() != 1)
        options.push_back({.name = kCopiesOption, .value = std::to_string(generalPage_->copies())});
    std::ranges::sort(options, {}, &JobOption::name);
    return options;
}

} // namespace host
