#include "tests/print_settings/print_setting_panel.h"

#include <algorithm>

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What follows when the user changes an option

class OptionChange : public PrintSettingPanel {
protected:
    // The panel at the front, its values read back from the PPD.
    void showRestored() {
        showPanel();
        panel->restoreValuesAndReturnError();
        host->log.clear();
    }
    // Shows the panel with this media type and its qualities.
    void showWithMedia(const std::string& media) {
        showRestored();
        panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", media);
        host->log.clear();
    }
};

TEST_F(OptionChange, AMediaTypeResetsWhatDependsOnItAndMarksIt) {
    showRestored();
    choose("mediaTypePopup", "Glossy");
    EXPECT_EQ(marked("CVMediaType"), "Glossy");
    EXPECT_EQ(marked("CVResolution"), "Photo");
    EXPECT_EQ(marked("CVBiDir"), "OFF");
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "Photo");
    EXPECT_THAT(keywordsOf(popup("resolutionPopup")), ElementsAre("Fast", "Photo", "Best"));
    EXPECT_FALSE(box("biDirButton").isEnabled());
    EXPECT_THAT(takePosted(), ElementsAre(kPostedDiffusion));
}

TEST_F(OptionChange, AMediaTypeReadsTheControlsBackAfterItResetThem) {
    showRestored();
    panel->trace = &host->log;
    choose("mediaTypePopup", "Glossy");
    const auto log = host->takeLog();
    const auto posted = std::ranges::find(log, kPostedDiffusion);
    ASSERT_NE(posted, log.end());
    EXPECT_THAT(std::vector(posted + 1, log.end()), ElementsAre("call getUIValues", "call checkUIConstraints",
                                                                "ask CVResolution=Photo", "ask CVBiDir=OFF"));
}

TEST_F(OptionChange, ARefusedMediaTypeIsPutBackAndResetsWhatDependsOnTheOldOne) {
    showRestored();
    host->refused = {"CVMediaType=Glossy"};
    choose("mediaTypePopup", "Glossy");
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
    EXPECT_EQ(marked("CVMediaType"), "Plain");
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "PlainNormal");
    EXPECT_TRUE(box("biDirButton").isOn());
    EXPECT_THAT(takePosted(), ElementsAre(kPostedDither, kPostedDither)); // putting back, and the change's own rule
}

TEST_F(OptionChange, TheBestQualityOnOtherThanPlainPaperIsWarnedOf) {
    showWithMedia("Glossy");
    choose("resolutionPopup", "Best");
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVResolution=Best", "ask CVBiDir=OFF", "sheet Best Alert"));
}

TEST_F(OptionChange, TheWarningHasOneButtonAndASuppressionBox) {
    host->reopenBundle({.languages = {"en"},
                        .localize = false,
                        .strings = {{"Best Alert", "Slow"}, {"Highest Alert2", "Very slow."}, {"OK", "Fine"}},
                        .info = {},
                        .removedInfo = {}});
    showWithMedia("Glossy");
    choose("resolutionPopup", "Best");
    ASSERT_EQ(host->alerts.size(), 1);
    const toolkit::Alert& alert = host->alerts.front();
    EXPECT_EQ(alert.style, toolkit::AlertStyle::Informational);
    EXPECT_EQ(alert.messageText, "Slow");
    EXPECT_EQ(alert.informativeText, "Very slow.");
    EXPECT_THAT(alert.buttons, ElementsAre(toolkit::LocalizedText{.key = "OK", .text = "Fine"}));
    EXPECT_TRUE(alert.showsSuppressionButton);
}

TEST_F(OptionChange, TheWarningDependsOnTheMediaType) {
    struct Row {
        std::optional<std::string> media;
        bool warned;
    };
    const std::vector<Row> rows = {
        {"Plain", false},         {"PlainDuplex", false},     {"HagakiAtena", false},  {"HagakiUra", true},
        {"Inkjet", true},         {"CorvaneQT20Matte", true}, {"CorvaneGlossy", true}, {"CorvaneGlossyR", true},
        {"Transparencies", true}, {"Glossy", true},           {std::nullopt, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.media.value_or("none"));
        host->reopenBundle({.languages = {"en"},
                            .localize = false,
                            .strings = {},
                            .info = {{"PMPPDKeysSupported", toolkit::ValueList{"CVResolution"}}}, // leaves the media be
                            .removedInfo = {}});
        showPanel();
        removePending("CVMediaType");
        if (row.media)
            setPending("CVMediaType", *row.media);
        choose("resolutionPopup", "Best");
        EXPECT_EQ(host->alerts.size(), row.warned ? 1 : 0);
        host->alerts.clear();
    }
}

