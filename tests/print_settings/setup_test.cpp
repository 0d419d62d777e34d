#include "tests/print_settings/print_setting_panel.h"

#include "toolkit/menu.h"

namespace print_settings_tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_F(PrintSettingPanel, ConstructionFollowsThePaperAndThenTheDefaults) {
    setPaper("A4");
    panel = std::make_shared<OpenPanel>();
    panel->trace = &host->log;
    ASSERT_TRUE(panel->initWithCallback(host.get()));
    EXPECT_THAT(host->takeLog(),
                ElementsAre("call checkModelName", "call setDefaults", "call restoreOptionState",
                            "call checkConstraints", "ask CVBiDir=ON", kPostedColor, "call checkConstraints",
                            kPostedColor, "ask CVColorPaperThick=Regular", "call setDefaults"));
    EXPECT_EQ(panel->paperName, "A4");
}

TEST_F(PrintSettingPanel, ConstructionForAnEnvelopeMarksItsThickness) {
    setPaper("Env10");
    panel = std::make_shared<OpenPanel>();
    ASSERT_TRUE(panel->initWithCallback(host.get()));
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVBiDir=ON", kPostedColor, kPostedColor, "ask CVColorPaperThick=Env"));
    EXPECT_EQ(flags(kImageModeEnvelope | kImageModeBiDirDisabled), kImageModeEnvelope | kImageModeBiDirDisabled);
}

TEST_F(PrintSettingPanel, AHostThatMarksNoChoicesGetsNoPanel) {
    host->lacking = {"willChangePPDOptionKeyValue:ppdChoice:"};
    setPaper("A4");
    panel = std::make_shared<OpenPanel>();
    EXPECT_FALSE(panel->initWithCallback(host.get()));
    EXPECT_EQ(panel->paperName, std::nullopt);
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PrintSettingPanel, ManagesThoseOptionsOfTheBundlesListThatThePrinterHas) {
    makePanel();
    EXPECT_THAT(panel->supportedPPDOptionKeys().value(),
                ElementsAre("CVMediaType", "CVResolution", "CVColorPaperThick", "CVInputSlot", "CVMonoColor",
                            "CVSlowDrying", "CVBiDir", "MirrorPrint", "CVReverse", "CVJpeg", "CVDuplexMode",
                            "CVVertLineAlignA3B4Ledger", "CVVertLineAlignA4Letter", "CVVertLineAlignOther",
                            "CVVertLineAlignDedicated"));
}

TEST_F(PrintSettingPanel, WithoutTheBundlesListItManagesNothing) {
    host->reopenBundle(
        {.languages = {"en"}, .localize = false, .strings = {}, .info = {}, .removedInfo = {"PMPPDKeysSupported"}});
    makePanel();
    EXPECT_EQ(panel->PPDKeys, std::nullopt);
    EXPECT_EQ(panel->supportedPPDOptionKeys(), std::nullopt);
    EXPECT_EQ(panel->availablePPDOptionKeys(), std::nullopt);
}

TEST_F(PrintSettingPanel, FollowsThePaperNotificationFromAnySender) {
    makePanel();
    setPaper("A4.Fullbleed");
    const toolkit::Menu sender({});
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = "PMPrintDestinationPaperDidChangeNotification", .sender = &sender, .userInfo = {}});
    EXPECT_EQ(panel->paperName, "A4.Fullbleed");
    setPaper("A4");
    postPaperChange();
    EXPECT_EQ(panel->paperName, "A4");
}

TEST_F(PrintSettingPanel, FollowsTheDuplexNotificationFromAnySender) {
    makePanel();
    host->description->mark("Duplex", "DuplexTumble");
    postDuplexChange();
    EXPECT_TRUE(panel->hasFlag(kImageModeDuplex));
    host->description->mark("Duplex", "None");
    const toolkit::Menu sender({});
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = "PMPrintDuplexChangedNotification", .sender = &sender, .userInfo = {}});
    EXPECT_FALSE(panel->hasFlag(kImageModeDuplex));
}

TEST_F(PrintSettingPanel, IsNamedByALocalisedText) {
    host->reopenBundle({.languages = {"en"},
                        .localize = false,
                        .strings = {{"Print Setting", "Print"}},
                        .info = {},
                        .removedInfo = {}});
    makePanel();
    EXPECT_EQ(panel->panelName(), "Print");
}

TEST_F(PrintSettingPanel, IsNamedByTheKeyWhereThereIsNoText) {
    makePanel();
    EXPECT_EQ(panel->panelName(), "Print Setting");
}

TEST_F(PrintSettingPanel, JpegPrintingIsNotOfferedWhileItIsUnavailable) {
    makePanel();
    EXPECT_EQ(panel->availablePPDOptionKeys(), panel->PPDKeys);
    panel->setFlag(kImageModeJpegUnavailable, true);
    auto others = *panel->PPDKeys;
    ASSERT_EQ(std::erase(others, "CVJpeg"), 1);
    EXPECT_EQ(panel->availablePPDOptionKeys(), others);
    EXPECT_THAT(*panel->PPDKeys, Contains("CVJpeg"));
}

