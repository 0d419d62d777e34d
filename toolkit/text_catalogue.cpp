#include "toolkit/text_catalogue.h"

#include <boost/locale/gnu_gettext.hpp>
#include <boost/locale/message.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <locale>

namespace toolkit {
namespace {

namespace gettext = boost::locale::gnu_gettext;
using Facet = boost::locale::message_format<char>;

std::vector<char> readCatalogue(const std::string& path) {
    constexpr std::uintmax_t kLargestCatalogue = 4 << 20; // bytes
    std::error_code error;
    if (std::filesystem::file_size(path, error) > kLargestCatalogue || error)
        return {};
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// One language's catalogue. The locale owns the facet.
std::optional<std::locale> loadCatalogue(const std::filesystem::path& folder, const std::string& domain,
                                         const std::string& language) {
    const std::filesystem::path file = folder / language / (domain + ".mo");
    std::error_code missing;
    if (!std::filesystem::is_regular_file(file, missing))
        return std::nullopt;
    gettext::messages_info info;
    info.language = language;
    info.encoding = "UTF-8";
    info.domains.emplace_back(domain);
    info.paths.emplace_back(folder.string());
    // The library looks in <path>/<language>/<category>/<domain>.mo: whatever it asks for, it gets this file.
    info.callback = [path = file.string()](const std::string&, const std::string&) { return readCatalogue(path); };
    try {
        return std::locale(std::locale::classic(), gettext::create_messages_facet<char>(info));
    } catch (const std::exception&) {
        return std::nullopt; // a broken catalogue is as good as none
    }
}

class GettextTable : public TextTable {
public:
    explicit GettextTable(std::vector<std::locale> catalogues) : catalogues_(std::move(catalogues)) {}

    [[nodiscard]] std::optional<std::string> textForKey(std::string_view key) const override {
        const std::string id(key);
        if (id.empty()) // the catalogue's header
            return std::nullopt;
        for (const std::locale& catalogue : catalogues_)
            if (auto text = textIn(catalogue, id))
                return text;
        return std::nullopt;
    }

private:
    // The library looks at most of a catalogue only when a text is asked for.
    static std::optional<std::string> textIn(const std::locale& catalogue, const std::string& id) {
        try {
            const char* text = std::use_facet<Facet>(catalogue).get(0, nullptr, id.c_str());
            return text == nullptr ? std::nullopt : std::optional(std::string(text));
        } catch (const std::exception&) {
            return std::nullopt; // a broken catalogue is as good as none
        }
    }

    std::vector<std::locale> catalogues_;
};

} // namespace

std::unique_ptr<TextTable> openTextCatalogues(const std::filesystem::path& folder, const std::string& domain,
                                              const std::vector<std::string>& languages) {
    std::vector<std::string> order = languages;
    order.emplace_back("en");
    std::vector<std::locale> catalogues;
    std::vector<std::string> seen;
    for (const std::string& language : order) {
        if (language.empty() || language.find('/') != std::string::npos ||
            std::ranges::find(seen, language) != seen.end())
            continue;
        seen.push_back(language);
        if (auto catalogue = loadCatalogue(folder, domain, language))
            catalogues.push_back(*catalogue);
    }
    return std::make_unique<GettextTable>(std::move(catalogues));
}

} // namespace toolkit
