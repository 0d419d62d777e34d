#include "tests/print_settings/print_setting_panel.h"

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class PrePrintChecks : public PrintSettingPanel {
protected:
    bool orientationIsStored() {
        return host->settings->valueForKey("com.corvane.print.PrintSettings.Orientation").has_value();
    }
    void setTexts(std::map<std::string, std::string, std::less<>> strings) {
        host->reopenBundle(
            {.languages = {"en"}, .localize = false, .strings = std::move(strings), .info = {}, .removedInfo = {}});
    }
};

TEST_F(PrePrintChecks, PrintingShowsThePapersAlertAndAnswersIt) {
    setPaper("A4");
    makePanel();
    EXPECT_TRUE(panel->shouldPrint());
    EXPECT_THAT(host->takeLog(), ElementsAre("window normalPaperAlertWindow"));
    host->windowCodes = {0};
    EXPECT_FALSE(panel->shouldPrint());
}

TEST_F(PrePrintChecks, PrintingMakesTheViewOnlyForTheAlerts) {
    setPaper("A4");
    makePanel();
    ASSERT_EQ(panel->loadedViews(), nullptr);
    panel->shouldPrint();
    EXPECT_NE(panel->loadedViews(), nullptr);
    host->description->mark("CVOutput", "FAX");
    makePanel();
    panel->shouldPrint();
    EXPECT_EQ(panel->loadedViews(), nullptr);
}

TEST_F(PrePrintChecks, FaxingLooksAtNoPaper) {
    setPaper("A4");
    makePanelWithView();
    host->description->mark("CVOutput", "FAX");
    host->windowCodes = {0};
    EXPECT_TRUE(panel->shouldPrint());
    EXPECT_THAT(host->takeLog(), IsEmpty());
    EXPECT_FALSE(orientationIsStored());
}

TEST_F(PrePrintChecks, PrintingSavesFirst) {
    setPaper("A4");
    for (const char* output : {"None", "FAX"}) {
        SCOPED_TRACE(output);
        makePanel();
        setPending("CVMediaType", "Plain");
        host->description->mark("CVOutput", output);
        host->description->mark("Duplex", "DuplexTumble");
        panel->shouldPrint();
        EXPECT_EQ(takeAsked().front(), "ask CVMediaType=PlainDuplex");
    }
}

TEST_F(PrePrintChecks, OnlyTheMarkedFaxChoiceIsFax) {
    openHost(tests::ppdWith(tests::ppdOption("CVOutput", "Output", "None", {"None/Printer", "FAX/Fax", "FAX2/Fax 2"})));
    makePanel();
    EXPECT_FALSE(panel->checkIfOutputToFax());
    host->description->mark("CVOutput", "FAX");
    EXPECT_TRUE(panel->checkIfOutputToFax());
    host->description->mark("CVOutput", "FAX2");
    EXPECT_FALSE(panel->checkIfOutputToFax());
    host->description->unmark("CVOutput");
    EXPECT_FALSE(panel->checkIfOutputToFax());
}

TEST_F(PrePrintChecks, FaxIsSpeltInCapitals) {
    for (const char* keyword : {"fax", "Fax"}) {
        SCOPED_TRACE(keyword);
        openHost(tests::ppdWith(
            tests::ppdOption("CVOutput", "Output", keyword, {"None/Printer", std::string(keyword) + "/Fax"})));
        makePanel();
        ASSERT_EQ(marked("CVOutput"), keyword);
        EXPECT_FALSE(panel->checkIfOutputToFax());
    }
}

TEST_F(PrePrintChecks, APrinterWithoutOutputsDoesNotFax) {
    openHost(tests::samplePpd("corvane-a4"));
    makePanel();
    EXPECT_FALSE(panel->checkIfOutputToFax());
}

// Printable discs

class DiscAlert : public PrePrintChecks {
protected:
    DiscAlert() {
        openHost(tests::ppdWith(tests::ppdOption(
            "CVMediaType", "Media", "Plain",
            {"Plain/Plain", "PrintableDisc/Disc", "GlossyPrintableDisc/Glossy Disc", "PrintableDisc2/Other"})));
    }
    void makeWithDisc(const std::string& media) {
        makePanel();
        host->description->mark("CVMediaType", media);
        panel->setFlag(kImageModePrintableDisc, true);
    }
};

TEST_F(DiscAlert, DiscsAreAskedAbout) {
    for (const auto& [media, asked] : {std::pair("PrintableDisc", true), std::pair("GlossyPrintableDisc", true),
                                       std::pair("PrintableDisc2", false), std::pair("Plain", false)}) {
        SCOPED_TRACE(media);
        makeWithDisc(media);
        EXPECT_TRUE(panel->checkShouldShowDiscAlert());
        EXPECT_EQ(host->takeLog(),
                  asked ? std::vector<std::string>{"alert DiscPrint Alert"} : std::vector<std::string>());
    }
}

