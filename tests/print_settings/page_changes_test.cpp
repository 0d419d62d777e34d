#include "tests/print_settings/print_setting_panel.h"

#include "toolkit/exception.h"

#include <algorithm>
#include <stdexcept>

namespace print_settings_tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Keywords = std::vector<std::string>;

// What follows a change of the paper

class PaperChange : public PrintSettingPanel {
protected:
    // The panel shown on A4 with plain paper.
    void showOnA4() {
        setPaper("A4");
        showPanel();
        panel->restoreValuesAndReturnError();
        host->log.clear();
    }
};

TEST_F(PaperChange, TheRulesRunInOrder) {
    showOnA4();
    panel->trace = &host->log;
    setPaper("A3");
    postPaperChange();
    const auto log = without(host->takeLog(), "call updateUIforKey ");
    EXPECT_THAT(log, ElementsAre("call checkConstraints", kPostedColor, "call checkUIConstraints", "call updateUI",
                                 kPostedColor, "call checkUIConstraints"));
}

TEST_F(PaperChange, AnUnchangedPaperRunsNothing) {
    showOnA4();
    panel->trace = &host->log;
    postPaperChange();
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PaperChange, BeforeTheControlsAreFilledOnlyTheValuesAreChecked) {
    setPaper("A4");
    makePanelWithView();
    setPending("CVMediaType", "Transparencies");
    setPending("CVResolution", "Normal");
    panel->trace = &host->log;
    setPaper("A4.Fullbleed");
    postPaperChange();
    EXPECT_THAT(host->takeLog(), ElementsAre("call checkConstraints", "ask CVMediaType=Plain",
                                             "ask CVResolution=PlainNormal", "ask CVBiDir=ON", kPostedColor));
    EXPECT_THAT(host->alerts, IsEmpty());
}

TEST_F(PaperChange, BorderlessPaperWarnsOfWhatItForbids) {
    struct Row {
        std::string paper, media, quality;
        bool warned;
    };
    const std::vector<Row> rows = {
        {"A4.Fullbleed", "Transparencies", "Normal", true}, {"A4.Fullbleed", "Plain", "PlainFast", true},
        {"A4.Fullbleed", "Plain", "PlainNormal", false},    {"A4.Fullbleed", "Glossy", "Fast", false},
        {"CvHagaki_B", "Transparencies", "Normal", true},   {"A3.Fullbleed", "Plain", "PlainNormal", false},
        {"A3", "Transparencies", "Normal", false},          {"A3", "Plain", "PlainFast", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.paper + " " + row.media + " " + row.quality);
        showOnA4();
        setPending("CVMediaType", row.media);
        setPending("CVResolution", row.quality);
        setPaper(row.paper);
        postPaperChange();
        EXPECT_EQ(host->alerts.size(), row.warned ? 1 : 0);
        EXPECT_EQ(std::ranges::count(takePosted(), kPostedDither), row.warned ? 1 : 0); // a reset tells the half-tone
        host->alerts.clear();
    }
}

TEST_F(PaperChange, TheWarningComesBeforeTheValuesChange) {
    showOnA4();
    setPending("CVMediaType", "Transparencies");
    setPending("CVResolution", "Normal");
    setPending("CVColorPaperThick", "Regular");
    setPaper("A4.Fullbleed");
    postPaperChange();
    const auto log = host->takeLog();
    ASSERT_GE(log.size(), 3);
    EXPECT_THAT(Keywords(log.begin(), log.begin() + 3),
                ElementsAre("alert Borderless Alert", "ask CVMediaType=Plain", "ask CVResolution=PlainNormal"));
}

TEST_F(PaperChange, TheWarningIsCriticalWithOneButton) {
    host->reopenBundle({.languages = {"en"},
                        .localize = false,
                        .strings = {{"Borderless Alert", "No"}, {"Borderless Alert2", "Not so."}, {"OK", "Fine"}},
                        .info = {},
                        .removedInfo = {}});
    showOnA4();
    setPending("CVResolution", "PlainFast");
    setPaper("A4.Fullbleed");
    postPaperChange();
    ASSERT_EQ(host->alerts.size(), 1);
    const toolkit::Alert& alert = host->alerts.front();
    EXPECT_EQ(alert.style, toolkit::AlertStyle::Critical);
    EXPECT_EQ(alert.messageText, "No");
    EXPECT_EQ(alert.informativeText, "Not so.");
    EXPECT_THAT(alert.buttons, ElementsAre(toolkit::LocalizedText{.key = "OK", .text = "Fine"}));
    EXPECT_FALSE(alert.showsSuppressionButton);
}

