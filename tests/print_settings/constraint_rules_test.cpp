#include "tests/print_settings/print_setting_panel.h"

#include <algorithm>

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ValueConstraints : public PrintSettingPanel {
protected:
    // A panel without controls with these values pending, all rules' other conditions unmet.
    void makeWith(const std::string& media, const std::string& quality) {
        makePanel();
        setFlags(0);
        panel->setOutputBin(toolkit::ValueMap{{"CVMediaType", media}, {"CVResolution", quality}, {"CVBiDir", "ON"}});
    }
    std::vector<std::string> askedByConstraints() {
        panel->checkConstraints();
        return takeAsked();
    }
};

TEST_F(ValueConstraints, AQualityThatTheMediaDoesNotAllowBecomesItsDefault) {
    struct Row {
        std::string media;
        std::vector<std::string> allowed;
        std::string otherwise;
    };
    const std::vector<std::string> plain = {"PlainFast", "PlainNormal", "High", "Best"};
    const std::vector<std::string> glossy = {"Fast", "Photo", "Best"};
    const std::vector<Row> rows = {
        {"Plain", plain, "PlainNormal"},
        {"PlainDuplex", plain, "PlainNormal"},
        {"HagakiAtena", plain, "PlainNormal"},
        {"HagakiUra", glossy, "Photo"},
        {"Inkjet", {"Normal", "Photo"}, "Photo"},
        {"CorvaneQT20Matte", {"Normal", "Photo"}, "Photo"},
        {"CorvaneGlossy", glossy, "Photo"},
        {"CorvaneGlossyR", glossy, "Photo"},
        {"Glossy", glossy, "Photo"},
        {"Transparencies", {"Normal"}, "Normal"},
    };
    for (const Row& row : rows)
        for (const std::string quality :
             {"PlainFast", "PlainNormal", "High", "Best", "Fast", "Normal", "Photo", "best", ""}) {
            SCOPED_TRACE(row.media + " at \"" + quality + "\"");
            makeWith(row.media, quality);
            panel->checkConstraints();
            const bool allowed = std::ranges::find(row.allowed, quality) != row.allowed.end();
            EXPECT_EQ(pending("CVResolution"), allowed ? quality : row.otherwise);
            EXPECT_EQ(pending("CVMediaType"), row.media);
        }
}

TEST_F(ValueConstraints, AMissingQualityBecomesTheMediasDefault) {
    makeWith("Glossy", "");
    removePending("CVResolution");
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVResolution=Photo"));
}

TEST_F(ValueConstraints, WithoutAMediaTypeTheQualityStays) {
    makeWith("", "NoQuality");
    removePending("CVMediaType");
    EXPECT_THAT(askedByConstraints(), IsEmpty());
}

TEST_F(ValueConstraints, AnUnknownMediaTypeBecomesPlainPaper) {
    makeWith("PhotoPaper", "Photo");
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVMediaType=Plain", "ask CVResolution=PlainNormal"));
}

TEST_F(ValueConstraints, TwoSidedPrintingDoesNotAllowTheHighQuality) {
    makeWith("PlainDuplex", "High");
    panel->setFlag(kImageModeDuplex, true);
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVResolution=PlainNormal"));
}

TEST_F(ValueConstraints, BorderlessPaperTurnsTransparenciesIntoPlainPaper) {
    makeWith("Transparencies", "Normal");
    setPending("CVBiDir", "OFF");
    panel->setFlag(kImageModeBorderless, true);
    EXPECT_THAT(askedByConstraints(),
                ElementsAre("ask CVMediaType=Plain", "ask CVResolution=PlainNormal", "ask CVBiDir=ON"));
    EXPECT_EQ(flags(kImageModeSlowDryingDisabled | kImageModeTransparency), kImageModeSlowDryingDisabled);
}

TEST_F(ValueConstraints, BorderlessA3TurnsTransparenciesIntoPlainPaperOfTheBestQuality) {
    makeWith("Transparencies", "Normal");
    panel->setFlag(kImageModeBorderless, true);
    panel->paperName = "A3.Fullbleed";
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVMediaType=Plain", "ask CVResolution=Best"));
}

