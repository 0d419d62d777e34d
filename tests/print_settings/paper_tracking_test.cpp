#include "tests/print_settings/print_setting_panel.h"

#include "toolkit/menu.h"

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kMappedName = "com.apple.print.PageToPaperMappingMediaName";
constexpr std::uint32_t kBitsOfPaper = kImageModeBorderless | kImageModeEnvelope | kImageModeBiDirDisabled;

class PaperReading : public PrintSettingPanel {
protected:
    // A panel that has not read any paper yet, with plain paper pending.
    void makeWithoutPaper() {
        host->format->paper.reset();
        makePanel();
        setPending("CVMediaType", "Plain");
        removePending("CVBiDir");
        removePending("CVColorPaperThick");
    }
};

TEST_F(PaperReading, EachPaperIsClassified) {
    struct Row {
        std::string paper;
        std::uint32_t bits;
        std::string thickness;
    };
    constexpr std::uint32_t kEnvelope = kImageModeEnvelope | kImageModeBiDirDisabled;
    constexpr std::uint32_t kBorderlessPostcard = kImageModeBorderless | kImageModeBiDirDisabled;
    const std::vector<Row> rows = {
        {"A4", 0, "Regular"},
        {"Letter", 0, "Regular"},
        {"A3.ShortGrain", 0, "Regular"},
        {"A4.Fullbleed", kImageModeBorderless, "Regular"},
        {"A4.Fullbleed.Extra", kImageModeBorderless, "Regular"},
        {"Fullbleed", kImageModeBorderless, "Regular"},
        {"A4.fullbleed", 0, "Regular"},
        {"_BX", kImageModeBorderless, "Regular"},
        {"CvA4_B", kImageModeBorderless, "Regular"},
        {"CvA4_Bx_b", kImageModeBorderless, "Regular"},
        {"CvA3_S", 0, "Regular"},
        {"CvB4_S", 0, "Regular"},
        {"CvHagaki_B", kBorderlessPostcard, "Regular"},
        {"Postcard.Fullbleed", kBorderlessPostcard, "Regular"},
        {"Postcard", kImageModeBiDirDisabled, "Regular"},
        {"DoublePostcardRotated", kImageModeBiDirDisabled, "Regular"},
        {"Postcard.Rotated", 0, "Regular"},
        {"Env10", kEnvelope, "Env"},
        {"Env", kEnvelope, "Env"},
        {"EnvDL.Fullbleed", kEnvelope | kImageModeBorderless, "Env"},
        {"env10", 0, "Regular"},
        {"MyEnv", 0, "Regular"},
    };
    for (const Row& row : rows)
        for (const std::uint32_t before : {0U, kBitsOfPaper}) {
            SCOPED_TRACE(row.paper);
            makeWithoutPaper();
            setPaper(row.paper);
            setFlags(before);
            EXPECT_TRUE(panel->readPageSetup());
            EXPECT_EQ(panel->paperName, row.paper);
            EXPECT_EQ(panel->imageModeFlag(), row.bits);
            EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=" + row.thickness));
            EXPECT_EQ(pending("CVColorPaperThick"), row.thickness);
            EXPECT_EQ(pending("CVBiDir"), (row.bits & kImageModeBiDirDisabled) != 0 ? "" : "ON");
        }
}

TEST_F(PaperReading, ACustomSizeKeepsItsThicknessAndFollowsIt) {
    for (const std::optional<std::string>& thickness :
         {std::optional<std::string>("Env"), std::optional<std::string>("Regular"), std::optional<std::string>()})
        for (const std::uint32_t before : {0U, kBitsOfPaper}) {
            SCOPED_TRACE(thickness.value_or("none"));
            makeWithoutPaper();
            if (thickness)
                setPending("CVColorPaperThick", *thickness);
            setCustomPaper("Custom.200x300", 200, 300);
            setFlags(before);
            EXPECT_TRUE(panel->readPageSetup());
            const bool envelope = thickness == "Env";
            EXPECT_EQ(panel->imageModeFlag(), envelope ? kImageModeEnvelope | kImageModeBiDirDisabled : 0);
            EXPECT_EQ(pending("CVColorPaperThick"), thickness.value_or(""));
            EXPECT_EQ(pending("CVBiDir"), envelope ? "" : "ON");
            EXPECT_THAT(host->takeLog(), IsEmpty());
        }
}

TEST_F(PaperReading, OnlyANameThatBeginsWithCustomIsACustomSize) {
    makeWithoutPaper();
    setPending("CVColorPaperThick", "Env");
    setPaper("MyCustom");
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Regular"));
}

