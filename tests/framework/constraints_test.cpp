// What greys the controls.

#include "tests/framework/test_panel.h"

#include "toolkit/number_field.h"

namespace framework_tests {
namespace {

using toolkit::TextColor;

class ControlConstraints : public testing::Test, public Dialog {
protected:
    const std::vector<toolkit::Control*> controls = {&media, &resolution, &matching, &biDir, &slowDrying, &mirror};
};

TEST_F(ControlConstraints, EnableEveryManagedControl) {
    populate();
    for (toolkit::Control* control : controls)
        control->setEnabled(false);
    panel->checkUIConstraints();
    for (const toolkit::Control* control : controls) {
        SCOPED_TRACE(control->name());
        EXPECT_TRUE(control->isEnabled());
    }
}

TEST_F(ControlConstraints, EnableTheBoxesThatPopulationDisabled) {
    panel->initializePopup();
    ASSERT_FALSE(biDir.isEnabled());
    panel->checkUIConstraints();
    EXPECT_TRUE(biDir.isEnabled());
}

TEST_F(ControlConstraints, DisableEveryManagedControlWhileTheOutputIsFax) {
    populate();
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    for (const toolkit::Control* control : controls) {
        SCOPED_TRACE(control->name());
        EXPECT_FALSE(control->isEnabled());
    }
}

TEST_F(ControlConstraints, DisableTheBoxesThatPopulationEnabledWhileTheOutputIsFax) {
    toolkit::CheckBox align("align");
    panel->PPDKeys = Words{"CVVertLineAlignOther"};
    panel->bindings = {{"CVVertLineAlignOther", &align}};
    panel->initializePopup();
    ASSERT_TRUE(align.isEnabled());
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_FALSE(align.isEnabled());
}

TEST_F(ControlConstraints, LookAtTheFaxBitOnly) {
    panel->imageModeFlag_ = ~std::uint32_t{kImageModeFaxOutput};
    panel->checkUIConstraints();
    EXPECT_TRUE(media.isEnabled());
}

TEST_F(ControlConstraints, GreyTheLabels) {
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_EQ(mediaLabel.textColor(), TextColor::Disabled);
    EXPECT_EQ(resolutionLabel.textColor(), TextColor::Disabled);
    panel->imageModeFlag_ = 0;
    panel->checkUIConstraints();
    EXPECT_EQ(mediaLabel.textColor(), TextColor::Enabled);
    EXPECT_EQ(resolutionLabel.textColor(), TextColor::Enabled);
}

TEST_F(ControlConstraints, GreyALabelWhoseOptionHasNoControl) {
    panel->bindings = {{"CVMediaType", nullptr, &mediaLabel}};
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_EQ(mediaLabel.textColor(), TextColor::Disabled);
}

TEST_F(ControlConstraints, LeaveTitledBoxesAlone) {
    matchingBox.setTitle("Matching");
    bool changed = false;
    struct Watch : toolkit::ViewObserver {
        bool& changed;
        explicit Watch(bool& flag) : changed(flag) {}
        void viewDidChange(toolkit::View&) override { changed = true; }
    } watch(changed);
    matchingBox.addObserver(watch);
    for (const std::uint32_t bits : {std::uint32_t{kImageModeFaxOutput}, 0U}) {
        panel->imageModeFlag_ = bits;
        panel->checkUIConstraints();
    }
    EXPECT_FALSE(changed);
    matchingBox.removeObserver(watch);
}

TEST_F(ControlConstraints, CoverEveryKindThatCanBeEnabled) {
    toolkit::NumberField field("field");
    toolkit::PushButton button("button");
    panel->bindings = {{"CVMediaType", &field}, {"CVBiDir", &button}, {"CVResolution", &mediaLabel}};
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_FALSE(field.isEnabled());
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(ControlConstraints, LeaveControlsOfOtherOptionsAlone) {
    panel->setPPDKeys(Words{"CVMediaType"});
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_FALSE(media.isEnabled());
    EXPECT_TRUE(resolution.isEnabled());
    EXPECT_EQ(resolutionLabel.textColor(), TextColor::Enabled);
}

TEST_F(ControlConstraints, TellTheStoreWhetherControlsAreUsable) {
    panel->checkUIConstraints();
    EXPECT_EQ(panel->effectContent->valueForKey("CVOutput"), true);
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_EQ(panel->effectContent->valueForKey("CVOutput"), false);
}

TEST_F(ControlConstraints, TellTheStoreWhereNothingIsManaged) {
    panel->PPDKeys.reset();
    panel->checkUIConstraints();
    EXPECT_EQ(panel->effectContent->valueForKey("CVOutput"), true);
}

TEST_F(ControlConstraints, NeedNoStore) {
    panel->effectContent.reset();
    panel->imageModeFlag_ = kImageModeFaxOutput;
    panel->checkUIConstraints();
    EXPECT_FALSE(media.isEnabled());
}

TEST_F(ControlConstraints, AskTheHostForNothing) {
    populate();
    panel->checkUIConstraints();
    panel->checkConstraints();
    panel->checkModelName();
    panel->setDefaults();
    panel->changeResolutionLetterB();
    panel->toggleShowOption(&disclosure);
    EXPECT_EQ(host.log, Words{});
}

} // namespace
} // namespace framework_tests
