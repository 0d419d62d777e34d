#include "host/session/help_books.h"

#include "toolkit/preferred_languages.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>

namespace host {
namespace {

// A page's name stays inside the book.
bool isPlainName(const std::string& name) {
    return !name.empty() && name.front() != '.' && name.find('/') == std::string::npos;
}

} // namespace

bool HelpBooks::registerBook(const std::filesystem::path& path) {
    if (std::ranges::any_of(books_, [&](const auto& book) { return book.second.folder.native() == path.native(); }))
        return true;
    std::ifstream stream(path / "book.json", std::ios::binary);
    if (!stream)
        return false;
    const auto json = nlohmann::json::parse(stream, nullptr, false);
    if (!json.is_object() || !json.value("name", nlohmann::json()).is_string() ||
        !json.value("anchors", nlohmann::json()).is_object() || !json.value("languages", nlohmann::json()).is_array())
        return false;
    Book book{.folder = path, .anchors = {}, .languages = {}};
    for (const auto& [anchor, page] : json["anchors"].items())
        if (page.is_string() && isPlainName(page))
            book.anchors.emplace(anchor, page);
    for (const auto& language : json["languages"])
        if (language.is_string() && isPlainName(language))
            book.languages.push_back(language);
    books_.insert_or_assign(json["name"].get<std::string>(), std::move(book));
    return true;
}

std::optional<std::filesystem::path> HelpBooks::pageForAnchor(std::string_view anchor, std::string_view book,
                                                              const std::vector<std::string>& languages) const {
    const auto found = books_.find(book);
    if (found == books_.end() || found->second.languages.empty())
        return std::nullopt;
    const auto page = found->second.anchors.find(anchor);
    if (page == found->second.anchors.end())
        return std::nullopt;
    const auto& own = found->second.languages;
    const auto language = std::ranges::find_first_of(languages, own, {}, toolkit::languageCode, toolkit::languageCode);
    const std::string& folder = language == languages.end()
                                    ? own.front()
                                    : *std::ranges::find(own, toolkit::languageCode(*language), toolkit::languageCode);
    const std::filesystem::path path = found->second.folder / folder / page->second;
    std::error_code missing;
    return std::filesystem::is_regular_file(path, missing) ? std::optional(path) : std::nullopt;
}

} // namespace host
