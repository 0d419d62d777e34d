// A job's options, "name=value" each on a line of its own: those that are taken for a job must be read by a filter,
// out of the argument that a print server writes, under their names and with their values.

#include "host/jobs/option_encoding.h"

#include <cups/cups.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Request = std::unique_ptr<ipp_t, decltype(&ippDelete)>;

std::vector<host::JobOption> optionsIn(std::string_view text) {
    std::vector<host::JobOption> options;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t equals = std::min(line.find('='), line.size());
        options.push_back({.name = std::string(line.substr(0, equals)),
                           .value = std::string(line.substr(std::min(equals + 1, line.size())))});
    }
    return options;
}

/// What a print server hands its filters for the job: Booleans as bare names, texts with backslashes.
std::string filterArgument(ipp_t* job) {
    std::string argument;
    for (ipp_attribute_t* attribute = ippFirstAttribute(job); attribute != nullptr; attribute = ippNextAttribute(job)) {
        if (ippGetGroupTag(attribute) != IPP_TAG_JOB || ippGetName(attribute) == nullptr)
            continue;
        argument += argument.empty() ? "" : " ";
        if (ippGetValueTag(attribute) == IPP_TAG_BOOLEAN) {
            argument += (ippGetBoolean(attribute, 0) ? "" : "no") + std::string(ippGetName(attribute));
            continue;
        }
        argument += std::string(ippGetName(attribute)) + "=";
        for (const char byte : host::attributeText(attribute)) {
            if (std::string_view(" \t\n\\'\"").find(byte) != std::string_view::npos)
                argument += '\\';
            argument += byte;
        }
    }
    return argument;
}

std::map<std::string, std::string> readByFilter(const std::string& argument) {
    cups_option_t* parsed = nullptr;
    const int count = cupsParseOptions(argument.c_str(), 0, &parsed);
    std::map<std::string, std::string> options;
    for (int index = 0; index < count; ++index)
        options.insert_or_assign(parsed[index].name, parsed[index].value);
    cupsFreeOptions(count, parsed);
    return options;
}

bool isBooleanWord(std::string value, std::string_view read) {
    std::ranges::transform(value, value.begin(), [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    return read == "true" ? value == "true" || value == "on" || value == "yes"
                          : read == "false" && (value == "false" || value == "off" || value == "no");
}

/// The same, or the other of the two ways in which servers write a resolution with equal sides.
bool means(const std::string& value, const std::string& read) {
    return value == read || isBooleanWord(value, read) ||
           (read.ends_with(value) && read == value.substr(0, value.find_first_not_of("0123456789")) + "x" + value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto options = optionsIn({reinterpret_cast<const char*>(data), size});
    if (!host::refusalForOptions(options).empty())
        return 0;
    const Request request(ippNewRequest(IPP_OP_CREATE_JOB), &ippDelete);
    host::addOptions(request.get(), options);
    (void)host::documentFormat(options);
    std::map<std::string, std::string> expected;
    for (const host::JobOption& option : options)
        if (option.name != "document-format" && option.name != "raw") // these say how the document is sent
            expected.insert_or_assign(option.name, option.value);
    const auto read = readByFilter(filterArgument(request.get()));
    const bool same = std::ranges::equal(expected, read, [](const auto& wanted, const auto& got) {
        return wanted.first == got.first && means(wanted.second, got.second);
    });
    if (!same) {
        std::fprintf(stderr, "a filter reads other options: %s\n", filterArgument(request.get()).c_str());
        std::abort();
    }
    return 0;
}
