#include "tests/print_settings/print_setting_panel.h"

namespace print_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Entry = toolkit::ItemList::Entry;

class AdvancedOptions : public PrintSettingPanel {
protected:
    toolkit::ItemList& list() { return view<toolkit::ItemList>("arrayController"); }
    toolkit::TableView& table() { return view<toolkit::TableView>("advancedTableView"); }

    // A printer with these options only, each with the choices "ON" and "OFF".
    void openPrinterWith(const std::vector<std::string>& options) {
        std::string lines;
        for (const std::string& option : options)
            lines += tests::ppdOption(option, "Text of " + option, "OFF", {"OFF/Off", "ON/On"});
        openHost(tests::ppdWith(lines));
    }
    void setTexts(std::map<std::string, std::string, std::less<>> strings) {
        host->reopenBundle(
            {.languages = {"en"}, .localize = false, .strings = std::move(strings), .info = {}, .removedInfo = {}});
    }
    std::vector<std::string> ids() {
        std::vector<std::string> ids;
        for (const Entry& entry : list().entries())
            ids.push_back(entry.id);
        return ids;
    }
    toolkit::Rect frameOf(const std::string& name) { return panel->loadedViews()->viewNamed(name)->frame(); }
};

TEST_F(AdvancedOptions, EachPageHasAnEntryInItsPlace) {
    setTexts({{"Layout", "Lay-out"}, {"VertLineAlignSetting", "Lines"}, {"OtherOption", "Other"}});
    showPanel();
    EXPECT_THAT(list().entries(), ElementsAre(Entry{"Lay-out", "Layout"}, Entry{"Direct JPEG Printing", "CVJpeg"},
                                              Entry{"Two-Sided Drying", "CVDuplexMode"},
                                              Entry{"Lines", "VertLineAlignSetting"}, Entry{"Other", "OtherOption"}));
}

