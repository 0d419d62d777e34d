#include "tests/color_settings/color_panel.h"

#include "toolkit/button.h"
#include "toolkit/number_field.h"

namespace color_settings_tests {
namespace {

using testing::IsEmpty;
using toolkit::Value;
using toolkit::ValueList;

class AdjustmentDefaults : public ColorPanelTest {
protected:
    /// Without print settings the defaults stay.
    void makePanelOfDefault(const std::string& defaultChoice) {
        useHost(tests::ppdWith(adjustmentOptions(defaultChoice)));
        host->settings.reset();
        makePanel();
    }
};

TEST_F(AdjustmentDefaults, AreTheIntegersThatTheDefaultChoicesBeginWith) {
    const std::pair<const char*, int> rows[] = {{"-3", -3}, {"+7", 7},  {"0", 0},   {"20", 20}, {"12abc", 12},
                                                {"abc", 0}, {"25", 25}, {"7.9", 7}, {"-", 0}};
    for (const auto& [choice, value] : rows) {
        SCOPED_TRACE(choice);
        makePanelOfDefault(choice);
        for (const std::string_view key : kAdjustmentKeys)
            EXPECT_EQ(pending(key), Value(value)) << key;
    }
}

TEST_F(AdjustmentDefaults, AreNoneWhereThePrinterLacksTheOption) {
    useHost(tests::ppdWith(tests::ppdOption("CVContrast", "Kontrast", "-3", {"-3/-3"})));
    host->settings.reset();
    makePanel();
    EXPECT_EQ(panel->outputBin(), (toolkit::ValueMap{{"CVContrast", -3}}));
}

TEST_F(AdjustmentDefaults, AreDefaultsAndNotMarks) {
    useHost(tests::ppdWith(tests::ppdOption("CVContrast", "Kontrast", "-3", {"-3/-3", "5/5"})));
    host->settings.reset();
    host->description->mark("CVContrast", "5");
    makePanel();
    EXPECT_EQ(pending("CVContrast"), Value(-3));
}

TEST_F(AdjustmentDefaults, AreReadOncePerPanel) {
    makePanelOfDefault("-3");
    setPending("CVRed", 9);
    send("setEffectDefaults");
    EXPECT_EQ(pending("CVRed"), Value(9));
    EXPECT_EQ(pending("CVGreen"), Value(-3));
}

TEST_F(AdjustmentDefaults, CopyThePendingValuesIntoTheStoreAsTheyAre) {
    makePanelWithView();
    setPending("CVBrightness", 25);
    setPending("CVContrast", "7 or so");
    setPending("CVRed", -7.5);
    setPending("CVGreen", Value());
    setStored("CVGreen", 4);
    send("setEffectDefaults");
    EXPECT_EQ(stored("CVBrightness"), Value(25));
    EXPECT_EQ(stored("CVContrast"), Value("7 or so"));
    EXPECT_EQ(stored("CVRed"), Value(-7.5));
    EXPECT_EQ(stored("CVGreen"), Value());
    EXPECT_EQ(stored("CVBlue"), Value(0));
}

TEST_F(AdjustmentDefaults, ForgetTheLastChangeEveryTime) {
    makePanelWithView();
    model<toolkit::NumberField>("blueField").userSetValue(6);
    send("setEffectDefaults");
    EXPECT_EQ(lastChange(), Value(ValueList{-1, 0}));
}

TEST_F(AdjustmentDefaults, LeaveTheFiltersOfALaterTimeAlone) {
    makePanelWithView();
    model<toolkit::NumberField>("redField").userSetValue(14);
    const imaging::ColorMatrix before = preview().colorMatrix;
    EXPECT_NE(before, imaging::ColorMatrix());
    send("setEffectDefaults");
    EXPECT_EQ(preview().colorMatrix, before);
}

class RestoredAdjustments : public ColorPanelTest {};

TEST_F(RestoredAdjustments, AreReadAsIntegersAndZeroOutsideTheRange) {
    using Setting = printing::SettingValue;
    const std::pair<Setting, int> rows[] = {
        {std::string("20"), 20},
        {std::string("-20"), -20},
        {std::string("21"), 0},
        {std::string("-21"), 0},
        {std::string("abc"), 0},
        {std::string(""), 0},
        {std::string(" 12"), 12},
        {std::string("+5"), 5},
        {std::string("7.9"), 7},
        {std::string("-7.9"), -7},
        {std::string("8abc"), 8},
        {std::string("99999999999999999999"), 0},
        {std::int64_t{-4}, -4},
        {std::int64_t{21}, 0},
        {7.9, 7},
        {-7.9, -7},
        {20.9, 20},
        {true, 1},
    };
    makePanelWithView();
    for (const auto& [setting, value] : rows) {
        SCOPED_TRACE(printing::optionText(setting));
        for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index) {
            SCOPED_TRACE(kAdjustmentKeys[index]);
            setSetting(kSettingKeys[index], setting);
            setPending(kAdjustmentKeys[index], "another");
            setStored(kAdjustmentKeys[index], "another");
            send("restoreEffectValues");
            EXPECT_EQ(pending(kAdjustmentKeys[index]), Value(value));
            EXPECT_EQ(stored(kAdjustmentKeys[index]), Value(value));
        }
    }
}

TEST_F(RestoredAdjustments, ComeEachFromItsOwnKey) {
    makePanel();
    for (std::size_t index = 0; index < kSettingKeys.size(); ++index)
        setSetting(kSettingKeys[index], std::to_string(index + 1));
    send("restoreEffectValues");
    for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index)
        EXPECT_EQ(pending(kAdjustmentKeys[index]), Value(static_cast<int>(index) + 1)) << kAdjustmentKeys[index];
}

