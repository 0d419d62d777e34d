#include "printing/print_settings.h"

#include <charconv>

namespace printing {

std::optional<SettingValue> PrintSettings::valueForKey(std::string_view key) const {
    const auto entry = entries_.find(key);
    return entry == entries_.end() ? std::nullopt : std::optional(entry->second);
}

void PrintSettings::setValueForKey(SettingValue value, std::string_view key) {
    entries_.insert_or_assign(std::string(key), std::move(value));
}

void PrintSettings::removeKey(std::string_view key) {
    if (const auto entry = entries_.find(key); entry != entries_.end())
        entries_.erase(entry);
}

std::string optionText(const SettingValue& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "true" : "false";
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return std::to_string(*number);
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, std::get<double>(value));
    return {digits, end};
}

} // namespace printing
