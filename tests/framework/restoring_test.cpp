// Which options a panel manages, and how their values come from the PPD.

#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

using tests::ppdOption;
using tests::ppdWith;
using tests::TestHost;

class OptionValues : public testing::Test, public Dialog {};

TEST_F(OptionValues, AreManagedInTheGivenOrder) {
    panel->setPPDKeys(Words{"MirrorPrint", "CVMediaType", "CVBiDir"});
    EXPECT_EQ(panel->PPDKeys, (Words{"MirrorPrint", "CVMediaType", "CVBiDir"}));
}

TEST_F(OptionValues, AreManagedOnlyWhereThePpdHasTheOption) {
    panel->setPPDKeys(Words{"CVJpeg", "CVBiDir", "cvmediatype", "", "CVMediaType", "CVReverse"});
    EXPECT_EQ(panel->PPDKeys, (Words{"CVBiDir", "CVMediaType"}));
}

TEST_F(OptionValues, StayManagedWhenNoListIsGiven) {
    panel->setPPDKeys(Words{"CVBiDir"});
    panel->setPPDKeys(std::nullopt);
    EXPECT_EQ(panel->PPDKeys, Words{"CVBiDir"});
    panel->setPPDKeys(Words{});
    EXPECT_EQ(panel->PPDKeys, Words{});
}

TEST_F(OptionValues, AreRestoredFromTheMarks) {
    host.description->mark("CVMediaType", "Glossy");
    host.description->mark("CVBiDir", "OFF");
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(panel->outputBin(), (toolkit::ValueMap{{"CVMediaType", "Glossy"},
                                                     {"CVResolution", "Fine"},
                                                     {"CVColorMatching", "Vendor"},
                                                     {"CVBiDir", "OFF"},
                                                     {"CVSlowDrying", "OFF"},
                                                     {"MirrorPrint", "False"}}));
}

TEST_F(OptionValues, AreRestoredFromTheDefaultWhereNothingIsMarked) {
    host.description->mark("CVMediaType", "Glossy");
    host.description->unmark("CVMediaType");
    panel->outputBin_ = {};
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(pending("CVMediaType"), "Plain");
}

TEST_F(OptionValues, KeepWhatThePpdHasNoOptionFor) {
    panel->PPDKeys = Words{"CVBiDir", "CVJpeg"};
    panel->outputBin_ = {{"CVJpeg", "Kept"}, {"CVOther", "KeptToo"}};
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(panel->outputBin(), (toolkit::ValueMap{{"CVBiDir", "ON"}, {"CVJpeg", "Kept"}, {"CVOther", "KeptToo"}}));
}

TEST_F(OptionValues, AreNotRestoredIntoControlsThatWereNotFilled) {
    panel->tellsSteps = true;
    EXPECT_TRUE(panel->restoreValuesAndReturnError());
    EXPECT_EQ(host.log,
              (Words{"restoreValues", "setDefaults", "restoreOptionState", "checkConstraints", "saveAllValues"}));
    EXPECT_TRUE(media.items().empty());
    EXPECT_TRUE(host.settings->entries().empty());
}