TEST_F(RestoredAdjustments, AreZeroWhereThePrintSettingsHoldNone) {
    makePanelWithView();
    host->settings = printing::PrintSettings();
    setPending("CVRed", 9);
    setStored("CVRed", 9);
    send("restoreEffectValues");
    EXPECT_EQ(pending("CVRed"), Value(0));
    EXPECT_EQ(stored("CVRed"), Value(0));
    EXPECT_EQ(setting(kSettingKeys[2]), "(none)");
}

TEST_F(RestoredAdjustments, StayWithoutPrintSettings) {
    makePanelWithView();
    host->settings.reset();
    setPending("CVRed", 9);
    setStored("CVRed", 8);
    send("restoreEffectValues");
    EXPECT_EQ(pending("CVRed"), Value(9));
    EXPECT_EQ(stored("CVRed"), Value(8));
}

TEST_F(RestoredAdjustments, StayWhereTheHostGivesNoPrintSettings) {
    makePanel();
    host->lacking = {"printSettings"};
    setPending("CVRed", 9);
    send("restoreEffectValues");
    EXPECT_EQ(pending("CVRed"), Value(9));
}

TEST_F(RestoredAdjustments, ComeWithEveryCheckOfTheConstraintsAndEveryRestore) {
    makePanel();
    setSetting(kSettingKeys[3], "6");
    send("checkConstraints");
    EXPECT_EQ(pending("CVGreen"), Value(6));
    setSetting(kSettingKeys[3], "7");
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(pending("CVGreen"), Value(7));
}

class SavedAdjustments : public ColorPanelTest {};

TEST_F(SavedAdjustments, AreTheStoresIntegersAndZeroOutsideTheRange) {
    struct Row {
        Value stored;
        const char* saved;
        int pending;
    };
    const Row rows[] = {
        {7.9, "7", 7},    {-7.9, "-7", -7}, {25, "0", 25},  {-25, "0", -25},   {20, "20", 20},      {-20, "-20", -20},
        {21, "0", 21},    {-21, "0", -21},  {0, "0", 0},    {Value(), "0", 0}, {"12abc", "12", 12}, {"abc", "0", 0},
        {20.9, "20", 20}, {-0.9, "0", 0},   {true, "1", 1}, {"-5", "-5", -5},
    };
    makePanelWithView();
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.stored));
        for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index) {
            SCOPED_TRACE(kAdjustmentKeys[index]);
            setStored(kAdjustmentKeys[index], row.stored);
            setPending(kAdjustmentKeys[index], "another");
            setSetting(kSettingKeys[index], "another");
            send("saveEffectValues");
            EXPECT_EQ(setting(kSettingKeys[index]), row.saved);
            EXPECT_EQ(pending(kAdjustmentKeys[index]), Value(row.pending));
        }
    }
}

TEST_F(SavedAdjustments, GoEachToItsOwnKey) {
    makePanelWithView();
    for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index)
        setStored(kAdjustmentKeys[index], static_cast<int>(index) + 1);
    send("saveEffectValues");
    for (std::size_t index = 0; index < kSettingKeys.size(); ++index)
        EXPECT_EQ(setting(kSettingKeys[index]), std::to_string(index + 1));
}

TEST_F(SavedAdjustments, ArePendingOnesWithoutAStore) {
    const std::pair<Value, const char*> rows[] = {{9, "9"}, {-20, "-20"}, {25, "0"}, {Value(), "0"}, {"7", "7"}};
    makePanel();
    for (const auto& [value, saved] : rows) {
        SCOPED_TRACE(testing::PrintToString(value));
        setPending("CVRed", value);
        send("saveEffectValues");
        EXPECT_EQ(setting(kSettingKeys[2]), saved);
        EXPECT_EQ(pending("CVRed"), value);
    }
}

TEST_F(SavedAdjustments, ThatThePrinterLacksAreSavedToo) {
    useHost(tests::ppdWith(tests::ppdOption("CVOutput", "Output", "None", {"None/Printer"})));
    makePanel();
    for (const std::string_view key : kSettingKeys)
        EXPECT_EQ(setting(key), "0") << key;
}

TEST_F(SavedAdjustments, StayWithoutPrintSettings) {
    makePanelWithView();
    host->settings.reset();
    setStored("CVRed", 8);
    setPending("CVRed", 9);
    send("saveEffectValues");
    EXPECT_EQ(pending("CVRed"), Value(9));
    EXPECT_FALSE(host->settings);
}