TEST_F(OptionChange, NoOtherQualityIsWarnedOf) {
    for (const char* quality : {"Fast", "Photo"}) {
        SCOPED_TRACE(quality);
        showWithMedia("Glossy");
        choose("resolutionPopup", quality);
        EXPECT_THAT(host->alerts, IsEmpty());
    }
}

TEST_F(OptionChange, ASuppressedWarningIsNotShownAgain) {
    showWithMedia("Glossy");
    host->answers = {{.button = 0, .suppressionButtonOn = false}, {.button = 0, .suppressionButtonOn = true}};
    const auto stored = [&] {
        return toolkit::valueInMap(
            host->defaults.persistentDomainForName("com.corvane.print.pde.CVInkQuality12").value(), "Best Alert");
    };
    choose("resolutionPopup", "Best");
    EXPECT_EQ(stored(), toolkit::Value(true));
    choose("resolutionPopup", "Best");
    EXPECT_EQ(stored(), toolkit::Value(false));
    choose("resolutionPopup", "Best");
    EXPECT_EQ(host->alerts.size(), 2);
}

TEST_F(OptionChange, AQualityMakesJpegPrintingAvailableInEveryCase) {
    for (const char* quality : {"Photo", "Best"}) {
        SCOPED_TRACE(quality);
        showWithMedia("Glossy");
        host->refused = {"CVResolution"}; // what is put back does not clear the bit
        panel->setFlag(kImageModeJpegUnavailable, true);
        choose("resolutionPopup", quality);
        EXPECT_FALSE(panel->hasFlag(kImageModeJpegUnavailable));
        host->refused.clear();
    }
}

TEST_F(OptionChange, APaperSourceIsCheckedAgainstBorderlessPaper) {
    showRestored();
    host->refused = {"CVInputSlot"}; // what is put back checks nothing
    panel->setFlag(kImageModeBorderless, true);
    panel->setFlag(kImageModeTransparency, true);
    choose("paperFeedPopup", "Tray2");
    EXPECT_FALSE(panel->hasFlag(kImageModeTransparency));
}

TEST_F(OptionChange, AColorModeIsToldTheOtherPanelAfterItIsReadBack) {
    showRestored();
    panel->trace = &host->log;
    choose("monoColorPopup", "Mono");
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMonoColor=Mono", "call updateUIforKey CVMonoColor", kPostedMono,
                                             "call getUIValues", "call checkUIConstraints", kPostedMono));
    EXPECT_TRUE(panel->hasFlag(kImageModeMonochrome));
}

TEST_F(OptionChange, AnEnvelopeThicknessOnACustomSizeSwitchesBiDirectionalPrintingOff) {
    showRestored();
    panel->paperName = "Custom.200x300";
    panel->trace = &host->log;
    choose("paperThickPopup", "Env");
    const auto log = host->takeLog();
    const auto off = std::ranges::find(log, "ask CVBiDir=OFF");
    ASSERT_NE(off, log.end());
    EXPECT_THAT(std::vector(off + 1, log.end()), ElementsAre("call checkUIConstraints", "call updateUIforKey CVBiDir"));
    EXPECT_FALSE(box("biDirButton").isOn());
    EXPECT_FALSE(box("biDirButton").isEnabled());
    EXPECT_EQ(flags(kImageModeEnvelope | kImageModeBiDirDisabled), kImageModeEnvelope | kImageModeBiDirDisabled);
}

TEST_F(OptionChange, ARegularThicknessOnPlainPaperSwitchesBiDirectionalPrintingOn) {
    for (const std::string media : {"Plain", "PlainDuplex", "HagakiAtena", "Inkjet", "Glossy", "Transparencies"}) {
        SCOPED_TRACE(media);
        makePanelWithView(); // not filled: nothing is read back
        toolkit::PopUpList& thickness = popup("paperThickPopup");
        addItems(thickness, {"Regular"});
        setPending("CVMediaType", media);
        setPending("CVBiDir", "OFF");
        panel->requestNewOutputBin(&thickness);
        EXPECT_EQ(pending("CVBiDir"),
                  media == "Plain" || media == "PlainDuplex" || media == "HagakiAtena" ? "ON" : "OFF");
    }
}

TEST_F(OptionChange, AnEnvelopeThicknessOnAnOrdinarySizeLeavesBiDirectionalPrintingToTheMedia) {
    makePanelWithView();
    toolkit::PopUpList& thickness = popup("paperThickPopup");
    addItems(thickness, {"Env"});
    panel->paperName = "A4";
    setPending("CVMediaType", "Plain");
    setPending("CVBiDir", "OFF");
    panel->requestNewOutputBin(&thickness);
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Env", "ask CVBiDir=ON"));
}