TEST_F(OptionValues, AreRestoredIntoFilledControlsThenSaved) {
    panel->setPPDKeys(Words{"CVMediaType", "CVBiDir"});
    populate();
    panel->tellsSteps = true;
    EXPECT_TRUE(panel->restoreValuesAndReturnError());
    EXPECT_EQ(host.log, (Words{"restoreValues", "setDefaults", "restoreOptionState", "checkConstraints", "updateUI",
                               "updateUIforKey CVMediaType", "updateUIforKey CVBiDir", "checkUIConstraints",
                               "saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
}

TEST_F(OptionValues, AreShownAsTheyAreMarkedAfterARestore) {
    populate();
    host.description->mark("CVMediaType", "Matte");
    host.description->mark("CVColorMatching", "None");
    host.description->mark("MirrorPrint", "True");
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(selected(media), "Matte");
    EXPECT_EQ(selected(matching), "None");
    EXPECT_TRUE(mirror.isOn());
    EXPECT_EQ(host.log, Words{}); // what is shown is what is marked: nothing is asked
}

TEST_F(OptionValues, AreAskedForAgainWhereARestoreCannotShowThem) {
    populate();
    panel->setPPDKeys(Words{"CVResolution"});
    resolution.removeAllItems();
    resolution.addItemWithTitle("Draft");
    resolution.setKeywordOfItemWithTitle("Draft", "Draft");
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(host.log, Words{"ask CVResolution=Draft"});
    EXPECT_EQ(pending("CVResolution"), "Draft");
    host.refused = {"CVResolution"};
    host.description->mark("CVResolution", "Best");
    panel->restoreValuesAndReturnError();
    EXPECT_EQ(host.log, (Words{"ask CVResolution=Draft", "refuse CVResolution=Draft"}));
    EXPECT_EQ(pending("CVResolution"), "Best");
}

TEST_F(OptionValues, AreRestoredAfterTheFaxAndTheDefaultsAndBeforeTheColourMatching) {
    TestHost dialogHost(ppdWith("*APSupportsCustomColorMatching: True\n" + testOptions()));
    const auto told = panelFor(dialogHost);
    told->setPPDKeys(Words{"CVMediaType"});
    told->imageModeFlag_ = 0;
    dialogHost.description->mark("CVOutput", "FAX");
    std::vector<std::string> seen;
    told->onStep = [&](const std::string& step) {
        if (step == "setDefaults" || step == "restoreOptionState" || step == "checkConstraints")
            seen.push_back(step + " " + toolkit::valueInMap(told->outputBin_, "CVMediaType").textReading() + " " +
                           std::to_string(told->imageModeFlag()));
        if (step == "setDefaults")
            dialogHost.description->mark("CVMediaType", "Matte"); // what the defaults mark is restored
    };
    told->restoreValuesAndReturnError();
    EXPECT_EQ(seen, (Words{"setDefaults  512", "restoreOptionState Matte 513", "checkConstraints Matte 513"}));
}

TEST_F(OptionValues, AreSavedOnlyOnceTheControlsAreFilled) {
    panel->bindings.clear();
    panel->tellsSteps = true;
    panel->saveAllValues();
    EXPECT_EQ(host.takeLog(), Words{"saveAllValues"});
    panel->popupInited = true;
    panel->saveAllValues();
    EXPECT_EQ(host.takeLog(), (Words{"saveAllValues", "getUIValues", "checkUIConstraints", "saveOptionState"}));
}

TEST_F(OptionValues, AreKeptWhereTheHostMarksThem) {
    EXPECT_TRUE(panel->setAndMarkValueForKey("Glossy", "CVMediaType"));
    EXPECT_EQ(host.log, Words{"ask CVMediaType=Glossy"});
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
    EXPECT_EQ(marked("CVMediaType"), "Glossy");
}

TEST_F(OptionValues, AreNotAskedForWhereTheyAreHeldAlready) {
    EXPECT_FALSE(panel->setAndMarkValueForKey("Plain", "CVMediaType"));
    EXPECT_EQ(host.log, Words{});
    panel->outputBin_.erase("CVMediaType"); // marked, but not held
    EXPECT_TRUE(panel->setAndMarkValueForKey("Plain", "CVMediaType"));
    EXPECT_EQ(host.log, Words{"ask CVMediaType=Plain"});
}

TEST_F(OptionValues, StayWhereTheHostRefuses) {
    host.refused = {"CVMediaType=Glossy"};
    EXPECT_FALSE(panel->setAndMarkValueForKey("Glossy", "CVMediaType"));
    EXPECT_EQ(host.log, Words{"refuse CVMediaType=Glossy"});
    EXPECT_EQ(pending("CVMediaType"), "Plain");
    EXPECT_EQ(marked("CVMediaType"), "Plain");
}

TEST_F(OptionValues, NeedAKeyAndAValueToBeAskedFor) {
    EXPECT_FALSE(panel->setAndMarkValueForKey("Glossy", std::nullopt));
    EXPECT_FALSE(panel->setAndMarkValueForKey(std::nullopt, "CVMediaType"));
    EXPECT_EQ(host.log, Words{});
    EXPECT_EQ(pending("CVMediaType"), "Plain");
}

TEST_F(OptionValues, TouchNoControlWhenTheyAreMarked) {
    populate();
    panel->tellsSteps = true;
    EXPECT_TRUE(panel->setAndMarkValueForKey("Glossy", "CVMediaType"));
    EXPECT_TRUE(panel->setAndMarkValueForKey("True", "MirrorPrint"));
    EXPECT_EQ(selected(media), "Plain");
    EXPECT_FALSE(mirror.isOn());
    EXPECT_EQ(host.log, (Words{"ask CVMediaType=Glossy", "ask MirrorPrint=True"}));
}

TEST_F(OptionValues, AreToldByTheHostWhereTheyAreManaged) {
    panel->panelView_ = &root;
    populate();
    panel->tellsSteps = true;
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
    EXPECT_EQ(host.log, (Words{"didChange CVMediaType=Glossy", "updateUIforKey CVMediaType"}));
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
    EXPECT_EQ(selected(media), "Glossy");
}

TEST_F(OptionValues, AreToldWithoutTouchingControlsWhileThereIsNoView) {
    populate();
    panel->tellsSteps = true;
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
    EXPECT_EQ(host.log, Words{"didChange CVMediaType=Glossy"});
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
    EXPECT_EQ(selected(media), "Plain");
}

TEST_F(OptionValues, OfOtherOptionsAreNotHeardOf) {
    panel->panelView_ = &root;
    populate();
    panel->tellsSteps = true;
    panel->setPPDKeys(Words{"CVResolution"});
    host.log.clear();
    const toolkit::ValueMap before = panel->outputBin();
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
    panel->PPDOptionKeyValueDidChangePpdChoice("CVJpeg", "ON");
    EXPECT_EQ(host.log, (Words{"didChange CVMediaType=Glossy", "didChange CVJpeg=ON"}));
    EXPECT_EQ(panel->outputBin(), before);
}

TEST(UnsetOptionValues, AreNotHeardOf) {
    TestHost host(ppdWith(testOptions()));
    const auto panel = panelFor(host);
    panel->PPDOptionKeyValueDidChangePpdChoice("CVMediaType", "Glossy");
    EXPECT_TRUE(panel->outputBin().empty());
}

} // namespace
} // namespace framework_tests
