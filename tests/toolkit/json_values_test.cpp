#include "toolkit/json_values.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace toolkit {
namespace {

Value valueOf(const char* json) {
    return valueFromJson(nlohmann::json::parse(json));
}

TEST(JsonValues, EachKindOfJsonHasItsKindOfValue) {
    EXPECT_EQ(valueOf("\"text\""), Value("text"));
    EXPECT_EQ(valueOf("true"), Value(true));
    EXPECT_EQ(valueOf("-5"), Value(-5));
    EXPECT_EQ(valueOf("5"), Value(5));
    EXPECT_EQ(valueOf("5.0"), Value(5.0));
    EXPECT_EQ(valueOf("null"), Value());
    EXPECT_EQ(valueOf("[1,[\"a\"]]"), Value(ValueList{Value(1), Value(ValueList{Value("a")})}));
    EXPECT_EQ(valueOf("{\"a\":{\"b\":false}}"), Value(ValueMap{{"a", Value(ValueMap{{"b", Value(false)}})}}));
}

TEST(JsonValues, AnIntegerBeyond64BitsIsAReal) {
    EXPECT_EQ(valueOf("9223372036854775807"), Value(INT64_MAX));
    EXPECT_EQ(valueOf("9223372036854775808"), Value(9223372036854775808.0));
    EXPECT_EQ(valueOf("18446744073709551615"), Value(18446744073709551615.0));
    EXPECT_EQ(valueOf("-9223372036854775809"), Value(-9223372036854775808.0));
}

TEST(JsonValues, AValueComesBackAsItWas) {
    const Value values[] = {
        Value(),           Value("text"),
        Value(true),       Value(INT64_MIN),
        Value(INT64_MAX),  Value(0.1),
        Value(20.0),       Value(ValueList{}),
        Value(ValueMap{}), Value(ValueMap{{"list", Value(ValueList{Value(1), Value(), Value("x")})}})};
    for (const Value& value : values) {
        const std::string text = jsonFromValue(value).dump();
        SCOPED_TRACE(text);
        EXPECT_EQ(valueOf(text.c_str()), value);
    }
}

} // namespace
} // namespace toolkit
