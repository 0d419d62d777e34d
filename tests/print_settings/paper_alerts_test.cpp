#include "tests/print_settings/print_setting_panel.h"

#include <filesystem>

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

constexpr const char* kOrientationKey = "com.corvane.print.PrintSettings.Orientation";
constexpr const char* kDefaultsDomain = "com.corvane.print.pde.CVInkQuality12";

class PaperAlerts : public PrintSettingPanel {
protected:
    PaperAlerts() { makePanelWithView(); }

    // Another bundle, with these texts, and a new panel in it.
    void reopenWith(std::map<std::string, std::string, std::less<>> strings,
                    std::vector<std::string> removedInfo = {}) {
        host->reopenBundle({.languages = {"en"},
                            .localize = false,
                            .strings = std::move(strings),
                            .info = {},
                            .removedInfo = std::move(removedInfo)});
        makePanelWithView();
    }
    bool check(const std::string& paper) {
        panel->paperName = paper;
        return panel->checkPaperAndShowOrientationAlert();
    }
    std::string orientation() {
        const auto stored = host->settings->valueForKey(kOrientationKey);
        return stored ? std::get<std::string>(*stored) : "";
    }
    toolkit::Window& window(std::string_view name) { return view<toolkit::Window>(name); }
    toolkit::ImageView& image(std::string_view name) { return view<toolkit::ImageView>(name); }
    std::string pictureIn(std::string_view name) {
        const auto& shown = image(name).image();
        return shown ? shown->name.value_or("unnamed") : "none";
    }
    toolkit::ValueMap storedDefaults() {
        return host->defaults.persistentDomainForName(kDefaultsDomain).value_or(toolkit::ValueMap());
    }
    void suppress(const std::string& key) {
        host->defaults.setPersistentDomainForName(toolkit::ValueMap{{key, false}}, kDefaultsDomain);
    }
    void fillPaperWindow(const std::string& kind, const std::string& message, toolkit::Window* window,
                         toolkit::ImageView* view, const std::string& picture, toolkit::Label* label) {
        panel->readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel(
            kind, message, window, view, picture, label);
    }
};

struct AlertKind {
    std::string window, imageView, label, message, picture, orientation;
};
const AlertKind kEnvelope = {
    "envAlertWindow", "envAlertImageView", "envInstructionLabel1", "Envelope Alert1\n\nEnvelope Alert2",
    "Envelope",       "Portrait"};
const AlertKind kLandscape = {"normalPaperAlertWindow",
                              "normalPaperAlertImageView",
                              "normalPaperInstructionLabel",
                              "Landscape Instruction",
                              "Landscape",
                              "Landscape"};
const AlertKind kPortrait = {"normalPaperAlertWindow",
                             "normalPaperAlertImageView",
                             "normalPaperInstructionLabel",
                             "Portrait Instruction",
                             "Portrait",
                             "Portrait"};
const AlertKind kManual = {"normalPaperAlertWindow",
                           "normalPaperAlertImageView",
                           "normalPaperInstructionLabel",
                           "Manual Instruction",
                           "Manual",
                           "Portrait"};

TEST_F(PaperAlerts, EachPaperHasItsAlert) {
    struct Row {
        std::string paper;
        const AlertKind& kind;
    };
    const std::vector<Row> rows = {
        {"EnvYou4", kEnvelope},  {"EnvChou3.Rotated", kEnvelope},
        {"EnvChou4", kEnvelope}, {"EnvKaku2", kEnvelope},
        {"A4", kLandscape},      {"A4.Fullbleed", kLandscape},
        {"Letter", kLandscape},  {"Executive", kLandscape},
        {"B5", kLandscape},      {"A5", kPortrait},
        {"A6", kPortrait},       {"A6.Fullbleed", kPortrait},
        {"Postcard", kPortrait}, {"3.5x5", kPortrait},
        {"Env10", kPortrait},    {"EnvMonarch", kPortrait},
        {"A3", kManual},         {"A3.ShortGrain", kManual},
        {"B4", kManual},         {"Tabloid.Fullbleed", kManual},
        {"Legal", kManual},      {"EnvC5", kManual},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.paper);
        EXPECT_TRUE(check(row.paper));
        EXPECT_THAT(host->takeLog(), ElementsAre("window " + row.kind.window));
        EXPECT_EQ(pictureIn(row.kind.imageView), row.kind.picture);
        EXPECT_EQ(label(row.kind.label).text(), row.kind.message);
        EXPECT_EQ(orientation(), row.kind.orientation);
        EXPECT_TRUE(window(row.kind.window).isHidden());
    }
}

