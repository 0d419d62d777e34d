#include "tests/color_settings/color_panel.h"

#include "toolkit/button.h"
#include "toolkit/label.h"

namespace color_settings_tests {
namespace {

using toolkit::Label;
using toolkit::NumberField;
using toolkit::TextColor;
using toolkit::Value;

constexpr const char* kStoreKeys[] = {"CVColorMatching", "CVMonoColor", "CVColorEnhancement", "Color"};

class ColorPanelConstraints : public ColorPanelTest {
protected:
    void setState(bool matching, bool mono, bool enhancement, bool fax) {
        setFlags(kMatching, matching);
        setFlags(kMono, mono);
        setFlags(kFaxOutput, fax);
        setPending("CVColorEnhancement", enhancement ? "ON" : "OFF");
    }
};

TEST_F(ColorPanelConstraints, StoreWhatIsAvailableInEachState) {
    struct Row {
        bool matching, mono, enhancement;
        bool stored[4]; // in the order of kStoreKeys
    };
    const Row rows[] = {
        // matching, mono, enhancement     matching, colour, enhancement, both
        {false, false, false, {false, false, false, false}}, {false, false, true, {false, false, false, false}},
        {false, true, false, {false, false, false, false}},  {false, true, true, {false, false, false, false}},
        {true, false, false, {true, true, false, false}},    {true, false, true, {true, true, true, true}},
        {true, true, false, {true, false, false, false}},    {true, true, true, {true, false, true, false}},
    };
    showPanel();
    for (const Row& row : rows)
        for (const bool before : {false, true}) {
            SCOPED_TRACE(testing::Message() << "matching " << row.matching << ", mono " << row.mono << ", enhancement "
                                            << row.enhancement << ", before " << before);
            setState(row.matching, row.mono, row.enhancement, false);
            for (const char* key : kStoreKeys)
                setStored(key, before);
            send("checkUIConstraints");
            for (std::size_t index = 0; index < 4; ++index)
                EXPECT_EQ(stored(kStoreKeys[index]), Value(row.stored[index])) << kStoreKeys[index];
        }
}

TEST_F(ColorPanelConstraints, OfAFaxStoreOnlyWhetherThereIsColourMatching) {
    showPanel();
    for (const bool matching : {false, true})
        for (const bool before : {false, true}) {
            SCOPED_TRACE(testing::Message() << "matching " << matching << ", before " << before);
            setState(matching, before, !before, true);
            for (const char* key : kStoreKeys)
                setStored(key, before);
            send("checkUIConstraints");
            EXPECT_EQ(stored("CVColorMatching"), Value(matching));
            EXPECT_EQ(stored("CVMonoColor"), Value(before));
            EXPECT_EQ(stored("CVColorEnhancement"), Value(before));
            EXPECT_EQ(stored("Color"), Value(before));
        }
}

TEST_F(ColorPanelConstraints, TakeOnlyTheWordOnForColourEnhancement) {
    showPanel();
    for (const Value& value : {Value("OFF"), Value("on"), Value("True"), Value("ON "), Value(1), Value()}) {
        SCOPED_TRACE(testing::PrintToString(value));
        setPending("CVColorEnhancement", value);
        setStored("CVColorEnhancement", true);
        setStored("Color", true);
        send("checkUIConstraints");
        EXPECT_EQ(stored("CVColorEnhancement"), Value(false));
        EXPECT_EQ(stored("Color"), Value(false));
    }
}

TEST_F(ColorPanelConstraints, GreyEveryModelInItsStates) {
    struct Row {
        const char* what;
        bool matching, mono, enhancement, fax;
        bool options, tones, colors; // enabled: the option controls, brightness and contrast, the three colours
    };
    const Row rows[] = {
        {"colour with enhancement", true, false, true, false, true, true, true},
        {"mono with enhancement", true, true, true, false, true, true, false},
        {"colour without enhancement", true, false, false, false, true, false, false},
        {"mono without enhancement", true, true, false, false, true, false, false},
        {"no colour matching", false, false, true, false, true, false, false},
        {"fax", true, false, true, true, false, false, false},
        {"back from fax", true, false, true, false, true, true, true},
        {"fax without colour matching", false, true, false, true, false, false, false},
        {"back from that fax", true, true, true, false, true, true, false},
    };
    const auto color = [](bool enabled) { return enabled ? TextColor::Enabled : TextColor::Disabled; };
    showPanel();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        setState(row.matching, row.mono, row.enhancement, row.fax);
        send("checkUIConstraints");
        for (const char* name : {"colorMatchingMatrix", "ditherPopup", "colorEnhanceButton"})
            EXPECT_EQ(model<toolkit::Control>(name).isEnabled(), row.options) << name;
        for (const char* name : {"optionLabel", "colorMatchingLabel", "ditherLabel"})
            EXPECT_EQ(model<Label>(name).textColor(), color(row.options)) << name;
        EXPECT_EQ(model<toolkit::Control>("revertButton").isEnabled(), row.tones);
        for (const std::string name : {"brightness", "contrast", "red", "green", "blue"}) {
            const bool enabled = name == "brightness" || name == "contrast" ? row.tones : row.colors;
            EXPECT_EQ(model<Label>(name + "Label").textColor(), color(enabled)) << name;
            EXPECT_EQ(model<NumberField>(name + "Field").textColor(), color(enabled)) << name;
            EXPECT_EQ(model<NumberField>(name + "Field").isEnabled(), enabled) << name;
            EXPECT_EQ(model<NumberField>(name + "Slider").isEnabled(), enabled) << name;
        }
    }
}

TEST_F(ColorPanelConstraints, OfAFaxGreyModelsThatAreBoundToNothing) {
    showPanel();
    Label option("optionLabel"), label("redLabel");
    NumberField brightness("brightnessField"), blue("blueField");
    ASSERT_TRUE(inspection.connectOutlet(*panel, "optionLabel", option));
    ASSERT_TRUE(inspection.connectOutlet(*panel, "redLabel", label));
    ASSERT_TRUE(inspection.connectOutlet(*panel, "brightnessField", brightness));
    ASSERT_TRUE(inspection.connectOutlet(*panel, "blueField", blue));
    setFlags(kFaxOutput, false);
    send("checkUIConstraints");
    EXPECT_EQ(option.textColor(), TextColor::Enabled);
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    EXPECT_EQ(brightness.textColor(), TextColor::Enabled);
    EXPECT_EQ(blue.textColor(), TextColor::Enabled);
    setFlags(kFaxOutput, true);
    send("checkUIConstraints");
    EXPECT_EQ(option.textColor(), TextColor::Disabled);
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    EXPECT_EQ(brightness.textColor(), TextColor::Disabled);
    EXPECT_EQ(blue.textColor(), TextColor::Disabled);
}

TEST_F(ColorPanelConstraints, OfAFaxGreyTheFieldsButNotTheLabelsOfAdjustmentsThatAreNotManaged) {
    useBundle({}, {{"PMPPDKeysSupportedColor", toolkit::ValueList{"CVColorMatching"}}});
    showPanel();
    Label label("redLabel");
    NumberField red("redField");
    ASSERT_TRUE(inspection.connectOutlet(*panel, "redLabel", label));
    ASSERT_TRUE(inspection.connectOutlet(*panel, "redField", red));
    setFlags(kFaxOutput, true);
    send("checkUIConstraints");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    EXPECT_EQ(red.textColor(), TextColor::Disabled);
}

TEST_F(ColorPanelConstraints, ChooseTheReferencePictureOfTheColourMatching) {
    makePanelWithView();
    for (const char* choice : {"Vivid", "Photo", "NONE", "Standard"}) {
        SCOPED_TRACE(choice);
        setPending("CVColorMatching", choice);
        send("checkUIConstraints");
        ASSERT_TRUE(preview().reference);
        EXPECT_EQ(preview().reference->sourceName(), choice);
    }
}

TEST_F(ColorPanelConstraints, ChooseThePictureNoneWithoutColourMatching) {
    useHost(tests::samplePpd("corvane-office"));
    showPanel();
    setPending("CVColorMatching", "Vivid");
    send("checkUIConstraints");
    ASSERT_TRUE(preview().reference);
    EXPECT_EQ(preview().reference->sourceName(), "None");
}

TEST_F(ColorPanelConstraints, NeedNoPendingColourMatchingForThePictureNone) {
    useHost(tests::samplePpd("corvane-office"));
    showPanel();
    setPending("CVColorMatching", Value());
    const std::int64_t before = drawn();
    send("checkUIConstraints");
    EXPECT_EQ(preview().reference->sourceName(), "None");
    EXPECT_EQ(drawn(), before + 1);
}

TEST_F(ColorPanelConstraints, LeaveThePreviewWithoutAPendingColourMatching) {
    showPanel();
    setPending("CVColorMatching", "Vivid");
    send("checkUIConstraints");
    const std::int64_t before = drawn();
    setPending("CVColorMatching", Value());
    send("checkUIConstraints");
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
    EXPECT_EQ(drawn(), before);
}

TEST_F(ColorPanelConstraints, RedrawOnScreenOnly) {
    showPanel();
    std::int64_t before = drawn();
    send("checkUIConstraints");
    EXPECT_EQ(drawn(), before + 1);
    panel->shouldHide();
    before = drawn();
    setPending("CVColorMatching", "Vivid");
    send("checkUIConstraints");
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
}

TEST_F(ColorPanelConstraints, OfAFaxLeaveThePreview) {
    showPanel();
    setPending("CVColorMatching", "Vivid");
    send("checkUIConstraints");
    const std::int64_t before = drawn();
    setFlags(kFaxOutput, true);
    setPending("CVColorMatching", "Photo");
    send("checkUIConstraints");
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
    EXPECT_EQ(drawn(), before);
}

TEST_F(ColorPanelConstraints, WorkWithoutAView) {
    makePanel();
    setPending("CVColorMatching", "Vivid");
    send("checkUIConstraints");
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
    setFlags(kFaxOutput, true);
    setPending("CVColorMatching", "Photo");
    send("checkUIConstraints");
    EXPECT_EQ(preview().reference->sourceName(), "Vivid");
}

} // namespace
} // namespace color_settings_tests