TEST_F(PaperReading, TheDirectionFollowsTheMediumWithoutBeingAsked) {
    for (const auto& [media, on] :
         {std::pair("Plain", true), std::pair("PlainDuplex", true), std::pair("HagakiAtena", true),
          std::pair("Inkjet", false), std::pair("Glossy", false), std::pair("Transparencies", false)}) {
        SCOPED_TRACE(media);
        makeWithoutPaper();
        setPending("CVMediaType", media);
        setPending("CVBiDir", on ? "OFF" : "ON");
        setPaper("A4");
        panel->readPageSetup();
        EXPECT_EQ(pending("CVBiDir"), on ? "ON" : "OFF");
        EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Regular"));
    }
}

TEST_F(PaperReading, WithoutAPendingMediumTheDirectionIsOff) {
    makeWithoutPaper();
    removePending("CVMediaType");
    setPaper("A4");
    panel->readPageSetup();
    EXPECT_EQ(pending("CVBiDir"), "OFF");
}

TEST_F(PaperReading, AnEnvelopeLeavesThePendingDirection) {
    for (const char* direction : {"ON", "OFF"})
        for (const char* paper : {"Env10", "Postcard"}) {
            SCOPED_TRACE(std::string(paper) + " " + direction);
            makeWithoutPaper();
            setPending("CVBiDir", direction);
            setPaper(paper);
            EXPECT_TRUE(panel->readPageSetup());
            EXPECT_EQ(pending("CVBiDir"), direction);
        }
}

TEST_F(PaperReading, FilledControlsShowTheThicknessAndTheDirection) {
    showPanel();
    box("biDirButton").setOn(false);
    setPending("CVMediaType", "Plain");
    setPaper("Env10");
    panel->readPageSetup();
    EXPECT_EQ(popup("paperThickPopup").selectedKeyword(), "Env");
    EXPECT_FALSE(box("biDirButton").isOn());
    setPaper("A4");
    panel->readPageSetup();
    EXPECT_EQ(popup("paperThickPopup").selectedKeyword(), "Regular");
    EXPECT_TRUE(box("biDirButton").isOn());
    setPending("CVMediaType", "Glossy");
    setPaper("A3");
    panel->readPageSetup();
    EXPECT_FALSE(box("biDirButton").isOn());
}

TEST_F(PaperReading, ControlsThatAreNotFilledStay) {
    makePanelWithView();
    addItems(popup("paperThickPopup"), {"Regular", "Env"});
    box("biDirButton").setOn(false);
    setPending("CVMediaType", "Plain");
    setPaper("Env10");
    panel->readPageSetup();
    setPaper("A4");
    popup("paperThickPopup").selectItemWithKeyword("Env");
    panel->readPageSetup();
    EXPECT_EQ(popup("paperThickPopup").selectedKeyword(), "Env");
    EXPECT_FALSE(box("biDirButton").isOn());
}

TEST_F(PaperReading, AThicknessThatIsNotListedLeavesThePopUp) {
    showPanel();
    toolkit::PopUpList& list = popup("paperThickPopup");
    list.removeAllItems();
    addItems(list, {"Thick", "Regular"});
    setPaper("Env10");
    panel->readPageSetup();
    EXPECT_EQ(list.selectedKeyword(), "Thick");
}

TEST_F(PaperReading, ARefusedThicknessIsShownButNotPending) {
    showPanel();
    setPending("CVColorPaperThick", "Regular");
    host->refused = {"CVColorPaperThick"};
    setPaper("Env10");
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(pending("CVColorPaperThick"), "Regular");
    EXPECT_EQ(popup("paperThickPopup").selectedKeyword(), "Env");
}

TEST_F(PaperReading, AnUnchangedPaperIsNotLookedAtAgain) {
    makeWithoutPaper();
    setPaper("Env10");
    ASSERT_TRUE(panel->readPageSetup());
    setFlags(kImageModeBorderless);
    removePending("CVColorPaperThick");
    host->log.clear();
    EXPECT_FALSE(panel->readPageSetup());
    EXPECT_EQ(panel->imageModeFlag(), kImageModeBorderless);
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(PaperReading, APaperThatTheJobIsMappedToComesFirst) {
    makeWithoutPaper();
    setPaper("A4");
    host->settings->setValueForKey(std::string("A3"), kMappedName);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "A3");
    host->settings->removeKey(kMappedName);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "A4");
}