TEST_F(ValueConstraints, PaperWithBordersKeepsTransparencies) {
    makeWith("Transparencies", "Normal");
    EXPECT_THAT(askedByConstraints(), IsEmpty());
    EXPECT_FALSE(panel->hasFlag(kImageModeSlowDryingDisabled));
}

TEST_F(ValueConstraints, BorderlessA3PrintsPlainPaperInTheBestQuality) {
    for (const char* media : {"Plain", "PlainDuplex", "HagakiAtena"})
        for (const char* quality : {"PlainFast", "PlainNormal", "High", "Best"}) {
            SCOPED_TRACE(std::string(media) + " at " + quality);
            makeWith(media, quality);
            panel->setFlag(kImageModeBorderless, true);
            panel->paperName = "A3.Fullbleed";
            panel->checkConstraints();
            EXPECT_EQ(pending("CVResolution"), "Best");
            EXPECT_FALSE(panel->hasFlag(kImageModeSlowDryingDisabled));
        }
}

TEST_F(ValueConstraints, OtherBorderlessPaperPrintsPlainPaperNotFast) {
    for (const char* media : {"Plain", "PlainDuplex", "HagakiAtena"})
        for (const std::string quality : {"PlainFast", "PlainNormal", "High", "Best"}) {
            SCOPED_TRACE(std::string(media) + " at " + quality);
            makeWith(media, quality);
            panel->setFlag(kImageModeBorderless, true);
            panel->paperName = "A4.Fullbleed";
            panel->checkConstraints();
            EXPECT_EQ(pending("CVResolution"), quality == "PlainFast" ? "PlainNormal" : quality);
        }
}

TEST_F(ValueConstraints, BorderlessPaperChangesNoOtherMedium) {
    makeWith("Glossy", "Fast");
    panel->setFlag(kImageModeBorderless, true);
    panel->paperName = "A3.Fullbleed";
    EXPECT_THAT(askedByConstraints(), IsEmpty());
}

TEST_F(ValueConstraints, TheKnownMediaTypesAreOfferedAgain) {
    makePanelWithView();
    toolkit::PopUpList& media = popup("mediaTypePopup");
    addItems(media, {"PhotoPaper", "Plain", "PlainDuplex", "Inkjet", "Transparencies", "CorvaneGlossyR",
                     "CorvaneGlossy", "CorvaneQT20Matte", "Glossy", "HagakiAtena", "HagakiUra", "PrintableDisc"});
    for (int index = 0; index < static_cast<int>(media.items().size()); ++index)
        media.setItemEnabled(index, false);
    panel->checkConstraints();
    EXPECT_THAT(disabledKeywordsOf(media), ElementsAre("PhotoPaper", "PlainDuplex", "PrintableDisc"));
}

TEST_F(ValueConstraints, TheMediaTypesPopUpMovesToPlainPaperWhileThePendingTypeStays) {
    showPanel();
    setPending("CVMediaType", "Glossy");
    popup("mediaTypePopup").selectItemWithKeyword("Glossy");
    panel->checkConstraints();
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
}

TEST_F(ValueConstraints, BiDirectionalPrintingComesBackOnExceptWhereItIsForbidden) {
    makeWith("Glossy", "Photo");
    setPending("CVBiDir", "OFF");
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVBiDir=ON"));
    panel->setFlag(kImageModeBiDirDisabled, true);
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVBiDir=OFF"));
    EXPECT_TRUE(panel->hasFlag(kImageModeBiDirDisabled));
}

TEST_F(ValueConstraints, ACustomSizeForbidsBiDirectionalPrintingWhileItIsAnEnvelope) {
    makeWith("Plain", "PlainNormal");
    panel->paperName = "Custom.200x300";
    setPending("CVColorPaperThick", "Env");
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVBiDir=OFF"));
    EXPECT_TRUE(panel->hasFlag(kImageModeBiDirDisabled));
    setPending("CVColorPaperThick", "Regular");
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVBiDir=ON"));
    EXPECT_FALSE(panel->hasFlag(kImageModeBiDirDisabled));
}

