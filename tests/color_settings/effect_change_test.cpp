#include "tests/color_settings/color_panel.h"

namespace color_settings_tests {
namespace {

using testing::IsEmpty;
using toolkit::NumberField;
using toolkit::Value;
using toolkit::ValueList;

constexpr const char* kFields[] = {"brightnessField", "contrastField", "redField", "greenField", "blueField"};
constexpr const char* kSliders[] = {"brightnessSlider", "contrastSlider", "redSlider", "greenSlider", "blueSlider"};

class AdjustmentChange : public ColorPanelTest {
protected:
    AdjustmentChange() {
        host->description->mark("CVColorEnhancement", "ON");
        showPanel();
    }

    /// A change in a control of this tag that is bound to nothing.
    void change(std::int64_t tag, double value) {
        NumberField control("control");
        control.setTag(tag);
        control.setValue(value);
        send("effectValueDidChange:", {{&control}});
    }
};

TEST_F(AdjustmentChange, IsRememberedWithItsTag) {
    for (std::size_t tag = 0; tag < std::size(kFields); ++tag) {
        SCOPED_TRACE(kFields[tag]);
        model<NumberField>(kFields[tag]).userSetValue(3);
        EXPECT_EQ(lastChange(), Value(ValueList{static_cast<int>(tag), 3}));
        model<NumberField>(kSliders[tag]).userSetValue(-4);
        EXPECT_EQ(lastChange(), Value(ValueList{static_cast<int>(tag), -4}));
    }
}

TEST_F(AdjustmentChange, ShowsInEveryControlOfTheValue) {
    for (std::size_t index = 0; index < std::size(kFields); ++index) {
        SCOPED_TRACE(kFields[index]);
        model<NumberField>(kSliders[index]).userSetValue(7.9);
        EXPECT_EQ(model<NumberField>(kSliders[index]).value(), 7);
        EXPECT_EQ(model<NumberField>(kFields[index]).value(), 7);
        model<NumberField>(kFields[index]).userSetValue(-7);
        EXPECT_EQ(model<NumberField>(kSliders[index]).value(), -7);
    }
}

TEST_F(AdjustmentChange, RedrawsOnce) {
    const std::int64_t before = drawn();
    model<NumberField>("contrastField").userSetValue(3);
    EXPECT_EQ(drawn(), before + 1);
    model<NumberField>("blueField").userSetValue(3);
    EXPECT_EQ(drawn(), before + 2);
}

TEST_F(AdjustmentChange, ToZeroRedrawsWhereItIsTheFirst) {
    const std::int64_t before = drawn();
    change(0, 0);
    EXPECT_EQ(drawn(), before + 1);
    EXPECT_EQ(lastChange(), Value(ValueList{0, 0}));
}

TEST_F(AdjustmentChange, ToTheSameWholeValueDoesNothingTheSecondTime) {
    change(1, 10);
    const std::int64_t before = drawn();
    setStored("CVContrast", 3.5);
    change(1, 10);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(stored("CVContrast"), Value(3.5));
}

TEST_F(AdjustmentChange, OfAnotherControlWithTheSameValueRedraws) {
    change(1, 10);
    const std::int64_t before = drawn();
    change(2, 10);
    EXPECT_EQ(drawn(), before + 1);
    change(1, 10);
    EXPECT_EQ(drawn(), before + 2);
}

TEST_F(AdjustmentChange, ByAFractionRedrawsEveryTimeAndIsRememberedAsAnInteger) {
    change(0, 10);
    const std::int64_t before = drawn();
    change(0, 10.4);
    EXPECT_EQ(drawn(), before + 1);
    EXPECT_EQ(lastChange(), Value(ValueList{0, 10}));
    change(0, 10.4);
    EXPECT_EQ(drawn(), before + 2);
    change(0, 10);
    EXPECT_EQ(drawn(), before + 2);
    change(0, -7.9);
    EXPECT_EQ(lastChange(), Value(ValueList{0, -7}));
}

TEST_F(AdjustmentChange, IsComparedInSinglePrecision) {
    change(0, 16777217); // as a single-precision number it is 16777216
    EXPECT_EQ(lastChange(), Value(ValueList{0, 16777217}));
    const std::int64_t before = drawn();
    change(0, 16777216);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(lastChange(), Value(ValueList{0, 16777217}));
}

TEST_F(AdjustmentChange, WithATagAboveFourIsRememberedAndNoMore) {
    const std::int64_t before = drawn();
    const Value content = field("effectContent");
    const framework::PreviewState state = preview();
    for (const std::int64_t tag : {std::int64_t{5}, std::int64_t{6}, std::int64_t{1} << 40}) {
        change(tag, 3);
        EXPECT_EQ(lastChange(), Value(ValueList{tag, 3}));
    }
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(field("effectContent"), content);
    EXPECT_EQ(preview().colorControls, state.colorControls);
    EXPECT_EQ(preview().colorMatrix, state.colorMatrix);
}

TEST_F(AdjustmentChange, WithANegativeTagAppliesBrightnessAndContrastAndLeavesTheStore) {
    for (const std::int64_t tag : {std::int64_t{-1}, std::int64_t{-7}, -(std::int64_t{1} << 40)}) {
        SCOPED_TRACE(tag);
        setStored("CVBrightness", 10.5);
        setStored("CVContrast", -10.5);
        setStored("CVRed", 10.5);
        const imaging::ColorMatrix matrix = preview().colorMatrix;
        const std::int64_t before = drawn();
        change(tag, 3);
        EXPECT_EQ(drawn(), before + 1);
        EXPECT_EQ(lastChange(), Value(ValueList{tag, 3}));
        EXPECT_EQ(preview().colorControls, (imaging::ColorControls{.brightness = 0.05F, .contrast = 0.9375F}));
        EXPECT_EQ(preview().colorMatrix, matrix);
        EXPECT_EQ(stored("CVBrightness"), Value(10.5));
        EXPECT_EQ(stored("CVContrast"), Value(-10.5));
        EXPECT_EQ(stored("CVRed"), Value(10.5));
    }
}

TEST_F(AdjustmentChange, ToZeroOfANegativeTagIsNoChangeAtFirst) {
    const std::int64_t before = drawn();
    change(-1, 0);
    EXPECT_EQ(drawn(), before);
}

TEST_F(AdjustmentChange, MakesItsOwnValueWhole) {
    struct Row {
        Value stored, ofTones, ofColors; // brightness and contrast become reals, red, green and blue integers
    };
    const Row rows[] = {
        {7.9, 7.0, 7},          {-7.9, -7.0, -7},  {7, 7.0, 7},     {25, 25.0, 25},
        {"12 or so", 12.0, 12}, {Value(), 0.0, 0}, {"abc", 0.0, 0}, {16777217, 16777216.0, 16777217},
    };
    double next = 1; // the value of the control only has to be another one each time
    for (std::size_t tag = 0; tag < kAdjustmentKeys.size(); ++tag)
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::Message() << kAdjustmentKeys[tag] << ' ' << testing::PrintToString(row.stored));
            for (const std::string_view key : kAdjustmentKeys)
                setStored(key, row.stored);
            change(static_cast<std::int64_t>(tag), next++);
            for (std::size_t index = 0; index < kAdjustmentKeys.size(); ++index)
                EXPECT_EQ(stored(kAdjustmentKeys[index]), index != tag ? row.stored
                                                          : tag < 2    ? row.ofTones
                                                                       : row.ofColors)
                    << kAdjustmentKeys[index];
        }
}

