// The panel protocol, from the panel's view to its end.

#include "tests/framework/scratch_bundle.h"
#include "tests/framework/test_panel.h"

#include <filesystem>

namespace framework_tests {
namespace {

using tests::ppdWith;
using tests::TestHost;
using toolkit::NotificationCenter;

/// A host whose print settings can be watched as they are read.
class WatchedHost : public TestHost {
public:
    using TestHost::TestHost;
    std::function<void()> onPrintSettings;
    printing::PrintSettings* printSettings() override {
        if (onPrintSettings)
            onPrintSettings();
        return TestHost::printSettings();
    }
};

/// A panel with a view description of the test's own.
class PanelWithView : public testing::Test {
protected:
    PanelWithView() {
        files.writeResource(
            "TestPanel.ui",
            viewDescription(
                widget("QComboBox", "mediaPopup", textProperty("action", "requestNewOutputBin:")) +
                widget("QToolButton", "optionButton",
                       textProperty("action", "toggleShowOption:") + textProperty("bindValue", "advancedItem")) +
                widget("QPushButton", "helpButton", textProperty("action", "showHelpFile:")) +
                widget("QPushButton", "brokenButton", textProperty("action", "noSuchMessage:")) +
                widget("QComboBox", "matchingMatrix")));
        host.bundle = files.open();
        panel = panelFor(host);
    }

    ScratchBundle files;
    TestHost host{ppdWith(testOptions())};
    std::shared_ptr<TestPanel> panel;
};

TEST(PanelKind, NamesThePanel) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    EXPECT_EQ(panel->panelKind(), "com.corvane.print.pde.CocoaCVInkQuality12");
    panel->setThePDEName("Other");
    EXPECT_EQ(panel->panelKind(), "com.corvane.print.pde.CocoaOther");
}

TEST(PanelAccessors, SetTheNameAndThePendingValues) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    panel->setThePDEName("Other");
    EXPECT_EQ(panel->thePDEName(), "Other");
    panel->setThePDEName(std::nullopt);
    EXPECT_EQ(panel->thePDEName(), std::nullopt);
    panel->setOutputBin(toolkit::ValueMap{{"CVMediaType", "Glossy"}});
    EXPECT_EQ(panel->outputBin(), (toolkit::ValueMap{{"CVMediaType", "Glossy"}}));
    panel->setOutputBin(std::nullopt);
    EXPECT_TRUE(panel->outputBin().empty()); // there always is one
}

TEST_F(PanelWithView, LoadsTheDescriptionThatBearsThePanelsName) {
    toolkit::View* view = panel->panelView();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->name(), "panelView");
    EXPECT_EQ(panel->panelView_, view);
    EXPECT_EQ(view, &panel->loadedViews()->root());
}

TEST_F(PanelWithView, LoadsItsDescriptionOnce) {
    toolkit::View* view = panel->panelView();
    const auto store = panel->effectContent;
    std::filesystem::remove(files.resource("TestPanel.ui"));
    EXPECT_EQ(panel->panelView(), view);
    EXPECT_EQ(panel->effectContent, store);
}

TEST_F(PanelWithView, ConnectsTheStoreAndTheFields) {
    panel->panelView();
    EXPECT_EQ(panel->effectContent, panel->loadedViews()->store());
    EXPECT_NE(panel->effectContent, nullptr);
    EXPECT_EQ(panel->mediaPopup, panel->loadedViews()->viewNamed("mediaPopup"));
    EXPECT_NE(panel->mediaPopup, nullptr);
    EXPECT_EQ(panel->optionButton, panel->loadedViews()->viewNamed("optionButton"));
    EXPECT_NE(panel->optionButton, nullptr);
}

TEST_F(PanelWithView, LeavesAFieldOfAnotherKindUnconnected) {
    panel->panelView();
    EXPECT_NE(panel->loadedViews()->viewNamed("matchingMatrix"), nullptr); // a pop-up list
    EXPECT_EQ(panel->matchingMatrix, nullptr);
}