TEST_F(ValueConstraints, TheTransparencyBitFollowsThePendingMedium) {
    for (const std::string media : {"Transparencies", "Plain", "Glossy", "PlainDuplex"}) {
        SCOPED_TRACE(media);
        makeWith(media, "Photo");
        panel->setFlag(kImageModeTransparency, media != "Transparencies");
        panel->checkConstraints();
        EXPECT_EQ(panel->hasFlag(kImageModeTransparency), media == "Transparencies");
    }
}

TEST_F(ValueConstraints, TwoSidedPrintingTakesItsOwnMediumWhateverWasChosen) {
    for (const char* media : {"Plain", "HagakiAtena", "HagakiUra", "Inkjet", "CorvaneGlossy", "Glossy"}) {
        SCOPED_TRACE(media);
        makeWith(media, "Best");
        panel->setFlag(kImageModeDuplex, true);
        panel->checkConstraints();
        EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
    }
    makeWith("PlainDuplex", "Best");
    panel->checkConstraints();
    EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
}

TEST_F(ValueConstraints, TheTransparencyBitIsOfTheMediumBeforeTwoSidedPrintingReplacesIt) {
    makeWith("Transparencies", "Normal");
    panel->setFlag(kImageModeDuplex, true);
    EXPECT_THAT(askedByConstraints(), ElementsAre("ask CVMediaType=PlainDuplex"));
    EXPECT_TRUE(panel->hasFlag(kImageModeTransparency));
}

TEST_F(ValueConstraints, LaterRulesSeeWhatEarlierOnesChanged) {
    makeWith("Transparencies", "PlainFast");
    setPending("CVBiDir", "OFF");
    setPending("CVMonoColor", "Mono");
    setFlags(kImageModeBorderless | kImageModeBiDirDisabled | kImageModeDuplex | kImageModeTransparency);
    panel->checkConstraints();
    EXPECT_THAT(host->takeLog(),
                ElementsAre("ask CVResolution=Normal", "ask CVMediaType=Plain", "ask CVResolution=PlainNormal",
                            "ask CVBiDir=ON", "ask CVBiDir=OFF", "ask CVMediaType=PlainDuplex", kPostedMono));
    EXPECT_FALSE(panel->hasFlag(kImageModeTransparency));
}

TEST_F(ValueConstraints, EveryPassTellsTheColorMode) {
    makeWith("Plain", "PlainNormal");
    panel->checkConstraints();
    setPending("CVMonoColor", "Mono");
    panel->checkConstraints();
    EXPECT_THAT(host->takeLog(), ElementsAre(kPostedColor, kPostedMono));
}

class ControlConstraints : public PrintSettingPanel {
protected:
    // The panel at the front with no rule's condition met: plain paper in the standard quality.
    void showUnconstrained() {
        showPanel();
        panel->restoreValuesAndReturnError();
        setFlags(0);
        box("biDirButton").setOn(true);
        panel->checkUIConstraints();
        host->log.clear();
    }
    void select(toolkit::PopUpList& list, const std::string& keyword) {
        if (!list.selectItemWithKeyword(keyword)) {
            addItems(list, {keyword});
            list.selectItemWithKeyword(keyword);
        }
    }
};

TEST_F(ControlConstraints, WithoutAConditionEveryControlIsEnabled) {
    showPanel();
    panel->restoreValuesAndReturnError();
    setFlags(0);
    for (const char* name : {"biDirButton", "slowDryButton", "mirrorButton", "reverseButton"})
        box(name).setEnabled(false);
    panel->checkUIConstraints();
    for (const char* name : {"biDirButton", "slowDryButton", "mirrorButton", "reverseButton"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(box(name).isEnabled());
    }
    EXPECT_TRUE(popup("mediaTypePopup").isEnabled());
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), IsEmpty());
    EXPECT_TRUE(box("biDirButton").isOn());
}