TEST_F(PaperChange, BorderlessPaperResetsTheBoxesOfTransparencies) {
    showOnA4();
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Transparencies");
    ASSERT_FALSE(box("biDirButton").isOn());
    setPaper("A4.Fullbleed");
    postPaperChange();
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
    EXPECT_EQ(popup("resolutionPopup").selectedKeyword(), "PlainNormal");
    EXPECT_TRUE(box("biDirButton").isOn());
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), ElementsAre("Transparencies"));
    EXPECT_THAT(disabledKeywordsOf(popup("resolutionPopup")), ElementsAre("PlainFast"));
}

TEST_F(PaperChange, AnExceptionOfTheToolkitEndsAllObserving) {
    for (const std::string failing : {"CVColorPaperThick", "CVResolution"}) { // while reading, and in the rules
        SCOPED_TRACE(failing);
        setPaper("A4");
        makePanel();
        setPending("CVMediaType", "Glossy");
        setPending("CVResolution", "PlainFast");
        host->beforeAsking = [&](const std::string& option, const std::string&) {
            if (option == failing)
                throw toolkit::Exception("The toolkit failed.");
        };
        setPaper("Env10");
        EXPECT_NO_THROW(postPaperChange());
        host->beforeAsking = nullptr;
        setPaper("A3");
        postPaperChange();
        EXPECT_EQ(panel->paperName, "Env10");
        host->description->mark("Duplex", "DuplexTumble");
        postDuplexChange();
        EXPECT_FALSE(panel->hasFlag(kImageModeDuplex));
        host->description->mark("Duplex", "None");
    }
}

TEST_F(PaperChange, AnyOtherFailurePassesOnAndObservingGoesOn) {
    setPaper("A4");
    makePanel();
    host->beforeAsking = [](const std::string&, const std::string&) {
        throw std::runtime_error("Something else failed.");
    };
    setPaper("Env10");
    EXPECT_THROW(postPaperChange(), std::runtime_error);
    host->beforeAsking = nullptr;
    setPaper("A3");
    postPaperChange();
    EXPECT_EQ(panel->paperName, "A3");
}

