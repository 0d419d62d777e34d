#include "toolkit/item_list.h"
#include "toolkit/table_view.h"

#include "tests/toolkit/view_observing.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::ChangeCounter;
using toolkit_tests::countActions;

class ListModels : public testing::Test {
protected:
    void addTwo() {
        list.addEntry({.label = "Page Layout", .id = "Layout"});
        list.addEntry({.label = "Other Options", .id = "Other"});
    }
    ItemList list{"arrayController"};
};

TEST_F(ListModels, AListStartsEmptyWithNothingSelected) {
    EXPECT_TRUE(list.entries().empty());
    EXPECT_EQ(list.selectedIndex(), -1);
    EXPECT_EQ(list.selectedEntry(), nullptr);
}

TEST_F(ListModels, ANewEntryComesLastAndIsSelected) {
    addTwo();
    EXPECT_EQ(list.entries().back().id, "Other");
    EXPECT_EQ(list.selectedIndex(), 1);
    ASSERT_NE(list.selectedEntry(), nullptr);
    EXPECT_EQ(list.selectedEntry()->label, "Other Options");
}

TEST_F(ListModels, ANewEntryIsNotSelectedWhereThatIsSwitchedOff) {
    list.setSelectsInsertedEntries(false);
    addTwo();
    EXPECT_EQ(list.selectedIndex(), -1);
    list.selectIndex(0);
    list.addEntry({.label = "Third", .id = "Third"});
    EXPECT_EQ(list.selectedIndex(), 0);
}

TEST_F(ListModels, AnIndexOutsideSelectsNothing) {
    addTwo();
    for (const int index : {-1, -7, 2, 100}) {
        SCOPED_TRACE(index);
        list.selectIndex(0);
        list.selectIndex(index);
        EXPECT_EQ(list.selectedIndex(), -1);
        EXPECT_EQ(list.selectedEntry(), nullptr);
    }
}

TEST_F(ListModels, EntriesAreFoundByTheirIdExactly) {
    addTwo();
    EXPECT_EQ(list.indexOfId("Other"), 1);
    EXPECT_EQ(list.indexOfId("other"), -1);
    EXPECT_EQ(list.indexOfId("Other Options"), -1);
}

TEST_F(ListModels, AListTellsEntriesAndChangedSelections) {
    ChangeCounter changes(list);
    addTwo();
    EXPECT_EQ(changes.takeCount(), 2);
    list.selectIndex(0);
    EXPECT_EQ(changes.takeCount(), 1);
    list.selectIndex(0);
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST_F(ListModels, TheUserSelectsATablesEntryInItsListThenTheActionRunsOnce) {
    addTwo();
    TableView table("advancedTableView");
    table.setContent(&list);
    std::vector<int> seen;
    table.setAction([&](Control&) { seen.push_back(list.selectedIndex()); });
    table.userSelectedEntry(0);
    table.userSelectedEntry(0);
    EXPECT_EQ(seen, std::vector<int>({0, 0}));
}

TEST_F(ListModels, ATableWithoutListRunsItsActionOnly) {
    TableView table("advancedTableView");
    int runs = 0;
    countActions(table, runs);
    table.userSelectedEntry(0);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(table.content(), nullptr);
}

TEST_F(ListModels, ATableTellsItsColumnWidthAndScrollBars) {
    TableView table("advancedTableView");
    ChangeCounter changes(table);
    table.setColumnWidth(120);
    EXPECT_EQ(table.columnWidth(), 120);
    EXPECT_EQ(changes.takeCount(), 1);
    table.setColumnWidth(120);
    EXPECT_EQ(changes.takeCount(), 0);
    table.setHidesScrollBarsAutomatically(true);
    EXPECT_TRUE(table.hidesScrollBarsAutomatically());
    EXPECT_EQ(changes.takeCount(), 1);
}

TEST_F(ListModels, ATablesCellsHaveTheControlFont) {
    const Font font = TableView("advancedTableView").cellFont();
    EXPECT_EQ(font.role, "control");
    EXPECT_EQ(font.size, 13);
}

TEST_F(ListModels, TabsShowThePageOfTheSelectedEntry) {
    TabView tabs("advancedTabView");
    EXPECT_EQ(tabs.selectedPage(), "");
    tabs.setSelection(&list);
    EXPECT_EQ(tabs.selectedPage(), "");
    addTwo();
    EXPECT_EQ(tabs.selectedPage(), "Other");
    list.selectIndex(0);
    EXPECT_EQ(tabs.selectedPage(), "Layout");
    list.selectIndex(-1);
    EXPECT_EQ(tabs.selectedPage(), "");
}

} // namespace
} // namespace toolkit
