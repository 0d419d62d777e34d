#pragma once

#include "toolkit/export.h"
#include "toolkit/localized_text.h"
#include "toolkit/value.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/// Where a bundle's texts come from: catalogues for a list of languages.
class CV_TOOLKIT_EXPORT TextTable {
public:
    virtual ~TextTable();
    /// nullopt where no catalogue has the key.
    [[nodiscard]] virtual std::optional<std::string> textForKey(std::string_view key) const = 0;
};

/// How one dialog sees a bundle: its languages, and what it lays over the bundle's own entries.
struct BundleView {
    std::vector<std::string> languages;                      ///< the first one preferred
    bool localize = true;                                    ///< false: every text stays its key
    std::map<std::string, std::string, std::less<>> strings; ///< texts that stand for single keys
    ValueMap info;                                           ///< entries that replace the bundle's
    std::vector<std::string> removedInfo;                    ///< entries that the bundle shall not have
};

/// A bundle folder: its info dictionary (Info.json), its localised texts and its resources.
class CV_TOOLKIT_EXPORT Bundle {
public:
    /// Null where the folder or its info dictionary cannot be read; `error` then says why, in one sentence.
    static std::shared_ptr<Bundle> open(const std::filesystem::path& folder, BundleView view, std::string& error);

    /// The bundle's own folder.
    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }
    [[nodiscard]] const ValueMap& infoDictionary() const { return info_; } ///< Info.json, as this dialog sees it
    /// The entry "CFBundleIdentifier"; nullopt where it is no text.
    [[nodiscard]] std::optional<std::string> identifier() const;

    /// The text of the key in the default table: in the first language that has it, then in English, then the key.
    [[nodiscard]] LocalizedText localizedText(std::string_view key) const;
    [[nodiscard]] std::string localizedString(std::string_view key) const { return localizedText(key).text; }

    /// The path of the resource, one of the files that stood in "Resources" when the bundle was opened; null where
    /// there is none. The bundle's.
    [[nodiscard]] const std::filesystem::path* pathForResource(std::string_view name, std::string_view type) const;

private:
    std::filesystem::path folder_;
    ValueMap info_;
    std::map<std::string, std::filesystem::path, std::less<>> resources_; // by the files' names
    BundleView view_;
    std::unique_ptr<TextTable> texts_;
};

} // namespace toolkit