TEST_F(ControlConstraints, OnFaxNoRuleOfThisPanelApplies) {
    showUnconstrained();
    select(popup("resolutionPopup"), "Best");
    view<toolkit::View>("vertLineSeparater").setHidden(false);
    setFlags(kImageModeFaxOutput | kImageModeBorderless | kImageModeBiDirDisabled | kImageModeJpegUnavailable);
    panel->checkUIConstraints();
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), IsEmpty());
    EXPECT_TRUE(box("biDirButton").isOn());
    EXPECT_FALSE(view<toolkit::View>("vertLineSeparater").isHidden());
    EXPECT_FALSE(box("reverseButton").isEnabled()); // the fax rule of both panels
    setFlags(kImageModeFaxOutput);
    panel->checkUIConstraints();
    EXPECT_FALSE(popup("jpegPopup").isEnabled());
    EXPECT_EQ(label("jpegLabel").textColor(), toolkit::TextColor::Disabled);
}

TEST_F(ControlConstraints, BorderlessPaperGreysTransparencies) {
    showUnconstrained();
    panel->setFlag(kImageModeBorderless, true);
    panel->checkUIConstraints();
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), ElementsAre("Transparencies"));
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
}

TEST_F(ControlConstraints, BorderlessPaperMovesSelectedTransparenciesToPlainPaper) {
    showUnconstrained();
    select(popup("mediaTypePopup"), "Transparencies");
    panel->setFlag(kImageModeBorderless, true);
    panel->checkUIConstraints();
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Plain");
    EXPECT_TRUE(box("biDirButton").isOn()); // the rule for transparencies comes later
}

TEST_F(ControlConstraints, BorderlessPaperKeepsAnotherSelectedMedium) {
    showUnconstrained();
    select(popup("mediaTypePopup"), "Glossy");
    panel->setFlag(kImageModeBorderless, true);
    panel->checkUIConstraints();
    EXPECT_EQ(popup("mediaTypePopup").selectedKeyword(), "Glossy");
}

TEST_F(ControlConstraints, EachBitGreysItsBoxAndNoOther) {
    struct Row {
        std::uint32_t bit;
        std::string greyed;
    };
    for (const Row& row :
         {Row{kImageModeBiDirDisabled, "biDirButton"}, Row{kImageModeSlowDryingDisabled, "slowDryButton"},
          Row{kImageModeTransparency, "mirrorButton"}}) {
        SCOPED_TRACE(row.greyed);
        showUnconstrained();
        for (const char* name : {"biDirButton", "slowDryButton", "mirrorButton"})
            box(name).setOn(true);
        setFlags(row.bit);
        panel->checkUIConstraints();
        for (const std::string name : {"biDirButton", "slowDryButton", "mirrorButton", "reverseButton"}) {
            SCOPED_TRACE(name);
            EXPECT_EQ(box(name).isEnabled(), name != row.greyed);
        }
        EXPECT_TRUE(box(row.greyed).isOn()); // greyed only
    }
}

TEST_F(ControlConstraints, UnavailableJpegPrintingIsGreyed) {
    showUnconstrained();
    panel->setFlag(kImageModeJpegUnavailable, true);
    panel->checkUIConstraints();
    EXPECT_FALSE(popup("jpegPopup").isEnabled());
    EXPECT_EQ(label("jpegLabel").textColor(), toolkit::TextColor::Disabled);
}

TEST_F(ControlConstraints, AvailableJpegPrintingIsEnabledEvenIfItIsNotManaged) {
    showUnconstrained();
    panel->PPDKeys = {"CVMediaType"};
    popup("jpegPopup").setEnabled(false);
    label("jpegLabel").setTextColor(toolkit::TextColor::Disabled);
    panel->checkUIConstraints();
    EXPECT_TRUE(popup("jpegPopup").isEnabled());
    EXPECT_EQ(label("jpegLabel").textColor(), toolkit::TextColor::Enabled);
}

