#include "tests/color_settings/color_panel.h"

#include "toolkit/button.h"
#include "toolkit/label.h"

namespace color_settings_tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using toolkit::Value;
using toolkit::ValueList;

class ColorPanelOptions : public ColorPanelTest {
protected:
    /// The name of the model that an operation answers for a keyword; empty where it answers none.
    std::string modelFor(std::string_view operation, const Value& keyword) {
        const framework::MessageValue result = send(operation, {{keyword}});
        toolkit::View* const* view = std::get_if<toolkit::View*>(&result.content);
        return view == nullptr ? "" : (*view)->name();
    }
    Value keyOf(std::string_view modelName) {
        return sendForValue("determineKey:", {{panel->loadedViews()->viewNamed(modelName)}});
    }
};

struct BindingRow {
    const char* keyword;
    const char* control;
    const char* label;
    const char* field;
};
constexpr BindingRow kBindings[] = {
    // keyword, control, label, field; empty where there is none
    {"CVColorMatching", "colorMatchingMatrix", "colorMatchingLabel", ""},
    {"CVHalfTonePattern", "ditherPopup", "ditherLabel", ""},
    {"CVColorEnhancement", "colorEnhanceButton", "", ""},
    {"CVBrightness", "", "brightnessLabel", "brightnessField"},
    {"CVContrast", "", "contrastLabel", "contrastField"},
    {"CVRed", "", "redLabel", "redField"},
    {"CVGreen", "", "greenLabel", "greenField"},
    {"CVBlue", "", "blueLabel", "blueField"},
};

TEST_F(ColorPanelOptions, HaveTheirControlsLabelsAndFields) {
    makePanelWithView();
    for (const BindingRow& row : kBindings) {
        SCOPED_TRACE(row.keyword);
        EXPECT_EQ(modelFor("determineUI:", row.keyword), row.control);
        EXPECT_EQ(modelFor("determineLabel:", row.keyword), row.label);
        EXPECT_EQ(modelFor("determineField:", row.keyword), row.field);
    }
}

TEST_F(ColorPanelOptions, AreFoundByTheirControls) {
    makePanelWithView();
    EXPECT_EQ(keyOf("colorMatchingMatrix"), Value("CVColorMatching"));
    EXPECT_EQ(keyOf("ditherPopup"), Value("CVHalfTonePattern"));
    EXPECT_EQ(keyOf("colorEnhanceButton"), Value("CVColorEnhancement"));
}

TEST_F(ColorPanelOptions, AreNotFoundByOtherModels) {
    makePanelWithView();
    for (const char* name : {"brightnessField", "redSlider", "ditherLabel", "optionButton", "effectImageView"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(keyOf(name), Value());
    }
    EXPECT_EQ(sendForValue("determineKey:", {{Value()}}), Value());
}

TEST_F(ColorPanelOptions, AreComparedWithCaseAndInWhole) {
    makePanelWithView();
    for (const Value& keyword : {Value("CVSlowDrying"), Value("cvred"), Value("CVRed "), Value("CVRe"),
                                 Value("CVColorMatching1"), Value(""), Value()}) {
        SCOPED_TRACE(keyword.textReading());
        EXPECT_EQ(modelFor("determineUI:", keyword), "");
        EXPECT_EQ(modelFor("determineLabel:", keyword), "");
        EXPECT_EQ(modelFor("determineField:", keyword), "");
    }
}

TEST_F(ColorPanelOptions, HaveNoModelsBeforeTheViewIsLoaded) {
    makePanel();
    for (const BindingRow& row : kBindings) {
        SCOPED_TRACE(row.keyword);
        EXPECT_EQ(modelFor("determineUI:", row.keyword), "");
        EXPECT_EQ(modelFor("determineLabel:", row.keyword), "");
        EXPECT_EQ(modelFor("determineField:", row.keyword), "");
    }
}

TEST_F(ColorPanelOptions, OfferedDependOnColourMatchingAndTheColourMode) {
    struct Row {
        bool matching, mono;
        ValueList offered;
    };
    const Row rows[] = {
        {false, false, {"CVMediaType"}},
        {false, true, {"CVMediaType"}},
        {true, false, {"CVColorMatching", "CVMediaType", "CVHalfTonePattern", "CVColorEnhancement", "CVSlowDrying"}},
        {true, true, {"CVMediaType", "CVHalfTonePattern", "CVColorEnhancement", "CVSlowDrying"}},
    };
    useBundle({}, {{"PMPPDKeysSupportedColor",
                    ValueList{"CVBlue", "CVColorMatching", "CVMediaType", "CVBrightness", "CVHalfTonePattern",
                              "CVContrast", "CVColorEnhancement", "CVRed", "CVSlowDrying", "CVGreen"}}});
    makePanel();
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "matching " << row.matching << ", mono " << row.mono);
        setFlags(kMatching, row.matching);
        setFlags(kMono, row.mono);
        const framework::MessageValue result = send("availablePPDOptionKeys");
        ValueList offered;
        for (const framework::MessageValue& key : std::get<framework::MessageList>(result.content))
            offered.push_back(std::get<Value>(key.content));
        EXPECT_EQ(Value(offered), Value(row.offered));
    }
}