TEST_F(PrintSettingPanel, ShowingLooksAtTwoSidedPrintingBeforeItShowsTheValues) {
    host->description->mark("Duplex", "DuplexNoTumble");
    makePanelWithView();
    panel->restoreValuesAndReturnError();
    panel->willShow();
    EXPECT_TRUE(panel->hasFlag(kImageModePanelShown));
    EXPECT_TRUE(panel->hasFlag(kImageModeDuplex));
    EXPECT_THAT(keywordsOf(popup("resolutionPopup")), ElementsAre("PlainFast", "PlainNormal", "Best"));
}

TEST_F(PrintSettingPanel, ShowingShowsThePendingValuesAndEndsWithTheControlsConstraints) {
    makePanelWithView();
    panel->restoreValuesAndReturnError();
    setPending("CVMonoColor", "Mono");
    setPending("CVReverse", "ON");
    panel->trace = &host->log;
    host->log.clear();
    panel->willShow();
    EXPECT_EQ(popup("monoColorPopup").selectedKeyword(), "Mono");
    EXPECT_TRUE(box("reverseButton").isOn());
    const auto log = host->takeLog();
    EXPECT_THAT(log, Contains("call updateUI").Times(1));
    EXPECT_EQ(log.back(), "call checkUIConstraints");
}

// Hooks for what was changed elsewhere

TEST_F(PrintSettingPanel, AMediaTypeMarkedElsewhereSetsWhatDependsOnIt) {
    showPanel();
    panel->restoreValuesAndReturnError();
    host->log.clear();
    panel->trace = &host->log;
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
    EXPECT_THAT(host->takeLog(), ElementsAre("call updateUIforKey CVMediaType", kPostedDiffusion,
                                             "ask CVResolution=Photo", "call checkUIConstraints"));
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Glossy");
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "Photo");
    EXPECT_FALSE(box("biDirButton").isOn());
}

TEST_F(PrintSettingPanel, TheQualityFollowsTheMediaTypeMarkedElsewhereEvenIfItIsNotManaged) {
    host->reopenBundle({.languages = {"en"},
                        .localize = false,
                        .strings = {},
                        .info = {{"PMPPDKeysSupported", toolkit::ValueList{"CVResolution"}}},
                        .removedInfo = {}});
    makePanel();
    setPending("CVMediaType", "Plain");
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Transparencies");
    // Without a pop-up there is no selected media type: it counts as an unknown one, which plain paper replaces.
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVResolution=PlainNormal", kPostedDiffusion, "ask CVResolution=Normal"));
}

TEST_F(PrintSettingPanel, AnotherOptionMarkedElsewhereIsOnlyShown) {
    showPanel();
    panel->restoreValuesAndReturnError();
    host->log.clear();
    panel->trace = &host->log;
    panel->PPDOptionKeyValueDidChangePpdChoice("CVResolution", "High");
    EXPECT_THAT(host->takeLog(), ElementsAre("call updateUIforKey CVResolution"));
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "High");
}

TEST_F(PrintSettingPanel, ShowingAMediaTypeChecksWhatDependsOnItWithoutAReset) {
    showPanel();
    setPending("CVMediaType", "Transparencies");
    box("biDirButton").setOn(true);
    panel->updateUIforKey("CVMediaType");
    EXPECT_TRUE(panel->hasFlag(kImageModeTransparency));
    EXPECT_THAT(keywordsOf(popup("resolutionPopup")), ElementsAre("Normal"));
    EXPECT_TRUE(box("biDirButton").isOn());
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PrintSettingPanel, ShowingAQualityMakesJpegPrintingAvailable) {
    showPanel();
    panel->setFlag(kImageModeJpegUnavailable, true);
    panel->updateUIforKey("CVResolution");
    EXPECT_FALSE(panel->hasFlag(kImageModeJpegUnavailable));
}

TEST_F(PrintSettingPanel, ShowingAPaperSourceChecksItAgainstBorderlessPaper) {
    showPanel();
    panel->setFlag(kImageModeBorderless, true);
    panel->setFlag(kImageModeTransparency, true);
    panel->updateUIforKey("CVInputSlot");
    EXPECT_FALSE(panel->hasFlag(kImageModeTransparency));
}

TEST_F(PrintSettingPanel, ShowingAColorModeTellsTheOtherPanel) {
    showPanel();
    setPending("CVMonoColor", "Mono");
    panel->updateUIforKey("CVMonoColor");
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedMono));
    EXPECT_TRUE(panel->hasFlag(kImageModeMonochrome));
}

