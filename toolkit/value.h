#pragma once

#include "toolkit/export.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace toolkit {

/// What the key-value store, the pending values, notifications and the user defaults hold: absent, text (UTF-8),
/// a 64-bit integer, a real, a Boolean, a list or a map. The readings below are the only conversions there are.
class CV_TOOLKIT_EXPORT Value {
public:
    using List = std::vector<Value>;                       ///< values in order
    using Map = std::map<std::string, Value, std::less<>>; ///< values by key

    Value() = default;
    Value(std::string text) : content_(std::move(text)) {}        ///< a text
    Value(std::string_view text) : content_(std::string(text)) {} ///< a text
    Value(const char* text) : content_(std::string(text)) {}      ///< a text, never null
    Value(bool flag) : content_(flag) {}                          ///< a Boolean
    Value(int number) : content_(std::int64_t{number}) {}         ///< an integer
    Value(std::int64_t number) : content_(number) {}              ///< an integer
    Value(double number) : content_(number) {}                    ///< a real
    Value(List list) : content_(std::move(list)) {}               ///< a list
    Value(Map map) : content_(std::move(map)) {}                  ///< a map

    [[nodiscard]] bool isAbsent() const { return std::holds_alternative<std::monostate>(content_); } ///< no value
    /// The content if it is of this kind, else null. Borrowed: valid until this value changes.
    template <typename Kind>
    [[nodiscard]] const Kind* as() const {
        return std::get_if<Kind>(&content_);
    }
    [[nodiscard]] bool isText(std::string_view text) const { ///< a text, and this one
        const auto* own = as<std::string>();
        return own != nullptr && *own == text;
    }

    /// Text: leading blanks, an optional sign, then digits up to the first other character; no digits give 0; too
    /// large for 64 bits gives the nearest limit. Reals are cut toward zero. Booleans read 1 and 0, all else 0.
    [[nodiscard]] std::int64_t integerReading() const;
    /// Text: the longest leading decimal number that fits a double, else 0. Booleans read 1 and 0, all else 0.
    [[nodiscard]] double realReading() const;
    /// Numbers: not zero. Text: after leading blanks, a sign and zeros, one of "YyTt" or a digit 1 to 9.
    [[nodiscard]] bool booleanReading() const;
    /// Text as it stands; integers in decimal; reals in the shortest form that reads back; Booleans "1" and "0";
    /// absent, lists and maps give an empty text.
    [[nodiscard]] std::string textReading() const;

    /// Equal kind and equal content.
    friend bool operator==(const Value&, const Value&) = default;

    template <typename Visitor>
    decltype(auto) visit(Visitor&& visitor) const { ///< with the content
        return std::visit(std::forward<Visitor>(visitor), content_);
    }

private:
    std::variant<std::monostate, std::string, std::int64_t, double, bool, List, Map> content_;
};

using ValueMap = Value::Map;   ///< by key
using ValueList = Value::List; ///< in order

/// The value under `key`, or an absent one. Borrowed from the map.
CV_TOOLKIT_EXPORT const Value& valueInMap(const ValueMap& map, std::string_view key);

/// The integer that a text begins with, by the rule of Value::integerReading().
CV_TOOLKIT_EXPORT std::int64_t integerInText(std::string_view text);

} // namespace toolkit