TEST_F(ColorPanelOptions, OfferedLeaveTheManagedKeysAsTheyAre) {
    makePanel();
    const Value managed = field("PPDKeys");
    setFlags(kMatching, false);
    send("availablePPDOptionKeys");
    EXPECT_EQ(field("PPDKeys"), managed);
}

TEST_F(ColorPanelOptions, OfferedAreNoneWithoutManagedKeys) {
    useBundle({}, {}, {"PMPPDKeysSupportedColor"});
    makePanel();
    EXPECT_EQ(sendForValue("availablePPDOptionKeys"), Value());
}

TEST_F(ColorPanelOptions, AreUnderTheLocalisedTitleOfThePanel) {
    useBundle({{"Color Setting", "Farbe"}}, {});
    makePanel();
    EXPECT_EQ(panel->panelName(), "Farbe");
    useBundle({}, {});
    makePanel();
    EXPECT_EQ(panel->panelName(), "Color Setting");
}

TEST_F(ColorPanelOptions, AreExplainedInTheirOwnHelpBook) {
    makePanel();
    EXPECT_EQ(sendForValue("helpBook"), Value("Corvane Color Settings Help"));
}

TEST_F(ColorPanelOptions, HaveNoDefaultsOfTheirOwn) {
    showPanel();
    const toolkit::ValueMap before = panel->outputBin();
    send("setDefaults");
    EXPECT_EQ(panel->outputBin(), before);
    EXPECT_THAT(host->log, IsEmpty());
}

TEST_F(ColorPanelOptions, AreRestoredFromTheMarks) {
    host->description->mark("CVColorMatching", "Vivid");
    makePanel();
    EXPECT_TRUE(panel->restoreValuesAndReturnError());
    EXPECT_EQ(pending("CVColorMatching"), Value("Vivid"));
}

TEST_F(ColorPanelOptions, FollowWhatTheHostMarks) {
    showPanel();
    panel->PPDOptionKeyValueDidChangePpdChoice("CVColorEnhancement", "ON");
    EXPECT_EQ(pending("CVColorEnhancement"), Value("ON"));
    EXPECT_TRUE(model<toolkit::CheckBox>("colorEnhanceButton").isOn());
}

TEST_F(ColorPanelOptions, AreAskedForWhenTheUserChooses) {
    showPanel();
    model<toolkit::CheckBox>("colorEnhanceButton").userSetOn(true);
    EXPECT_THAT(host->log, ElementsAre("ask CVColorEnhancement=ON"));
    EXPECT_EQ(pending("CVColorEnhancement"), Value("ON"));
}

class Disclosure : public ColorPanelTest {
protected:
    toolkit::Rect frame() { return panel->panelView()->frame(); }
};

TEST_F(Disclosure, GrowsThePanelBy202PointsAndShrinksItAgain) {
    showPanel();
    panel->panelView()->setFrame({.x = 1, .y = 2, .width = 500, .height = 77.5});
    model<toolkit::CheckBox>("optionButton").userSetOn(true);
    EXPECT_EQ(frame(), (toolkit::Rect{1, 2, 500, 279.5}));
    model<toolkit::CheckBox>("optionButton").userSetOn(false);
    EXPECT_EQ(frame(), (toolkit::Rect{1, 2, 500, 77.5}));
}

TEST_F(Disclosure, GoesByTheSendersState) {
    showPanel();
    toolkit::CheckBox sender("sender");
    sender.setOn(true);
    send("toggleShowOption:", {{&sender}});
    EXPECT_EQ(frame().height, 110 + 202);
    sender.setOn(false);
    send("toggleShowOption:", {{&sender}});
    EXPECT_EQ(frame().height, 110);
}

TEST_F(Disclosure, ShrinksThePanelWithoutASender) {
    showPanel();
    send("toggleShowOption:", {{Value()}});
    EXPECT_EQ(frame().height, 110 - 202);
}

TEST_F(Disclosure, TellsTheHost) {
    showPanel();
    model<toolkit::CheckBox>("optionButton").userSetOn(true);
    EXPECT_THAT(host->log, ElementsAre("resized"));
}

TEST_F(Disclosure, CountsAMissingViewAsAZeroFrame) {
    makePanel();
    setFlags(kShown, true);
    toolkit::CheckBox sender("sender");
    sender.setOn(true);
    host->window.setFrame({.width = 640, .height = 202 + 96}); // the host is told later where this little is left
    send("toggleShowOption:", {{&sender}});
    EXPECT_THAT(host->takeLog(), IsEmpty());
    host->window.setFrame({.width = 640, .height = 202 + 97});
    send("toggleShowOption:", {{&sender}});
    EXPECT_THAT(host->takeLog(), ElementsAre("resized"));
}

} // namespace
} // namespace color_settings_tests