TEST_F(PaperAlerts, CancelStopsPrintingAndKeepsThePortraitOrientation) {
    for (const char* paper : {"EnvChou3", "A4", "A5", "A3"}) {
        SCOPED_TRACE(paper);
        host->settings->setValueForKey(std::string("Landscape"), kOrientationKey);
        host->windowCodes = {0};
        box("suppressionButton").setOn(true);
        EXPECT_FALSE(check(paper));
        EXPECT_EQ(orientation(), "Portrait");
        EXPECT_THAT(storedDefaults(), IsEmpty());
        EXPECT_TRUE(window("normalPaperAlertWindow").isHidden());
        EXPECT_TRUE(window("envAlertWindow").isHidden());
    }
}

TEST_F(PaperAlerts, ASuppressedAlertIsNotShownAndPrintingGoesOn) {
    for (const auto& [paper, kind] :
         {std::pair("A4", &kLandscape), std::pair("A5", &kPortrait), std::pair("A3", &kManual)}) {
        SCOPED_TRACE(paper);
        suppress(kind->message);
        EXPECT_TRUE(check(paper));
        EXPECT_THAT(host->takeLog(), IsEmpty());
        EXPECT_EQ(orientation(), kind->orientation);
    }
}

TEST_F(PaperAlerts, OneSuppressedAlertLeavesTheOthers) {
    suppress("Landscape Instruction");
    EXPECT_TRUE(check("A5"));
    EXPECT_TRUE(check("A3"));
    EXPECT_THAT(host->takeLog(), ElementsAre("window normalPaperAlertWindow", "window normalPaperAlertWindow"));
}

TEST_F(PaperAlerts, OkStoresTheBoxUnderTheAlertsKey) {
    for (const auto& [paper, kind] :
         {std::pair("A4", &kLandscape), std::pair("A5", &kPortrait), std::pair("A3", &kManual)}) {
        SCOPED_TRACE(paper);
        host->defaults.setPersistentDomainForName(toolkit::ValueMap{{"Best Alert", false}}, kDefaultsDomain);
        box("suppressionButton").setOn(false);
        EXPECT_TRUE(check(paper));
        EXPECT_EQ(storedDefaults(), (toolkit::ValueMap{{"Best Alert", false}, {kind->message, true}}));
        box("suppressionButton").setOn(true);
        EXPECT_TRUE(check(paper));
        EXPECT_EQ(storedDefaults(), (toolkit::ValueMap{{"Best Alert", false}, {kind->message, false}}));
        host->log.clear();
        EXPECT_TRUE(check(paper));
        EXPECT_THAT(host->takeLog(), IsEmpty());
    }
}

TEST_F(PaperAlerts, TheEnvelopeAlertIsNeverSuppressed) {
    box("suppressionButton").setOn(true);
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(check("EnvChou3"));
        EXPECT_THAT(host->takeLog(), ElementsAre("window envAlertWindow"));
        EXPECT_THAT(storedDefaults(), IsEmpty());
    }
}

TEST_F(PaperAlerts, WithoutUserDefaultsTheAlertIsShownAndNothingStored) {
    host->hasDefaults = false;
    box("suppressionButton").setOn(true);
    EXPECT_TRUE(check("A4"));
    EXPECT_TRUE(check("A4"));
    EXPECT_THAT(host->takeLog(), ElementsAre("window normalPaperAlertWindow", "window normalPaperAlertWindow"));
    EXPECT_TRUE(window("normalPaperAlertWindow").isHidden());
}

TEST_F(PaperAlerts, WithoutABundleIdentifierNothingIsStored) {
    reopenWith({}, {"CFBundleIdentifier"});
    box("suppressionButton").setOn(true);
    EXPECT_TRUE(check("A4"));
    EXPECT_THAT(storedDefaults(), IsEmpty());
    EXPECT_EQ(host->defaults.persistentDomainForName(""), std::nullopt);
    EXPECT_TRUE(window("normalPaperAlertWindow").isHidden());
}

