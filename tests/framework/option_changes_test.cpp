// A change by the user: what the host is asked, and how a refused one is put back.

#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

class OptionChange : public testing::Test, public Dialog {
protected:
    OptionChange() {
        populate();
        for (toolkit::Control* control :
             std::initializer_list<toolkit::Control*>{&media, &resolution, &matching, &biDir, &slowDrying, &mirror})
            control->setAction([this](toolkit::Control& sender) { panel->requestNewOutputBin(&sender); });
    }

    void choose(toolkit::PopUpList& popup, const std::string& keyword) {
        popup.userSelectedItemAtIndex(popup.indexOfItemWithKeyword(keyword));
    }
};

TEST_F(OptionChange, OfAPopUpAsksForTheItemsKeyword) {
    choose(resolution, "Best");
    EXPECT_EQ(host.log, Words{"ask CVResolution=Best"});
    EXPECT_EQ(pending("CVResolution"), "Best");
    EXPECT_EQ(marked("CVResolution"), "Best");
    EXPECT_EQ(selected(resolution), "Best");
}

TEST_F(OptionChange, OfAMatrixAsksForTheCellsKeyword) {
    matching.userSelectedRow(2);
    EXPECT_EQ(host.log, Words{"ask CVColorMatching=None"});
    EXPECT_EQ(pending("CVColorMatching"), "None");
    EXPECT_EQ(selected(matching), "None");
}

TEST_F(OptionChange, OfACheckBoxAsksForOnAndOff) {
    biDir.userSetOn(false);
    biDir.userSetOn(true);
    EXPECT_EQ(host.log, (Words{"ask CVBiDir=OFF", "ask CVBiDir=ON"}));
}

TEST_F(OptionChange, OfMirrorPrintAsksForTrueAndFalse) {
    mirror.userSetOn(true);
    mirror.userSetOn(false);
    EXPECT_EQ(host.log, (Words{"ask MirrorPrint=True", "ask MirrorPrint=False"}));
    EXPECT_EQ(pending("MirrorPrint"), "False");
}

