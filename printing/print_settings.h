#pragma once

#include "printing/export.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace printing {

/// A value of the job's print settings.
using SettingValue = std::variant<std::string, std::int64_t, double, bool>;

/// The job's print settings: values by key.
class CV_PRINTING_EXPORT PrintSettings {
public:
    using Entries = std::map<std::string, SettingValue, std::less<>>; ///< values by key

    /// nullopt where nothing is stored under the key.
    [[nodiscard]] std::optional<SettingValue> valueForKey(std::string_view key) const;
    void setValueForKey(SettingValue value, std::string_view key);    ///< replaces an earlier one
    void removeKey(std::string_view key);                             ///< nothing where there is none
    [[nodiscard]] const Entries& entries() const { return entries_; } ///< in the order of their keys

private:
    Entries entries_;
};

/// The text of a value as a job option carries it: numbers in decimal, Booleans "true" and "false".
CV_PRINTING_EXPORT std::string optionText(const SettingValue& value);

/// The keys of the print settings that more than one room uses.
inline constexpr std::string_view kColorMatchingModeKey = "AP_ColorMatchingMode";
inline constexpr std::string_view kVendorColorMatching = "AP_VendorColorMatching";           ///< the printer does
inline constexpr std::string_view kApplicationColorMatching = "AP_ApplicationColorMatching"; ///< the document
inline constexpr std::string_view kPageToPaperMappingKey = "com.apple.print.PageToPaperMappingMediaName"; ///< fitted to

/// The names of the notifications that a host posts when the paper or two-sided printing changed.
inline constexpr std::string_view kPaperDidChangeNotification = "PMPrintDestinationPaperDidChangeNotification";
inline constexpr std::string_view kDuplexChangedNotification = "PMPrintDuplexChangedNotification";

} // namespace printing
