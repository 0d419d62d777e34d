#include "toolkit/preferred_languages.h"

#include <algorithm>
#include <cstdlib>

namespace toolkit {
namespace {

std::string_view environmentText(const char* name) {
    const char* text = std::getenv(name);
    return text == nullptr ? std::string_view() : std::string_view(text);
}

// The locale of the texts, by the order in which the C library looks.
std::string_view messagesLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const std::string_view locale = environmentText(name); !locale.empty())
            return locale;
    return {};
}

// Chinese is written in two ways, and who reads one may not read the other.
bool isTraditionalChinese(std::string_view locale) {
    const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
    const auto has = [&](std::string_view part) { return name.find(part) != std::string_view::npos; };
    return has("Hant") || (!has("Hans") && (has("TW") || has("HK") || has("MO")));
}

} // namespace

std::string languageCode(std::string_view locale) {
    const std::string_view code = locale.substr(0, locale.find_first_of("_.@-"));
    const bool letters =
        std::ranges::all_of(code, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
    if (!letters || code.size() < 2 || code.size() > 3)
        return {};
    std::string lower(code);
    std::ranges::transform(lower, lower.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (lower == "zh")
        return isTraditionalChinese(locale) ? "zh_TW" : "zh_CN";
    return lower;
}

std::vector<std::string> preferredLanguages() {
    std::vector<std::string> languages;
    const auto add = [&](std::string_view locale) {
        std::string code = languageCode(locale);
        if (!code.empty() && std::ranges::find(languages, code) == languages.end())
            languages.push_back(std::move(code));
    };
    const std::string_view locale = messagesLocale();
    std::string_view list = environmentText("LANGUAGE");
    const bool plain = locale == "C" || locale == "POSIX" || locale.starts_with("C.");
    while (!plain && !list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        add(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    if (languages.empty())
        add(locale);
    if (languages.empty())
        languages.emplace_back("en");
    return languages;
}

} // namespace toolkit
