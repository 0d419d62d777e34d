#include "tests/color_settings/color_panel.h"

namespace color_settings_tests {
namespace {

using testing::IsEmpty;
using toolkit::Value;
using toolkit::ValueList;
using toolkit::ValueMap;

constexpr const char* kOrder = "Summary Display Order";

class ColorPanelSummary : public ColorPanelTest {
protected:
    void enhance() { host->description->mark("CVColorEnhancement", "ON"); }
    void storeFiveSettings() {
        for (std::size_t index = 0; index < kSettingKeys.size(); ++index)
            setSetting(kSettingKeys[index], std::to_string(index + 11));
    }
};

TEST_F(ColorPanelSummary, ListsTheFiveAdjustmentsBehindTheOptions) {
    enhance();
    host->description->mark("CVColorMatching", "Vivid");
    storeFiveSettings();
    makePanel();
    EXPECT_EQ(panel->summaryInfo(),
              (ValueMap{{"Color Matching", "Vivid"},
                        {"Halftone Pattern", "Dither"},
                        {"Color Enhancement", "ON"},
                        {"Brightness", 11},
                        {"Contrast", 12},
                        {"Red", 13},
                        {"Green", 14},
                        {"Blue", 15},
                        {kOrder, ValueList{"Color Matching", "Halftone Pattern", "Color Enhancement", "Brightness",
                                           "Contrast", "Red", "Green", "Blue"}}}));
}

TEST_F(ColorPanelSummary, ListsOnlyBrightnessAndContrastInMono) {
    enhance();
    storeFiveSettings();
    makePanel();
    setFlags(kMono, true);
    EXPECT_EQ(panel->summaryInfo(),
              (ValueMap{{"Halftone Pattern", "Dither"},
                        {"Color Enhancement", "ON"},
                        {"Brightness", 11},
                        {"Contrast", 12},
                        {kOrder, ValueList{"Halftone Pattern", "Color Enhancement", "Brightness", "Contrast"}}}));
}

TEST_F(ColorPanelSummary, ListsNoAdjustmentsWithoutColourEnhancement) {
    storeFiveSettings();
    makePanel();
    EXPECT_EQ(panel->summaryInfo(),
              (ValueMap{{"Color Matching", "None"},
                        {"Halftone Pattern", "Dither"},
                        {"Color Enhancement", "OFF"},
                        {kOrder, ValueList{"Color Matching", "Halftone Pattern", "Color Enhancement"}}}));
}

TEST_F(ColorPanelSummary, IsEmptyWithoutColourMatching) {
    useHost(tests::samplePpd("corvane-office"));
    enhance();
    storeFiveSettings();
    makePanel();
    EXPECT_EQ(panel->summaryInfo(), (ValueMap{{kOrder, ValueList()}}));
    EXPECT_EQ(pending("CVColorEnhancement"), Value("ON"));
}

TEST_F(ColorPanelSummary, LeavesOutTheAdjustmentsThatThePrinterLacks) {
    useHost(tests::ppdWith(
        kMatchingAttribute + tests::ppdOption("CVColorEnhancement", "Enhance", "ON", {"OFF/Off", "ON/On"}) +
        tests::ppdOption("CVContrast", "Kontrast", "0", {"0/0"}) + tests::ppdOption("CVBlue", "Blau", "0", {"0/0"})));
    storeFiveSettings();
    makePanel();
    EXPECT_EQ(
        panel->summaryInfo(),
        (ValueMap{
            {"Enhance", "ON"}, {"Kontrast", 12}, {"Blau", 15}, {kOrder, ValueList{"Enhance", "Kontrast", "Blau"}}}));
}

TEST_F(ColorPanelSummary, ListsAdjustmentsThatAreNotManaged) {
    useBundle({}, {{"PMPPDKeysSupportedColor", ValueList{"CVColorEnhancement"}}});
    enhance();
    storeFiveSettings();
    makePanel();
    const auto summary = panel->summaryInfo();
    ASSERT_TRUE(summary);
    EXPECT_EQ(toolkit::valueInMap(*summary, kOrder),
              Value(ValueList{"Color Enhancement", "Brightness", "Contrast", "Red", "Green", "Blue"}));
    EXPECT_EQ(toolkit::valueInMap(*summary, "Green"), Value(14));
}

TEST_F(ColorPanelSummary, TakesTheValuesFreshFromThePrintSettings) {
    enhance();
    makePanelWithView();
    storeFiveSettings();
    setSetting(kSettingKeys[1], "21");
    setPending("CVBrightness", 3);
    setStored("CVBrightness", 3);
    const auto summary = panel->summaryInfo();
    ASSERT_TRUE(summary);
    EXPECT_EQ(toolkit::valueInMap(*summary, "Brightness"), Value(11));
    EXPECT_EQ(toolkit::valueInMap(*summary, "Contrast"), Value(0));
    EXPECT_EQ(stored("CVBrightness"), Value(11));
}

TEST_F(ColorPanelSummary, GoesByTheMarksAndAsksNothing) {
    makePanel();
    setPending("CVColorEnhancement", "ON");
    const auto summary = panel->summaryInfo();
    ASSERT_TRUE(summary);
    EXPECT_EQ(toolkit::valueInMap(*summary, "Color Enhancement"), Value("OFF"));
    EXPECT_THAT(host->log, IsEmpty());
}

TEST_F(ColorPanelSummary, IsThereWithoutManagedKeys) {
    useBundle({}, {}, {"PMPPDKeysSupportedColor"});
    enhance();
    makePanel();
    EXPECT_EQ(panel->summaryInfo(), (ValueMap{{kOrder, ValueList()}}));
}

} // namespace
} // namespace color_settings_tests