TEST_F(OptionChange, ShowsTheValueThenSavesAll) {
    panel->tellsSteps = true;
    choose(resolution, "Best");
    EXPECT_EQ(host.log, (Words{"requestNewOutputBin", "ask CVResolution=Best", "updateUIforKey CVResolution",
                               "saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
}

TEST_F(OptionChange, ThatIsRefusedIsPutBackAndAllIsSaved) {
    host.refused = {"CVResolution=Best"};
    panel->tellsSteps = true;
    choose(resolution, "Best");
    EXPECT_EQ(host.log, (Words{"requestNewOutputBin", "refuse CVResolution=Best", "revertUI CVResolution",
                               "saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
    EXPECT_EQ(selected(resolution), "Fine");
    EXPECT_EQ(pending("CVResolution"), "Fine");
    EXPECT_EQ(marked("CVResolution"), "Fine");
}

TEST_F(OptionChange, ThatIsRefusedIsPutBackInEveryKindOfControl) {
    host.refused = {"CVColorMatching", "CVBiDir", "MirrorPrint"};
    matching.userSelectedRow(1);
    EXPECT_EQ(selected(matching), "Vendor");
    biDir.userSetOn(false);
    EXPECT_TRUE(biDir.isOn());
    mirror.userSetOn(true);
    EXPECT_FALSE(mirror.isOn());
    EXPECT_EQ(host.log, (Words{"refuse CVColorMatching=System", "refuse CVBiDir=OFF", "refuse MirrorPrint=True"}));
}

TEST_F(OptionChange, AsksAlsoForAValueThatIsHeldAlready) {
    choose(resolution, "Fine");
    EXPECT_EQ(host.log, Words{"ask CVResolution=Fine"});
}

TEST_F(OptionChange, WithoutASelectedItemOnlySaves) {
    panel->tellsSteps = true;
    resolution.userSelectedItemAtIndex(-1);
    EXPECT_EQ(host.takeLog(),
              (Words{"requestNewOutputBin", "saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
    matching.userSelectedRow(-1);
    EXPECT_EQ(host.takeLog(),
              (Words{"requestNewOutputBin", "saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
    EXPECT_EQ(pending("CVResolution"), "Fine");
    EXPECT_EQ(pending("CVColorMatching"), "Vendor");
}

TEST_F(OptionChange, ToAnItemWithoutAKeywordOnlySaves) {
    resolution.addItemWithTitle("Nothing");
    resolution.userSelectedItemAtIndex(3);
    matching.setCell(1, {.title = "Nothing", .keyword = {}});
    matching.userSelectedRow(1);
    EXPECT_EQ(host.log, Words{});
    EXPECT_EQ(pending("CVResolution"), "Fine");
    EXPECT_EQ(selected(resolution), "none"); // and nothing is put back
}

TEST_F(OptionChange, OfAnotherKindOfControlOnlySaves) {
    toolkit::PushButton button("button");
    panel->bindings.push_back({"CVOutput", &button});
    panel->tellsSteps = true;
    for (toolkit::View* sender : std::initializer_list<toolkit::View*>{&button, &root, nullptr}) {
        panel->requestNewOutputBin(sender);
        EXPECT_EQ(host.takeLog(), (Words{"requestNewOutputBin", "saveAllValues", "getUIValues", "checkUIConstraints",
                                         "saveOptionState"}));
    }
}

TEST_F(OptionChange, OfAControlWithoutAnOptionChangesNothing) {
    toolkit::CheckBox stray("stray");
    stray.setOn(true);
    const toolkit::ValueMap before = panel->outputBin();
    panel->requestNewOutputBin(&stray);
    EXPECT_EQ(panel->outputBin(), before);
    EXPECT_FALSE(stray.isOn()); // the host knows no such option, so the box is put back
}

TEST_F(OptionChange, ReadsTheOtherControlsBack) {
    mirror.setOn(true); // by program: nobody was asked
    choose(resolution, "Best");
    EXPECT_EQ(host.log, (Words{"ask CVResolution=Best", "ask MirrorPrint=True"}));
}

TEST_F(OptionChange, StoresTheDisclosureState) {
    panel->effectContent->setValueForKey(true, "advancedItem");
    choose(resolution, "Best");
    EXPECT_EQ(host.settings->valueForKey("com.corvane.print.PrintSettings.advancedItem"), printing::SettingValue(true));
}

class PuttingBack : public testing::Test, public Dialog {
protected:
    PuttingBack() { populate(); }
};

TEST_F(PuttingBack, SelectsTheFirstCellOfTheValue) {
    matching.addRow();
    matching.setCell(3, {.title = "Again", .keyword = "System"});
    matching.selectRow(3);
    panel->outputBin_["CVColorMatching"] = "System";
    panel->revertUIForKey(&matching, "CVColorMatching");
    EXPECT_EQ(matching.selectedRow(), 1);
}

TEST_F(PuttingBack, SelectsTheItemOfTheValue) {
    panel->outputBin_["CVResolution"] = "Draft";
    panel->revertUIForKey(&resolution, "CVResolution");
    EXPECT_EQ(selected(resolution), "Draft");
}

TEST_F(PuttingBack, ChangesNothingWhereNothingShowsTheValue) {
    resolution.selectItemAtIndex(2);
    matching.selectRow(2);
    for (const toolkit::Value& value : {toolkit::Value("NoSuchChoice"), toolkit::Value()}) {
        SCOPED_TRACE(value.textReading());
        panel->outputBin_["CVResolution"] = value;
        panel->outputBin_["CVColorMatching"] = value;
        panel->revertUIForKey(&resolution, "CVResolution");
        panel->revertUIForKey(&matching, "CVColorMatching");
        EXPECT_EQ(selected(resolution), "Best");
        EXPECT_EQ(selected(matching), "None");
    }
    panel->revertUIForKey(&resolution, std::nullopt);
    EXPECT_EQ(selected(resolution), "Best");
}

TEST_F(PuttingBack, ShowsPlainForPlainOnBothSides) {
    panel->outputBin_["CVMediaType"] = "PlainDuplex";
    media.selectItemWithKeyword("Glossy");
    panel->revertUIForKey(&media, "CVMediaType");
    EXPECT_EQ(selected(media), "Plain");
    EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
    EXPECT_EQ(host.log, Words{});
}

TEST_F(PuttingBack, ShowsPlainForPlainOnBothSidesEvenBesideAnItemOfThatName) {
    media.addItemWithTitle("Both sides");
    media.setKeywordOfItemWithTitle("PlainDuplex", "Both sides");
    panel->outputBin_["CVMediaType"] = "PlainDuplex";
    panel->revertUIForKey(&media, "CVMediaType");
    EXPECT_EQ(selected(media), "Plain");
}

TEST_F(PuttingBack, ChangesNothingWherePlainIsMissing) {
    media.removeAllItems();
    for (const char* keyword : {"Glossy", "PlainDuplex"}) {
        media.addItemWithTitle(keyword);
        media.setKeywordOfItemWithTitle(keyword, keyword);
    }
    panel->outputBin_["CVMediaType"] = "PlainDuplex";
    panel->revertUIForKey(&media, "CVMediaType");
    EXPECT_EQ(selected(media), "Glossy");
}

TEST_F(PuttingBack, KnowsPlainOnBothSidesInTheMediaTypeOnly) {
    resolution.addItemWithTitle("Plain");
    resolution.setKeywordOfItemWithTitle("Plain", "Plain");
    resolution.addItemWithTitle("Both");
    resolution.setKeywordOfItemWithTitle("PlainDuplex", "Both");
    panel->outputBin_["CVResolution"] = "PlainDuplex";
    panel->revertUIForKey(&resolution, "CVResolution");
    EXPECT_EQ(selected(resolution), "PlainDuplex");
}

TEST_F(PuttingBack, TurnsABoxOnForBothWords) {
    struct {
        toolkit::Value value;
        bool on;
    } const rows[] = {{"ON", true},  {"True", true}, {"OFF", false}, {"False", false},
                      {"on", false}, {"Yes", false}, {"", false},    {toolkit::Value(), false},
                      {true, false}};
    for (toolkit::CheckBox* box : {&biDir, &mirror})
        for (const auto& row : rows) {
            const std::string key = box == &biDir ? "CVBiDir" : "MirrorPrint";
            SCOPED_TRACE(key + " " + row.value.textReading());
            panel->outputBin_[key] = row.value;
            box->setOn(!row.on);
            panel->revertUIForKey(box, key);
            EXPECT_EQ(box->isOn(), row.on);
        }
}

TEST_F(PuttingBack, IgnoresOtherKindsOfControls) {
    const toolkit::ValueMap before = panel->outputBin();
    toolkit::PushButton button("button");
    panel->revertUIForKey(&button, "CVBiDir");
    panel->revertUIForKey(&mediaLabel, "CVMediaType");
    panel->revertUIForKey(nullptr, "CVMediaType");
    EXPECT_EQ(panel->outputBin(), before);
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
