#include "tests/color_settings/color_panel.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

namespace color_settings_tests {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using toolkit::CheckBox;
using toolkit::Label;
using toolkit::Value;

class ColorPanelPopulation : public ColorPanelTest {};

TEST_F(ColorPanelPopulation, FillsTheControlsFromThePrinter) {
    showPanel();
    EXPECT_THAT(model<toolkit::RadioMatrix>("colorMatchingMatrix").cells(), SizeIs(4));
    EXPECT_THAT(model<toolkit::PopUpList>("ditherPopup").items(), SizeIs(2));
    EXPECT_EQ(model<CheckBox>("colorEnhanceButton").title(), "Color Enhancement");
    EXPECT_EQ(model<Label>("colorMatchingLabel").text(), "Color Matching: ");
    EXPECT_EQ(field("popupInited"), Value(true));
}

TEST_F(ColorPanelPopulation, RunsOnce) {
    showPanel();
    model<toolkit::PopUpList>("ditherPopup").removeAllItems();
    model<Label>("redLabel").setText("kept");
    panel->panelView()->setFrame({.width = 520, .height = 300});
    setStored("CVRed", 9);
    setStored("advancedcolorItem", true);
    send("initializePopup");
    panel->willShow();
    EXPECT_THAT(model<toolkit::PopUpList>("ditherPopup").items(), IsEmpty());
    EXPECT_EQ(model<Label>("redLabel").text(), "kept");
    EXPECT_EQ(panel->panelView()->frame().height, 300);
    EXPECT_EQ(stored("CVRed"), Value(9));
    EXPECT_EQ(stored("advancedcolorItem"), Value(true));
}

TEST_F(ColorPanelPopulation, NamesTheAdvancedOptions) {
    useBundle({{"advancedcolorItem", "Erweitert"}}, {});
    showPanel();
    EXPECT_EQ(model<Label>("optionLabel").text(), "Erweitert");
}

TEST_F(ColorPanelPopulation, MakesThePanel110PointsHighAndLeavesItsWidth) {
    makePanelWithView();
    panel->panelView()->setFrame({.x = 3, .y = 4, .width = 432, .height = 321});
    send("initializePopup");
    EXPECT_EQ(panel->panelView()->frame(), (toolkit::Rect{3, 4, 432, 110}));
}

TEST_F(ColorPanelPopulation, ShowsTheTextsOfTheAdjustmentsThatThePrinterHas) {
    useHost(tests::ppdWith(tests::ppdOption("CVContrast", "Kontrast", "0", {"0/0"}) +
                           tests::ppdOption("CVBlue", "Blau", "0", {"0/0"})));
    makePanelWithView();
    for (const char* name : {"brightnessLabel", "contrastLabel", "redLabel", "greenLabel", "blueLabel"})
        model<Label>(name).setText("as it was");
    send("initializePopup");
    EXPECT_EQ(model<Label>("brightnessLabel").text(), "as it was");
    EXPECT_EQ(model<Label>("contrastLabel").text(), "Kontrast");
    EXPECT_EQ(model<Label>("redLabel").text(), "as it was");
    EXPECT_EQ(model<Label>("greenLabel").text(), "as it was");
    EXPECT_EQ(model<Label>("blueLabel").text(), "Blau");
}

TEST_F(ColorPanelPopulation, ShowsTheTextsOfTheAdjustmentsThatAreNotManaged) {
    useBundle({}, {{"PMPPDKeysSupportedColor", toolkit::ValueList{"CVColorMatching"}}});
    showPanel();
    EXPECT_EQ(model<Label>("brightnessLabel").text(), "Brightness");
    EXPECT_EQ(model<Label>("greenLabel").text(), "Green");
}

TEST_F(ColorPanelPopulation, ShowsTranslatedTexts) {
    const std::string ppd = tests::samplePpd("corvane-a3");
    host = std::make_unique<tests::TestHost>(ppd, std::vector<std::string>{"ja", "en"});
    showPanel();
    EXPECT_EQ(model<Label>("brightnessLabel").text(), host->description->option("CVBrightness")->text);
    EXPECT_NE(model<Label>("brightnessLabel").text(), "Brightness");
}

TEST_F(ColorPanelPopulation, DisclosesWhatTheJobHadDisclosedWithThePanelGrownFromItsStartingHeight) {
    makePanelWithView();
    setSetting("com.corvane.print.PrintSettings.advancedcolorItem", true);
    send("initializePopup");
    EXPECT_EQ(stored("advancedcolorItem"), Value(true));
    EXPECT_TRUE(model<CheckBox>("optionButton").isOn());
    EXPECT_EQ(panel->panelView()->frame().height, 110 + 202);
}

TEST_F(ColorPanelPopulation, LeavesTheAdvancedOptionsHiddenInAFreshJob) {
    makePanelWithView();
    setStored("advancedcolorItem", true);
    send("initializePopup");
    EXPECT_EQ(stored("advancedcolorItem"), Value(false));
    EXPECT_EQ(panel->panelView()->frame().height, 110);
}

TEST_F(ColorPanelPopulation, StoresThePendingAdjustmentsAsIntegers) {
    makePanelWithView();
    setPending("CVBrightness", "7 and more");
    setPending("CVContrast", -7.9);
    setPending("CVRed", Value());
    setPending("CVGreen", 25);
    setPending("CVBlue", "none");
    for (const std::string_view key : kAdjustmentKeys)
        setStored(key, "another");
    send("initializePopup");
    EXPECT_EQ(stored("CVBrightness"), Value(7));
    EXPECT_EQ(stored("CVContrast"), Value(-7));
    EXPECT_EQ(stored("CVRed"), Value(0));
    EXPECT_EQ(stored("CVGreen"), Value(25));
    EXPECT_EQ(stored("CVBlue"), Value(0));
}

TEST_F(ColorPanelPopulation, WorksWithoutAView) {
    makePanel();
    send("initializePopup");
    EXPECT_EQ(field("popupInited"), Value(true));
    EXPECT_EQ(field("effectContent"), Value());
}

class ColorPanelShowing : public ColorPanelTest {};

TEST_F(ColorPanelShowing, SetsItsBitAndForgetsTheWindowsHeight) {
    makePanelWithView();
    setStored("frameHeight", 300.0);
    panel->willShow();
    EXPECT_TRUE(hasFlags(kShown));
    EXPECT_EQ(stored("frameHeight"), Value(0.0));
}

TEST_F(ColorPanelShowing, ForgetsTheWindowsHeightEveryTime) {
    showPanel();
    setStored("frameHeight", 300.0);
    panel->willShow();
    EXPECT_EQ(stored("frameHeight"), Value(0.0));
}

TEST_F(ColorPanelShowing, UpdatesTheControls) {
    showPanel();
    setPending("CVColorEnhancement", "ON");
    setPending("CVHalfTonePattern", "Diffusion");
    panel->willShow();
    EXPECT_TRUE(model<CheckBox>("colorEnhanceButton").isOn());
    EXPECT_EQ(model<toolkit::PopUpList>("ditherPopup").selectedKeyword(), "Diffusion");
    EXPECT_EQ(stored("CVColorEnhancement"), Value(true));
}

TEST_F(ColorPanelShowing, DrawsThePreview) {
    showPanel();
    const std::int64_t before = drawn();
    panel->willShow();
    EXPECT_EQ(drawn(), before + 1);
}

TEST_F(ColorPanelShowing, WorksWithoutAView) {
    makePanel();
    panel->willShow();
    EXPECT_TRUE(hasFlags(kShown));
}

TEST_F(ColorPanelShowing, EndsWithHiding) {
    showPanel();
    EXPECT_TRUE(panel->shouldHide());
    EXPECT_FALSE(hasFlags(kShown));
}

} // namespace
} // namespace color_settings_tests
