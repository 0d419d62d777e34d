#include "tests/toolkit/bundle_folder.h"
#include "tests/toolkit/form.h"
#include "tests/toolkit/view_observing.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/value_transformer.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using namespace toolkit_tests;

// Gives the disabled colour for what reads true, if it is turned round, else the enabled colour.
class FlagColors : public ValueTransformer {
public:
    explicit FlagColors(bool turned) : turned_(turned) {}
    [[nodiscard]] std::string_view transformedValueClass() const override { return "color"; }
    [[nodiscard]] bool allowsReverseTransformation() const override { return false; }
    [[nodiscard]] TransformedValue transformedValue(const Value& value) const override {
        return value.booleanReading() != turned_ ? TextColor::Enabled : TextColor::Disabled;
    }
    [[nodiscard]] TransformedValue reverseTransformedValue(const Value&) const override { return {}; }

private:
    bool turned_;
};

// Loads a panel of the given controls and looks them up.
class Bindings : public testing::Test {
protected:
    void loadPanel(const std::string& controls) { views = folder.load(form(widget("QWidget", "panelView", controls))); }
    template <typename Model>
    Model& model(const char* name) const {
        return dynamic_cast<Model&>(*views->viewNamed(name));
    }
    void store(Value value, const char* key) const { views->store()->setValueForKey(std::move(value), key); }
    [[nodiscard]] Value stored(const char* key) const { return views->store()->valueForKey(key); }

    BundleFolder folder;
    std::unique_ptr<LoadedViews> views;
};

TEST_F(Bindings, AStoredValueIsShownByEveryControlOfItsKey) {
    loadPanel(widget("QSlider", "redSlider", text("bindValue", "CVRed")) +
              widget("QSpinBox", "redField", text("bindValue", "CVRed")) +
              widget("QSpinBox", "blueField", text("bindValue", "CVBlue")));
    store(Value(-7), "CVRed");
    EXPECT_EQ(model<NumberField>("redSlider").value(), -7);
    EXPECT_EQ(model<NumberField>("redField").value(), -7);
    EXPECT_EQ(model<NumberField>("blueField").value(), 0);
}

TEST_F(Bindings, AFieldShowsTheRealReading) {
    loadPanel(widget("QSpinBox", "redField", text("bindValue", "CVRed")));
    constexpr std::pair<const char*, double> kReadings[] = {{"12.5", 12.5}, {" -3 points", -3}, {"none", 0}};
    for (const auto& [value, reading] : kReadings) {
        SCOPED_TRACE(value);
        store(Value(value), "CVRed");
        EXPECT_EQ(model<NumberField>("redField").value(), reading);
    }
    store(Value(5), "CVRed");
    store(Value(), "CVRed");
    EXPECT_EQ(model<NumberField>("redField").value(), 0);
}

TEST_F(Bindings, WhatTheUserEntersIsStoredAndShownByTheOtherControls) {
    loadPanel(widget("QSlider", "redSlider", text("bindValue", "CVRed")) +
              widget("QDoubleSpinBox", "redField", text("bindValue", "CVRed")));
    model<NumberField>("redSlider").userSetValue(10);
    EXPECT_EQ(stored("CVRed"), Value(10));
    EXPECT_EQ(model<NumberField>("redField").value(), 10);
    model<NumberField>("redField").userSetValue(10.4);
    EXPECT_EQ(stored("CVRed"), Value(10.4));
    EXPECT_EQ(model<NumberField>("redSlider").value(), 10.4);
}

TEST_F(Bindings, TheActionRunsAfterTheValueWasStored) {
    loadPanel(widget("QSlider", "redSlider", text("bindValue", "CVRed")));
    std::vector<Value> seen;
    model<NumberField>("redSlider").setAction([&](Control&) { seen.push_back(stored("CVRed")); });
    model<NumberField>("redSlider").userSetValue(3);
    EXPECT_EQ(seen, std::vector<Value>({Value(3)}));
}

TEST_F(Bindings, AStoredValueRunsNoAction) {
    loadPanel(widget("QSlider", "redSlider", text("bindValue", "CVRed")) +
              widget("QCheckBox", "box", text("bindValue", "Shown")));
    int runs = 0;
    countActions(model<NumberField>("redSlider"), runs);
    countActions(model<CheckBox>("box"), runs);
    store(Value(3), "CVRed");
    store(Value(true), "Shown");
    EXPECT_EQ(runs, 0);
}