TEST_F(OptionChange, AThicknessShowsTheControlsOnlyOnceTheyAreFilled) {
    makePanelWithView();
    toolkit::PopUpList& thickness = popup("paperThickPopup");
    addItems(thickness, {"Env"});
    panel->trace = &host->log;
    panel->requestNewOutputBin(&thickness);
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Env", "call updateUIforKey CVColorPaperThick"));
}

TEST_F(OptionChange, AThicknessGreysAndChecksTheBiDirectionalBoxAtOnce) {
    showRestored();
    panel->paperName = "Custom.200x300";
    choose("paperThickPopup", "Env");
    choose("paperThickPopup", "Regular");
    EXPECT_TRUE(box("biDirButton").isOn());
    EXPECT_TRUE(box("biDirButton").isEnabled());
    EXPECT_EQ(marked("CVBiDir"), "ON");
}

TEST_F(OptionChange, AnyOtherOptionIsOnlyMarkedAndReadBack) {
    showRestored();
    const std::uint32_t word = kImageModeJpegUnavailable | kImageModeBorderless | kImageModeTransparency;
    panel->setFlag(kImageModeJpegUnavailable, true);
    const std::uint32_t before = panel->imageModeFlag();
    for (const auto& [name, option] :
         {std::pair("reverseButton", "CVReverse"), std::pair("vertLineAlignA3Button", "CVVertLineAlignA3B4Ledger")}) {
        SCOPED_TRACE(option);
        box(name).userSetOn(true);
        EXPECT_THAT(host->takeLog(), ElementsAre("ask " + std::string(option) + "=ON"));
        EXPECT_EQ(panel->imageModeFlag(), before);
    }
    EXPECT_EQ(flags(word), kImageModeJpegUnavailable);
}

TEST_F(OptionChange, ADefaultQualityIsMarked) {
    makePanel();
    panel->setDefaultQuality("Transparencies");
    panel->setDefaultQuality("Glossy");
    panel->setDefaultQuality("Plain");
    panel->setDefaultQuality("Plain");
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVResolution=Normal", "ask CVResolution=Photo", "ask CVResolution=PlainNormal"));
    EXPECT_EQ(pending("CVResolution"), "PlainNormal");
}

// Start values

class StartValues : public PrintSettingPanel {
protected:
    // A panel that manages these options and has nothing pending.
    void makeEmptyPanel(const std::vector<std::string>& keys) {
        makePanel();
        panel->PPDKeys = keys;
        panel->setOutputBin(toolkit::ValueMap());
        setFlags(0);
    }
};

TEST_F(StartValues, AMarkedDefaultIsLeftAlone) {
    makeEmptyPanel({"CVMediaType", "CVResolution", "CVColorPaperThick", "CVBiDir", "CVMonoColor"});
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), IsEmpty());
    EXPECT_THAT(panel->outputBin(), IsEmpty());
}

TEST_F(StartValues, EnvelopePaperTakesTheEnvelopeThickness) {
    makeEmptyPanel({"CVMediaType", "CVColorPaperThick", "CVBiDir"});
    setFlags(kImageModeEnvelope);
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Env"));
    EXPECT_EQ(pending("CVColorPaperThick"), "Env");
}

TEST_F(StartValues, PaperWithoutBiDirectionalPrintingSwitchesItOff) {
    makeEmptyPanel({"CVMediaType", "CVColorPaperThick", "CVBiDir"});
    setFlags(kImageModeBiDirDisabled);
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVBiDir=OFF"));
    EXPECT_EQ(pending("CVBiDir"), "OFF");
}

