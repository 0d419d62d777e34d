#include "toolkit/popup_list.h"

#include "tests/toolkit/view_observing.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::ChangeCounter;
using toolkit_tests::countActions;
using Titles = std::vector<std::string>;

Image pictureNamed(const char* name) {
    Image picture;
    picture.name = name;
    return picture;
}

class PopUp : public testing::Test {
protected:
    void add(const std::string& title, const std::string& keyword) {
        popup.addItemWithTitle(title);
        popup.setKeywordOfItemWithTitle(keyword, title);
    }
    void addThree() {
        add("Plain Paper", "Plain");
        add("Glossy Paper", "Glossy");
        add("Matte Paper", "Matte");
    }
    [[nodiscard]] Titles titles() const {
        Titles result;
        for (const PopUpList::Item& item : popup.items())
            result.push_back(item.title);
        return result;
    }

    PopUpList popup{"mediaTypePopup"};
};

TEST_F(PopUp, StartsWithoutItemsAndSelection) {
    EXPECT_TRUE(popup.items().empty());
    EXPECT_EQ(popup.selectedIndex(), -1);
    EXPECT_EQ(popup.selectedItem(), nullptr);
    EXPECT_EQ(popup.selectedKeyword(), std::nullopt);
}

TEST_F(PopUp, SelectsItsFirstItem) {
    addThree();
    EXPECT_EQ(popup.selectedIndex(), 0);
    EXPECT_EQ(popup.selectedKeyword(), "Plain");
}

TEST_F(PopUp, ANewItemIsEnabledAndHasNeitherKeywordNorPicture) {
    popup.addItemWithTitle("Plain Paper");
    const PopUpList::Item& item = popup.items().front();
    EXPECT_EQ(item.keyword, std::nullopt);
    EXPECT_TRUE(item.enabled);
    EXPECT_FALSE(item.image.has_value());
}

TEST_F(PopUp, AFurtherItemComesLastAndKeepsTheSelection) {
    addThree();
    popup.selectItemAtIndex(1);
    add("Envelope", "Env");
    EXPECT_EQ(titles(), Titles({"Plain Paper", "Glossy Paper", "Matte Paper", "Envelope"}));
    EXPECT_EQ(popup.selectedIndex(), 1);
}

TEST_F(PopUp, ATitleThatIsListedAlreadyMovesToTheEndWithoutItsKeyword) {
    addThree();
    popup.addItemWithTitle("Plain Paper");
    EXPECT_EQ(titles(), Titles({"Glossy Paper", "Matte Paper", "Plain Paper"}));
    EXPECT_EQ(popup.items().back().keyword, std::nullopt);
}

TEST_F(PopUp, TitlesThatDifferInCaseAreTwo) {
    popup.addItemWithTitle("Plain");
    popup.addItemWithTitle("plain");
    EXPECT_EQ(titles(), Titles({"Plain", "plain"}));
}

TEST_F(PopUp, ReplacingTheSelectedItemSelectsTheFirstOneLeft) {
    addThree();
    popup.selectItemAtIndex(1);
    popup.addItemWithTitle("Glossy Paper");
    EXPECT_EQ(popup.selectedIndex(), 0);
    EXPECT_EQ(popup.selectedKeyword(), "Plain");
}

TEST_F(PopUp, ReplacingAnItemBeforeTheSelectedOneKeepsTheSelectedItem) {
    addThree();
    popup.selectItemAtIndex(2);
    popup.addItemWithTitle("Plain Paper");
    EXPECT_EQ(popup.selectedKeyword(), "Matte");
}

TEST_F(PopUp, ReplacingAnItemAfterTheSelectedOneKeepsTheSelectedItem) {
    addThree();
    popup.selectItemAtIndex(1);
    popup.addItemWithTitle("Matte Paper");
    EXPECT_EQ(popup.selectedKeyword(), "Glossy");
}

TEST_F(PopUp, ReplacingTheOnlyItemSelectsTheNewOne) {
    add("Plain Paper", "Plain");
    popup.addItemWithTitle("Plain Paper");
    EXPECT_EQ(titles(), Titles({"Plain Paper"}));
    EXPECT_EQ(popup.selectedIndex(), 0);
}

TEST_F(PopUp, WithoutItemsNothingIsSelected) {
    addThree();
    popup.selectItemAtIndex(2);
    popup.removeAllItems();
    EXPECT_TRUE(popup.items().empty());
    EXPECT_EQ(popup.selectedIndex(), -1);
    EXPECT_EQ(popup.selectedItem(), nullptr);
}

TEST_F(PopUp, SelectsTheFirstItemAgainAfterAllWereRemoved) {
    addThree();
    popup.removeAllItems();
    add("Envelope", "Env");
    EXPECT_EQ(popup.selectedKeyword(), "Env");
}

TEST_F(PopUp, AnIndexOutsideTheListSelectsNothing) {
    for (const int index : {-1, -2, 3, 100}) {
        SCOPED_TRACE(index);
        popup.removeAllItems();
        addThree();
        popup.selectItemAtIndex(index);
        EXPECT_EQ(popup.selectedIndex(), -1);
        EXPECT_EQ(popup.selectedKeyword(), std::nullopt);
    }
}