TEST_F(SavedAdjustments, GoToThePrintSettingsWithEverySaving) {
    showPanel();
    setStored("CVGreen", 6);
    send("saveAllValues");
    EXPECT_EQ(setting(kSettingKeys[3]), "6");
    setStored("CVGreen", 7);
    EXPECT_TRUE(panel->saveValuesAndReturnError());
    EXPECT_EQ(setting(kSettingKeys[3]), "7");
    setStored("CVGreen", 8);
    EXPECT_TRUE(panel->shouldPrint());
    EXPECT_EQ(setting(kSettingKeys[3]), "8");
}

TEST_F(SavedAdjustments, GoToThePrintSettingsBeforeTheControlsAreFilled) {
    makePanel();
    setPending("CVGreen", 6);
    send("saveAllValues");
    EXPECT_EQ(setting(kSettingKeys[3]), "6");
}

TEST_F(SavedAdjustments, ComeAfterTheDisclosureAndTheOptions) {
    showPanel();
    setStored("advancedcolorItem", true);
    send("saveAllValues");
    EXPECT_EQ(host->settings->valueForKey("com.corvane.print.PrintSettings.advancedcolorItem"),
              printing::SettingValue(true));
}

TEST_F(SavedAdjustments, AreNeverMarked) {
    showPanel();
    model<toolkit::NumberField>("brightnessField").userSetValue(12);
    EXPECT_TRUE(panel->shouldPrint());
    EXPECT_EQ(setting(kSettingKeys[0]), "12");
    EXPECT_THAT(host->log, IsEmpty());
    EXPECT_EQ(host->description->markedChoice("CVBrightness"), "0");
}

class RevertedAdjustments : public ColorPanelTest {
protected:
    /// In colour with enhancement, all values 5, shown.
    void showEnhanced() {
        for (const std::string_view key : kSettingKeys)
            setSetting(key, "5");
        host->description->mark("CVColorMatching", "Vivid");
        host->description->mark("CVColorEnhancement", "ON");
        showPanel();
    }
};

TEST_F(RevertedAdjustments, SwitchColourEnhancementOffWithoutMarkingIt) {
    showEnhanced();
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(pending("CVColorEnhancement"), Value("OFF"));
    EXPECT_EQ(stored("CVColorEnhancement"), Value(false));
    EXPECT_EQ(stored("Color"), Value(false));
    EXPECT_EQ(host->description->markedChoice("CVColorEnhancement"), "ON");
    EXPECT_THAT(host->log, IsEmpty());
}

TEST_F(RevertedAdjustments, KeepTheFiveValues) {
    showEnhanced();
    send("revertEffectDialog:", {{Value()}});
    for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index) {
        EXPECT_EQ(pending(kAdjustmentKeys[index]), Value(5)) << kAdjustmentKeys[index];
        EXPECT_EQ(setting(kSettingKeys[index]), "5") << kAdjustmentKeys[index];
    }
}

TEST_F(RevertedAdjustments, ShowThePendingValuesAgain) {
    showEnhanced();
    setStored("CVRed", 9);
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(stored("CVRed"), Value(5));
    EXPECT_EQ(stored("CVBrightness"), Value(5));
}

TEST_F(RevertedAdjustments, ForgetTheLastChange) {
    showEnhanced();
    model<toolkit::NumberField>("blueField").userSetValue(6);
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(lastChange(), Value(ValueList{-1, 0}));
}

TEST_F(RevertedAdjustments, ShowTheReferencePictureUnadjusted) {
    showEnhanced();
    const std::int64_t before = drawn();
    EXPECT_THAT(shownFilters(), testing::SizeIs(2));
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(drawn(), before + 1);
    EXPECT_THAT(shownFilters(), IsEmpty());
    EXPECT_EQ(preview().shown->sourceName(), "Vivid");
}

TEST_F(RevertedAdjustments, AreInTheFiltersAgainAfterTheRedraw) {
    showEnhanced();
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(preview().colorControls, (imaging::ColorControls{.brightness = 0.025F, .contrast = 1.03125F}));
}

TEST_F(RevertedAdjustments, LeaveTheFiltersDefaultsWhereTheRedrawSetsNone) {
    showEnhanced();
    setFlags(kFaxOutput, true);
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(preview().colorControls, imaging::ColorControls());
    EXPECT_EQ(preview().colorMatrix, imaging::ColorMatrix());
}

TEST_F(RevertedAdjustments, AreRevertedByTheirButton) {
    showEnhanced();
    model<toolkit::PushButton>("revertButton").userPressed();
    EXPECT_EQ(pending("CVColorEnhancement"), Value("OFF"));
}

TEST_F(RevertedAdjustments, NeedNoView) {
    makePanel();
    setPending("CVColorEnhancement", "ON");
    send("revertEffectDialog:", {{Value()}});
    EXPECT_EQ(pending("CVColorEnhancement"), Value("OFF"));
}

} // namespace
} // namespace color_settings_tests
