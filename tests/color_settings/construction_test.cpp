#include "color_settings/ColorTransformer.h"
#include "tests/color_settings/color_panel.h"

namespace color_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::Value;
using toolkit::ValueList;
using toolkit::ValueTransformer;

class ColorPanelConstruction : public ColorPanelTest {
protected:
    /// A printer with the five options, which default to -3.
    ColorPanelConstruction() { useHost(tests::ppdWith(kMatchingAttribute + adjustmentOptions("-3"))); }
};

// Hears what the panels of a host post while they are made.
class PostObserver {
public:
    PostObserver(const tests::TestHost& host, toolkit::NotificationCenter::Handler handler) {
        toolkit::NotificationCenter::defaultCenter().addObserver(own_, kNotificationName, &host, std::move(handler));
    }
    PostObserver(const PostObserver&) = delete;
    PostObserver& operator=(const PostObserver&) = delete;
    ~PostObserver() { toolkit::NotificationCenter::defaultCenter().removeObserver(own_.get()); }

private:
    std::shared_ptr<const bool> own_ = std::make_shared<const bool>();
};

// Writes down the operations that the base's construction reaches, and what there is at that time.
class RecordingPanel : public CVInkColorSettingPDE {
public:
    std::vector<std::string> record;

protected:
    bool restoreValuesAndReturnError(const framework::ErrorSlot& error) override {
        write("restore");
        return CVInkColorSettingPDE::restoreValuesAndReturnError(error);
    }
    void checkConstraints() override {
        CVInkColorSettingPDE::checkConstraints();
        write("constraints");
    }
    void setPPDKeys(const std::optional<std::vector<std::string>>& keys) override {
        write("keys");
        CVInkColorSettingPDE::setPPDKeys(keys);
    }

private:
    void write(const std::string& what) {
        record.push_back(what + " of " + thePDEName_.value_or("nobody") + ", " + (PPDKeys ? "keys, " : "no keys, ") +
                         std::to_string(outputBin_.size()) + " values");
    }
};

TEST_F(ColorPanelConstruction, RunsTheBasesFirstWhileThereAreNoKeysAndNoValues) {
    setSetting(kSettingKeys[0], "5");
    const auto own = std::make_shared<RecordingPanel>();
    ASSERT_TRUE(own->initWithCallback(host.get()));
    EXPECT_THAT(own->record, ElementsAre("restore of CVInkQuality12, no keys, 0 values",
                                         "constraints of CVInkQuality12, no keys, 0 values",
                                         "constraints of CVInkQuality12, no keys, 0 values",
                                         "keys of CVInkColorSetting, no keys, 0 values"));
}

TEST_F(ColorPanelConstruction, TakesItsOwnName) {
    makePanel();
    EXPECT_EQ(panel->thePDEName(), "CVInkColorSetting");
    EXPECT_EQ(panel->panelKind(), "com.corvane.print.pde.CocoaCVInkColorSetting");
}

TEST_F(ColorPanelConstruction, ManagesTheListedKeysThatThePrinterHas) {
    useBundle({}, {{"PMPPDKeysSupported", ValueList{"CVGreen"}},
                   {"PMPPDKeysSupportedColor", ValueList{"CVRed", "CVColorMatching", "CVBrightness"}}});
    makePanel();
    EXPECT_EQ(field("PPDKeys"), Value(ValueList{"CVRed", "CVBrightness"}));
}

TEST_F(ColorPanelConstruction, ManagesTheEightOptionsOfItsOwnBundle) {
    useHost(tests::samplePpd("corvane-a3"));
    makePanel();
    EXPECT_EQ(field("PPDKeys"), Value(ValueList{"CVColorMatching", "CVHalfTonePattern", "CVColorEnhancement",
                                                "CVBrightness", "CVContrast", "CVRed", "CVGreen", "CVBlue"}));
}

TEST_F(ColorPanelConstruction, HasNoKeysWhereTheBundleListsNone) {
    useBundle({}, {}, {"PMPPDKeysSupportedColor"});
    makePanel();
    EXPECT_EQ(field("PPDKeys"), Value());
    EXPECT_EQ(sendForValue("supportedPPDOptionKeys"), Value());
}

TEST_F(ColorPanelConstruction, AdjustsTheFiveValuesWhetherTheBundleListsThemOrNot) {
    useBundle({}, {{"PMPPDKeysSupportedColor", ValueList{"CVColorMatching"}}});
    setSetting(kSettingKeys[2], "8");
    makePanel();
    EXPECT_EQ(pending("CVRed"), Value(8));
    EXPECT_EQ(setting(kSettingKeys[2]), "8");
}

