#include "color_settings/ColorTransformer.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace color_settings_tests {
namespace {

using toolkit::TextColor;
using toolkit::TransformedValue;
using toolkit::Value;

TEST(ColorTransformer, GivesTheEnabledColourForWhatIsTrueAndTheDisabledOneForAllElse) {
    const std::pair<Value, TextColor> rows[] = {
        {true, TextColor::Enabled},     {false, TextColor::Disabled},
        {Value(), TextColor::Disabled}, {0, TextColor::Disabled},
        {1, TextColor::Enabled},        {2, TextColor::Enabled},
        {-1, TextColor::Enabled},       {0.0, TextColor::Disabled},
        {0.5, TextColor::Enabled},      {"YES", TextColor::Enabled},
        {"true", TextColor::Enabled},   {"1", TextColor::Enabled},
        {"NO", TextColor::Disabled},    {"0", TextColor::Disabled},
        {"", TextColor::Disabled},      {toolkit::ValueList{true}, TextColor::Disabled},
    };
    const ColorTransformer transformer;
    for (const auto& [value, color] : rows) {
        SCOPED_TRACE(value.textReading());
        EXPECT_EQ(transformer.transformedValue(value), TransformedValue(color));
    }
}

TEST(ColorTransformer, GivesColours) {
    EXPECT_EQ(ColorTransformer().transformedValueClass(), "color");
}

TEST(ColorTransformer, AllowsNoWayBack) {
    EXPECT_FALSE(ColorTransformer().allowsReverseTransformation());
    for (const Value& value : {Value(true), Value(false), Value("Enabled"), Value()})
        EXPECT_EQ(ColorTransformer().reverseTransformedValue(value), TransformedValue());
}

TEST(ColorTransformer, BearsTheNameThatFormsUse) {
    EXPECT_EQ(ColorTransformer::kName, "CVColorTransformer");
}

} // namespace
} // namespace color_settings_tests