TEST_F(AdvancedOptions, APageWithoutItsOptionsHasNoEntry) {
    struct Row {
        std::vector<std::string> options, ids;
    };
    const std::vector<Row> rows = {
        {{"CVMonoColor"}, {"VertLineAlignSetting", "OtherOption"}},
        {{"MirrorPrint"}, {"Layout", "VertLineAlignSetting", "OtherOption"}},
        {{"CVMirror"}, {"Layout", "VertLineAlignSetting", "OtherOption"}},
        {{"CVReverse"}, {"Layout", "VertLineAlignSetting", "OtherOption"}},
        {{"CVJpeg"}, {"CVJpeg", "VertLineAlignSetting", "OtherOption"}},
        {{"CVDuplexMode"}, {"CVDuplexMode", "VertLineAlignSetting", "OtherOption"}},
        {{"CVDuplexMode", "CVJpeg", "CVMirror", "MirrorPrint"},
         {"Layout", "CVJpeg", "CVDuplexMode", "VertLineAlignSetting", "OtherOption"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        openPrinterWith(row.options);
        showPanel();
        EXPECT_EQ(ids(), row.ids);
    }
}

TEST_F(AdvancedOptions, TheStoreTellsWhichPagedOptionsAreManaged) {
    for (const bool jpeg : {false, true})
        for (const bool duplex : {false, true}) {
            SCOPED_TRACE(testing::Message() << jpeg << duplex);
            openPrinterWith(jpeg     ? duplex ? std::vector<std::string>{"CVJpeg", "CVDuplexMode"}
                                              : std::vector<std::string>{"CVJpeg"}
                                : duplex ? std::vector<std::string>{"CVDuplexMode"}
                                     : std::vector<std::string>{"CVReverse"});
            showPanel();
            EXPECT_EQ(panel->effectContent->valueForKey("CVJpeg"), toolkit::Value(jpeg));
            EXPECT_EQ(panel->effectContent->valueForKey("CVDuplexMode"), toolkit::Value(duplex));
        }
}

TEST_F(AdvancedOptions, AManagedOptionThatThePrinterLacksHasNoEntryButCountsAsManaged) {
    openPrinterWith({"CVReverse"});
    makePanelWithView();
    panel->PPDKeys = {"CVJpeg"};
    panel->initializeAdvOption({});
    EXPECT_THAT(ids(), ElementsAre("VertLineAlignSetting", "OtherOption"));
    EXPECT_EQ(panel->effectContent->valueForKey("CVJpeg"), toolkit::Value(true));
}

TEST_F(AdvancedOptions, TheFirstEntryIsSelectedAndStaysSo) {
    showPanel();
    EXPECT_EQ(list().selectedIndex(), 0);
    panel->addAdvOptionForKey("One more", "more");
    EXPECT_EQ(list().entries().back(), (Entry{"One more", "more"}));
    EXPECT_EQ(list().selectedIndex(), 0);
}

TEST_F(AdvancedOptions, TheCaptionsAreLocalised) {
    setTexts({{"VertLineAlignSetting", "Lines"}, {"advancedItem", "More"}});
    showPanel();
    EXPECT_EQ(label("vertLineLabel").text(), "Lines");
    EXPECT_EQ(label("optionLabel").text(), "More");
}

TEST_F(AdvancedOptions, TheTableGrowsToItsWidestLabel) {
    setTexts({{"Layout", std::string(30, 'w')}}); // 6.5 points each
    makePanelWithView();
    ASSERT_EQ(table().frame().width, 120);
    panel->willShow();
    EXPECT_EQ(table().columnWidth(), 30 * 6.5 + 12);
    EXPECT_FALSE(table().hidesScrollBarsAutomatically());
}

TEST_F(AdvancedOptions, ATableThatIsWideEnoughHidesItsScrollBars) {
    const double widest = 20 * 6.5; // "Direct JPEG Printing"
    for (const double width : {widest - 0.5, widest, widest + 0.5}) {
        SCOPED_TRACE(width);
        makePanelWithView();
        table().setFrame({.x = 20, .y = -130, .width = width, .height = 124});
        const double columnWidth = table().columnWidth();
        ASSERT_FALSE(table().hidesScrollBarsAutomatically());
        panel->willShow();
        EXPECT_EQ(table().columnWidth(), width < widest ? widest + 12 : columnWidth);
        EXPECT_EQ(table().hidesScrollBarsAutomatically(), width >= widest);
    }
}

TEST_F(AdvancedOptions, OnlyATableOfTheGroupIsMeasured) {
    setTexts({{"Layout", std::string(30, 'w')}});
    makePanelWithView();
    const double before = table().columnWidth();
    panel->initializeAdvOption({&label("optionLabel")});
    EXPECT_EQ(table().columnWidth(), before);
    EXPECT_FALSE(table().hidesScrollBarsAutomatically());
}

TEST_F(AdvancedOptions, WithAListTheGroupStaysVisible) {
    showPanel();
    for (const char* name : {"optionLabel", "optionButton", "advancedTabView", "advancedTableView"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(panel->loadedViews()->viewNamed(name)->isHidden());
    }
}

TEST_F(AdvancedOptions, WithoutAListTheGroupIsHidden) {
    makePanel(); // no view is loaded: nothing is connected
    toolkit::Label caption("optionLabel");
    toolkit::CheckBox button("optionButton");
    toolkit::TableView freeTable("advancedTableView");
    panel->initializeAdvOption({&caption, nullptr, &button, &freeTable});
    EXPECT_TRUE(caption.isHidden());
    EXPECT_TRUE(button.isHidden());
    EXPECT_TRUE(freeTable.isHidden());
    EXPECT_EQ(freeTable.columnWidth(), 0);
    EXPECT_FALSE(freeTable.hidesScrollBarsAutomatically());
}

TEST_F(AdvancedOptions, APanelWithAPaperSourceKeepsItsLayout) {
    makePanelWithView();
    panel->panelView()->setFrame({.x = 3, .y = 4, .width = 777, .height = 500});
    panel->willShow();
    EXPECT_EQ(panel->panelView()->frame(), (toolkit::Rect{.x = 3, .y = 4, .width = 777, .height = 160}));
    EXPECT_EQ(frameOf("optionLabel"), (toolkit::Rect{.x = 38, .y = 6, .width = 300, .height = 17}));
    EXPECT_EQ(frameOf("optionButton"), (toolkit::Rect{.x = 20, .y = 8, .width = 13, .height = 13}));
    EXPECT_EQ(frameOf("advancedTabView"), (toolkit::Rect{.x = 160, .y = -130, .width = 340, .height = 124}));
    EXPECT_EQ(frameOf("advancedTableView"), (toolkit::Rect{.x = 20, .y = -130, .width = 120, .height = 124}));
}

TEST_F(AdvancedOptions, WithoutAPaperSourceThePanelIsShorterAndTheGroupMovesUp) {
    openHost(samplePpdWithoutOption("CVInputSlot"));
    makePanelWithView();
    panel->panelView()->setFrame({.x = 3, .y = 4, .width = 777, .height = 500});
    panel->willShow();
    EXPECT_EQ(panel->panelView()->frame(), (toolkit::Rect{.x = 3, .y = 4, .width = 777, .height = 130}));
    EXPECT_EQ(frameOf("optionLabel"), (toolkit::Rect{.x = 38, .y = 36, .width = 300, .height = 17}));
    EXPECT_EQ(frameOf("optionButton"), (toolkit::Rect{.x = 20, .y = 38, .width = 13, .height = 13}));
    EXPECT_EQ(frameOf("advancedTabView"), (toolkit::Rect{.x = 160, .y = -100, .width = 340, .height = 124}));
    EXPECT_EQ(frameOf("advancedTableView"), (toolkit::Rect{.x = 20, .y = -100, .width = 120, .height = 124}));
}

TEST_F(AdvancedOptions, TheControlsAreFilledOnce) {
    openHost(samplePpdWithoutOption("CVInputSlot"));
    showPanel();
    panel->shouldHide();
    popup("mediaTypePopup").removeAllItems();
    panel->willShow();
    EXPECT_EQ(list().entries().size(), 5);
    EXPECT_EQ(frameOf("optionLabel").y, 36);
    EXPECT_THAT(popup("mediaTypePopup").items(), IsEmpty());
}

TEST_F(AdvancedOptions, TheControlsAreFilledBeforeTheAdvancedOptionsAreRestored) {
    host->settings->setValueForKey(true, "com.corvane.print.PrintSettings.advancedItem");
    makePanelWithView();
    panel->willShow();
    EXPECT_EQ(panel->panelView()->frame().height, 160 + 140);
    EXPECT_EQ(panel->effectContent->valueForKey("advancedItem"), toolkit::Value(true));
    openHost(samplePpdWithoutOption("CVInputSlot"));
    host->settings->setValueForKey(true, "com.corvane.print.PrintSettings.advancedItem");
    makePanelWithView();
    panel->willShow();
    EXPECT_EQ(panel->panelView()->frame().height, 130 + 140);
}

TEST_F(AdvancedOptions, WithoutAViewTheControlsStillCountAsFilled) {
    makePanel();
    panel->initializePopup();
    EXPECT_TRUE(panel->popupInited);
    EXPECT_THAT(host->takeLog(), testing::Each(testing::StartsWith("register ")));
}

TEST_F(AdvancedOptions, TheDisclosureAddsItsHeightAndTakesItAway) {
    showPanel();
    panel->panelView()->setFrame({.x = 1, .y = 2, .width = 333, .height = 160});
    toolkit::CheckBox sender("sender");
    sender.setOn(true);
    panel->toggleShowOption(&sender);
    EXPECT_EQ(panel->panelView()->frame(), (toolkit::Rect{.x = 1, .y = 2, .width = 333, .height = 300}));
    sender.setOn(false);
    panel->toggleShowOption(&sender);
    EXPECT_EQ(panel->panelView()->frame(), (toolkit::Rect{.x = 1, .y = 2, .width = 333, .height = 160}));
    EXPECT_THAT(host->takeLog(), ElementsAre("resized", "resized"));
}

TEST_F(AdvancedOptions, TheDisclosureButtonTogglesByItself) {
    showPanel();
    panel->optionButton->userSetOn(true);
    EXPECT_EQ(panel->panelView()->frame().height, 300);
    EXPECT_EQ(panel->effectContent->valueForKey("advancedItem"), toolkit::Value(true));
    panel->optionButton->userSetOn(false);
    EXPECT_EQ(panel->panelView()->frame().height, 160);
}

TEST_F(AdvancedOptions, AHostThatCannotResizeKeepsTheSize) {
    host->lacking = {"panelViewDidResize"};
    showPanel();
    panel->optionButton->userSetOn(true);
    EXPECT_EQ(panel->panelView()->frame().height, 160);
    EXPECT_THAT(host->takeLog(), IsEmpty());
}

} // namespace
} // namespace print_settings_tests
