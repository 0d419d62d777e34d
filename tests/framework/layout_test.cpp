// The disclosure of the advanced options, the panel's size and the pictures that change.

#include "tests/framework/scratch_bundle.h"
#include "tests/framework/test_panel.h"

#include <filesystem>

namespace framework_tests {
namespace {

using printing::SettingValue;
using toolkit::Rect;

constexpr const char* kStored = "com.corvane.print.PrintSettings.advancedItem";
constexpr const char* kStoredColor = "com.corvane.print.PrintSettings.advancedcolorItem";
constexpr const char* kUpdated = "NSViewDidUpdateTrackingAreasNotification";

class Disclosure : public testing::Test, public Dialog {
protected:
    Disclosure() { panel->tellsSteps = true; }

    [[nodiscard]] toolkit::Value state() const { return panel->effectContent->valueForKey("advancedItem"); }
};

TEST_F(Disclosure, HasAKeyOfItsOwnInTheColorPanel) {
    struct {
        std::optional<std::string> panelName;
        const char* key;
    } const rows[] = {{"CVInkColorSetting", "advancedcolorItem"},
                      {"CVInkQuality12", "advancedItem"},
                      {"cvinkcolorsetting", "advancedItem"},
                      {"", "advancedItem"},
                      {std::nullopt, "advancedItem"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.panelName.value_or("none"));
        panel->setThePDEName(row.panelName);
        EXPECT_EQ(panel->optionName(), row.key);
    }
}

TEST_F(Disclosure, IsStoredAsABoolean) {
    struct {
        toolkit::Value state;
        bool stored;
    } const rows[] = {{true, true}, {false, false}, {1, true}, {0, false}, {"YES", true}, {toolkit::Value(), false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.state.textReading());
        panel->effectContent->setValueForKey(row.state, "advancedItem");
        panel->saveOptionState();
        EXPECT_EQ(host.settings->valueForKey(kStored), SettingValue(row.stored));
    }
    EXPECT_EQ(host.settings->entries().size(), 1U);
}

TEST_F(Disclosure, IsStoredUnderThePanelsKey) {
    panel->setThePDEName("CVInkColorSetting");
    panel->effectContent->setValueForKey(true, "advancedcolorItem");
    panel->saveOptionState();
    EXPECT_EQ(host.settings->valueForKey(kStoredColor), SettingValue(true));
    EXPECT_EQ(host.settings->valueForKey(kStored), std::nullopt);
}

TEST_F(Disclosure, IsStoredAsClosedWithoutAStore) {
    panel->effectContent.reset();
    panel->saveOptionState();
    EXPECT_EQ(host.settings->valueForKey(kStored), SettingValue(false));
}

TEST_F(Disclosure, IsNotStoredWithoutPrintSettings) {
    host.settings.reset();
    panel->effectContent->setValueForKey(true, "advancedItem");
    panel->saveOptionState();
    EXPECT_EQ(state(), true);
}

TEST_F(Disclosure, TogglesOnlyWhereTheStoredStateIsAnother) {
    struct {
        SettingValue stored;
        toolkit::Value current;
        bool toggles;
        toolkit::Value after;
    } const rows[] = {
        // stored            current            toggles  after
        {true, false, true, true},
        {true, toolkit::Value(), true, true},
        {true, true, false, true},
        {false, true, true, false},
        {false, false, false, false},
        {false, toolkit::Value(), false, toolkit::Value()},
        {std::string("1"), false, true, true},
        {std::int64_t{1}, true, false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(printing::optionText(row.stored) + " over " + row.current.textReading());
        host.settings->setValueForKey(row.stored, kStored);
        panel->effectContent->setValueForKey(row.current, "advancedItem");
        panel->restoreOptionState();
        EXPECT_EQ(state(), row.after);
        EXPECT_EQ(host.takeLog(), row.toggles ? (Words{"restoreOptionState", "toggleShowOption optionButton"})
                                              : Words{"restoreOptionState"});
    }
}

TEST_F(Disclosure, IsClosedWhereNoStateIsStored) {
    for (const bool shown : {true, false}) {
        SCOPED_TRACE(shown);
        panel->effectContent->setValueForKey(shown, "advancedItem");
        panel->restoreOptionState();
        EXPECT_EQ(state(), false);
        EXPECT_EQ(host.takeLog(),
                  shown ? (Words{"restoreOptionState", "toggleShowOption optionButton"}) : Words{"restoreOptionState"});
    }
    panel->effectContent->setValueForKey({}, "advancedItem");
    panel->restoreOptionState();
    EXPECT_TRUE(state().isAbsent());
    EXPECT_EQ(host.log, Words{"restoreOptionState"});
}

TEST_F(Disclosure, IsClosedWithoutPrintSettings) {
    host.settings.reset();
    panel->effectContent->setValueForKey(true, "advancedItem");
    panel->restoreOptionState();
    EXPECT_EQ(state(), false);
    EXPECT_EQ(host.log, (Words{"restoreOptionState", "toggleShowOption optionButton"}));
}

TEST_F(Disclosure, ChangesItsStateBeforeItToggles) {
    for (const bool stored : {true, false}) {
        host.settings->setValueForKey(stored, kStored);
        panel->effectContent->setValueForKey(!stored, "advancedItem");
        toolkit::Value atToggling;
        panel->onStep = [&](const std::string& step) {
            if (step.starts_with("toggleShowOption"))
                atToggling = state();
        };
        panel->restoreOptionState();
        EXPECT_EQ(atToggling, stored);
    }
}

TEST_F(Disclosure, IsLeftAloneWithoutAStore) {
    host.settings->setValueForKey(true, kStored);
    panel->effectContent.reset();
    panel->restoreOptionState();
    EXPECT_EQ(host.log, Words{"restoreOptionState"});
}

TEST_F(Disclosure, TogglesWithoutAButton) {
    panel->optionButton = nullptr;
    host.settings->setValueForKey(true, kStored);
    panel->restoreOptionState();
    EXPECT_EQ(host.log, (Words{"restoreOptionState", "toggleShowOption null"}));
}

TEST_F(Disclosure, ComesBackAfterThePanelWasFilled) {
    panel->effectContent->setValueForKey(true, "advancedItem");
    panel->saveOptionState();
    panel->initializePopup();
    EXPECT_EQ(state(), false);
    panel->restoreOptionState();
    EXPECT_EQ(state(), true);
}

class PanelLayout : public testing::Test, public Dialog {
protected:
    PanelLayout() {
        panel->panelView_ = &root;
        root.setFrame({.x = 3, .y = 4, .width = 300, .height = 100});
        panel->imageModeFlag_ = kImageModePanelShown;
    }

    void updateTrackingAreas(const toolkit::Object* sender) {
        toolkit::NotificationCenter::defaultCenter().post({.name = kUpdated, .sender = sender, .userInfo = {}});
    }
};

TEST_F(PanelLayout, MovesEachViewUp) {
    toolkit::View first("first"), second("second");
    first.setFrame({.x = 1, .y = 2, .width = 3, .height = 4});
    second.setFrame({.x = 5, .y = -6.5, .width = 7, .height = 8});
    panel->adjustUIPositionForParts(30.25, {&first, nullptr, &second});
    EXPECT_EQ(first.frame(), (Rect{.x = 1, .y = 32.25, .width = 3, .height = 4}));
    EXPECT_EQ(second.frame(), (Rect{.x = 5, .y = 23.75, .width = 7, .height = 8}));
    panel->adjustUIPositionForParts(-30.25, {&first});
    EXPECT_EQ(first.frame(), (Rect{.x = 1, .y = 2, .width = 3, .height = 4}));
    panel->adjustUIPositionForParts(5, {});
    EXPECT_EQ(first.frame(), (Rect{.x = 1, .y = 2, .width = 3, .height = 4}));
}

TEST_F(PanelLayout, MovesAViewAsOftenAsItIsNamed) {
    toolkit::View view("view");
    panel->adjustUIPositionForParts(10, {&view, &view});
    EXPECT_EQ(view.frame().y, 20);
}

TEST_F(PanelLayout, SetsTheSizeAndKeepsTheOrigin) {
    panel->setViewFrameSize({.width = 320, .height = 240});
    EXPECT_EQ(root.frame(), (Rect{.x = 3, .y = 4, .width = 320, .height = 240}));
}

TEST_F(PanelLayout, TellsAHostWithRoomAtOnce) {
    host.window.setFrame({.width = 640, .height = 296.5});
    panel->setViewFrameSize({.width = 300, .height = 200});
    EXPECT_EQ(host.takeLog(), Words{"resized"});
    updateTrackingAreas(&root);
    EXPECT_EQ(host.log, Words{}); // and not again
}

TEST_F(PanelLayout, WaitsForTheViewWhereThereIsNoRoom) {
    for (const double height : {296.0, 100.0}) { // 96 points are not enough
        SCOPED_TRACE(height);
        host.window.setFrame({.width = 640, .height = height});
        panel->setViewFrameSize({.width = 300, .height = 200});
        EXPECT_EQ(host.takeLog(), Words{});
        EXPECT_EQ(root.frame().height, 200);
        updateTrackingAreas(&root);
        EXPECT_EQ(host.takeLog(), Words{"resized"});
    }
}

TEST_F(PanelLayout, WaitsForItsOwnViewOnly) {
    host.window.setFrame({.width = 640, .height = 100});
    panel->setViewFrameSize({.width = 300, .height = 200});
    updateTrackingAreas(&media);
    EXPECT_EQ(host.takeLog(), Words{});
    updateTrackingAreas(&root);
    EXPECT_EQ(host.takeLog(), Words{"resized"});
}

TEST_F(PanelLayout, IsToldOnceHoweverOftenTheViewIsUpdated) {
    host.window.setFrame({.width = 640, .height = 100});
    panel->setViewFrameSize({.width = 300, .height = 200});
    panel->setViewFrameSize({.width = 300, .height = 250});
    updateTrackingAreas(&root);
    EXPECT_EQ(host.takeLog(), Words{"resized"});
    updateTrackingAreas(&root);
    EXPECT_EQ(host.takeLog(), Words{});
}

TEST_F(PanelLayout, TellsNothingWhileThePanelIsHidden) {
    panel->imageModeFlag_ = ~std::uint32_t{kImageModePanelShown};
    for (const double height : {1000.0, 100.0}) {
        host.window.setFrame({.width = 640, .height = height});
        panel->setViewFrameSize({.width = 300, .height = height / 2});
        EXPECT_EQ(root.frame().height, height / 2);
        updateTrackingAreas(&root);
        EXPECT_EQ(host.takeLog(), Words{});
    }
}

TEST_F(PanelLayout, TellsNothingWithoutAKeyWindow) {
    host.hasKeyWindow = false;
    panel->setViewFrameSize({.width = 300, .height = 200});
    EXPECT_EQ(root.frame().height, 200);
    updateTrackingAreas(&root);
    EXPECT_EQ(host.log, Words{});
}

TEST_F(PanelLayout, StaysAsItIsWhereTheHostCannotBeTold) {
    host.lacking = {"panelViewDidResize"};
    panel->setViewFrameSize({.width = 320, .height = 200});
    EXPECT_EQ(root.frame(), (Rect{.x = 3, .y = 4, .width = 300, .height = 100}));
    updateTrackingAreas(&root);
    EXPECT_EQ(host.log, Words{});
}

TEST_F(PanelLayout, NeedsNoView) {
    panel->panelView_ = nullptr;
    panel->setViewFrameSize({.width = 320, .height = 200});
    EXPECT_EQ(host.log, Words{"resized"});
}

TEST_F(PanelLayout, EndsOnlyTheObservingOfTheView) {
    panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    panel->dialogDidExpand({});
    EXPECT_EQ(host.takeLog(), Words{"resized"});
    toolkit::NotificationCenter::defaultCenter().post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(host.takeLog(), Words{"resized"});
}

class ChangingPicture : public testing::Test, public Dialog {
protected:
    ChangingPicture() {
        files.copyResource(std::string(CV_SOURCE_DIR) + "/resources/pictures/Glossy.tiff", "First.tiff");
        files.copyResource(files.resource("First.tiff"), "Second.tiff");
        files.writeResource("Second.pdf", "no tiff");
        files.writeResource("Page.pdf", "a page");
        files.writeResource("Damaged.tiff", "no picture");
        files.writeResource("Damaged.pdf", "a page");
        files.writeResource("Bitmap.bmp", "of another type");
        panel->pluginBundle = files.open();
    }

    /// The name of the picture, and what follows from it.
    [[nodiscard]] std::string name() const { return view.image() ? view.image()->name.value_or("unnamed") : "none"; }
    [[nodiscard]] std::string file() const {
        return view.image() ? std::filesystem::path(view.image()->path).filename().string() : "none";
    }

    ScratchBundle files;
    toolkit::ImageView view{"imageView"};
};

TEST_F(ChangingPicture, ShowsATiffOfTheBundle) {
    view.setHidden(true);
    panel->changeImageOfView("First", &view);
    EXPECT_EQ(name(), "First");
    EXPECT_EQ(file(), "First.tiff");
    EXPECT_GT(view.image()->width, 0);
    EXPECT_GT(view.image()->height, 0);
    EXPECT_FALSE(view.isHidden());
}

TEST_F(ChangingPicture, PrefersATiffToAPage) {
    panel->changeImageOfView("Second", &view);
    EXPECT_EQ(file(), "Second.tiff");
}

TEST_F(ChangingPicture, ShowsAPageWhereThereIsNoTiff) {
    view.setHidden(true);
    panel->changeImageOfView("Page", &view);
    EXPECT_EQ(name(), "Page");
    EXPECT_EQ(file(), "Page.pdf");
    EXPECT_FALSE(view.isHidden());
}

TEST_F(ChangingPicture, DoesNothingWhereThePictureBearsTheName) {
    panel->changeImageOfView("First", &view);
    view.setHidden(true);
    panel->changeImageOfView("First", &view);
    EXPECT_EQ(view.imageCount(), 1);
    EXPECT_TRUE(view.isHidden());
}

TEST_F(ChangingPicture, LoadsAgainWhereThePictureBearsTheNameNoMore) {
    panel->changeImageOfView("First", &view);
    view.renameImage("Other");
    panel->changeImageOfView("First", &view);
    EXPECT_EQ(view.imageCount(), 2);
    EXPECT_EQ(name(), "First");
    view.setImage(toolkit::Image{}); // a picture without a name
    panel->changeImageOfView("First", &view);
    EXPECT_EQ(name(), "First");
}

TEST_F(ChangingPicture, HidesTheViewWhereThereIsNoSuchPicture) {
    for (const auto& missing : {std::optional<std::string>("Missing"), std::optional<std::string>("Bitmap"),
                                std::optional<std::string>(""), std::optional<std::string>()}) {
        SCOPED_TRACE(missing.value_or("null"));
        panel->changeImageOfView("First", &view);
        panel->changeImageOfView(missing, &view);
        EXPECT_EQ(name(), "None");
        EXPECT_EQ(file(), "First.tiff"); // the picture is renamed, not taken away
        EXPECT_TRUE(view.isHidden());
    }
    toolkit::ImageView empty("empty");
    panel->changeImageOfView("Missing", &empty);
    EXPECT_TRUE(empty.isHidden());
    EXPECT_FALSE(empty.image());
}

TEST_F(ChangingPicture, ShowsAPictureAgainAfterAMissingOne) {
    panel->changeImageOfView("First", &view);
    panel->changeImageOfView("Missing", &view);
    panel->changeImageOfView("First", &view);
    EXPECT_EQ(name(), "First");
    EXPECT_FALSE(view.isHidden());
}

TEST_F(ChangingPicture, KeepsTheOldPictureWhereTheNewOneIsDamaged) {
    panel->changeImageOfView("First", &view);
    view.setHidden(true);
    panel->changeImageOfView("Damaged", &view);
    EXPECT_EQ(name(), "First");
    EXPECT_EQ(file(), "First.tiff");
    EXPECT_FALSE(view.isHidden());
}

TEST_F(ChangingPicture, NeedsAView) {
    panel->changeImageOfView("First", nullptr);
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