TEST_F(ControlConstraints, TheFinestQualitiesSwitchBiDirectionalPrintingOff) {
    for (const std::string quality :
         {"PlainFast", "PlainNormal", "High", "Best", "Fast", "Normal", "Photo", "DiscNormal", "DiscSlow"}) {
        SCOPED_TRACE(quality);
        showUnconstrained();
        select(popup("resolutionPopup"), quality);
        panel->checkUIConstraints();
        const bool fine = quality == "Photo" || quality == "Best";
        EXPECT_EQ(box("biDirButton").isEnabled(), !fine);
        EXPECT_EQ(box("biDirButton").isOn(), !fine);
        EXPECT_EQ(pending("CVBiDir"), "ON");
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(ControlConstraints, MattePapersAndTransparenciesSwitchBiDirectionalPrintingOff) {
    for (const std::string media : {"Plain", "PlainDuplex", "HagakiAtena", "HagakiUra", "Inkjet", "CorvaneQT20Matte",
                                    "CorvaneGlossy", "CorvaneGlossyR", "Glossy", "Transparencies"}) {
        SCOPED_TRACE(media);
        showUnconstrained();
        select(popup("mediaTypePopup"), media);
        panel->checkUIConstraints();
        const bool off = media == "Inkjet" || media == "CorvaneQT20Matte" || media == "Transparencies";
        EXPECT_EQ(box("biDirButton").isEnabled(), !off);
        EXPECT_EQ(box("biDirButton").isOn(), !off);
        EXPECT_EQ(pending("CVBiDir"), "ON");
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(ControlConstraints, TheSelectedItemsCountNotThePendingValues) {
    showUnconstrained();
    setPending("CVMediaType", "Transparencies");
    setPending("CVResolution", "Photo");
    panel->checkUIConstraints();
    EXPECT_TRUE(box("biDirButton").isEnabled());
    EXPECT_TRUE(box("biDirButton").isOn());
}

TEST_F(ControlConstraints, WithoutSelectionsBiDirectionalPrintingStays) {
    showUnconstrained();
    popup("resolutionPopup").removeAllItems();
    popup("mediaTypePopup").removeAllItems();
    panel->checkUIConstraints();
    EXPECT_TRUE(box("biDirButton").isOn());
}

TEST_F(ControlConstraints, TheSeparatorOfTheAlignmentPageStandsInJapaneseOnly) {
    for (const std::string language : {"en", "ja", "ja-JP"}) {
        SCOPED_TRACE(language);
        openHost(tests::samplePpd("corvane-a3"), {language});
        makePanelWithView();
        toolkit::View& separator = view<toolkit::View>("vertLineSeparater");
        separator.setHidden(false);
        panel->checkUIConstraints();
        EXPECT_EQ(separator.isHidden(), language != "ja");
    }
}

TEST_F(ControlConstraints, JapaneseDoesNotShowAHiddenSeparator) {
    openHost(tests::samplePpd("corvane-a3"), {"ja"});
    makePanelWithView();
    view<toolkit::View>("vertLineSeparater").setHidden(true);
    panel->checkUIConstraints();
    EXPECT_TRUE(view<toolkit::View>("vertLineSeparater").isHidden());
}

TEST_F(ControlConstraints, BorderlessTransparenciesEndAsPlainPaperWithBothGreyed) {
    showUnconstrained();
    setPending("CVMediaType", "Transparencies");
    setPending("CVResolution", "Normal");
    setFlags(kImageModeBorderless | kImageModeVendorColorMatching);
    panel->checkConstraints();
    panel->checkUIConstraints();
    EXPECT_EQ(pending("CVMediaType"), "Plain");
    EXPECT_EQ(pending("CVResolution"), "PlainNormal");
    EXPECT_THAT(disabledKeywordsOf(popup("mediaTypePopup")), ElementsAre("Transparencies"));
    EXPECT_FALSE(box("slowDryButton").isEnabled());
}

TEST_F(ControlConstraints, BeforeTheViewIsLoadedThePassDoesNothing) {
    makePanel();
    setFlags(~kImageModeFaxOutput);
    panel->checkUIConstraints();
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

} // namespace
} // namespace print_settings_tests