TEST_F(PopUp, IsSelectedByKeyword) {
    addThree();
    EXPECT_TRUE(popup.selectItemWithKeyword("Matte"));
    EXPECT_EQ(popup.selectedIndex(), 2);
}

TEST_F(PopUp, AnUnknownKeywordChangesNothing) {
    addThree();
    popup.selectItemAtIndex(1);
    for (const char* keyword : {"matte", "Mat", "", "Glossy Paper"}) {
        SCOPED_TRACE(keyword);
        EXPECT_FALSE(popup.selectItemWithKeyword(keyword));
        EXPECT_EQ(popup.indexOfItemWithKeyword(keyword), -1);
        EXPECT_EQ(popup.selectedIndex(), 1);
    }
}

TEST_F(PopUp, AnItemWithoutKeywordIsSelectedWithoutOne) {
    popup.addItemWithTitle("Plain Paper");
    ASSERT_NE(popup.selectedItem(), nullptr);
    EXPECT_EQ(popup.selectedKeyword(), std::nullopt);
    EXPECT_EQ(popup.indexOfItemWithKeyword(""), -1);
}

TEST_F(PopUp, AttributesOfAMissingItemAreIgnored) {
    addThree();
    popup.setKeywordOfItemWithTitle("Env", "Envelope");
    popup.setImageOfItemWithTitle(pictureNamed("Env"), "Envelope");
    popup.setItemEnabled(-1, false);
    popup.setItemEnabled(3, false);
    for (const PopUpList::Item& item : popup.items()) {
        EXPECT_NE(item.keyword, "Env");
        EXPECT_FALSE(item.image.has_value());
        EXPECT_TRUE(item.enabled);
    }
}

TEST_F(PopUp, ItemsAreEnabledOneByOne) {
    addThree();
    popup.setItemEnabled(1, false);
    EXPECT_TRUE(popup.items()[0].enabled);
    EXPECT_FALSE(popup.items()[1].enabled);
    popup.setItemEnabled(1, true);
    EXPECT_TRUE(popup.items()[1].enabled);
}

TEST_F(PopUp, APictureGoesToTheItemOfItsTitle) {
    addThree();
    popup.setImageOfItemWithTitle(pictureNamed("Glossy"), "Glossy Paper");
    ASSERT_TRUE(popup.items()[1].image.has_value());
    EXPECT_EQ(popup.items()[1].image->name, "Glossy");
    EXPECT_FALSE(popup.items()[0].image.has_value());
}

TEST_F(PopUp, TheProgramsSelectionRunsNoAction) {
    addThree();
    int runs = 0;
    countActions(popup, runs);
    popup.selectItemAtIndex(1);
    popup.selectItemWithKeyword("Matte");
    popup.removeAllItems();
    EXPECT_EQ(runs, 0);
}

TEST_F(PopUp, TheUsersChoiceIsMadeBeforeItsActionRunsOnce) {
    addThree();
    std::vector<int> seen;
    popup.setAction([&](Control& sender) { seen.push_back(static_cast<PopUpList&>(sender).selectedIndex()); });
    popup.userSelectedItemAtIndex(2);
    EXPECT_EQ(seen, std::vector<int>({2}));
}

TEST_F(PopUp, TheUsersChoiceRunsTheActionEvenIfItStoodSoAlready) {
    addThree();
    int runs = 0;
    countActions(popup, runs);
    popup.userSelectedItemAtIndex(0);
    EXPECT_EQ(runs, 1);
}

TEST_F(PopUp, ObserversHearEachChange) {
    ChangeCounter changes(popup);
    popup.addItemWithTitle("Plain Paper");
    EXPECT_EQ(changes.takeCount(), 1);
    popup.addItemWithTitle("Glossy Paper");
    EXPECT_EQ(changes.takeCount(), 1);
    popup.setKeywordOfItemWithTitle("Glossy", "Glossy Paper");
    EXPECT_EQ(changes.takeCount(), 1);
    popup.setImageOfItemWithTitle(pictureNamed("Glossy"), "Glossy Paper");
    EXPECT_EQ(changes.takeCount(), 1);
    popup.setItemEnabled(1, false);
    EXPECT_EQ(changes.takeCount(), 1);
    popup.selectItemAtIndex(1);
    EXPECT_EQ(changes.takeCount(), 1);
    popup.removeAllItems();
    EXPECT_EQ(changes.takeCount(), 1);
}

TEST_F(PopUp, ObserversHearNothingWhereNothingChanged) {
    addThree();
    ChangeCounter changes(popup);
    popup.selectItemAtIndex(0);
    popup.setItemEnabled(0, true);
    popup.setKeywordOfItemWithTitle("Plain", "Plain Paper");
    EXPECT_EQ(changes.takeCount(), 0);
    popup.removeAllItems();
    changes.takeCount();
    popup.removeAllItems();
    EXPECT_EQ(changes.takeCount(), 0);
}

} // namespace
} // namespace toolkit