TEST_F(AdjustmentChange, IsNotSavedByItself) {
    model<NumberField>("redField").userSetValue(9);
    EXPECT_EQ(pending("CVRed"), Value(0));
    EXPECT_EQ(setting(kSettingKeys[2]), "0");
    EXPECT_THAT(host->log, IsEmpty());
}

TEST_F(AdjustmentChange, WithoutASenderCountsAsBrightnessOfZero) {
    const std::int64_t before = drawn();
    setStored("CVBrightness", 7.5);
    send("effectValueDidChange:", {{Value()}});
    EXPECT_EQ(drawn(), before + 1);
    EXPECT_EQ(lastChange(), Value(ValueList{0, 0}));
    EXPECT_EQ(stored("CVBrightness"), Value(7.0));
    send("effectValueDidChange:", {{Value()}});
    EXPECT_EQ(drawn(), before + 1);
}

TEST_F(AdjustmentChange, IsRememberedForAllPanelsOfTheProcess) {
    const auto first = panel;
    tests::TestHost otherHost(tests::samplePpd("corvane-a3"));
    const auto other = std::make_shared<CVInkColorSettingPDE>();
    ASSERT_TRUE(other->initWithCallback(&otherHost));
    change(3, 5);
    EXPECT_EQ(toolkit::valueInMap(inspection.fieldsOfPanel(*other), "effectVal"), Value(ValueList{3, 5}));
    NumberField control("control");
    control.setTag(3);
    control.setValue(5);
    const framework::MessageValue argument{&control};
    other->sendMessage("effectValueDidChange:", {&argument, 1});
    EXPECT_FALSE(inspection.previewOfPanel(*other)->shown);
    EXPECT_EQ(inspection.previewOfPanel(*other)->colorMatrix, imaging::ColorMatrix());
}

TEST_F(AdjustmentChange, NeedsNoView) {
    makePanel();
    change(0, 5);
    change(2, 5);
    EXPECT_EQ(preview().colorControls, imaging::ColorControls());
    EXPECT_EQ(preview().colorMatrix, imaging::ColorMatrix());
    EXPECT_EQ(lastChange(), Value(ValueList{2, 5}));
}

} // namespace
} // namespace color_settings_tests