TEST_F(PaperAlerts, APaperCalledUnsupportedStopsPrinting) {
    setCustomPaper("Custom.400x700", 400, 700); // its size is not looked at
    EXPECT_FALSE(check("UnsupportedPaper"));
    EXPECT_THAT(host->takeLog(), ElementsAre("panel Unsupported Paper Title"));
    EXPECT_EQ(orientation(), "Portrait");
}

TEST_F(PaperAlerts, TheUnsupportedPapersTextHasFourParts) {
    reopenWith({{"Unsupported Paper Title", "Cannot print"},
                {"Unsupported Paper MSG1", "one"},
                {"Unsupported Paper MSG2", "two"},
                {"Unsupported Paper MSG3", "three"},
                {"Unsupported Paper MSG4", "four"},
                {"OK", "Fine"}});
    check("UnsupportedPaper");
    ASSERT_EQ(host->alertPanels.size(), 1);
    EXPECT_EQ(host->alertPanels.front().title, "Cannot print");
    EXPECT_EQ(host->alertPanels.front().message, "one\n\ntwo\nthree\nfour");
    EXPECT_EQ(host->alertPanels.front().defaultButton, (toolkit::LocalizedText{.key = "OK", .text = "Fine"}));
}

// The windows

TEST_F(PaperAlerts, RunningAWindowAnswersItsCodeAndHidesIt) {
    toolkit::Window loose("looseWindow");
    host->windowCodes = {1, 0};
    EXPECT_EQ(panel->showDialogWithAlertInfo(&loose, std::nullopt), 1);
    EXPECT_TRUE(loose.isHidden());
    EXPECT_EQ(panel->showDialogWithAlertInfo(&loose, std::nullopt), 0);
    EXPECT_TRUE(loose.isHidden());
    EXPECT_THAT(host->takeLog(), ElementsAre("window looseWindow", "window looseWindow"));
}

TEST_F(PaperAlerts, OnlyOkWithAKeyStoresTheBox) {
    toolkit::Window loose("looseWindow");
    box("suppressionButton").setOn(true);
    host->windowCodes = {1, 0, 2, 1};
    panel->showDialogWithAlertInfo(&loose, std::nullopt);
    panel->showDialogWithAlertInfo(&loose, "Any Key");
    panel->showDialogWithAlertInfo(&loose, "Any Key");
    EXPECT_THAT(storedDefaults(), IsEmpty());
    panel->showDialogWithAlertInfo(&loose, "Any Key");
    EXPECT_EQ(storedDefaults(), (toolkit::ValueMap{{"Any Key", false}}));
}

TEST_F(PaperAlerts, TheButtonsEndTheRun) {
    panel->dialogOkDidClick(nullptr);
    panel->dialogCancelDidClick(nullptr);
    for (const char* name : {"envAlertOKButton", "normalPaperAlertOKButton", "customPaperAlertOKButton",
                             "envAlertCancelButton", "normalPaperAlertCancelButton", "customPaperAlertCancelButton"})
        view<toolkit::PushButton>(name).userPressed();
    EXPECT_THAT(host->takeLog(),
                ElementsAre("stop 1", "stop 0", "stop 1", "stop 1", "stop 1", "stop 0", "stop 0", "stop 0"));
}

TEST_F(PaperAlerts, TheEnvelopeWindowIsFilledWithItsTexts) {
    reopenWith({{"Envelope Alert1", "Open the flap."},
                {"Envelope Alert2", "Put it in."},
                {"Envelope Alert Summary", "How to load"},
                {"Envelope Alert Title", "Envelopes"},
                {"OK", "Go"},
                {"Cancel", "Stop"}});
    panel->readyToShowEnvelopeAlert();
    EXPECT_EQ(label("envInstructionLabel1").text(), "Open the flap.\n\nPut it in.");
    EXPECT_EQ(label("envAlertSummary").text(), "How to load");
    EXPECT_EQ(window("envAlertWindow").title(), "Envelopes");
    EXPECT_EQ(view<toolkit::PushButton>("envAlertOKButton").title(), "Go");
    EXPECT_EQ(view<toolkit::PushButton>("envAlertOKButton").titleKey(), "OK");
    EXPECT_EQ(view<toolkit::PushButton>("envAlertCancelButton").title(), "Stop");
    EXPECT_EQ(view<toolkit::PushButton>("envAlertCancelButton").titleKey(), "Cancel");
    ASSERT_TRUE(image("envAlertImageView").image());
    EXPECT_THAT(image("envAlertImageView").image()->path, EndsWith("/Envelope.bmp"));
    EXPECT_THAT(host->takeLog(), IsEmpty()); // it is only filled
}