TEST_F(PaperReading, AMappedPaperNeedsNoPageFormat) {
    makeWithoutPaper();
    host->format.reset();
    host->settings->setValueForKey(std::string("Env10"), kMappedName);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "Env10");
}

TEST_F(PaperReading, WhatCannotBeReadChangesNothing) {
    struct Row {
        std::string missing;
        std::function<void(tests::TestHost&)> take;
    };
    const std::vector<Row> rows = {
        {"the operation for the print settings", [](tests::TestHost& each) { each.lacking = {"printSettings"}; }},
        {"the print settings", [](tests::TestHost& each) { each.settings.reset(); }},
        {"the operation for the page format", [](tests::TestHost& each) { each.lacking = {"pageFormat"}; }},
        {"the page format", [](tests::TestHost& each) { each.format.reset(); }},
        {"the paper", [](tests::TestHost& each) { each.format->paper.reset(); }},
        {"the paper's name", [](tests::TestHost& each) { each.format->paper->name.reset(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("Without " + row.missing);
        openHost(tests::samplePpd("corvane-a3"));
        makeWithoutPaper();
        panel->paperName = "A4";
        setFlags(kBitsOfPaper);
        setPaper("Letter");
        row.take(*host);
        EXPECT_FALSE(panel->readPageSetup());
        EXPECT_EQ(panel->paperName, "A4");
        EXPECT_EQ(panel->imageModeFlag(), kBitsOfPaper);
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(PaperReading, VanishedPrintSettingsEndAllObserving) {
    setPaper("A4");
    makePanel();
    auto kept = std::exchange(host->settings, std::nullopt);
    postPaperChange();
    host->settings = kept;
    setPaper("A3");
    host->description->mark("Duplex", "DuplexTumble");
    postPaperChange();
    postDuplexChange();
    EXPECT_EQ(panel->paperName, "A4");
    EXPECT_FALSE(panel->hasFlag(kImageModeDuplex));
}

TEST_F(PaperReading, AHostWithoutTheOperationForPrintSettingsIsStillObserved) {
    setPaper("A4");
    makePanel();
    host->lacking = {"printSettings"};
    postPaperChange();
    host->lacking.clear();
    setPaper("A3");
    postPaperChange();
    EXPECT_EQ(panel->paperName, "A3");
}

// A user-defined "Letter"; the sample printer takes 252 to 900 by 360 to 1400 points

TEST_F(PaperReading, AUserDefinedLetterBeyondTheLimitsIsUnsupported) {
    struct Row {
        double width, height;
        bool supported;
    };
    const std::vector<Row> rows = {
        {612, 792, true},      {252, 360, true},      {900, 1400, true},  {900.001, 792, false}, {612, 1400.001, false},
        {251.999, 792, false}, {612, 359.999, false}, {1000, 100, false}, {252, 1400, true},     {900, 360, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
        makeWithoutPaper();
        setCustomPaper("Letter", row.width, row.height);
        EXPECT_TRUE(panel->readPageSetup());
        EXPECT_EQ(panel->paperName, row.supported ? "Letter" : "UnsupportedPaper");
    }
}

TEST_F(PaperReading, AnUnsupportedPaperIsClassifiedByItsNewName) {
    makeWithoutPaper();
    setCustomPaper("Letter", 612, 2000);
    ASSERT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->imageModeFlag() & kBitsOfPaper, 0);
    EXPECT_FALSE(panel->readPageSetup()); // unchanged
    EXPECT_THAT(host->takeLog(), ElementsAre("ask CVColorPaperThick=Regular"));
}

TEST_F(PaperReading, TheLetterOfThePrinterIsNeverUnsupported) {
    makeWithoutPaper();
    host->format->paper = printing::Paper{.name = "Letter", .ppdName = "Letter", .width = 5000, .height = 5000};
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "Letter");
}

TEST_F(PaperReading, OnlyALetterIsComparedWithTheLimits) {
    for (const char* name : {"A4", "Letter.Fullbleed", "letter", "Custom.5000x5000"}) {
        SCOPED_TRACE(name);
        makeWithoutPaper();
        setCustomPaper(name, 5000, 5000);
        EXPECT_TRUE(panel->readPageSetup());
        EXPECT_EQ(panel->paperName, name);
    }
}

TEST_F(PaperReading, ALetterWhoseSizeCannotBeReadStaysOne) {
    makeWithoutPaper();
    setCustomPaper("Letter", std::nullopt, 5000);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "Letter");
    makeWithoutPaper();
    setCustomPaper("Letter", 5000, std::nullopt);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "Letter");
}

TEST_F(PaperReading, AMappedLetterIsComparedByThePageFormatsPaper) {
    makeWithoutPaper();
    host->settings->setValueForKey(std::string("Letter"), kMappedName);
    EXPECT_TRUE(panel->readPageSetup()); // no page format's paper: nothing to compare
    EXPECT_EQ(panel->paperName, "Letter");
    setCustomPaper("Custom.5000x5000", 5000, 5000);
    EXPECT_TRUE(panel->readPageSetup());
    EXPECT_EQ(panel->paperName, "UnsupportedPaper");
}

// The menu of paper sizes, followed where the panel manages no options

class PaperMenu : public PrintSettingPanel {
protected:
    PaperMenu() { openWithTexts({}); }

    void openWithTexts(std::map<std::string, std::string, std::less<>> strings) {
        openHost(tests::samplePpd("corvane-a3"));
        host->reopenBundle({.languages = {"en"},
                            .localize = false,
                            .strings = std::move(strings),
                            .info = {},
                            .removedInfo = {"PMPPDKeysSupported"}});
    }
    static void postMenuAction(const toolkit::Object* sender, const std::optional<toolkit::ValueMap>& info) {
        toolkit::NotificationCenter::defaultCenter().post(
            {.name = "NSMenuDidSendActionNotification", .sender = sender, .userInfo = info});
    }
};

TEST_F(PaperMenu, ItsActionsAreFollowed) {
    setPaper("A4");
    makePanel();
    setPaper("A3");
    const toolkit::Menu menu({"B5", "A4", "A3"});
    postMenuAction(&menu, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A3");
}

TEST_F(PaperMenu, ItsActionsAreFollowedHoweverOftenTheyCome) { // each reading observes: only one may stay
    setPaper("A4");
    makePanel();
    const toolkit::Menu menu({"A4"});
    for (int action = 0; action < 40; ++action)
        postMenuAction(&menu, toolkit::ValueMap());
    setPaper("A3");
    postMenuAction(&menu, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A3");
}

TEST_F(PaperMenu, AnyOtherMenuIsIgnored) {
    setPaper("A4");
    makePanel();
    setPaper("A3");
    const toolkit::Menu other({"Copy", "A4 ", "a4"});
    const toolkit::Menu empty({});
    const toolkit::View noMenu("A4");
    for (const toolkit::Object* sender :
         {static_cast<const toolkit::Object*>(&other), static_cast<const toolkit::Object*>(&empty),
          static_cast<const toolkit::Object*>(&noMenu), static_cast<const toolkit::Object*>(nullptr)}) {
        postMenuAction(sender, toolkit::ValueMap{{"MenuItem", "A4"}});
        EXPECT_EQ(panel->paperName, "A4");
    }
}

TEST_F(PaperMenu, AnActionWithoutInfoIsIgnored) {
    setPaper("A4");
    makePanel();
    setPaper("A3");
    const toolkit::Menu menu({"A4"});
    postMenuAction(&menu, std::nullopt);
    EXPECT_EQ(panel->paperName, "A4");
}

TEST_F(PaperMenu, ItIsKnownByTheLocalisedNameOfA4) {
    openWithTexts({{"A4", "DIN A4"}});
    setPaper("A4");
    makePanel();
    setPaper("A3");
    const toolkit::Menu plain({"A4"}), localised({"DIN A4"});
    postMenuAction(&plain, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A4");
    postMenuAction(&localised, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A3");
}

TEST_F(PaperMenu, APanelWithOptionsDoesNotFollowIt) {
    openHost(tests::samplePpd("corvane-a3"));
    setPaper("A4");
    makePanel();
    setPaper("A3");
    const toolkit::Menu menu({"A4"});
    postMenuAction(&menu, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A4");
}

TEST_F(PaperMenu, AMappedPaperIsReadBeforeTheMenuIsFollowed) {
    host->settings->setValueForKey(std::string("A4"), kMappedName);
    makePanel();
    host->settings->setValueForKey(std::string("A3"), kMappedName);
    const toolkit::Menu menu({"A4"});
    postMenuAction(&menu, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A4");
    postPaperChange();
    EXPECT_EQ(panel->paperName, "A3");
}

TEST_F(PaperMenu, ItIsFollowedAlsoWhereThePaperCannotBeRead) {
    host->format.reset();
    makePanel();
    host->format = printing::PageFormat();
    setPaper("A3");
    const toolkit::Menu menu({"A4"});
    postMenuAction(&menu, toolkit::ValueMap());
    EXPECT_EQ(panel->paperName, "A3");
}

} // namespace
} // namespace print_settings_tests
