#include "tests/color_settings/color_panel.h"

namespace color_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::Value;
using toolkit::ValueMap;

class ColorPanelNotifications : public ColorPanelTest {
protected:
    void tellMono(const Value& mono) { tell(ValueMap{{"FromSetting", "CVMonoColor"}, {"CVMonoColor", mono}}); }
    void tellDiffusion(const Value& diffusion) {
        tell(ValueMap{{"FromSetting", "CVHalfTonePattern"}, {"CVHalfTonePattern", diffusion}});
    }
};

TEST_F(ColorPanelNotifications, CarryTheColourMode) {
    makePanel();
    for (const Value& value : {Value(true), Value(1), Value("YES")}) {
        SCOPED_TRACE(value.textReading());
        setFlags(kMono, false);
        tellMono(value);
        EXPECT_TRUE(hasFlags(kMono));
    }
    for (const Value& value : {Value(false), Value(0), Value("Mono"), Value()}) {
        SCOPED_TRACE(value.textReading());
        setFlags(kMono, true);
        tellMono(value);
        EXPECT_FALSE(hasFlags(kMono));
    }
    EXPECT_THAT(host->log, testing::Not(testing::Contains(testing::StartsWith("ask"))));
}

TEST_F(ColorPanelNotifications, OfTheColourModeLeaveTheHalfTonePattern) {
    makePanel();
    tell(ValueMap{{"FromSetting", "CVMonoColor"}, {"CVMonoColor", true}, {"CVHalfTonePattern", true}});
    EXPECT_TRUE(hasFlags(kMono));
    EXPECT_FALSE(hasFlags(kDiffusionPattern));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value());
}

TEST_F(ColorPanelNotifications, OfTheHalfTonePatternMarkIt) {
    showPanel();
    tellDiffusion(true);
    EXPECT_TRUE(hasFlags(kDiffusionPattern));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value("Diffusion"));
    EXPECT_EQ(host->description->markedChoice("CVHalfTonePattern"), "Diffusion");
    tellDiffusion(false);
    EXPECT_FALSE(hasFlags(kDiffusionPattern));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value("Dither"));
    EXPECT_EQ(host->description->markedChoice("CVHalfTonePattern"), "Dither");
}

TEST_F(ColorPanelNotifications, OfTheHalfTonePatternLeaveTheColourMode) {
    makePanel();
    setFlags(kMono, true);
    tell(ValueMap{{"FromSetting", "CVHalfTonePattern"}, {"CVHalfTonePattern", true}, {"CVMonoColor", false}});
    EXPECT_TRUE(hasFlags(kMono | kDiffusionPattern));
}

TEST_F(ColorPanelNotifications, OfTheHalfTonePatternWithoutItsValueMeanDither) {
    makePanel();
    setFlags(kDiffusionPattern, true);
    tell(ValueMap{{"FromSetting", "CVHalfTonePattern"}});
    EXPECT_FALSE(hasFlags(kDiffusionPattern));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value("Dither"));
}

TEST_F(ColorPanelNotifications, OfARefusedHalfTonePatternLeaveThePendingValue) {
    showPanel();
    host->refused = {"CVHalfTonePattern"};
    tellDiffusion(true);
    EXPECT_TRUE(hasFlags(kDiffusionPattern));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value("Dither"));
}

// Writes down which values are set and marked.
class MarkingPanel : public CVInkColorSettingPDE {
public:
    std::vector<std::string> marked;

protected:
    bool setAndMarkValueForKey(const std::optional<std::string>& value,
                               const std::optional<std::string>& key) override {
        marked.push_back(key.value_or("nothing") + "=" + value.value_or("nothing"));
        return CVInkColorSettingPDE::setAndMarkValueForKey(value, key);
    }
};

TEST_F(ColorPanelNotifications, OfTheSameHalfTonePatternSetItAgainAndAskNothing) {
    const auto marking = std::make_shared<MarkingPanel>();
    ASSERT_TRUE(marking->initWithCallback(host.get()));
    EXPECT_THAT(marking->marked, IsEmpty());
    tellDiffusion(true);
    host->takeLog();
    tellDiffusion(true);
    EXPECT_THAT(marking->marked, ElementsAre("CVHalfTonePattern=Diffusion", "CVHalfTonePattern=Diffusion"));
    EXPECT_THAT(host->log, testing::Not(testing::Contains(testing::StartsWith("ask"))));
}

TEST_F(ColorPanelNotifications, OfOtherSettingsAreIgnored) {
    const ValueMap rows[] = {
        {},
        {{"CVMonoColor", true}, {"CVHalfTonePattern", true}},
        {{"FromSetting", "CVMediaType"}, {"CVMonoColor", true}, {"CVHalfTonePattern", true}},
        {{"FromSetting", "cvmonocolor"}, {"CVMonoColor", true}},
        {{"FromSetting", 1}, {"CVMonoColor", true}},
    };
    setSetting("CVMonoColor", "Color");
    setSetting("CVHalfTonePattern", "Dither");
    makePanel();
    for (const ValueMap& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Value(row)));
        for (const bool before : {false, true}) {
            setFlags(kMono | kDiffusionPattern, before);
            tell(row);
            EXPECT_EQ(hasFlags(kMono), before);
            EXPECT_EQ(hasFlags(kDiffusionPattern), before);
        }
    }
    EXPECT_EQ(pending("CVHalfTonePattern"), Value());
}

