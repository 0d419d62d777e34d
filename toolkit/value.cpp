#include "toolkit/value.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace toolkit {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::string_view withoutLeadingBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::int64_t cutTowardZero(double number) {
    constexpr double kLimit = 9223372036854775808.0; // 2^63, the first double beyond the largest 64-bit integer
    if (std::isnan(number))
        return 0;
    if (number >= kLimit)
        return std::numeric_limits<std::int64_t>::max();
    if (number < -kLimit)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

// Without a plus sign, which from_chars() does not take. A second sign begins no number.
std::string_view withoutPlus(std::string_view text) {
    if (!text.starts_with('+'))
        return text;
    text.remove_prefix(1);
    return text.starts_with('-') ? std::string_view() : text;
}

double realInText(std::string_view text) {
    text = withoutPlus(withoutLeadingBlanks(text));
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && std::isfinite(number) ? number : 0;
}

bool booleanInText(std::string_view text) {
    text = withoutLeadingBlanks(text);
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    const auto first = text.find_first_not_of('0');
    return first != std::string_view::npos &&
           std::string_view("YyTt123456789").find(text[first]) != std::string_view::npos;
}

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>; // clang 14 does not yet deduce it

} // namespace

std::int64_t integerInText(std::string_view text) {
    text = withoutPlus(withoutLeadingBlanks(text));
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range)
        return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                     : std::numeric_limits<std::int64_t>::max();
    return error == std::errc() ? number : 0;
}

std::int64_t Value::integerReading() const {
    return visit(Overloaded{
        [](const std::string& text) { return integerInText(text); },
        [](std::int64_t number) { return number; },
        [](double number) { return cutTowardZero(number); },
        [](bool flag) { return std::int64_t{flag}; },
        [](const auto&) { return std::int64_t{0}; },
    });
}

double Value::realReading() const {
    return visit(Overloaded{
        [](const std::string& text) { return realInText(text); },
        [](std::int64_t number) { return static_cast<double>(number); },
        [](double number) { return number; },
        [](bool flag) { return flag ? 1.0 : 0.0; },
        [](const auto&) { return 0.0; },
    });
}

bool Value::booleanReading() const {
    return visit(Overloaded{
        [](const std::string& text) { return booleanInText(text); },
        [](std::int64_t number) { return number != 0; },
        [](double number) { return number != 0; },
        [](bool flag) { return flag; },
        [](const auto&) { return false; },
    });
}

std::string Value::textReading() const {
    return visit(Overloaded{
        [](const std::string& text) { return text; },
        [](std::int64_t number) { return std::to_string(number); },
        [](double number) {
            char digits[32];
            const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
            return std::string(digits, end);
        },
        [](bool flag) { return std::string(flag ? "1" : "0"); },
        [](const auto&) { return std::string(); },
    });
}

const Value& valueInMap(const ValueMap& map, std::string_view key) {
    static const Value absent;
    const auto entry = map.find(key);
    return entry == map.end() ? absent : entry->second;
}

} // namespace toolkit
