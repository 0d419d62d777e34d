// How pending values are shown in the controls.

#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

using tests::ppdOption;

class ShowingValues : public testing::Test, public Dialog {
protected:
    ShowingValues() { populate(); }
};

TEST_F(ShowingValues, GoesThroughTheKeysInOrderThenGreysTheControls) {
    panel->setPPDKeys(Words{"MirrorPrint", "CVMediaType"});
    panel->tellsSteps = true;
    panel->updateUI();
    EXPECT_EQ(host.log,
              (Words{"updateUI", "updateUIforKey MirrorPrint", "updateUIforKey CVMediaType", "checkUIConstraints"}));
}

TEST_F(ShowingValues, GreysTheControlsWhereNothingIsManaged) {
    panel->tellsSteps = true;
    for (const auto& keys : {std::optional<Words>(), std::optional(Words{})}) {
        panel->PPDKeys = keys;
        panel->updateUI();
        EXPECT_EQ(host.takeLog(), (Words{"updateUI", "checkUIConstraints"}));
    }
}

TEST_F(ShowingValues, SelectsTheItemTheCellAndTheState) {
    panel->outputBin_ = {{"CVResolution", "Best"}, {"CVColorMatching", "System"}, {"CVBiDir", "OFF"},
                         {"CVSlowDrying", "ON"},   {"MirrorPrint", "True"},       {"CVMediaType", "Matte"}};
    panel->updateUI();
    EXPECT_EQ(selected(media), "Matte");
    EXPECT_EQ(selected(resolution), "Best");
    EXPECT_EQ(selected(matching), "System");
    EXPECT_FALSE(biDir.isOn());
    EXPECT_TRUE(slowDrying.isOn());
    EXPECT_TRUE(mirror.isOn());
    EXPECT_EQ(host.log, Words{}); // shown, and nothing asked
}

TEST_F(ShowingValues, TurnsABoxOnForBothWordsAndOffForOthers) {
    for (const char* word : {"ON", "True"}) {
        SCOPED_TRACE(word);
        panel->outputBin_["CVBiDir"] = panel->outputBin_["MirrorPrint"] = word;
        biDir.setOn(false);
        mirror.setOn(false);
        panel->updateUIforKey("CVBiDir");
        panel->updateUIforKey("MirrorPrint");
        EXPECT_TRUE(biDir.isOn() && mirror.isOn());
    }
    for (const char* word : {"OFF", "False", "Maybe"}) {
        SCOPED_TRACE(word);
        panel->outputBin_["CVBiDir"] = panel->outputBin_["MirrorPrint"] = word;
        biDir.setOn(true);
        mirror.setOn(true);
        panel->updateUIforKey("CVBiDir");
        panel->updateUIforKey("MirrorPrint");
        EXPECT_FALSE(biDir.isOn() || mirror.isOn());
    }
}

TEST_F(ShowingValues, LeavesAPopUpAloneWhereNoItemShowsTheValue) {
    resolution.selectItemAtIndex(2);
    panel->outputBin_["CVResolution"] = "NoSuchChoice";
    panel->updateUIforKey("CVResolution");
    EXPECT_EQ(selected(resolution), "Best");
    EXPECT_EQ(pending("CVResolution"), "NoSuchChoice");
    EXPECT_EQ(host.log, Words{});
}

TEST_F(ShowingValues, NeedsAControl) {
    panel->tellsSteps = true;
    panel->bindings.clear();
    panel->updateUIforKey("CVMediaType");
    panel->updateUIforKey(std::nullopt);
    EXPECT_EQ(host.log, (Words{"updateUIforKey CVMediaType", "updateUIforKey null"}));
}

TEST_F(ShowingValues, RunsNoAction) {
    bool acted = false;
    media.setAction([&](toolkit::Control&) { acted = true; });
    panel->outputBin_["CVMediaType"] = "Glossy";
    panel->updateUIforKey("CVMediaType");
    EXPECT_FALSE(acted);
}

TEST_F(ShowingValues, MarksPlainForAMediumThatIsNotListed) {
    for (const toolkit::Value& value :
         {toolkit::Value("NoSuchMedium"), toolkit::Value("HagakiAtena"), toolkit::Value("plain"), toolkit::Value()}) {
        SCOPED_TRACE(value.textReading());
        panel->outputBin_["CVMediaType"] = value;
        media.selectItemWithKeyword("Matte");
        panel->updateUIforKey("CVMediaType");
        EXPECT_EQ(selected(media), "Plain");
        EXPECT_EQ(host.takeLog(), Words{"ask CVMediaType=Plain"});
        EXPECT_EQ(pending("CVMediaType"), "Plain");
    }
}

TEST_F(ShowingValues, MarksGlossyForThePostcardsBackThatIsNotListed) {
    panel->outputBin_["CVMediaType"] = "HagakiUra";
    panel->updateUIforKey("CVMediaType");
    EXPECT_EQ(selected(media), "Glossy");
    EXPECT_EQ(host.log, Words{"ask CVMediaType=Glossy"});
    EXPECT_EQ(pending("CVMediaType"), "Glossy");
}

TEST_F(ShowingValues, SelectsThePostcardsBackWhereItIsListed) {
    media.addItemWithTitle("Postcard");
    media.setKeywordOfItemWithTitle("HagakiUra", "Postcard");
    panel->outputBin_["CVMediaType"] = "HagakiUra";
    panel->updateUIforKey("CVMediaType");
    EXPECT_EQ(selected(media), "HagakiUra");
    EXPECT_EQ(host.log, Words{});
}

TEST_F(ShowingValues, ShowsPlainForPlainOnBothSidesAndKeepsTheValue) {
    media.selectItemWithKeyword("Glossy");
    panel->outputBin_["CVMediaType"] = "PlainDuplex";
    panel->updateUIforKey("CVMediaType");
    EXPECT_EQ(selected(media), "Plain");
    EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
    EXPECT_EQ(host.log, Words{});
}

TEST_F(ShowingValues, MarksNothingWhereTheSubstituteIsNotListed) {
    media.removeAllItems();
    media.addItemWithTitle("Matte Paper");
    media.setKeywordOfItemWithTitle("Matte", "Matte Paper");
    for (const char* value : {"NoSuchMedium", "HagakiUra", "PlainDuplex"}) {
        SCOPED_TRACE(value);
        panel->outputBin_["CVMediaType"] = value;
        panel->updateUIforKey("CVMediaType");
        EXPECT_EQ(selected(media), "Matte");
        EXPECT_EQ(pending("CVMediaType"), value);
        EXPECT_EQ(host.log, Words{});
    }
}

TEST_F(ShowingValues, KeepsTheValueWhereTheSubstituteIsRefused) {
    host.refused = {"CVMediaType"};
    panel->outputBin_["CVMediaType"] = "HagakiUra";
    panel->updateUIforKey("CVMediaType");
    EXPECT_EQ(selected(media), "Glossy");
    EXPECT_EQ(pending("CVMediaType"), "HagakiUra");
    EXPECT_EQ(host.log, Words{"refuse CVMediaType=Glossy"});
}

TEST_F(ShowingValues, HasSubstitutesForTheMediaTypeOnly) {
    resolution.addItemWithTitle("Plain");
    resolution.setKeywordOfItemWithTitle("Plain", "Plain");
    panel->outputBin_["CVResolution"] = "PlainDuplex";
    panel->updateUIforKey("CVResolution");
    EXPECT_EQ(selected(resolution), "Fine");
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