TEST_F(PanelWithView, HasNoViewWithoutADescription) {
    panel->setThePDEName("NoSuchPanel");
    EXPECT_EQ(panel->panelView(), nullptr);
    EXPECT_EQ(panel->effectContent, nullptr);
    EXPECT_EQ(panel->loadedViews(), nullptr);
    panel->setThePDEName(std::nullopt);
    EXPECT_EQ(panel->panelView(), nullptr);
}

TEST_F(PanelWithView, HasNoViewWhenTheDescriptionIsBroken) {
    files.writeResource("Broken.ui", "<ui><widget class=");
    panel->setThePDEName("Broken");
    EXPECT_EQ(panel->panelView(), nullptr);
    panel->setThePDEName("TestPanel");
    EXPECT_NE(panel->panelView(), nullptr); // not connected yet, so it is tried again
}

TEST_F(PanelWithView, AUsersActionSendsTheMessageThatTheDescriptionNames) {
    panel->panelView();
    panel->tellsSteps = true;
    panel->optionButton->userSetOn(true);
    EXPECT_EQ(host.takeLog(), (Words{"toggleShowOption optionButton"}));
    panel->mediaPopup->userSelectedItemAtIndex(0);
    EXPECT_EQ(host.takeLog(), (Words{"requestNewOutputBin", "saveAllValues"}));
}

TEST_F(PanelWithView, AnActionThatIsNoMessageDoesNothing) {
    panel->panelView();
    panel->tellsSteps = true;
    dynamic_cast<toolkit::PushButton*>(panel->loadedViews()->viewNamed("brokenButton"))->userPressed();
    EXPECT_EQ(host.log, Words{});
}

TEST_F(PanelWithView, LivesUntilItsActionIsDone) {
    panel->panelView();
    panel->bindings = {{"CVMediaType", panel->mediaPopup}};
    panel->setPPDKeys(Words{"CVMediaType"});
    panel->initializePopup();
    const std::weak_ptr<TestPanel> watched = panel;
    toolkit::PopUpList* const popup = panel->mediaPopup;
    bool livedWhileAsked = false;
    host.beforeAsking = [&](const std::string&, const std::string&) {
        panel.reset();
        livedWhileAsked = !watched.expired();
    };
    popup->userSelectedItemAtIndex(1);
    EXPECT_TRUE(livedWhileAsked);
    EXPECT_TRUE(watched.expired());
}

TEST(PanelShowing, SetsItsBitThenLooksAtColourThenAtFaxThenPopulates) {
    WatchedHost host(ppdWith("*APSupportsCustomColorMatching: True\n" + testOptions()));
    auto panel = panelFor(host);
    panel->imageModeFlag_ = 0;
    host.description->mark("CVOutput", "FAX");
    std::vector<std::uint32_t> flagsAtColour, flagsAtPopulation;
    host.onPrintSettings = [&] { flagsAtColour.push_back(panel->imageModeFlag()); };
    panel->onStep = [&](const std::string& step) {
        if (step == "initializePopup")
            flagsAtPopulation.push_back(panel->imageModeFlag());
    };
    panel->willShow();
    ASSERT_FALSE(flagsAtColour.empty());
    EXPECT_EQ(flagsAtColour.front(), kImageModePanelShown);
    EXPECT_EQ(flagsAtPopulation,
              std::vector<std::uint32_t>{kImageModePanelShown | kImageModeVendorColorMatching | kImageModeFaxOutput});
}

TEST(PanelShowing, PopulatesEachTime) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor<TellingPanel>(host);
    host.log.clear();
    panel->willShow();
    panel->willShow();
    std::erase_if(host.log, [](const std::string& line) { return line.starts_with("register "); });
    EXPECT_EQ(host.log, (Words{"willShow", "initializePopup", "willShow", "initializePopup"}));
}

