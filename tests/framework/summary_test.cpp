// The panel's summary.

#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

using tests::ppdOption;
using tests::ppdWith;
using tests::TestHost;
using toolkit::ValueList;
using toolkit::ValueMap;

class Summary : public testing::Test, public Dialog {};

const ValueList& orderOf(const ValueMap& summary) {
    return *toolkit::valueInMap(summary, "Summary Display Order").as<ValueList>();
}

TEST_F(Summary, TellsTheTextsOfTheOptionsAndOfTheirChoices) {
    EXPECT_EQ(panel->summaryInfo(), (ValueMap{{"Media Type", "Plain Paper"},
                                              {"Print Quality", "Fine"},
                                              {"Matching", "Driver"},
                                              {"Bi-directional Printing", "ON"},
                                              {"Slow Drying", "OFF"},
                                              {"Mirror Printing", "OFF"},
                                              {"Summary Display Order", ValueList{"Media Type", "Print Quality",
                                                                                  "Matching", "Bi-directional Printing",
                                                                                  "Slow Drying", "Mirror Printing"}}}));
}

TEST_F(Summary, ReadsTheMarksAgain) {
    panel->outputBin_["CVMediaType"] = "Matte";
    host.description->mark("CVMediaType", "Glossy");
    const auto summary = panel->summaryInfo();
    EXPECT_EQ(toolkit::valueInMap(*summary, "Media Type"), "Glossy Paper");
}

TEST_F(Summary, RestoresBeforeAnythingElse) {
    panel->tellsSteps = true;
    panel->setPPDKeys(Words{"CVMediaType"});
    populate();
    panel->summaryInfo();
    EXPECT_EQ(host.log, (Words{"summaryInfo", "restoreValues", "setDefaults", "restoreOptionState", "checkConstraints",
                               "updateUI", "updateUIforKey CVMediaType", "checkUIConstraints", "saveAllValues",
                               "getUIValues", "checkUIConstraints", "saveOptionState"}));
}

TEST_F(Summary, AsksTheHostForNothing) {
    populate();
    panel->summaryInfo();
    EXPECT_EQ(host.log, Words{});
}

TEST_F(Summary, AsksTheHostForWhatAControlCannotShow) {
    populate();
    media.removeAllItems();
    media.addItemWithTitle("Plain Paper");
    media.setKeywordOfItemWithTitle("Plain", "Plain Paper");
    host.description->mark("CVMediaType", "Matte");
    const auto summary = panel->summaryInfo();
    EXPECT_EQ(host.log, Words{"ask CVMediaType=Plain"});
    EXPECT_EQ(toolkit::valueInMap(*summary, "Media Type"), "Plain Paper");
}

TEST_F(Summary, LocalizesOnAndOffForBothPairsOfWords) {
    host.reopenBundle({.languages = {},
                       .localize = false,
                       .strings = {{"ON", "Yes!"}, {"OFF", "No!"}, {"True", "wrong"}, {"False", "wrong"}},
                       .info = {},
                       .removedInfo = {}});
    panel->pluginBundle = host.bundle;
    struct {
        const char* biDir;
        const char* mirror;
        const char* text;
    } const rows[] = {{"ON", "True", "Yes!"}, {"OFF", "False", "No!"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.biDir);
        host.description->mark("CVBiDir", row.biDir);
        host.description->mark("MirrorPrint", row.mirror);
        const auto summary = panel->summaryInfo();
        EXPECT_EQ(toolkit::valueInMap(*summary, "Bi-directional Printing"), row.text);
        EXPECT_EQ(toolkit::valueInMap(*summary, "Mirror Printing"), row.text);
    }
}

TEST_F(Summary, LeavesOutAValueThatMatchesNoChoice) {
    panel->onStep = [&](const std::string& step) {
        if (step == "availablePPDOptionKeys") // the values are restored by then
            panel->outputBin_["CVMediaType"] = "NoSuchChoice", panel->outputBin_.erase("CVResolution");
    };
    panel->setPPDKeys(Words{"CVMediaType", "CVResolution", "CVColorMatching"});
    EXPECT_EQ(panel->summaryInfo(),
              (ValueMap{{"Matching", "Driver"}, {"Summary Display Order", ValueList{"Matching"}}}));
}

TEST_F(Summary, ComparesChoicesExactly) {
    panel->onStep = [&](const std::string& step) {
        if (step == "availablePPDOptionKeys")
            panel->outputBin_["CVMediaType"] = "glossy";
    };
    panel->setPPDKeys(Words{"CVMediaType"});
    EXPECT_EQ(panel->summaryInfo(), (ValueMap{{"Summary Display Order", ValueList{}}}));
}

TEST_F(Summary, TellsTheAvailableKeysInTheirOrder) {
    panel->summaryKeys = Words{"CVSlowDrying", "CVJpeg", "CVMediaType"}; // one that the PPD has no option for
    const auto summary = panel->summaryInfo();
    EXPECT_EQ(orderOf(*summary), (ValueList{"Slow Drying", "Media Type"}));
    EXPECT_EQ(summary->size(), 3U);
}

TEST_F(Summary, HasOnlyAnOrderWhereNothingIsManaged) {
    panel->PPDKeys.reset();
    EXPECT_EQ(panel->summaryInfo(), (ValueMap{{"Summary Display Order", ValueList{}}}));
}

TEST_F(Summary, TellsTheManagedKeysWhereNoOthersAreAvailable) {
    panel->setPPDKeys(Words{"CVBiDir", "CVMediaType"});
    EXPECT_EQ(panel->availablePPDOptionKeys(), (Words{"CVBiDir", "CVMediaType"}));
    panel->PPDKeys.reset();
    EXPECT_EQ(panel->availablePPDOptionKeys(), std::nullopt);
}

TEST(SummaryOfEqualTitles, KeepsTheLaterTextAndNamesTheTitleTwice) {
    TestHost host(ppdWith(ppdOption("CVFirst", "Same", "A", {"A/First", "B/Other"}) +
                          ppdOption("CVSecond", "Same", "A", {"A/Second", "B/Other"})));
    const auto panel = panelFor(host);
    panel->setPPDKeys(Words{"CVFirst", "CVSecond"});
    EXPECT_EQ(panel->summaryInfo(),
              (ValueMap{{"Same", "Second"}, {"Summary Display Order", ValueList{"Same", "Same"}}}));
}

TEST(SummaryOfUnmarkedOptions, TellsTheDefault) {
    TestHost host(ppdWith(ppdOption("CVFirst", "First", "B", {"A/Text of A", "B/Text of B"})));
    host.description->unmark("CVFirst");
    const auto panel = panelFor(host);
    panel->setPPDKeys(Words{"CVFirst"});
    EXPECT_EQ(toolkit::valueInMap(*panel->summaryInfo(), "First"), "Text of B");
}

} // namespace
} // namespace framework_tests