TEST_F(ColorPanelNotifications, WithoutInformationTakeTheColourModeOfThePrintSettings) {
    using Setting = printing::SettingValue;
    const std::pair<Setting, bool> rows[] = {
        {std::string("Color"), false}, {std::string("Mono"), true}, {std::string("Sepia"), true},
        {std::string("color"), true},  {std::string(""), true},     {std::int64_t{0}, true},
    };
    makePanel();
    for (const auto& [mode, mono] : rows) {
        SCOPED_TRACE(printing::optionText(mode));
        setSetting("CVMonoColor", mode);
        for (const bool before : {false, true}) {
            setFlags(kMono, before);
            tell(std::nullopt);
            EXPECT_EQ(hasFlags(kMono), mono);
        }
    }
}

TEST_F(ColorPanelNotifications, WithoutInformationTakeTheHalfTonePatternOfThePrintSettings) {
    struct Row {
        const char* pattern;
        bool before, after;
    };
    const Row rows[] = {
        {"Dither", true, false},     {"Dither", false, false},   {"Diffusion", false, true},
        {"Diffusion", true, true},   {"Stochastic", true, true}, {"Stochastic", false, false},
        {"diffusion", false, false},
    };
    makePanel();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pattern);
        setSetting("CVHalfTonePattern", row.pattern);
        setFlags(kDiffusionPattern, row.before);
        tell(std::nullopt);
        EXPECT_EQ(hasFlags(kDiffusionPattern), row.after);
    }
    EXPECT_THAT(host->log, testing::Not(testing::Contains(testing::StartsWith("ask"))));
    EXPECT_EQ(pending("CVHalfTonePattern"), Value());
}

TEST_F(ColorPanelNotifications, WithoutInformationLeaveWhatThePrintSettingsDoNotHold) {
    makePanel();
    for (const bool hasSettings : {true, false})
        for (const bool before : {false, true}) {
            SCOPED_TRACE(testing::Message() << "settings " << hasSettings << ", before " << before);
            if (!hasSettings)
                host->settings.reset();
            setFlags(kMono | kDiffusionPattern, before);
            tell(std::nullopt);
            EXPECT_EQ(hasFlags(kMono), before);
            EXPECT_EQ(hasFlags(kDiffusionPattern), before);
        }
}

TEST_F(ColorPanelNotifications, OfOtherDialogsAreNotHeard) {
    makePanel();
    tests::TestHost other(tests::samplePpd("corvane-a3"));
    const ValueMap mono = {{"FromSetting", "CVMonoColor"}, {"CVMonoColor", true}};
    for (const toolkit::Object* sender :
         {static_cast<const toolkit::Object*>(&other.window),
          static_cast<const toolkit::Object*>(static_cast<framework::HostCallback*>(&other)),
          static_cast<const toolkit::Object*>(nullptr)})
        toolkit::NotificationCenter::defaultCenter().post(
            {.name = std::string(kNotificationName), .sender = sender, .userInfo = mono});
    EXPECT_FALSE(hasFlags(kMono));
}

TEST_F(ColorPanelNotifications, OfOtherNamesAreNotHeard) {
    makePanel();
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = "CVInkOtherNotification",
         .sender = host.get(),
         .userInfo = ValueMap{{"FromSetting", "CVMonoColor"}, {"CVMonoColor", true}}});
    EXPECT_FALSE(hasFlags(kMono));
}

TEST_F(ColorPanelNotifications, LeaveTheControlsAlone) {
    showPanel();
    const Value before = field("effectContent");
    const std::int64_t drawnBefore = drawn();
    tellMono(true);
    tellDiffusion(true);
    EXPECT_EQ(field("effectContent"), before);
    EXPECT_EQ(drawn(), drawnBefore);
}

TEST_F(ColorPanelNotifications, AreNotHeardAfterThePanelsEnd) {
    makePanel();
    panel.reset();
    tellDiffusion(true);
    EXPECT_THAT(host->log, testing::Not(testing::Contains(testing::StartsWith("ask"))));
}

TEST_F(ColorPanelNotifications, AreNotHeardAfterTheDialogClosed) {
    showPanel();
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = "NSWindowWillCloseNotification", .sender = &host->window, .userInfo = {}});
    tellMono(true);
    EXPECT_FALSE(hasFlags(kMono));
}

TEST_F(ColorPanelNotifications, AreHeardAfterTheClosingOfAWindowThatThePanelNeverStoodIn) {
    makePanelWithView();
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = "NSWindowWillCloseNotification", .sender = &host->window, .userInfo = {}});
    tellMono(true);
    EXPECT_TRUE(hasFlags(kMono));
}

} // namespace
} // namespace color_settings_tests
