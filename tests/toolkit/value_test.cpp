#include "toolkit/value.h"

#include <gtest/gtest.h>
#include <limits>

namespace toolkit {
namespace {

constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();

TEST(Value, IntegerReadingOfTextTakesLeadingBlanksASignAndDigits) {
    constexpr std::pair<const char*, std::int64_t> kReadings[] = {
        {"5", 5},   {"-3", -3},    {"+5", 5},  {"  \t\n\v\f\r12", 12}, {" -7 ", -7}, {"007", 7},
        {"-0", 0},  {"20abc", 20}, {"7.9", 7}, {"-7.9", -7},           {"1e3", 1},   {"0x10", 0},
        {"3 4", 3},
    };
    for (const auto& [text, reading] : kReadings) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(text).integerReading(), reading);
    }
}

TEST(Value, IntegerReadingOfTextWithoutDigitsIsZero) {
    for (const char* text : {"", " ", "abc", "-", "+", "- 5", "+ 5", "--5", "++5", "-+5", "+-5", "a5", ".5",
                             "\xC2\xA0"
                             "5"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(text).integerReading(), 0);
    }
}

TEST(Value, IntegerReadingOfTextBeyond64BitsIsTheNearestLimit) {
    constexpr std::pair<const char*, std::int64_t> kReadings[] = {
        {"9223372036854775807", kLargest},    {"9223372036854775808", kLargest},
        {"+99999999999999999999x", kLargest}, {"-9223372036854775808", kSmallest},
        {"-9223372036854775809", kSmallest},  {"  -99999999999999999999", kSmallest},
    };
    for (const auto& [text, reading] : kReadings) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(text).integerReading(), reading);
    }
}

TEST(Value, IntegerReadingOfARealIsCutTowardZero) {
    constexpr std::pair<double, std::int64_t> kReadings[] = {
        {7.9, 7},
        {-7.9, -7},
        {0.999, 0},
        {-0.999, 0},
        {20.0, 20},
        {1e19, kLargest},
        {-1e19, kSmallest},
        {-9223372036854775808.0, kSmallest},
        {9223372036854775808.0, kLargest},
        {std::numeric_limits<double>::infinity(), kLargest},
        {-std::numeric_limits<double>::infinity(), kSmallest},
        {std::numeric_limits<double>::quiet_NaN(), 0},
    };
    for (const auto& [real, reading] : kReadings) {
        SCOPED_TRACE(real);
        EXPECT_EQ(Value(real).integerReading(), reading);
    }
}

TEST(Value, IntegerReadingOfTheOtherKinds) {
    EXPECT_EQ(Value(kSmallest).integerReading(), kSmallest);
    EXPECT_EQ(Value(true).integerReading(), 1);
    EXPECT_EQ(Value(false).integerReading(), 0);
    EXPECT_EQ(Value().integerReading(), 0);
    EXPECT_EQ(Value(ValueList{Value(5)}).integerReading(), 0);
    EXPECT_EQ(Value(ValueMap{{"a", Value(5)}}).integerReading(), 0);
}

TEST(Value, IntegerInTextReadsAsAValueDoes) {
    EXPECT_EQ(integerInText(" -12 points"), -12);
    EXPECT_EQ(integerInText("points"), 0);
}

TEST(Value, RealReadingOfTextTakesTheLongestLeadingNumber) {
    constexpr std::pair<const char*, double> kReadings[] = {
        {"12.5", 12.5}, {"-12.5pt", -12.5}, {"+3", 3},  {" \t.5", 0.5}, {"-.25", -0.25}, {"5.", 5},
        {"1e3", 1000},  {"2.5e-1x", 0.25},  {"1e", 1},  {"1e+", 1},     {"1.2.3", 1.2},  {"0x10", 0},
        {"", 0},        {" ", 0},           {"abc", 0}, {"-", 0},       {".", 0},        {"e5", 0},
        {"+-5", 0},     {"-+5", 0},         {"--5", 0}, {"++5", 0},     {"inf", 0},      {"-infinity", 0},
        {"nan", 0},     {"1,5", 1},         {"- 5", 0},
    };
    for (const auto& [text, reading] : kReadings) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(text).realReading(), reading);
    }
}

TEST(Value, RealReadingOfTextThatFitsNoRealIsZero) {
    for (const char* text : {"1e400", "-1e400", "+1e400", "1e-400", "-1e-400"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Value(text).realReading(), 0);
    }
}

