#include "host/jobs/option_parsing.h"

#include <cups/cups.h>
#include <cups/pwg.h>
#include <string_view>

namespace host {

std::vector<JobOption> parsedOptions(const std::string& text) {
    cups_option_t* parsed = nullptr;
    const int count = cupsParseOptions(text.c_str(), 0, &parsed);
    std::vector<JobOption> options;
    options.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        options.push_back({parsed[index].name, parsed[index].value});
    cupsFreeOptions(count, parsed);
    return options;
}

std::string optionText(const JobOption& option) {
    std::string text = option.name + "=";
    for (const char byte : option.value) {
        if (std::string_view(" \t\n\\'\"").find(byte) != std::string_view::npos)
            text += '\\';
        text += byte;
    }
    return text;
}

std::string pageSizeOfMedia(const std::string& media) {
    const pwg_media_t* found = pwgMediaForPWG(media.c_str());
    if (found == nullptr)
        found = pwgMediaForLegacy(media.c_str());
    return found == nullptr || found->ppd == nullptr ? "" : found->ppd;
}

} // namespace host