TEST_F(PaperChange, AnyOtherNotificationIsActedOn) {
    setPaper("A4");
    makePanel();
    setPaper("A3");
    panel->checkPageSizeChange({.name = "", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(panel->paperName, "A3");
}

// Two-sided printing

class TwoSidedPrinting : public PrintSettingPanel {
protected:
    void setDuplex(bool on) { host->description->mark("Duplex", on ? "DuplexNoTumble" : "None"); }
};

TEST_F(TwoSidedPrinting, AnyChoiceButTheDefaultIsTwoSided) {
    makePanel();
    for (const auto& [choice, on] :
         {std::pair("DuplexNoTumble", true), std::pair("None", false), std::pair("DuplexTumble", true)}) {
        SCOPED_TRACE(choice);
        host->description->mark("Duplex", choice);
        panel->setFlag(kImageModeDuplex, !on);
        panel->checkDuplex();
        EXPECT_EQ(panel->hasFlag(kImageModeDuplex), on);
    }
    host->description->unmark("Duplex");
    panel->checkDuplex();
    EXPECT_TRUE(panel->hasFlag(kImageModeDuplex)); // the default is not the marked one
}

TEST_F(TwoSidedPrinting, ADefaultThatIsTwoSidedCountsAsOff) {
    openHost(replaced(tests::samplePpd("corvane-a3"), "*DefaultDuplex: None", "*DefaultDuplex: DuplexTumble"));
    makePanel();
    panel->checkDuplex();
    EXPECT_FALSE(panel->hasFlag(kImageModeDuplex));
    setDuplex(false);
    panel->checkDuplex();
    EXPECT_TRUE(panel->hasFlag(kImageModeDuplex));
}

TEST_F(TwoSidedPrinting, IsTrackedOnPrintersWithItsMediumOnly) {
    const std::string duplex = tests::ppdOption("Duplex", "Duplex", "None", {"None/Off", "DuplexTumble/On"});
    const std::string media = tests::ppdOption("CVMediaType", "Media", "Plain", {"Plain/Plain", "PlainDuplex/Both"});
    const std::string oneSided =
        tests::ppdOption("CVMediaType", "Media", "Plain", {"Plain/Plain", "PlainDuplex2/Both", "plainduplex/Both"});
    for (const auto& [options, tracked] : {std::pair(duplex + media, true), std::pair(duplex + oneSided, false),
                                           std::pair(duplex, false), std::pair(media, false)}) {
        SCOPED_TRACE(options);
        openHost(tests::ppdWith(options));
        makePanel();
        host->description->mark("Duplex", "DuplexTumble");
        panel->setFlag(kImageModeDuplex, !tracked);
        panel->checkDuplex();
        EXPECT_EQ(panel->hasFlag(kImageModeDuplex), tracked);
    }
}

TEST_F(TwoSidedPrinting, TurningItOnTakesItsMediumAndQuality) {
    for (const std::string media : {"Plain", "PlainDuplex"}) {
        SCOPED_TRACE(media);
        setDuplex(false);
        makePanel();
        setPending("CVMediaType", media);
        setPending("CVResolution", "Best");
        setDuplex(true);
        postDuplexChange();
        EXPECT_EQ(takeAsked(), media == "Plain"
                                   ? Keywords({"ask CVMediaType=PlainDuplex", "ask CVResolution=PlainNormal"})
                                   : Keywords({"ask CVResolution=PlainNormal"}));
        EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
    }
}

TEST_F(TwoSidedPrinting, TurningItOnWithAnotherMediumOnlySetsTheBit) {
    for (const std::string media : {"HagakiAtena", "Glossy", "plain"}) {
        SCOPED_TRACE(media);
        setDuplex(false);
        showPanel();
        setPending("CVMediaType", media);
        panel->trace = &host->log;
        setDuplex(true);
        postDuplexChange();
        EXPECT_TRUE(panel->hasFlag(kImageModeDuplex));
        EXPECT_EQ(pending("CVMediaType"), media);
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(TwoSidedPrinting, WhileItStaysOnNothingFollows) {
    setDuplex(true);
    showPanel(); // looks at it
    ASSERT_TRUE(panel->hasFlag(kImageModeDuplex));
    setPending("CVMediaType", "Plain");
    host->log.clear();
    panel->trace = &host->log;
    host->description->mark("Duplex", "DuplexTumble");
    postDuplexChange();
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(TwoSidedPrinting, ShownControlsAreRefreshedWhenItTurnsOnOrOff) {
    showPanel();
    panel->restoreValuesAndReturnError();
    panel->trace = &host->log;
    setDuplex(true);
    postDuplexChange();
    EXPECT_THAT(host->takeLog(), Contains("call updateUI").Times(1));
    EXPECT_THAT(keywordsOf(popup("resolutionPopup")), ElementsAre("PlainFast", "PlainNormal", "Best"));
    setDuplex(false);
    postDuplexChange();
    EXPECT_THAT(host->takeLog(), Contains("call updateUI").Times(1));
    EXPECT_EQ(pending("CVMediaType"), "PlainDuplex"); // stays
    postDuplexChange();
    EXPECT_THAT(host->takeLog(), Contains("call updateUI").Times(1)); // off as before: refreshed too
}

TEST_F(TwoSidedPrinting, ControlsThatAreNotFilledAreNotRefreshed) {
    makePanelWithView();
    panel->trace = &host->log;
    setPending("CVMediaType", "Plain");
    setDuplex(true);
    postDuplexChange();
    setDuplex(false);
    postDuplexChange();
    EXPECT_THAT(host->takeLog(), Not(Contains("call updateUI")));
}

// Custom envelopes and the paper source

TEST_F(PaperChange, ACustomSizeIsAnEnvelopeByItsThickness) {
    constexpr std::uint32_t kBits = kImageModeEnvelope | kImageModeBiDirDisabled;
    struct Row {
        std::optional<std::string> paper, thickness;
        std::optional<bool> envelope; ///< none: no custom size, nothing changes
    };
    const std::vector<Row> rows = {
        {"Custom.200x300", "Env", true},         {"Custom", "Env", true},
        {"Custom.200x300", "Regular", false},    {"Custom.200x300", "env", false},
        {"Custom.200x300", std::nullopt, false}, {"A4", "Env", std::nullopt},
        {"Env10", "Env", std::nullopt},          {"custom.200x300", "Env", std::nullopt},
        {"MyCustom", "Env", std::nullopt},       {std::nullopt, "Env", std::nullopt},
    };
    makePanel();
    for (const Row& row : rows)
        for (const std::uint32_t before : {0U, kBits}) {
            SCOPED_TRACE(row.paper.value_or("null") + " " + row.thickness.value_or("none"));
            panel->paperName = row.paper;
            removePending("CVColorPaperThick");
            if (row.thickness)
                setPending("CVColorPaperThick", *row.thickness);
            setFlags(before);
            EXPECT_EQ(panel->paperSizeIsCustomEnv(), row.envelope.value_or(false));
            EXPECT_EQ(panel->imageModeFlag(), row.envelope ? (*row.envelope ? kBits : 0) : before);
        }
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PaperChange, APaperSourceOnBorderlessPaperGreysTransparencies) {
    showOnA4();
    popup("mediaTypePopup").selectItemWithKeyword("Glossy");
    setFlags(kImageModeBorderless | kImageModeTransparency | kImageModeDiffusion);
    panel->checkStateWithPaperFeed();
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), ElementsAre("Transparencies"));
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Glossy");
    EXPECT_EQ(panel->imageModeFlag(), kImageModeBorderless | kImageModeDiffusion);
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PaperChange, APaperSourceOnBorderlessPaperMovesSelectedTransparencies) {
    showOnA4();
    popup("mediaTypePopup").selectItemWithKeyword("Transparencies");
    setFlags(kImageModeBorderless);
    panel->checkStateWithPaperFeed();
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
}

TEST_F(PaperChange, APaperSourceOnOtherPaperChangesNothing) {
    showOnA4();
    setFlags(kImageModeTransparency);
    panel->checkStateWithPaperFeed();
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), IsEmpty());
    EXPECT_EQ(panel->imageModeFlag(), kImageModeTransparency);
}

// Items that are enabled, disabled or rebuilt

class ItemStates : public PrintSettingPanel {
protected:
    ItemStates() { showPanel(); }
    void change(toolkit::PopUpList& list, const std::optional<Keywords>& keywords, bool enable, bool toDefault) {
        panel->changeStateForArrayToEnableToDefault(&list, keywords, enable, toDefault);
    }
    // A pop-up that is none of the panel's.
    toolkit::PopUpList loose{"loose"};
};

TEST_F(ItemStates, DisablingGreysTheListedItemsOnly) {
    addItems(loose, {"One", "Two", "Three", "Four"});
    change(loose, Keywords{"Four", "None", "Two"}, false, false);
    EXPECT_THAT(disabledKeywordsOf(loose), ElementsAre("Two", "Four"));
    change(loose, Keywords{"One"}, false, false);
    EXPECT_THAT(disabledKeywordsOf(loose), ElementsAre("One", "Two", "Four"));
    EXPECT_THAT(keywordsOf(loose), ElementsAre("One", "Two", "Three", "Four"));
}

TEST_F(ItemStates, EnablingTakesTheListedItemsOnly) {
    addItems(loose, {"One", "Two", "Three"});
    change(loose, Keywords{"One", "Two", "Three"}, false, false);
    change(loose, Keywords{"Three", "None"}, true, false);
    EXPECT_THAT(disabledKeywordsOf(loose), ElementsAre("One", "Two"));
    EXPECT_THAT(keywordsOf(loose), ElementsAre("One", "Two", "Three"));
}

TEST_F(ItemStates, NoListOrNoPopUpChangesNothing) {
    addItems(loose, {"One"});
    change(loose, std::nullopt, false, false);
    EXPECT_THAT(disabledKeywordsOf(loose), IsEmpty());
    EXPECT_NO_THROW(panel->changeStateForArrayToEnableToDefault(nullptr, Keywords{"One"}, true, true));
}

TEST_F(ItemStates, TheQualityPopUpIsRebuiltInTheListsOrder) {
    toolkit::PopUpList& list = popup("resolutionPopup");
    change(list, Keywords{"Photo", "NoQuality", "PlainFast", "Best"}, true, false);
    EXPECT_THAT(keywordsOf(list), ElementsAre("Photo", "PlainFast", "Best"));
    std::vector<std::string> titles;
    for (const auto& item : list.items())
        titles.push_back(item.title);
    EXPECT_THAT(titles, ElementsAre("Photo", "Fast", "Highest"));
}

TEST_F(ItemStates, RebuildingEnablesWhatWasGreyed) {
    toolkit::PopUpList& list = popup("resolutionPopup");
    change(list, Keywords{"PlainFast", "PlainNormal"}, true, false);
    change(list, Keywords{"PlainFast"}, false, false);
    ASSERT_THAT(disabledKeywordsOf(list), ElementsAre("PlainFast"));
    change(list, Keywords{"PlainFast", "PlainNormal"}, true, false);
    EXPECT_THAT(disabledKeywordsOf(list), IsEmpty());
}

TEST_F(ItemStates, DisablingDoesNotRebuildTheQualityPopUp) {
    toolkit::PopUpList& list = popup("resolutionPopup");
    const Keywords before = keywordsOf(list);
    change(list, Keywords{"High"}, false, false);
    EXPECT_EQ(keywordsOf(list), before);
    EXPECT_THAT(disabledKeywordsOf(list), ElementsAre("High"));
}

TEST_F(ItemStates, AnEmptyListEmptiesTheQualityPopUp) {
    toolkit::PopUpList& list = popup("resolutionPopup");
    change(list, Keywords(), true, true);
    EXPECT_THAT(keywordsOf(list), IsEmpty());
    EXPECT_EQ(list.selectedIndex(), -1);
}

TEST_F(ItemStates, TheTagMakesAQualityPopUp) {
    loose.setTag(5);
    addItems(loose, {"One"});
    change(loose, Keywords{"High"}, true, false);
    EXPECT_THAT(keywordsOf(loose), ElementsAre("High"));
    toolkit::PopUpList& list = popup("resolutionPopup");
    list.setTag(6);
    const Keywords before = keywordsOf(list);
    change(list, Keywords{"High"}, true, false);
    EXPECT_EQ(keywordsOf(list), before);
}

TEST_F(ItemStates, AnEnabledSelectionStaysUnlessTheDefaultIsWanted) {
    toolkit::PopUpList& list = popup("mediaTypePopup");
    list.selectItemWithKeyword("Glossy");
    change(list, Keywords{"Transparencies"}, false, false);
    EXPECT_EQ(list.selectedKeyword(), "Glossy");
    change(list, Keywords{"Transparencies"}, true, true);
    EXPECT_EQ(list.selectedKeyword(), "Plain");
}

TEST_F(ItemStates, ADisabledOrMissingSelectionFallsBack) {
    toolkit::PopUpList& list = popup("mediaTypePopup");
    list.selectItemWithKeyword("Glossy");
    change(list, Keywords{"Glossy"}, false, false);
    EXPECT_EQ(list.selectedKeyword(), "Plain");
    list.selectItemAtIndex(-1);
    change(list, Keywords(), false, false);
    EXPECT_EQ(list.selectedKeyword(), "Plain");
}

TEST_F(ItemStates, TheQualityFallsBackToTheDefaultOfTheSelectedMedium) {
    toolkit::PopUpList& list = popup("resolutionPopup");
    setPending("CVMediaType", "Plain"); // what is selected counts
    for (const auto& [media, quality] :
         {std::pair("Glossy", "Photo"), std::pair("Transparencies", "Normal"), std::pair("Plain", "PlainNormal")}) {
        SCOPED_TRACE(media);
        popup("mediaTypePopup").selectItemWithKeyword(media);
        change(list, Keywords{"Best", "PlainNormal", "Photo"}, true, false);
        list.addItemWithTitle("Plain Normal");
        list.setKeywordOfItemWithTitle("Normal", "Plain Normal");
        change(list, Keywords(), false, true);
        EXPECT_EQ(list.selectedKeyword(), quality);
    }
}

TEST_F(ItemStates, ThePaperSourceFallsBackToTheFirstTray) {
    toolkit::PopUpList& list = popup("paperFeedPopup");
    list.selectItemWithKeyword("Manual");
    change(list, Keywords{"Manual"}, false, false);
    EXPECT_EQ(list.selectedKeyword(), "Tray1");
}

TEST_F(ItemStates, AnyOtherPopUpKeepsItsSelection) {
    for (const char* name : {"paperThickPopup", "monoColorPopup", "jpegPopup", "duplexPopup"}) {
        SCOPED_TRACE(name);
        toolkit::PopUpList& list = popup(name);
        addItems(list, {"Plain", "PlainNormal", "Tray1", "Last"});
        list.selectItemWithKeyword("Last");
        change(list, Keywords{"Last"}, false, true);
        EXPECT_EQ(list.selectedKeyword(), "Last");
    }
}

TEST_F(ItemStates, ADefaultThatIsNotListedLeavesTheSelection) {
    toolkit::PopUpList& list = popup("paperFeedPopup");
    list.removeAllItems();
    addItems(list, {"Tray2", "Manual"});
    list.selectItemWithKeyword("Manual");
    change(list, Keywords{"Manual"}, false, true);
    EXPECT_EQ(list.selectedKeyword(), "Manual");
}

TEST_F(ItemStates, SelectingChangesTheControlOnly) {
    const toolkit::ValueMap before = panel->outputBin();
    popup("mediaTypePopup").selectItemWithKeyword("Glossy");
    change(popup("mediaTypePopup"), Keywords{"Glossy"}, false, true);
    change(popup("resolutionPopup"), Keywords{"PlainNormal"}, true, true);
    EXPECT_EQ(panel->outputBin(), before);
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

} // namespace
} // namespace print_settings_tests