TEST_F(ColorPanelConstruction, TakesTheValuesOfThePrintSettingsInsteadOfTheDefaultsAndWritesThemBack) {
    setSetting(kSettingKeys[0], "5");
    setSetting(kSettingKeys[1], "21");
    setSetting(kSettingKeys[2], "7 or so");
    makePanel();
    EXPECT_EQ(pending("CVBrightness"), Value(5));
    EXPECT_EQ(pending("CVContrast"), Value(0));
    EXPECT_EQ(pending("CVRed"), Value(7));
    EXPECT_EQ(setting(kSettingKeys[0]), "5");
    EXPECT_EQ(setting(kSettingKeys[1]), "0");
    EXPECT_EQ(setting(kSettingKeys[2]), "7");
}

TEST_F(ColorPanelConstruction, StartsAFreshJobAtZeroWhateverTheDefaults) {
    makePanel();
    for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index) {
        SCOPED_TRACE(kAdjustmentKeys[index]);
        EXPECT_EQ(pending(kAdjustmentKeys[index]), Value(0));
        EXPECT_EQ(setting(kSettingKeys[index]), "0");
    }
}

TEST_F(ColorPanelConstruction, KeepsTheDefaultsWithoutPrintSettings) {
    host->settings.reset();
    makePanel();
    for (const std::string_view key : kAdjustmentKeys) {
        SCOPED_TRACE(key);
        EXPECT_EQ(pending(key), Value(-3));
    }
}

TEST_F(ColorPanelConstruction, BeginsTheFiltersWithTheirDefaultsAndNoPicture) {
    makePanel();
    EXPECT_EQ(preview().colorControls, imaging::ColorControls());
    EXPECT_EQ(preview().colorMatrix, imaging::ColorMatrix());
    EXPECT_FALSE(preview().reference);
    EXPECT_FALSE(preview().shown);
}

TEST_F(ColorPanelConstruction, ForgetsTheLastChange) {
    makePanelWithView();
    model<toolkit::NumberField>("redField").userSetValue(4);
    EXPECT_EQ(lastChange(), Value(ValueList{2, 4}));
    makePanel();
    EXPECT_EQ(lastChange(), Value(ValueList{-1, 0}));
}

TEST_F(ColorPanelConstruction, ReplacesTheRegisteredColourTransformer) {
    const auto earlier = std::make_shared<const ColorTransformer>();
    ValueTransformer::registerTransformer(earlier, "CVColorTransformer");
    makePanel();
    const auto own = ValueTransformer::transformerNamed("CVColorTransformer");
    EXPECT_NE(own, earlier);
    EXPECT_NE(dynamic_cast<const ColorTransformer*>(own.get()), nullptr);
}

TEST_F(ColorPanelConstruction, TellsOnceAtItsEndAndAsksNothing) {
    panel = std::make_shared<CVInkColorSettingPDE>();
    ASSERT_TRUE(panel->initWithCallback(host.get()));
    EXPECT_THAT(host->log, ElementsAre("post CVInkPrintSettingNotification"));
}

TEST_F(ColorPanelConstruction, HasStoredItsValuesAndRegisteredItsTransformerWhenItTells) {
    ValueTransformer::registerTransformer(nullptr, "CVColorTransformer");
    setSetting(kSettingKeys[4], "-9");
    bool hasTransformer = false;
    std::string storedBlue;
    const PostObserver observer(*host, [&](const toolkit::Notification&) {
        hasTransformer = ValueTransformer::transformerNamed("CVColorTransformer") != nullptr;
        storedBlue = setting(kSettingKeys[4]);
    });
    makePanel();
    EXPECT_TRUE(hasTransformer);
    EXPECT_EQ(storedBlue, "-9");
}

TEST_F(ColorPanelConstruction, HearsItsOwnNotification) {
    setSetting("CVMonoColor", "Mono");
    setSetting("CVHalfTonePattern", "Diffusion");
    makePanel();
    EXPECT_TRUE(hasFlags(kMono | kDiffusionPattern));
}

TEST_F(ColorPanelConstruction, IsNotShownYet) {
    makePanel();
    EXPECT_FALSE(hasFlags(kShown));
}

TEST_F(ColorPanelConstruction, FailsAndTellsNothingWhereTheHostCannotBeAsked) {
    host->lacking = {"willChangePPDOptionKeyValue:ppdChoice:"};
    setSetting(kSettingKeys[0], "21");
    const auto failing = std::make_shared<CVInkColorSettingPDE>();
    EXPECT_FALSE(failing->initWithCallback(host.get()));
    EXPECT_FALSE(std::make_shared<CVInkColorSettingPDE>()->initWithCallback(nullptr));
    EXPECT_THAT(host->log, IsEmpty());
    EXPECT_EQ(setting(kSettingKeys[0]), "21");
}

} // namespace
} // namespace color_settings_tests