TEST_F(PrintSettingPanel, ShowingAnyOtherOptionIsAllThatHappens) {
    showPanel();
    const std::uint32_t word = kImageModeJpegUnavailable | kImageModeBorderless | kImageModeTransparency;
    setFlags(word);
    for (const char* key : {"CVColorPaperThick", "CVSlowDrying", "CVBiDir", "MirrorPrint", "CVReverse", "CVJpeg",
                            "CVDuplexMode", "CVVertLineAlignOther", "CVColorMatching"}) {
        SCOPED_TRACE(key);
        panel->updateUIforKey(key);
        EXPECT_EQ(panel->imageModeFlag(), word);
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(PrintSettingPanel, ARefusedColorModeTellsTheOtherPanelWhatStays) {
    showPanel();
    setPending("CVMonoColor", "Mono");
    popup("monoColorPopup").selectItemWithKeyword("Color");
    panel->revertUIForKey(&popup("monoColorPopup"), "CVMonoColor");
    EXPECT_EQ(popup("monoColorPopup").selectedKeyword(), "Mono");
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedMono));
}

TEST_F(PrintSettingPanel, ARefusedMediaTypeResetsWhatDependsOnIt) {
    showPanel();
    setPending("CVMediaType", "Inkjet");
    setPending("CVResolution", "Normal");
    popup("mediaTypePopup").selectItemWithKeyword("Plain");
    box("biDirButton").setOn(true);
    panel->revertUIForKey(&popup("mediaTypePopup"), "CVMediaType");
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Inkjet");
    EXPECT_FALSE(box("biDirButton").isOn());
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedDiffusion, "ask CVResolution=Photo"));
}

TEST_F(PrintSettingPanel, TheQualityAfterARefusalFollowsThePendingMediaType) {
    showPanel();
    setPending("CVMediaType", "PlainDuplex"); // shown as "Plain"
    setPending("CVResolution", "Photo");
    panel->revertUIForKey(&popup("mediaTypePopup"), "CVMediaType");
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedDither, "ask CVResolution=PlainNormal"));
    setPending("CVMediaType", "HagakiUra"); // not listed: the pop-up stays
    panel->revertUIForKey(&popup("mediaTypePopup"), "CVMediaType");
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedDither, "ask CVResolution=Photo"));
}

TEST_F(PrintSettingPanel, AnyOtherRefusedOptionIsOnlyPutBack) {
    showPanel();
    setPending("CVResolution", "High");
    panel->setFlag(kImageModeJpegUnavailable, true);
    panel->revertUIForKey(&popup("resolutionPopup"), "CVResolution");
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "High");
    EXPECT_TRUE(panel->hasFlag(kImageModeJpegUnavailable));
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

// The summary

TEST_F(PrintSettingPanel, TheModelLeadsTheSummary) {
    host->reopenBundle({.languages = {"en"},
                        .localize = false,
                        .strings = {{"Model", "Printer"}, {"ON", "Yes"}},
                        .info = {},
                        .removedInfo = {}});
    makePanel();
    const auto summary = panel->summaryInfo();
    ASSERT_TRUE(summary);
    EXPECT_EQ(toolkit::valueInMap(*summary, "Printer"), toolkit::Value("Corvane XJ6510"));
    EXPECT_EQ(toolkit::valueInMap(*summary, "Print Quality"), toolkit::Value("Standard"));
    EXPECT_EQ(toolkit::valueInMap(*summary, "Bidirectional Printing"), toolkit::Value("Yes"));
    EXPECT_EQ(toolkit::valueInMap(*summary, "Summary Display Order"),
              toolkit::Value(toolkit::ValueList{"Printer", "Media Type", "Print Quality", "Paper Thickness",
                                                "Paper Source", "Color Mode", "Slow-Drying Paper",
                                                "Bidirectional Printing", "Mirror Printing", "Reverse Printing",
                                                "Direct JPEG Printing", "Two-Sided Drying", "A3, B4, Ledger",
                                                "A4, Letter", "Other Sizes", "Dedicated Media"}));
}

TEST_F(PrintSettingPanel, TheSummaryLeavesOutTheDedicatedMediaExceptInJapanese) {
    const std::string ppd =
        tests::ppdWith(tests::ppdOption("CVVertLineAlignDedicated", "Dedicated Media", "OFF", {"OFF/Off", "ON/On"}) +
                       tests::ppdOption("CVReverse", "Reverse", "OFF", {"OFF/Off", "ON/On"}));
    for (const char* language : {"en", "ja", "ja-JP"}) {
        SCOPED_TRACE(language);
        openHost(ppd, {language});
        makePanel();
        const auto summary = panel->summaryInfo();
        ASSERT_TRUE(summary);
        EXPECT_EQ(summary->contains("Dedicated Media"), std::string(language) == "ja");
        EXPECT_TRUE(summary->contains("Reverse"));
        EXPECT_EQ(toolkit::valueInMap(*summary, "Summary Display Order"),
                  toolkit::Value(toolkit::ValueList{"Model", "Reverse", "Dedicated Media"}));
    }
}

TEST_F(PrintSettingPanel, TheSummaryHasNoJpegLineWhileJpegPrintingIsUnavailable) {
    makePanel();
    panel->setFlag(kImageModeJpegUnavailable, true);
    const auto summary = panel->summaryInfo();
    ASSERT_TRUE(summary);
    EXPECT_THAT(*summary, Not(Contains(testing::Key("Direct JPEG Printing"))));
    EXPECT_THAT(*summary, Contains(testing::Key("Two-Sided Drying")));
}

} // namespace
} // namespace print_settings_tests
