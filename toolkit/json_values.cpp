#include "toolkit/json_values.h"

#include <nlohmann/json.hpp>

namespace toolkit {
namespace {

constexpr int kDeepestNesting = 64; // of lists and maps; what is deeper is left out

Value valueFromJson(const nlohmann::json& json, int depth) {
    if (depth > kDeepestNesting)
        return {};
    switch (json.type()) {
    case nlohmann::json::value_t::string:
        return json.get<std::string>();
    case nlohmann::json::value_t::boolean:
        return json.get<bool>();
    case nlohmann::json::value_t::number_integer:
        return json.get<std::int64_t>();
    case nlohmann::json::value_t::number_unsigned:
        if (json.get<std::uint64_t>() > INT64_MAX)
            return json.get<double>();
        return json.get<std::int64_t>();
    case nlohmann::json::value_t::number_float:
        return json.get<double>();
    case nlohmann::json::value_t::array: {
        ValueList list;
        for (const auto& element : json)
            list.push_back(valueFromJson(element, depth + 1));
        return list;
    }
    case nlohmann::json::value_t::object: {
        ValueMap map;
        for (const auto& [key, element] : json.items())
            map.insert_or_assign(key, valueFromJson(element, depth + 1));
        return map;
    }
    default:
        return {};
    }
}

} // namespace

Value valueFromJson(const nlohmann::json& json) {
    return valueFromJson(json, 0);
}

nlohmann::json jsonFromValue(const Value& value) {
    if (const auto* list = value.as<ValueList>()) {
        auto json = nlohmann::json::array();
        for (const Value& element : *list)
            json.push_back(jsonFromValue(element));
        return json;
    }
    if (const auto* map = value.as<ValueMap>()) {
        auto json = nlohmann::json::object();
        for (const auto& [key, element] : *map)
            json[key] = jsonFromValue(element);
        return json;
    }
    if (const auto* text = value.as<std::string>())
        return *text;
    if (const auto* number = value.as<std::int64_t>())
        return *number;
    if (const auto* real = value.as<double>())
        return *real;
    if (const auto* flag = value.as<bool>())
        return *flag;
    return nullptr;
}

} // namespace toolkit