TEST_F(PaperAlerts, ThePicturesAreThoseOfTheBundle) {
    for (const std::string picture : {"Landscape", "Portrait", "Manual"}) {
        SCOPED_TRACE(picture);
        toolkit::ImageView shown("shown");
        fillPaperWindow("Custom Paper", "x", nullptr, &shown, picture, nullptr);
        ASSERT_TRUE(shown.image());
        EXPECT_EQ(shown.image()->path, (std::filesystem::path(CV_BINARY_DIR) /
                                        "PlugIns/CVInkQuality12.plugin/Resources" / (picture + ".bmp"))
                                           .string());
        EXPECT_GT(shown.image()->width, 0);
        EXPECT_GT(shown.image()->height, 0);
    }
}

TEST_F(PaperAlerts, AMissingPictureLeavesTheView) {
    toolkit::ImageView shown("shown");
    shown.setImage(toolkit::Image{.name = "Before", .pixels = nullptr, .path = {}});
    for (const char* picture : {"NoSuchPicture", "DiscPrint"}) { // the second is there, but of another type
        SCOPED_TRACE(picture);
        fillPaperWindow("Normal Paper", "x", nullptr, &shown, picture, nullptr);
        EXPECT_EQ(shown.image()->name, "Before");
        EXPECT_EQ(shown.imageCount(), 1);
    }
}

class PaperWindowTexts : public PaperAlerts {
protected:
    PaperWindowTexts() {
        reopenWith({{"OK", "Go"},
                    {"Cancel", "Stop"},
                    {"Suppression", "Never again"},
                    {"Landscape Instruction", "Load it sideways."},
                    {"Paper Orientation Title", "Loading"}});
    }
    std::string titleOf(std::string_view name) { return view<toolkit::Button>(name).title(); }
};

TEST_F(PaperWindowTexts, ANormalPaperNamesTheButtonsOfBothWindows) {
    fillPaperWindow("Normal Paper", "Landscape Instruction", nullptr, nullptr, "Landscape", nullptr);
    EXPECT_EQ(titleOf("normalPaperAlertOKButton"), "Go");
    EXPECT_EQ(titleOf("normalPaperAlertCancelButton"), "Stop");
    EXPECT_EQ(titleOf("suppressionButton"), "Never again");
    EXPECT_EQ(titleOf("customPaperAlertOKButton"), "Go");
    EXPECT_EQ(titleOf("customPaperAlertCancelButton"), "Stop");
}

TEST_F(PaperWindowTexts, ACustomPaperNamesTheButtonsOfItsWindowOnly) {
    for (const char* name : {"normalPaperAlertOKButton", "normalPaperAlertCancelButton", "suppressionButton",
                             "customPaperAlertOKButton", "customPaperAlertCancelButton"})
        view<toolkit::Button>(name).setTitle("before");
    for (const char* kind : {"Custom Paper", "normal paper", ""})
        fillPaperWindow(kind, "Landscape Instruction", nullptr, nullptr, "Landscape", nullptr);
    EXPECT_EQ(titleOf("normalPaperAlertOKButton"), "before");
    EXPECT_EQ(titleOf("normalPaperAlertCancelButton"), "before");
    EXPECT_EQ(titleOf("suppressionButton"), "before");
    EXPECT_EQ(titleOf("customPaperAlertOKButton"), "Go");
    EXPECT_EQ(titleOf("customPaperAlertCancelButton"), "Stop");
}

