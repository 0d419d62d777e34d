#include "host/jobs/option_encoding.h"

#include "host/jobs/job_text.h"
#include "host/jobs/option_parsing.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cups/cups.h>
#include <memory>
#include <string_view>

namespace host {
namespace {

constexpr std::string_view kDocumentFormat = "document-format";
constexpr std::string_view kRaw = "raw";
constexpr std::string_view kCopies = "copies";
constexpr std::string_view kJobPrefix = "job-";

/// Names that a server keeps for what it knows of a job itself: it drops or replaces what a job says under them.
constexpr std::string_view kServersNames[] = {
    "attributes-charset",
    "attributes-natural-language",
    "auth-info",
    "date-time-at-completed",
    "date-time-at-creation",
    "date-time-at-processing",
    "document-name-supplied",
    "number-of-documents",
    "requesting-user-name",
    "time-at-completed",
    "time-at-creation",
    "time-at-processing",
};
constexpr std::size_t kMaximumOptionNameBytes = 255;

using Request = std::unique_ptr<ipp_t, void (*)(ipp_t*)>;

Request newRequest() {
    return Request(ippNewRequest(IPP_OP_CREATE_JOB), &ippDelete);
}

bool isOneOf(std::string_view value, std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(words, [value](std::string_view word) { return equalWithoutCase(value, word); });
}

/// These say how the document is sent and are no attributes of the job.
bool describesDocument(std::string_view name) {
    return name == kDocumentFormat || name == kRaw;
}

/// The options as they count: of those with one name the last, in the order of the first.
std::vector<JobOption> effectiveOptions(const std::vector<JobOption>& options) {
    std::vector<JobOption> effective;
    for (const JobOption& option : options) {
        const auto earlier = std::ranges::find(effective, option.name, &JobOption::name);
        if (earlier == effective.end())
            effective.push_back(option);
        else
            earlier->value = option.value;
    }
    return effective;
}

/// Does a filter that parses its argument read this very option, and nothing besides?
bool survivesParsing(const JobOption& option) {
    const std::vector<JobOption> parsed = parsedOptions(optionText(option));
    return parsed.size() == 1 && option.name == parsed[0].name && option.value == parsed[0].value;
}

std::string rangeText(ipp_attribute_t* attribute, int index) {
    int upper = 0;
    const int lower = ippGetRange(attribute, index, &upper);
    if (lower == upper)
        return std::to_string(lower);
    return std::to_string(lower) + "-" + (upper == INT_MAX ? "" : std::to_string(upper));
}

std::string resolutionText(ipp_attribute_t* attribute, int index) {
    int vertical = 0;
    ipp_res_t units = IPP_RES_PER_INCH;
    const int horizontal = ippGetResolution(attribute, index, &vertical, &units);
    return std::to_string(horizontal) + "x" + std::to_string(vertical) + (units == IPP_RES_PER_INCH ? "dpi" : "dpcm");
}

/// "600dpi" as the server writes it, "600x600dpi"; every other text as it is.
std::string withBothResolutions(const std::string& value) {
    const std::size_t digits = value.find_first_not_of("0123456789");
    const std::string unit = digits == std::string::npos ? "" : value.substr(digits);
    return digits > 0 && (unit == "dpi" || unit == "dpcm") ? value.substr(0, digits) + "x" + value : value;
}

/// One value of an attribute as a filter reads it.
std::string valueText(ipp_attribute_t* attribute, int index) {
    switch (ippGetValueTag(attribute)) {
    case IPP_TAG_INTEGER:
    case IPP_TAG_ENUM:
        return std::to_string(ippGetInteger(attribute, index));
    case IPP_TAG_RANGE:
        return rangeText(attribute, index);
    case IPP_TAG_RESOLUTION:
        return resolutionText(attribute, index);
    default: {
        const char* text = ippGetString(attribute, index, nullptr);
        return text == nullptr ? "" : text;
    }
    }
}

bool isString(ipp_tag_t tag) {
    constexpr std::array kStringTags{IPP_TAG_NAME,     IPP_TAG_TEXT,     IPP_TAG_KEYWORD, IPP_TAG_URI,
                                     IPP_TAG_MIMETYPE, IPP_TAG_LANGUAGE, IPP_TAG_CHARSET};
    return std::ranges::find(kStringTags, tag) != kStringTags.end();
}

/// Does the Boolean attribute mean what the option's value says? Standard options know more words than true and false.
bool saysTheSame(ipp_attribute_t* attribute, std::string_view value) {
    return ippGetBoolean(attribute, 0) ? isOneOf(value, {"true", "on", "yes"}) : isOneOf(value, {"false", "off", "no"});
}

/// A bare option whose name begins so is read as the rest of the name, switched off.
bool beginsLikeNegation(std::string_view name) {
    return name.size() >= 2 && equalWithoutCase(name.substr(0, 2), "no");
}

/// Adds one option to the request's job group, with the standard's own type where the name is a standard one. False,
/// with nothing added, if the standard's type cannot say the value, or if the name is none that a job may carry.
bool addOption(ipp_t* request, const JobOption& option) {
    const Request typed = newRequest();
    cups_option_t raw{const_cast<char*>(option.name.c_str()), const_cast<char*>(option.value.c_str())};
    cupsEncodeOptions2(typed.get(), 1, &raw, IPP_TAG_JOB);
    ipp_attribute_t* attribute = ippFindAttribute(typed.get(), option.name.c_str(), IPP_TAG_ZERO);
    if (attribute == nullptr)
        return false;

    ipp_tag_t tag = ippGetValueTag(attribute);
    if (tag == IPP_TAG_BOOLEAN && beginsLikeNegation(option.name))
        tag = IPP_TAG_NAME;
    if (tag == IPP_TAG_BOOLEAN) {
        if (!saysTheSame(attribute, option.value))
            return false;
    } else if (tag == IPP_TAG_RESOLUTION) {
        if (attributeText(attribute) != withBothResolutions(option.value))
            return false;
    } else if (attributeText(attribute) != option.value) {
        // A list was made of the text, or its quotes and backslashes were taken for syntax: it goes as it stands.
        if (!isString(tag))
            return false;
        ippAddString(request, IPP_TAG_JOB, tag, option.name.c_str(), nullptr, option.value.c_str());
        return true;
    }
    ipp_attribute_t* copy = ippCopyAttribute(request, attribute, 0);
    ippSetGroupTag(request, &copy, IPP_TAG_JOB);
    return true;
}

std::string refusalForOption(const JobOption& option) {
    const std::string name = quotedText(option.name);
    const std::string& value = option.value;
    if (option.name.empty())
        return "An option without a name cannot be printed with: give it a name or leave it out.";
    if (option.name.size() > kMaximumOptionNameBytes || !isUtf8(option.name) || !survivesParsing({option.name, "x"}))
        return "The option " + name + " has a name that does not survive printing: rename it or leave it out.";
    if ((option.name.starts_with(kJobPrefix) && option.name != kJobSheets) ||
        std::ranges::find(kServersNames, option.name) != std::end(kServersNames))
        return "The option " + name + " is kept for the print server's own use: leave it out.";
    if (equalWithoutCase(option.name, kCopies))
        return "The option " + name + " would contradict the job's number of copies: leave it out.";
    if (option.name == kJobSheets && std::ranges::count(value, ',') > 1)
        return "The option " + name + " cannot have the value " + quotedText(value) +
               ": name one sheet, or two with a comma between.";
    if (value.size() > kMaximumOptionValueBytes)
        return "The value of the option " + name + " has " + std::to_string(value.size()) + " bytes: shorten it to " +
               std::to_string(kMaximumOptionValueBytes) + " at most.";
    if (value.starts_with('{'))
        return "The value of the option " + name +
               " begins with a brace, which a print server takes for a collection and drops: change it.";
    if (hasControlCharacters(value))
        return "The value of the option " + name + " holds control characters: remove them.";
    if (!isUtf8(value))
        return "The value of the option " + name + " is not UTF-8 text: convert it.";
    if (!survivesParsing(option))
        return "The value " + quotedText(value) + " of the option " + name + " does not survive printing: change it.";
    if (!describesDocument(option.name) && !addOption(newRequest().get(), option))
        return "The option " + name + " cannot have the value " + quotedText(value) +
               ": it is a standard option of print servers, so give it a value of its kind or leave it out.";
    return {};
}

} // namespace

std::string attributeText(ipp_attribute_t* attribute) {
    std::string text;
    for (int index = 0; index < ippGetCount(attribute); ++index)
        text += (index == 0 ? "" : ",") + valueText(attribute, index);
    return text;
}

std::string refusalForOptions(const std::vector<JobOption>& options) {
    std::size_t bytes = 0;
    const std::vector<JobOption> effective = effectiveOptions(options);
    for (auto option = effective.begin(); option != effective.end(); ++option) {
        if (std::string refusal = refusalForOption(*option); !refusal.empty())
            return refusal;
        const auto twin = std::find_if(effective.begin(), option, [option](const JobOption& other) {
            return equalWithoutCase(other.name, option->name);
        });
        if (twin != option)
            return "The options " + quotedText(twin->name) + " and " + quotedText(option->name) +
                   " differ only in case, and a print server takes them for one: leave one out.";
        bytes += optionText(*option).size() + 1;
    }
    if (bytes > kMaximumOptionBytes)
        return "The job's options have " + std::to_string(bytes) + " bytes together: shorten them to " +
               std::to_string(kMaximumOptionBytes) + " at most.";
    return {};
}

void addOptions(ipp_t* request, const std::vector<JobOption>& options) {
    for (const JobOption& option : effectiveOptions(options))
        if (!describesDocument(option.name))
            addOption(request, option);
}

std::string documentFormat(const std::vector<JobOption>& options) {
    std::string format = "application/octet-stream";
    for (const JobOption& option : effectiveOptions(options)) {
        if (option.name == kDocumentFormat)
            return option.value;
        if (option.name == kRaw && isOneOf(option.value, {"true", "on", "yes"}))
            format = "application/vnd.cups-raw";
    }
    return format;
}

} // namespace host
