#include "host/command_line/option_meaning.h"

#include "framework/option_keywords.h"
#include "host/jobs/job_text.h"
#include "host/jobs/option_encoding.h"
#include "host/jobs/option_parsing.h"
#include "printing/print_settings.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>
#include <utility>

namespace host {
namespace {

using printing::PrinterDescription;

constexpr std::string_view kMedia = "media", kSides = "sides", kPageRegion = "PageRegion";

/// The standard words for two-sided printing and the PPD's.
constexpr std::pair<std::string_view, std::string_view> kSidesWords[] = {
    {"one-sided", "None"}, {"two-sided-long-edge", "DuplexNoTumble"}, {"two-sided-short-edge", "DuplexTumble"}};

/// What "media" may name beside a paper: the options whose keywords end so.
constexpr std::string_view kMediaOptions[] = {"InputSlot", "MediaType"};

/// What print servers and their filters know, beside the PPD's own options.
constexpr std::string_view kKnownAttributes[] = {
    "Collate",
    "blackplot",
    "brightness",
    "collate",
    "columns",
    "cpi",
    "cupsPrintQuality",
    "document-format",
    "finishings",
    "fit-to-page",
    "fitplot",
    "gamma",
    "hue",
    kJobSheets,
    "landscape",
    "lpi",
    "media",
    "media-col",
    "mirror",
    "multiple-document-handling",
    "natural-scaling",
    "number-up",
    "number-up-layout",
    "orientation-requested",
    "output-bin",
    "outputorder",
    "page-border",
    "page-bottom",
    "page-label",
    "page-left",
    "page-ranges",
    "page-right",
    "page-set",
    "page-top",
    "penwidth",
    "position",
    "ppi",
    "prettyprint",
    "print-color-mode",
    "print-content-optimize",
    "print-quality",
    "print-rendering-intent",
    "print-scaling",
    "printer-resolution",
    "raw",
    "saturation",
    "scaling",
    "sides",
    "wrap",
};

constexpr std::string_view kOnWords[] = {"true", "on", "yes"}, kOffWords[] = {"false", "off", "no"};

template <std::size_t Count>
bool isOneOf(std::string_view value, const std::string_view (&words)[Count]) {
    return std::ranges::any_of(words, [value](std::string_view word) { return equalWithoutCase(value, word); });
}

/// The choice that the value names: itself, or, of an option that is on or off, the PPD's word for what is meant.
std::optional<std::string> choiceFor(const printing::Option& option, const std::string& value) {
    if (option.choice(value) != nullptr)
        return value;
    const bool isOn = isOneOf(value, kOnWords);
    if (option.choices.size() != 2 || (!isOn && !isOneOf(value, kOffWords)))
        return std::nullopt;
    for (const printing::Choice& choice : option.choices)
        if (isOn ? isOneOf(choice.keyword, kOnWords) : isOneOf(choice.keyword, kOffWords))
            return choice.keyword;
    return std::nullopt;
}

bool isWithinLimits(const PrinterDescription& description, const printing::PageSize& size) {
    const printing::CustomSizeLimits limits = description.customSizeLimits();
    return description.allowsCustomSizes() && size.width >= static_cast<double>(limits.minWidth) &&
           size.width <= static_cast<double>(limits.maxWidth) && size.height >= static_cast<double>(limits.minHeight) &&
           size.height <= static_cast<double>(limits.maxHeight);
}

/// The PPD's page size of this name: its own word, a standard media name, or a free size within the limits.
std::optional<std::string> pageSizeFor(const PrinterDescription& description, const std::string& name) {
    const printing::Option* sizes = description.option(keywords::kPageSize);
    if (sizes == nullptr)
        return std::nullopt;
    if (sizes->choice(name) != nullptr)
        return name;
    if (const std::string standard = pageSizeOfMedia(name); sizes->choice(standard) != nullptr)
        return standard;
    if (const auto size = description.pageSize(name); size && isWithinLimits(description, *size))
        return name;
    return std::nullopt;
}

MeantOption choiceOf(std::string_view keyword, std::string choice) {
    return {.kind = OptionKind::Choice, .option = {std::string(keyword), std::move(choice)}, .reason = {}};
}

MeantOption asItStands(OptionKind kind, const JobOption& given, std::string reason = {}) {
    return {.kind = kind, .option = given, .reason = std::move(reason)};
}

MeantOption unknownChoice(const JobOption& given, const std::string& choice) {
    return asItStands(OptionKind::UnknownChoice, given,
                      "The option " + quotedText(given.name) + " has no choice " + quotedText(choice) + ".");
}

/// What one part of "media" names.
MeantOption meaningOfMedia(const JobOption& given, const std::string& part, const PrinterDescription& description) {
    if (auto size = pageSizeFor(description, part))
        return choiceOf(keywords::kPageSize, std::move(*size));
    for (const std::string_view ending : kMediaOptions)
        for (const printing::Option& option : description.options())
            if (option.keyword.ends_with(ending) && option.choice(part) != nullptr)
                return choiceOf(option.keyword, part);
    return unknownChoice(given, part);
}

bool isPrintSetting(std::string_view name) {
    return name.starts_with(keywords::kPrintSettingsPrefix) || name == printing::kColorMatchingModeKey ||
           name == printing::kPageToPaperMappingKey;
}

bool isKnownAttribute(std::string_view name) {
    return std::ranges::find(kKnownAttributes, name) != std::end(kKnownAttributes);
}

} // namespace

std::set<std::string> installableOptions(std::string_view ppdText) {
    constexpr std::string_view kOpenGroup = "*OpenGroup:", kCloseGroup = "*CloseGroup:", kOpenUi = "*OpenUI *";
    std::set<std::string> keywords;
    bool isInside = false;
    while (!ppdText.empty()) {
        const std::string_view line = ppdText.substr(0, ppdText.find('\n'));
        ppdText.remove_prefix(std::min(line.size() + 1, ppdText.size()));
        if (line.starts_with(kOpenGroup))
            isInside = line.find("InstallableOptions") != std::string_view::npos;
        else if (line.starts_with(kCloseGroup))
            isInside = false;
        else if (isInside && line.starts_with(kOpenUi))
            keywords.emplace(
                line.substr(kOpenUi.size(), line.find_first_of("/: \t\r", kOpenUi.size()) - kOpenUi.size()));
    }
    return keywords;
}

std::vector<MeantOption> meaningOf(const JobOption& given, const PrinterDescription& description,
                                   const std::set<std::string>& installable) {
    const auto& [name, value] = given;
    if (name == keywords::kPageSize || name == kPageRegion) {
        auto size = pageSizeFor(description, value);
        if (description.option(keywords::kPageSize) == nullptr)
            return {asItStands(OptionKind::UnknownOption, given, "There is no option " + quotedText(name) + ".")};
        return {size ? choiceOf(keywords::kPageSize, std::move(*size)) : unknownChoice(given, value)};
    }
    if (name == kMedia && description.option(keywords::kPageSize) != nullptr) {
        std::vector<MeantOption> meant;
        std::istringstream parts(value);
        for (std::string part; std::getline(parts, part, ',');)
            meant.push_back(meaningOfMedia(given, part, description));
        if (meant.empty())
            meant.push_back(unknownChoice(given, value));
        return meant;
    }
    if (const printing::Option* duplex = description.option(keywords::kDuplex); name == kSides && duplex != nullptr) {
        const auto* word = std::ranges::find(kSidesWords, value, [](const auto& each) { return each.first; });
        if (word == std::end(kSidesWords) || duplex->choice(word->second) == nullptr)
            return {unknownChoice(given, value)};
        return {choiceOf(keywords::kDuplex, std::string(word->second))};
    }
    if (installable.contains(name))
        return {asItStands(OptionKind::Unusable, given,
                           "The option " + quotedText(name) +
                               " tells what is installed in the printer: its administrator sets it, not a job.")};
    if (const printing::Option* option = description.option(name)) {
        auto choice = choiceFor(*option, value);
        return {choice ? choiceOf(name, std::move(*choice)) : unknownChoice(given, value)};
    }
    if (isPrintSetting(name))
        return {asItStands(OptionKind::PrintSetting, given)};
    if (isKnownAttribute(name))
        return {asItStands(OptionKind::Attribute, given)};
    return {asItStands(OptionKind::UnknownOption, given, "There is no option " + quotedText(name) + ".")};
}

std::optional<int> numberBetween(std::string_view text, int least, int most) {
    int number = 0;
    const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (status != std::errc() || end != text.data() + text.size() || number < least || number > most)
        return std::nullopt;
    return number;
}

bool isHoldTime(std::string_view word) {
    constexpr std::string_view kWords[] = {"indefinite", "no-hold", "day-time",     "evening",
                                           "night",      "weekend", "second-shift", "third-shift"};
    if (std::ranges::find(kWords, word) != std::end(kWords))
        return true;
    const std::size_t colon = word.find(':'), second = word.find(':', colon + 1);
    return colon != std::string_view::npos && numberBetween(word.substr(0, colon), 0, 23) &&
           numberBetween(word.substr(colon + 1, second == std::string_view::npos ? second : second - colon - 1), 0,
                         59) &&
           (second == std::string_view::npos || numberBetween(word.substr(second + 1), 0, 59));
}

std::vector<std::string> takeJobFields(std::vector<JobOption>& options, JobRequest& request) {
    std::vector<std::string> complaints;
    const auto take = [&](const JobOption& option) {
        const auto& [name, value] = option;
        if (name == "copies") {
            if (const auto copies = numberBetween(value, 1, kMostCopies))
                request.copies = *copies;
            else
                complaints.push_back("The number of copies must be from 1 to 9999, not " + quotedText(value) + ".");
        } else if (name == "job-priority") {
            if (const auto priority = numberBetween(value, 1, kFirstPriority))
                request.priority = *priority;
            else
                complaints.push_back("The priority must be from 1 to 100, not " + quotedText(value) + ".");
        } else if (name == "job-hold-until") {
            if (isHoldTime(value))
                request.holdUntil = value;
            else
                complaints.push_back("A job cannot be held until " + quotedText(value) + ": say " + kHoldTimes + ".");
        } else if (name == "job-name") {
            request.title = value;
        } else if (name.starts_with("job-") && name != kJobSheets) {
            complaints.push_back("The option " + quotedText(name) + " is left out: it cannot be given for a job.");
        } else {
            return false;
        }
        return true;
    };
    std::erase_if(options, take);
    return complaints;
}

} // namespace host
