// How the controls are read back.

#include "tests/framework/test_panel.h"

namespace framework_tests {
namespace {

class ReadingBack : public testing::Test, public Dialog {
protected:
    ReadingBack() { populate(); }

    /// Reads back while these controls are disabled. The base enables every control first, as its overrides then
    /// disable theirs.
    void readWith(std::initializer_list<toolkit::Control*> disabled) {
        panel->onStep = [controls = std::vector(disabled)](const std::string& step) {
            if (step == "setAndMarkValue CVMediaType=Plain") // the first key: the constraints have run
                for (toolkit::Control* control : controls)
                    control->setEnabled(false);
        };
        panel->getUIValues();
        panel->onStep = nullptr;
    }
};

TEST_F(ReadingBack, RunsTheControlsConstraintsFirst) {
    resolution.selectItemAtIndex(0);
    panel->tellsSteps = true;
    panel->getUIValues();
    EXPECT_EQ(host.log, (Words{"getUIValues", "checkUIConstraints", "ask CVResolution=Draft"}));
}

TEST_F(ReadingBack, MarksWhatEveryControlShowsInTheOrderOfTheKeys) {
    media.selectItemWithKeyword("Glossy");
    resolution.selectItemAtIndex(2);
    matching.selectRow(1);
    biDir.setOn(false);
    slowDrying.setOn(true);
    mirror.setOn(true);
    panel->getUIValues();
    EXPECT_EQ(host.log, (Words{"ask CVMediaType=Glossy", "ask CVResolution=Best", "ask CVColorMatching=System",
                               "ask CVBiDir=OFF", "ask CVSlowDrying=ON", "ask MirrorPrint=True"}));
    EXPECT_EQ(panel->outputBin(), (toolkit::ValueMap{{"CVMediaType", "Glossy"},
                                                     {"CVResolution", "Best"},
                                                     {"CVColorMatching", "System"},
                                                     {"CVBiDir", "OFF"},
                                                     {"CVSlowDrying", "ON"},
                                                     {"MirrorPrint", "True"}}));
}

TEST_F(ReadingBack, AsksNothingWhereTheControlsShowThePendingValues) {
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{});
}

TEST_F(ReadingBack, LeavesControlsAsTheyAreWhereTheHostRefuses) {
    host.refused = {"CVResolution"};
    resolution.selectItemAtIndex(2);
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{"refuse CVResolution=Best"});
    EXPECT_EQ(selected(resolution), "Best");
    EXPECT_EQ(pending("CVResolution"), "Fine");
}

TEST_F(ReadingBack, PassesOverWhatShowsNothing) {
    media.selectItemAtIndex(-1);
    resolution.addItemWithTitle("Nothing");
    resolution.selectItemAtIndex(3);
    matching.selectRow(-1);
    panel->bindings.erase(panel->bindings.begin() + 3); // CVBiDir has no control
    biDir.setOn(false);
    mirror.setOn(true);
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{"ask MirrorPrint=True"});
    matching.setCell(0, {.title = "Nothing", .keyword = {}});
    matching.selectRow(0);
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{"ask MirrorPrint=True"});
    EXPECT_EQ(pending("CVColorMatching"), "Vendor");
}

TEST_F(ReadingBack, PassesOverOtherKindsOfControls) {
    toolkit::PushButton button("button");
    panel->bindings = {{"CVMediaType", &mediaLabel}, {"CVBiDir", &button}};
    panel->outputBin_ = {};
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{});
    EXPECT_TRUE(panel->outputBin().empty());
}

TEST_F(ReadingBack, MarksPlainOnBothSidesWhilePrintingOnBothSides) {
    panel->imageModeFlag_ = kImageModeDuplex;
    for (const char* item : {"Plain", "Glossy"}) {
        SCOPED_TRACE(item);
        panel->outputBin_["CVMediaType"] = "Matte";
        media.selectItemWithKeyword(item);
        panel->getUIValues();
        EXPECT_EQ(host.takeLog(), Words{"ask CVMediaType=PlainDuplex"});
        EXPECT_EQ(pending("CVMediaType"), "PlainDuplex");
        EXPECT_EQ(selected(media), item);
    }
}

TEST_F(ReadingBack, MarksTheItemsKeywordsOfOtherOptionsWhilePrintingOnBothSides) {
    panel->imageModeFlag_ = kImageModeDuplex;
    panel->setPPDKeys(Words{"CVResolution"});
    resolution.selectItemAtIndex(0);
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{"ask CVResolution=Draft"});
}

TEST_F(ReadingBack, MarksNothingForAMediumThatIsNotSelectedWhilePrintingOnBothSides) {
    panel->imageModeFlag_ = kImageModeDuplex;
    panel->setPPDKeys(Words{"CVMediaType"});
    media.selectItemAtIndex(-1);
    panel->getUIValues();
    media.addItemWithTitle("Nothing");
    media.selectItemAtIndex(static_cast<int>(media.items().size()) - 1);
    panel->getUIValues();
    EXPECT_EQ(host.log, Words{});
}

TEST_F(ReadingBack, CountsADisabledBoxAsOff) {
    panel->outputBin_["CVBiDir"] = "OFF";
    panel->outputBin_["MirrorPrint"] = "False";
    panel->outputBin_["CVMediaType"] = "Matte";
    biDir.setOn(true);
    mirror.setOn(true);
    readWith({&biDir, &mirror});
    EXPECT_EQ(host.log, (Words{"ask CVMediaType=Plain", "ask CVBiDir=ON", "ask CVBiDir=OFF", "ask MirrorPrint=True",
                               "ask MirrorPrint=False"})); // its state first, then off
    EXPECT_EQ(pending("CVBiDir"), "OFF");
    EXPECT_EQ(pending("MirrorPrint"), "False");
    EXPECT_TRUE(biDir.isOn()); // the control keeps what it shows
}

TEST_F(ReadingBack, AsksOnlyForOffWhereADisabledBoxWasHeldAsOn) {
    panel->setPPDKeys(Words{"CVMediaType", "CVBiDir"});
    panel->outputBin_["CVBiDir"] = "ON";
    biDir.setOn(true);
    readWith({&biDir});
    EXPECT_EQ(host.log, Words{"ask CVBiDir=OFF"});
}

TEST_F(ReadingBack, KeepsTheStateOfADisabledSlowDryingBox) {
    slowDrying.setOn(true);
    readWith({&slowDrying});
    EXPECT_EQ(host.log, Words{"ask CVSlowDrying=ON"});
    EXPECT_EQ(pending("CVSlowDrying"), "ON");
}

TEST_F(ReadingBack, ForcesNoBoxOffWhileTheOutputIsFax) {
    panel->imageModeFlag_ = kImageModeFaxOutput;
    biDir.setOn(true);
    mirror.setOn(true);
    panel->getUIValues(); // every control is disabled by then
    EXPECT_FALSE(biDir.isEnabled() || mirror.isEnabled());
    EXPECT_EQ(host.log, Words{"ask MirrorPrint=True"});
    EXPECT_EQ(pending("CVBiDir"), "ON");
}

TEST_F(ReadingBack, ReadsTheStateOfAnEnabledBox) {
    biDir.setOn(true);
    mirror.setOn(true);
    panel->getUIValues();
    EXPECT_EQ(pending("CVBiDir"), "ON");
    EXPECT_EQ(pending("MirrorPrint"), "True");
}

} // namespace
} // namespace framework_tests
