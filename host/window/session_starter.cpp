#include "host/window/session_starter.h"

#include "framework/option_keywords.h"
#include "host/command_line/option_meaning.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <utility>

namespace host {
namespace {

constexpr std::string_view kCustomPrefix = "Custom.";
constexpr std::string_view kPageRegion = "PageRegion";                                   // follows the page size
constexpr std::string_view kNoPanels = "";                                               // a type that no panel is of
constexpr const char* kKeyEntries[] = {"PMPPDKeysSupported", "PMPPDKeysSupportedColor"}; // the panels' options

// A side in points, with hundredths at most.
std::string sideInPoints(double side) {
    return toolkit::Value(std::round(side * 100) / 100).textReading();
}

std::optional<printing::Paper> freePaperInText(std::string_view text) {
    const std::size_t times = text.find('x');
    if (!text.starts_with(kCustomPrefix) || times == std::string_view::npos)
        return std::nullopt;
    const auto side = [](std::string_view digits) {
        double value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        return error == std::errc() && end == digits.data() + digits.size() && value > 0 ? std::optional(value)
                                                                                         : std::nullopt;
    };
    const auto width = side(text.substr(kCustomPrefix.size(), times - kCustomPrefix.size()));
    const auto height = side(text.substr(times + 1));
    return width && height ? std::optional(freePaper(*width, *height)) : std::nullopt;
}

bool isWithin(const printing::Paper& paper, const printing::PrinterDescription& description) {
    const printing::CustomSizeLimits limits = description.customSizeLimits();
    const auto holds = [](double side, float least, float most) {
        return static_cast<double>(least) <= side && side <= static_cast<double>(most);
    };
    return description.allowsCustomSizes() && holds(*paper.width, limits.minWidth, limits.maxWidth) &&
           holds(*paper.height, limits.minHeight, limits.maxHeight);
}

std::string textOf(const Printer& printer) {
    std::string error;
    return printer.ppdText.empty() ? printing::PrinterDescription::readFile(printer.ppdPath, error).value_or("")
                                   : printer.ppdText;
}

// The keywords of the panels' options that the printer has.
std::set<std::string> panelOptions(const PlugIn& plugIn, const printing::PrinterDescription& description) {
    std::set<std::string> options;
    for (const char* entry : kKeyEntries)
        if (const auto* keys = toolkit::valueInMap(plugIn.infoDictionary(), entry).as<toolkit::ValueList>())
            for (const toolkit::Value& key : *keys)
                if (description.option(key.textReading()) != nullptr)
                    options.insert(key.textReading());
    return options;
}

} // namespace

printing::Paper freePaper(double width, double height) {
    return {.name = std::string(kCustomPrefix) + sideInPoints(width) + "x" + sideInPoints(height),
            .ppdName = {},
            .width = std::round(width * 100) / 100,
            .height = std::round(height * 100) / 100};
}

StartChoices choicesOfSession(Session& session) {
    StartChoices start{.choices = {}, .given = {}, .settings = session.settings(), .freePaper = {}};
    const printing::PageFormat* format = session.pageFormat();
    if (format != nullptr && format->paper && !format->paper->ppdName && format->paper->width && format->paper->height)
        start.freePaper = format->paper;
    const printing::PrinterDescription& description = session.description();
    for (const printing::Option& option : description.options()) {
        const auto marked = description.markedChoice(option.keyword);
        const bool isPaper = option.keyword == keywords::kPageSize || option.keyword == kPageRegion;
        if (marked && marked != option.defaultChoice && !(isPaper && start.freePaper) && option.keyword != kPageRegion)
            start.choices.push_back({.name = option.keyword, .value = *marked});
    }
    return start;
}

SessionParts readSessionParts(const Printer& printer, const SessionSurroundings& surroundings) {
    SessionParts parts;
    parts.plugIn = PlugIn::load(surroundings.bundle, parts.error);
    if (parts.plugIn == nullptr)
        return parts;
    parts.description =
        printer.ppdText.empty()
            ? printing::PrinterDescription::openFile(printer.ppdPath, surroundings.languages, parts.error)
            : printing::PrinterDescription::openText(printer.ppdText, surroundings.languages, parts.error);
    if (parts.description != nullptr)
        parts.description->markDefaults();
    return parts;
}

StartedSession startSession(SessionParts parts, const Printer& printer, const StartChoices& start,
                            const SessionSurroundings& surroundings) {
    StartedSession started;
    if (parts.description == nullptr) {
        started.error = std::move(parts.error);
        return started;
    }
    SessionOptions options;
    options.bundleView.languages = surroundings.languages;
    options.plugIn = std::move(parts.plugIn);
    options.description = std::move(parts.description);
    printing::PrinterDescription& description = *options.description;
    options.settings = start.settings;
    std::optional<printing::Paper> free = start.freePaper;
    const auto mark = [&](const JobOption& choice) {
        const bool isPaper = choice.name == keywords::kPageSize;
        if (const auto paper = isPaper ? freePaperInText(choice.value) : std::nullopt)
            free = paper;
        else if (description.mark(choice.name, choice.value) && isPaper)
            free.reset();
    };
    const std::set<std::string> managed = panelOptions(*options.plugIn, description);
    const std::set<std::string> installable = installableOptions(textOf(printer));
    std::vector<JobOption> kept = printer.options;
    started.problems = takeJobFields(kept, started.fields);
    if (start.areAll)
        kept.clear();
    for (const auto* choices : {&std::as_const(kept), &start.choices, &start.preset, &start.given, &start.attributes})
        for (const JobOption& given : *choices)
            for (const MeantOption& meant : meaningOf(given, description, installable)) {
                const bool isGiven = choices == &start.preset || choices == &start.given;
                const bool isForPanels =
                    managed.contains(meant.option.name) || (!managed.empty() && meant.option.name == keywords::kDuplex);
                const bool isOfTheJob = meant.kind == OptionKind::Attribute || meant.kind == OptionKind::UnknownOption;
                if (choices == &start.attributes && !isOfTheJob)
                    continue;
                if (meant.kind == OptionKind::Choice && isGiven && isForPanels) {
                    std::erase_if(started.forPanels, [&](const auto& each) { return each.first == meant.option.name; });
                    started.forPanels.emplace_back(meant.option.name, meant.option.value);
                    if (choices == &start.preset)
                        started.presetsOptions.insert(meant.option.name);
                    else
                        started.presetsOptions.erase(meant.option.name);
                } else if (meant.kind == OptionKind::Choice) {
                    mark(meant.option);
                } else if (meant.kind == OptionKind::PrintSetting) {
                    if (options.settings)
                        options.settings->setValueForKey(meant.option.value, meant.option.name);
                } else if (isOfTheJob) {
                    if (choices == &start.choices && meant.kind == OptionKind::UnknownOption)
                        continue; // of another printer, or of this one's PPD as it was
                    std::erase_if(started.attributes, [&](const auto& each) { return each.name == meant.option.name; });
                    started.attributes.push_back(meant.option);
                } else if (isGiven) {
                    started.problems.push_back(meant.reason);
                }
            }
    if (free && isWithin(*free, description))
        options.pageFormat = printing::PageFormat{.paper = free};

    if (managed.empty())
        options.panelType = kNoPanels;
    options.userDefaults = surroundings.userDefaults;
    options.presenter = surroundings.presenter;
    options.windowHeight = surroundings.windowHeight;
    started.session = Session::open(std::move(options), started.error);
    return started;
}

} // namespace host