TEST_F(Bindings, ACheckBoxFollowsItsKeyAndWritesIt) {
    loadPanel(widget("QToolButton", "optionButton", text("bindValue", "advancedItem")));
    auto& button = model<CheckBox>("optionButton");
    store(Value("YES"), "advancedItem");
    EXPECT_TRUE(button.isOn());
    store(Value(0), "advancedItem");
    EXPECT_FALSE(button.isOn());
    button.userSetOn(true);
    EXPECT_EQ(stored("advancedItem"), Value(true));
}

TEST_F(Bindings, AControlWithoutBindingWritesNothing) {
    loadPanel(widget("QCheckBox", "box") + widget("QSpinBox", "field"));
    model<CheckBox>("box").userSetOn(true);
    model<NumberField>("field").userSetValue(5);
    EXPECT_TRUE(views->store()->entries().empty());
}

TEST_F(Bindings, AControlIsEnabledWhileAllItsKeysAreTrue) {
    loadPanel(widget("QSpinBox", "field", text("bindEnabled", "CVColorEnhancement CVOutput")));
    const auto& field = model<NumberField>("field");
    EXPECT_FALSE(field.isEnabled());
    store(Value(true), "CVColorEnhancement");
    EXPECT_FALSE(field.isEnabled());
    store(Value(1), "CVOutput");
    EXPECT_TRUE(field.isEnabled());
    store(Value("NO"), "CVColorEnhancement");
    EXPECT_FALSE(field.isEnabled());
    store(Value("YES"), "CVColorEnhancement");
    store(Value(), "CVOutput");
    EXPECT_FALSE(field.isEnabled());
}

TEST_F(Bindings, OtherKeysChangeNothing) {
    loadPanel(widget("QSpinBox", "field", text("bindEnabled", "CVOutput")));
    auto& field = model<NumberField>("field");
    field.setEnabled(true);
    store(Value(false), "CVOutputBin");
    EXPECT_TRUE(field.isEnabled());
}

TEST_F(Bindings, ATextIsInTheEnabledColorWhileAllItsKeysAreTrue) {
    loadPanel(widget("QLabel", "label", text("bindTextColor", "CVColorEnhancement CVOutput")) +
              widget("QSpinBox", "field", text("bindTextColor", "CVOutput")));
    const auto& label = model<Label>("label");
    const auto& field = model<NumberField>("field");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    EXPECT_EQ(field.textColor(), TextColor::Disabled);
    store(Value(true), "CVOutput");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    EXPECT_EQ(field.textColor(), TextColor::Enabled);
    store(Value(true), "CVColorEnhancement");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    store(Value(false), "CVOutput");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    EXPECT_EQ(field.textColor(), TextColor::Disabled);
}

TEST_F(Bindings, ATransformerGivesTheColorOfEachKey) {
    ValueTransformer::registerTransformer(std::make_shared<FlagColors>(true), "BindingsTurned");
    loadPanel(widget("QLabel", "label", text("bindTextColor", "a b") + text("textColorTransformer", "BindingsTurned")));
    const auto& label = model<Label>("label");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    store(Value(true), "a");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    store(Value(false), "a");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    store(Value(true), "b");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
}

TEST_F(Bindings, ATransformerThatIsRegisteredLaterServesTheNextWrite) {
    loadPanel(widget("QLabel", "label", text("bindTextColor", "a") + text("textColorTransformer", "BindingsLater")));
    const auto& label = model<Label>("label");
    store(Value(true), "a");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    ValueTransformer::registerTransformer(std::make_shared<FlagColors>(true), "BindingsLater");
    store(Value(true), "a");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
}

TEST_F(Bindings, AReplacedTransformerServesTheNextWrite) {
    ValueTransformer::registerTransformer(std::make_shared<FlagColors>(true), "BindingsReplaced");
    loadPanel(widget("QLabel", "label", text("bindTextColor", "a") + text("textColorTransformer", "BindingsReplaced")));
    const auto& label = model<Label>("label");
    store(Value(true), "a");
    EXPECT_EQ(label.textColor(), TextColor::Disabled);
    ValueTransformer::registerTransformer(std::make_shared<FlagColors>(false), "BindingsReplaced");
    store(Value(true), "a");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
}

TEST_F(Bindings, AStoreMayOutliveItsViews) {
    loadPanel(widget("QSpinBox", "field", text("bindValue", "CVRed") + text("bindEnabled", "CVRed")));
    const std::shared_ptr<KeyValueStore> kept = views->store();
    views.reset();
    kept->setValueForKey(Value(5), "CVRed");
    EXPECT_EQ(kept->valueForKey("CVRed"), Value(5));
}

} // namespace
} // namespace toolkit