TEST_F(DiscAlert, WithoutTheBitNothingIsAsked) {
    makeWithDisc("PrintableDisc");
    panel->setFlag(kImageModePrintableDisc, false);
    EXPECT_TRUE(panel->checkShouldShowDiscAlert());
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(DiscAlert, WithoutAMarkedMediumNothingIsAsked) {
    makeWithDisc("PrintableDisc");
    setPending("CVMediaType", "PrintableDisc"); // pending, but not marked
    host->description->unmark("CVMediaType");
    EXPECT_TRUE(panel->checkShouldShowDiscAlert());
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

TEST_F(DiscAlert, OnlyTheFirstButtonGoesOn) {
    makeWithDisc("GlossyPrintableDisc");
    host->answers = {{.button = 0}, {.button = 1}};
    EXPECT_TRUE(panel->checkShouldShowDiscAlert());
    EXPECT_FALSE(panel->checkShouldShowDiscAlert());
}

TEST_F(DiscAlert, TheAlertShowsADiscAndTwoButtons) {
    setTexts({{"DiscPrint Alert", "Disc"}, {"DiscPrint Alert2", "Put it in."}, {"OK", "Go"}, {"Cancel", "Stop"}});
    makeWithDisc("PrintableDisc");
    panel->checkShouldShowDiscAlert();
    ASSERT_EQ(host->alerts.size(), 1);
    const toolkit::Alert& alert = host->alerts.front();
    EXPECT_EQ(alert.style, toolkit::AlertStyle::Informational);
    EXPECT_EQ(alert.messageText, "Disc");
    EXPECT_EQ(alert.informativeText, "Put it in.");
    EXPECT_THAT(alert.buttons, ElementsAre(toolkit::LocalizedText{.key = "OK", .text = "Go"},
                                           toolkit::LocalizedText{.key = "Cancel", .text = "Stop"}));
    EXPECT_FALSE(alert.showsSuppressionButton);
    ASSERT_TRUE(alert.icon);
    EXPECT_EQ(alert.icon->name, "DiscPrint");
    EXPECT_THAT(alert.icon->path, EndsWith("/DiscPrint.tiff"));
}

// Two-sided printing on an unsuitable paper

TEST_F(PrePrintChecks, TwoSidedPrintingPassesOnItsPapersOnly) {
    makePanel();
    panel->setFlag(kImageModeDuplex, true);
    for (const char* paper :
         {"A3", "Tabloid", "B4", "A3.LongGrain", "A3.ShortGrain", "Tabloid.ShortGrain", "B4.ShortGrain", "Letter",
          "Legal", "Executive", "B5", "A4", "A5", "A6", "Postcard", "CvA3", "CvA3_S", "CvLedger_S", "CvB4_S"}) {
        SCOPED_TRACE(paper);
        panel->paperName = paper;
        EXPECT_TRUE(panel->checkShouldShowDuplexAlert());
        EXPECT_THAT(host->takeLog(), IsEmpty());
        for (const std::string& other : {std::string(paper) + ".Fullbleed", std::string(paper) + "X",
                                         "X" + std::string(paper), std::string(paper) + "."}) {
            SCOPED_TRACE(other);
            panel->paperName = other;
            EXPECT_FALSE(panel->checkShouldShowDuplexAlert());
            EXPECT_THAT(host->takeLog(), ElementsAre("alert Duplex Alert"));
        }
    }
}

TEST_F(PrePrintChecks, TwoSidedPrintingStopsOnAnyOtherPaperAndOnNone) {
    makePanel();
    panel->setFlag(kImageModeDuplex, true);
    for (const std::optional<std::string>& paper :
         {std::optional<std::string>("EnvDL"), std::optional<std::string>("a4"), std::optional<std::string>("4x6"),
          std::optional<std::string>("CvHagaki_B"), std::optional<std::string>("Tabloid.LongGrain"),
          std::optional<std::string>("Custom.400x700"), std::optional<std::string>(""), std::optional<std::string>()}) {
        SCOPED_TRACE(paper.value_or("null"));
        panel->paperName = paper;
        EXPECT_FALSE(panel->checkShouldShowDuplexAlert());
        EXPECT_THAT(host->takeLog(), ElementsAre("alert Duplex Alert"));
    }
}

TEST_F(PrePrintChecks, TheTwoSidedCheckStopsOneSidedPrintingToo) {
    makePanel();
    panel->paperName = "A4";
    panel->setFlag(kImageModeDuplex, false);
    EXPECT_FALSE(panel->checkShouldShowDuplexAlert());
    EXPECT_THAT(host->takeLog(), ElementsAre("alert Duplex Alert"));
}

TEST_F(PrePrintChecks, TheTwoSidedAlertIsCriticalWithOneButton) {
    setTexts({{"Duplex Alert", "Two sides"}, {"Duplex Alert2", "Not on this paper."}});
    makePanel();
    host->answers = {{.button = 0}};
    EXPECT_FALSE(panel->checkShouldShowDuplexAlert());
    ASSERT_EQ(host->alerts.size(), 1);
    const toolkit::Alert& alert = host->alerts.front();
    EXPECT_EQ(alert.style, toolkit::AlertStyle::Critical);
    EXPECT_EQ(alert.messageText, "Two sides");
    EXPECT_EQ(alert.informativeText, "Not on this paper.");
    EXPECT_LE(alert.buttons.size(), 1);
    EXPECT_FALSE(alert.showsSuppressionButton);
    EXPECT_FALSE(alert.icon);
}

} // namespace
} // namespace print_settings_tests