TEST_F(PaperWindowTexts, TheMessageAndTheTitleAreLocalised) {
    EXPECT_TRUE(check("A4"));
    EXPECT_EQ(label("normalPaperInstructionLabel").text(), "Load it sideways.");
    EXPECT_EQ(window("normalPaperAlertWindow").title(), "Loading");
    setCustomPaper("Custom.400x700", 400, 700);
    EXPECT_TRUE(check("Custom.400x700"));
    EXPECT_EQ(label("customPaperInstructionLabel").text(), "Load it sideways.");
    EXPECT_EQ(window("customPaperAlertWindow").title(), "Loading");
}

// In the font of controls, of 13 points, a character takes 6.5 points and a line 16.25; the label gets 6 more.

TEST_F(PaperAlerts, TheLabelTakesTheMessagesHeightAndTheWindowGrowsAsMuch) {
    struct Row {
        std::string message;
        int lines;
    };
    for (const Row& row : {Row{"short", 1}, Row{std::string(33, 'x'), 1}, Row{std::string(34, 'x'), 2},
                           Row{std::string(340, 'x'), 11}, Row{"one\n\nthree", 3}}) {
        SCOPED_TRACE(row.message);
        toolkit::Window frame("frame");
        toolkit::Label text("text");
        frame.setFrame({.x = 1, .y = 2, .width = 420, .height = 180});
        text.setFrame({.x = 180, .y = 84, .width = 220, .height = 76});
        fillPaperWindow("Custom Paper", row.message, &frame, nullptr, "Landscape", &text);
        const double height = row.lines * 16.25 + 6;
        EXPECT_EQ(text.text(), row.message);
        EXPECT_EQ(text.frame(), (toolkit::Rect{.x = 180, .y = 84, .width = 220, .height = height}));
        EXPECT_EQ(frame.frame(), (toolkit::Rect{.x = 1, .y = 2, .width = 420, .height = 180 + height - 76}));
    }
}

TEST_F(PaperAlerts, AnEmptyMessageTakesTheExtraPointsOnly) {
    toolkit::Window frame("frame");
    toolkit::Label text("text");
    frame.setFrame({.width = 420, .height = 180});
    text.setFrame({.width = 220, .height = 16});
    fillPaperWindow("Custom Paper", "", &frame, nullptr, "Landscape", &text);
    EXPECT_EQ(text.frame().height, 6);
    EXPECT_EQ(frame.frame().height, 170);
}

TEST_F(PaperAlerts, TheLabelsPresentWidthWrapsTheMessage) {
    toolkit::Label text("text");
    text.setFrame({.width = 65, .height = 0}); // ten characters
    fillPaperWindow("Custom Paper", "0123456789 0123456789", nullptr, nullptr, "Landscape", &text);
    EXPECT_EQ(text.frame().height, 2 * 16.25 + 6);
}

TEST_F(PaperAlerts, TheSameAlertAgainKeepsTheSize) {
    check("A4");
    const toolkit::Rect frame = window("normalPaperAlertWindow").frame();
    EXPECT_EQ(frame.height, 180 - 76 + 16.25 + 6);
    check("A4");
    EXPECT_EQ(window("normalPaperAlertWindow").frame(), frame);
}

TEST_F(PaperAlerts, TheWindowIsDisplayedAgainAlsoWhereNothingChanged) {
    struct Observer : toolkit::ViewObserver {
        int changes = 0;
        void viewDidChange(toolkit::View&) override { ++changes; }
    } observer;
    toolkit::Window frame("frame");
    frame.setTitle("Paper Orientation Title");
    frame.addObserver(observer);
    fillPaperWindow("Custom Paper", "x", &frame, nullptr, "Landscape", nullptr);
    EXPECT_EQ(observer.changes, 1);
    frame.removeObserver(observer);
}

// Languages

TEST_F(PaperAlerts, TheFirstPreferredLanguageCounts) {
    for (const std::vector<std::string>& languages :
         {std::vector<std::string>{"ja"}, std::vector<std::string>{"de-AT", "ja"}, std::vector<std::string>{""}}) {
        host->languages = languages;
        EXPECT_EQ(panel->firstLanguageSetting(), languages.front());
    }
}

} // namespace
} // namespace print_settings_tests
