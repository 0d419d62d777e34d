#include "printing/print_settings.h"

#include <gtest/gtest.h>

namespace printing {
namespace {

TEST(PrintSettingsOf, AMissingKeyGivesNothing) {
    PrintSettings settings;
    settings.setValueForKey(std::string("here"), "key");
    EXPECT_EQ(settings.valueForKey("Key"), std::nullopt);
    EXPECT_EQ(settings.valueForKey(""), std::nullopt);
}

TEST(PrintSettingsOf, EachKindOfValueIsKept) {
    PrintSettings settings;
    const SettingValue values[] = {std::string("-5"), std::int64_t{-5}, 0.25, true};
    for (const SettingValue& value : values) {
        SCOPED_TRACE(value.index());
        settings.setValueForKey(value, "key");
        EXPECT_EQ(settings.valueForKey("key"), value);
    }
    EXPECT_EQ(settings.entries().size(), 1u);
}

TEST(PrintSettingsOf, ARemovedKeyGivesNothing) {
    PrintSettings settings;
    settings.setValueForKey(true, "removed");
    settings.setValueForKey(true, "kept");
    settings.removeKey("removed");
    settings.removeKey("never there");
    EXPECT_EQ(settings.valueForKey("removed"), std::nullopt);
    EXPECT_EQ(settings.valueForKey("kept"), SettingValue(true));
}

TEST(OptionText, IsWhatAJobOptionCarries) {
    const std::pair<SettingValue, const char*> kTexts[] = {
        {std::string(" as it stands"), " as it stands"},
        {std::string(), ""},
        {true, "true"},
        {false, "false"},
        {std::int64_t{0}, "0"},
        {std::int64_t{-20}, "-20"},
        {INT64_MIN, "-9223372036854775808"},
        {0.1, "0.1"},
        {-7.5, "-7.5"},
        {20.0, "20"},
    };
    for (const auto& [value, text] : kTexts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(optionText(value), text);
    }
}

} // namespace
} // namespace printing
