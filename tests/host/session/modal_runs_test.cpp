#include "tests/host/session/fake_dialog.h"

#include "framework/option_keywords.h"

namespace host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SessionWindows = FakeDialog;

TEST_F(SessionWindows, TheKeyWindowHasTheHeightThatItWasGiven) {
    options.windowHeight = 512.5;
    open();
    ASSERT_NE(session->keyWindow(), nullptr);
    EXPECT_EQ(session->keyWindow()->frame().height, 512.5);
    session->setWindowHeight(300);
    EXPECT_EQ(session->keyWindow()->frame().height, 300);
    session->setWindowHeight(std::nullopt);
    EXPECT_EQ(session->keyWindow(), nullptr);
    session->setWindowHeight(0);
    ASSERT_NE(session->keyWindow(), nullptr);
    EXPECT_EQ(session->keyWindow()->frame().height, 0);
}

TEST_F(SessionWindows, AChangedHeightIsNoEvent) {
    open();
    session->setWindowHeight(300);
    EXPECT_THAT(posted(), IsEmpty());
}

TEST_F(SessionWindows, AWindowThatIsNotThereDoesNotClose) {
    options.windowHeight.reset();
    open();
    EXPECT_FALSE(session->closeKeyWindow());
}

TEST_F(SessionWindows, ClosingIsToldAsComingFromTheKeyWindowAndKeepsItsHeight) {
    open();
    std::vector<const toolkit::Object*> senders;
    const auto observer = std::make_shared<const bool>();
    toolkit::NotificationCenter::defaultCenter().addObserver(
        observer, keywords::kWindowWillClose, nullptr,
        [&](const toolkit::Notification& notification) { senders.push_back(notification.sender); });
    EXPECT_TRUE(session->closeKeyWindow());
    EXPECT_THAT(senders, ElementsAre(session->keyWindow()));
    EXPECT_EQ(session->keyWindow()->frame().height, 800);
}

TEST_F(SessionWindows, TheEndOfASessionClosesItsWindowAndReleasesItsPanels) {
    open();
    int closings = 0;
    const auto observer = std::make_shared<const bool>();
    toolkit::NotificationCenter::defaultCenter().addObserver(observer, keywords::kWindowWillClose, nullptr,
                                                             [&](const toolkit::Notification&) { ++closings; });
    const std::weak_ptr<CVPrintQualityPDE> panel = session->panels()[0];
    session.reset();
    EXPECT_EQ(closings, 1);
    EXPECT_TRUE(panel.expired());
}

TEST_F(SessionWindows, PanelsThatResizeAreCounted) {
    open();
    session->panelViewDidResize();
    session->panelViewDidResize();
    EXPECT_EQ(session->takeRecord().resized, 2);
    EXPECT_EQ(session->takeRecord().resized, 0);
}

TEST_F(SessionWindows, WhatTheHostLacksGivesNothing) {
    options.lacks = {"printSettings", "pageFormat", "panelViewDidResize"};
    open();
    EXPECT_FALSE(session->respondsToSelector("printSettings"));
    EXPECT_TRUE(session->respondsToSelector("willChangePPDOptionKeyValue:ppdChoice:"));
    EXPECT_FALSE(session->respondsToSelector("somethingElse"));
    EXPECT_EQ(session->printSettings(), nullptr);
    EXPECT_EQ(session->pageFormat(), nullptr);
    session->panelViewDidResize();
    EXPECT_EQ(session->takeRecord().resized, 0);
}

TEST_F(SessionWindows, APanelsWindowIsShownWhileItRunsAndAnswersTheCodeThatStoppedIt) {
    open();
    toolkit::Window window("alertWindow");
    presenter.whileWindowRuns = [this] { session->stopModalWithCode(7); };
    EXPECT_EQ(session->runModalForWindow(window), 7);
    EXPECT_THAT(presenter.shown, ElementsAre("window alertWindow"));
}

TEST_F(SessionWindows, ARunThatNothingStoppedAnswersZero) {
    open();
    toolkit::Window window("alertWindow");
    session->stopModalWithCode(7); // of no run
    EXPECT_EQ(session->runModalForWindow(window), 0);
}

TEST_F(SessionWindows, ARunWithinARunKeepsItsOwnCode) {
    open();
    toolkit::Window outer("outer"), inner("inner");
    bool isOuter = true;
    int innerCode = 0;
    presenter.whileWindowRuns = [&] {
        if (std::exchange(isOuter, false)) {
            session->stopModalWithCode(1);
            innerCode = session->runModalForWindow(inner);
        } else {
            session->stopModalWithCode(2);
        }
    };
    EXPECT_EQ(session->runModalForWindow(outer), 1);
    EXPECT_EQ(innerCode, 2);
}

TEST_F(SessionWindows, AlertsSheetsAndPanelsReachThePresenter) {
    open();
    presenter.answer = {.button = 1, .suppressionButtonOn = true};
    EXPECT_EQ(session->runModalAlert({.messageText = "A", .informativeText = {}, .buttons = {}, .icon = {}}).button, 1);
    bool suppressed = false;
    session->beginSheet({.messageText = "B", .informativeText = {}, .buttons = {}, .icon = {}},
                        [&](const toolkit::AlertAnswer& answer) { suppressed = answer.suppressionButtonOn; });
    EXPECT_TRUE(suppressed);
    session->runAlertPanel({.title = "C", .message = "", .defaultButton = {}});
    session->openHelpAnchor("D", "E");
    EXPECT_THAT(presenter.shown, ElementsAre("alert A", "sheet B", "panel C", "help D in E"));
}

} // namespace
} // namespace host