TEST(Value, RealReadingOfTheOtherKinds) {
    EXPECT_EQ(Value(-2.75).realReading(), -2.75);
    EXPECT_EQ(Value(7).realReading(), 7.0);
    EXPECT_EQ(Value(true).realReading(), 1.0);
    EXPECT_EQ(Value(false).realReading(), 0.0);
    EXPECT_EQ(Value().realReading(), 0.0);
    EXPECT_EQ(Value(ValueList{Value(5)}).realReading(), 0.0);
    EXPECT_EQ(Value(ValueMap{{"a", Value(5)}}).realReading(), 0.0);
}

TEST(Value, BooleanReadingOfTextThatIsTrue) {
    for (const char* text : {"YES", "yes", "Y", "true", "True", "T", "1", "9", " \t1", "+1", "-1", "-007", "000y", "+t",
                             "1no", "Yesterday"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(Value(text).booleanReading());
    }
}

TEST(Value, BooleanReadingOfTextThatIsFalse) {
    for (const char* text :
         {"", " ", "NO", "no", "false", "0", "000", "-0", "ON", "OFF", "on", "x1", "--1", "+-1", "- 1", "0 1", "0.1"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(Value(text).booleanReading());
    }
}

TEST(Value, BooleanReadingOfTheOtherKinds) {
    EXPECT_TRUE(Value(true).booleanReading());
    EXPECT_FALSE(Value(false).booleanReading());
    EXPECT_TRUE(Value(-1).booleanReading());
    EXPECT_FALSE(Value(0).booleanReading());
    EXPECT_TRUE(Value(0.25).booleanReading());
    EXPECT_FALSE(Value(0.0).booleanReading());
    EXPECT_FALSE(Value().booleanReading());
    EXPECT_FALSE(Value(ValueList{Value(true)}).booleanReading());
    EXPECT_FALSE(Value(ValueMap{{"a", Value(true)}}).booleanReading());
}

TEST(Value, TextReading) {
    EXPECT_EQ(Value(" as it stands\n").textReading(), " as it stands\n");
    EXPECT_EQ(Value(-20).textReading(), "-20");
    EXPECT_EQ(Value(kSmallest).textReading(), "-9223372036854775808");
    EXPECT_EQ(Value(true).textReading(), "1");
    EXPECT_EQ(Value(false).textReading(), "0");
    EXPECT_EQ(Value().textReading(), "");
    EXPECT_EQ(Value(ValueList{Value("a")}).textReading(), "");
    EXPECT_EQ(Value(ValueMap{{"a", Value("b")}}).textReading(), "");
}

TEST(Value, TextReadingOfARealIsTheShortestThatReadsBack) {
    EXPECT_EQ(Value(0.1).textReading(), "0.1");
    EXPECT_EQ(Value(-7.9).textReading(), "-7.9");
    EXPECT_EQ(Value(20.0).textReading(), "20");
    EXPECT_EQ(Value(1e100).textReading(), "1e+100");
    EXPECT_EQ(Value(0.1 + 0.2).textReading(), "0.30000000000000004");
}

TEST(Value, EqualValuesAreOfOneKind) {
    EXPECT_EQ(Value(1), Value(std::int64_t{1}));
    EXPECT_NE(Value(1), Value(1.0));
    EXPECT_NE(Value(1), Value(true));
    EXPECT_NE(Value("1"), Value(1));
    EXPECT_NE(Value(), Value(""));
    EXPECT_EQ(Value(ValueMap{{"a", Value(1)}}), Value(ValueMap{{"a", Value(1)}}));
    EXPECT_NE(Value(ValueList{Value(1)}), Value(ValueList{Value(2)}));
}

TEST(Value, IsTextComparesTextsOnly) {
    EXPECT_TRUE(Value("ON").isText("ON"));
    EXPECT_FALSE(Value("ON").isText("on"));
    EXPECT_FALSE(Value(1).isText("1"));
    EXPECT_FALSE(Value().isText(""));
}

TEST(Value, AMissingEntryOfAMapIsAbsent) {
    const ValueMap map{{"Here", Value("yes")}};
    EXPECT_TRUE(valueInMap(map, "Here").isText("yes"));
    EXPECT_TRUE(valueInMap(map, "here").isAbsent());
}

} // namespace
} // namespace toolkit
