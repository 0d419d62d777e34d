#include "toolkit/bundle.h"

#include "toolkit/json_values.h"
#include "toolkit/preferred_languages.h"
#include "toolkit/text_catalogue.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>

namespace toolkit {

TextTable::~TextTable() = default;

std::shared_ptr<Bundle> Bundle::open(const std::filesystem::path& folder, BundleView view, std::string& error) {
    const std::filesystem::path infoFile = folder / "Info.json";
    std::error_code missing;
    if (!std::filesystem::is_directory(folder, missing)) {
        error = "There is no bundle at \"" + folder.string() + "\".";
        return nullptr;
    }
    std::ifstream stream(infoFile, std::ios::binary);
    const auto json = stream ? nlohmann::json::parse(stream, nullptr, false) : nlohmann::json();
    if (!json.is_object()) {
        error = "The bundle \"" + folder.string() + "\" has no readable info dictionary (Info.json).";
        return nullptr;
    }
    auto bundle = std::make_shared<Bundle>();
    bundle->folder_ = std::filesystem::weakly_canonical(folder, missing);
    bundle->info_ = *valueFromJson(json).as<ValueMap>();
    for (const auto& [key, value] : view.info)
        bundle->info_.insert_or_assign(key, value);
    for (const std::string& key : view.removedInfo)
        bundle->info_.erase(key);
    for (const auto& entry : std::filesystem::directory_iterator(bundle->folder_ / "Resources", missing))
        if (entry.is_regular_file(missing))
            bundle->resources_.emplace(entry.path().filename().string(), entry.path());
    std::vector<std::string> languages; // catalogues go by language codes, tags such as "ja-JP" do not matter
    for (const std::string& language : view.languages)
        languages.push_back(languageCode(language));
    bundle->view_ = std::move(view);
    if (bundle->view_.localize)
        bundle->texts_ = openTextCatalogues(bundle->folder_ / "Resources", bundle->folder_.stem().string(), languages);
    return bundle;
}

std::optional<std::string> Bundle::identifier() const {
    const auto* text = valueInMap(info_, "CFBundleIdentifier").as<std::string>();
    return text == nullptr ? std::nullopt : std::optional(*text);
}

LocalizedText Bundle::localizedText(std::string_view key) const {
    LocalizedText result{.key = std::string(key), .text = std::string(key)};
    if (const auto given = view_.strings.find(key); given != view_.strings.end())
        result.text = given->second;
    else if (texts_ != nullptr)
        result.text = texts_->textForKey(key).value_or(result.text);
    return result;
}

const std::filesystem::path* Bundle::pathForResource(std::string_view name, std::string_view type) const {
    if (name.empty())
        return nullptr;
    std::string file = std::string(name) + "." + std::string(type);
    auto found = resources_.find(file);
    if (found == resources_.end()) {
        const auto extension = file.end() - static_cast<std::ptrdiff_t>(type.size());
        std::transform(extension, file.end(), extension,
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        found = resources_.find(file);
    }
    return found == resources_.end() ? nullptr : &found->second;
}

} // namespace toolkit