TEST(PanelShowing, AsksTheHostOnlyForTheHelpBook) {
    Dialog dialog;
    dialog.panel->willShow();
    ASSERT_EQ(dialog.host.log.size(), 1U);
    EXPECT_TRUE(dialog.host.log.front().starts_with("register ")) << dialog.host.log.front();
}

TEST(PanelShowing, IsOverWhenThePanelHides) {
    Dialog dialog;
    EXPECT_EQ(dialog.panel->imageModeFlag() & kImageModePanelShown, 0U);
    dialog.panel->willShow();
    EXPECT_NE(dialog.panel->imageModeFlag() & kImageModePanelShown, 0U);
    const std::uint32_t shown = dialog.panel->imageModeFlag();
    EXPECT_TRUE(dialog.panel->shouldHide());
    EXPECT_EQ(dialog.panel->imageModeFlag(), shown & ~std::uint32_t{kImageModePanelShown});
}

TEST(PanelPrinting, SavesAndAgrees) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor<TellingPanel>(host);
    host.log.clear();
    EXPECT_TRUE(panel->shouldPrint());
    EXPECT_EQ(host.log, (Words{"shouldPrint", "saveValues"}));
}

TEST(PanelSaving, DoesNothingAndAgrees) {
    Dialog dialog;
    dialog.populate();
    dialog.panel->tellsSteps = true;
    EXPECT_TRUE(dialog.panel->saveValuesAndReturnError());
    EXPECT_EQ(dialog.host.log, Words{"saveValues"});
    EXPECT_TRUE(dialog.host.settings->entries().empty());
}

TEST(SupportedKeys, AreNoneBeforeTheyAreSet) {
    TestHost host(ppdWith(testOptions()));
    EXPECT_EQ(panelFor(host)->supportedPPDOptionKeys(), std::nullopt);
}

TEST(SupportedKeys, AreACopyOfThePanels) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    panel->setPPDKeys(Words{"CVBiDir", "CVMediaType"});
    auto keys = panel->supportedPPDOptionKeys();
    EXPECT_EQ(keys, (Words{"CVBiDir", "CVMediaType"}));
    keys->clear();
    EXPECT_EQ(panel->PPDKeys, (Words{"CVBiDir", "CVMediaType"}));
}

TEST(PanelObserving, EndsWhenTheKeyWindowCloses) {
    Dialog dialog;
    dialog.panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    dialog.panel->initializePopup();
    dialog.host.log.clear();
    NotificationCenter& center = NotificationCenter::defaultCenter();
    toolkit::Window other("other");
    center.post({.name = "NSWindowWillCloseNotification", .sender = &other, .userInfo = {}});
    center.post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(dialog.host.takeLog(), Words{"resized"});
    center.post({.name = "NSWindowWillCloseNotification", .sender = &dialog.host.window, .userInfo = {}});
    center.post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(dialog.host.takeLog(), Words{});
}

TEST(PanelObserving, EndsForAllNotificationsAtOnce) {
    Dialog dialog;
    dialog.panel->observe("One", nullptr, &TestPanel::dialogDidExpand);
    dialog.panel->observe("Two", &dialog.root, &TestPanel::dialogDidExpand);
    dialog.panel->removeNotificationObserver({});
    NotificationCenter::defaultCenter().post({.name = "One", .sender = nullptr, .userInfo = {}});
    NotificationCenter::defaultCenter().post({.name = "Two", .sender = &dialog.root, .userInfo = {}});
    EXPECT_EQ(dialog.host.log, Words{});
}

TEST(PanelObserving, EndsForThatPanelOnly) {
    Dialog dialog;
    const auto other = panelFor(dialog.host);
    dialog.panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    other->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    dialog.panel->removeNotificationObserver({});
    NotificationCenter::defaultCenter().post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(dialog.host.log, Words{"resized"});
}

} // namespace
} // namespace framework_tests