TEST_F(StartValues, WhatHoldsTheDefaultAlreadyIsLeftAlone) {
    makeEmptyPanel({"CVColorPaperThick", "CVBiDir"});
    setFlags(kImageModeEnvelope | kImageModeBiDirDisabled);
    setPending("CVColorPaperThick", "Regular");
    setPending("CVBiDir", "ON");
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(StartValues, WhatHoldsAnotherValueThanTheMarkedDefaultFollowsThePaperToo) {
    makeEmptyPanel({"CVColorPaperThick", "CVMonoColor"});
    setFlags(kImageModeEnvelope | kImageModeBiDirDisabled);
    setPending("CVColorPaperThick", "regular");
    setPending("CVMonoColor", "Mono");
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Env"));
    EXPECT_EQ(pending("CVMonoColor"), "Mono");
}

TEST_F(StartValues, UnmarkedOptionsTakeTheirDefaultsInOrder) {
    makeEmptyPanel({"CVResolution", "CVMonoColor", "CVMediaType"});
    for (const char* option : {"CVMediaType", "CVResolution", "CVMonoColor"})
        host->description->unmark(option);
    host->refused = {"CVMonoColor=Color"};
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVResolution=PlainNormal", "refuse CVMonoColor=Color", "ask CVMediaType=Plain"));
    EXPECT_EQ(pending("CVResolution"), "PlainNormal");
    EXPECT_EQ(pending("CVMonoColor"), "");
    EXPECT_EQ(pending("CVMediaType"), "Plain");
}

TEST_F(StartValues, UnmarkedThicknessAndDirectionTakeTheirDefaultsWhateverThePaper) {
    makeEmptyPanel({"CVColorPaperThick", "CVBiDir"});
    setFlags(kImageModeEnvelope | kImageModeBiDirDisabled);
    host->description->unmark("CVColorPaperThick");
    host->description->unmark("CVBiDir");
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Regular", "ask CVBiDir=ON"));
}

TEST_F(StartValues, AnotherMarkedChoiceIsLeftAlone) {
    makeEmptyPanel({"CVColorPaperThick", "CVBiDir", "CVMonoColor"});
    setFlags(kImageModeEnvelope | kImageModeBiDirDisabled);
    host->description->mark("CVColorPaperThick", "Env");
    host->description->mark("CVBiDir", "OFF");
    host->description->mark("CVMonoColor", "Mono");
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), IsEmpty());
    EXPECT_THAT(panel->outputBin(), IsEmpty());
}

TEST_F(StartValues, AnOptionThatThePrinterLacksIsSkipped) {
    makeEmptyPanel({"CVNoSuchOption", "CVMonoColor"});
    host->description->unmark("CVMonoColor");
    panel->setDefaults();
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMonoColor=Color"));
}

// Saving

class Saving : public PrintSettingPanel {
protected:
    void setDuplex(bool on) { host->description->mark("Duplex", on ? "DuplexNoTumble" : "None"); }
};

TEST_F(Saving, ShownPlainPaperFollowsTwoSidedPrinting) {
    showPanel();
    panel->restoreValuesAndReturnError();
    host->log.clear();
    setDuplex(true);
    EXPECT_TRUE(panel->saveValuesAndReturnError());
    EXPECT_TRUE(panel->hasFlag(kImageModeDuplex));
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=PlainDuplex"));
    EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
    setDuplex(false);
    EXPECT_TRUE(panel->saveValuesAndReturnError());
    EXPECT_FALSE(panel->hasFlag(kImageModeDuplex));
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=Plain"));
    EXPECT_EQ(pending("CVMediaType"), "Plain");
}

TEST_F(Saving, AnotherShownMediaTypeStays) {
    showPanel();
    setPending("CVMediaType", "PlainDuplex");
    setPending("CVResolution", "Photo");
    popup("mediaTypePopup").selectItemWithKeyword("Glossy");
    for (const bool duplex : {true, false}) {
        SCOPED_TRACE(duplex);
        setDuplex(duplex);
        EXPECT_TRUE(panel->saveValuesAndReturnError());
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(Saving, NoShownMediaTypeChangesNothing) {
    showPanel();
    popup("mediaTypePopup").selectItemAtIndex(-1);
    setPending("CVMediaType", "PlainDuplex");
    EXPECT_TRUE(panel->saveValuesAndReturnError());
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(Saving, WithoutControlsTwoSidedPrintingAlsoSetsTheQuality) {
    for (const char* media : {"Plain", "Glossy"}) {
        SCOPED_TRACE(media);
        makePanel();
        setPending("CVMediaType", media);
        setPending("CVResolution", "Best");
        setDuplex(true);
        EXPECT_TRUE(panel->saveValuesAndReturnError());
        EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=PlainDuplex", "ask CVResolution=PlainNormal"));
    }
}

TEST_F(Saving, WithoutControlsOneSidedPrintingTurnsTheTwoSidedMediumBack) {
    makePanel();
    setPending("CVMediaType", "PlainDuplex");
    setPending("CVResolution", "Best");
    setDuplex(false);
    EXPECT_TRUE(panel->saveValuesAndReturnError());
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVMediaType=Plain"));
    EXPECT_EQ(pending("CVResolution"), "Best");
}

TEST_F(Saving, WithoutControlsOneSidedPrintingKeepsEveryOtherMedium) {
    makePanel();
    for (const char* media : {"Plain", "Glossy", "HagakiAtena"}) {
        SCOPED_TRACE(media);
        setPending("CVMediaType", media);
        EXPECT_TRUE(panel->saveValuesAndReturnError());
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

} // namespace
} // namespace print_settings_tests
