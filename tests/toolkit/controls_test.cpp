#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/window.h"

#include "tests/toolkit/view_observing.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using toolkit_tests::ChangeCounter;
using toolkit_tests::countActions;
using Words = std::vector<std::string>;

TEST(ViewModel, StartsShownWithAnEmptyFrame) {
    const View view("panelView");
    EXPECT_EQ(view.name(), "panelView");
    EXPECT_FALSE(view.isHidden());
    EXPECT_EQ(view.frame(), Rect());
}

TEST(ViewModel, TellsChangesAndNothingElse) {
    View view("panelView");
    ChangeCounter changes(view);
    view.setHidden(true);
    EXPECT_EQ(changes.takeCount(), 1);
    view.setHidden(true);
    EXPECT_EQ(changes.takeCount(), 0);
    view.setFrame({.x = 1, .y = 2, .width = 3, .height = 4});
    EXPECT_EQ(changes.takeCount(), 1);
    view.setFrame({.x = 1, .y = 2, .width = 3, .height = 4});
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST(ViewModel, AnObserverMayLeaveWhileAChangeIsTold) {
    View view("panelView");
    ChangeCounter first(view), second(view), third(view);
    first.meanwhile = [&](View& told) {
        told.removeObserver(first);
        told.removeObserver(second);
    };
    view.setHidden(true);
    EXPECT_EQ(first.takeCount(), 1);
    EXPECT_EQ(second.takeCount(), 0);
    EXPECT_EQ(third.takeCount(), 1);
}

TEST(ViewModel, AnObserverThatLeftHearsNothing) {
    View view("panelView");
    ChangeCounter observer(view);
    view.removeObserver(observer);
    view.setHidden(true);
    EXPECT_EQ(observer.takeCount(), 0);
}

TEST(ControlModel, StartsEnabledWithoutTagAndMessage) {
    const PushButton button("helpButton");
    EXPECT_TRUE(button.isEnabled());
    EXPECT_EQ(button.tag(), 0);
    EXPECT_EQ(button.actionMessage(), "");
}

TEST(ControlModel, TellsThatItWasDisabled) {
    PushButton button("helpButton");
    ChangeCounter changes(button);
    button.setEnabled(false);
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(changes.takeCount(), 1);
    button.setEnabled(false);
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST(ControlModel, AnActionMayReplaceItself) {
    PushButton button("helpButton");
    Words runs;
    button.setAction([&, text = std::string("a text that is too long to be kept in place")](Control& sender) {
        sender.setAction({});
        runs.push_back(text);
    });
    button.userPressed();
    button.userPressed();
    EXPECT_EQ(runs, Words({"a text that is too long to be kept in place"}));
}

TEST(ButtonModel, ATitleMayKnowItsKey) {
    PushButton button("okButton");
    button.setTitle(LocalizedText{.key = "OK", .text = "Accept"});
    EXPECT_EQ(button.title(), "Accept");
    EXPECT_EQ(button.titleKey(), "OK");
    button.setTitle(std::string("Plain"));
    EXPECT_EQ(button.title(), "Plain");
    EXPECT_EQ(button.titleKey(), "");
}

TEST(ButtonModel, TellsANewTitleOnly) {
    PushButton button("okButton");
    ChangeCounter changes(button);
    button.setTitle(std::string("OK"));
    EXPECT_EQ(changes.takeCount(), 1);
    button.setTitle(std::string("OK"));
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST(PushButtonModel, PressingRunsTheActionOnceWithTheButtonAsSender) {
    PushButton button("okButton");
    std::vector<Control*> senders;
    button.setAction([&](Control& sender) { senders.push_back(&sender); });
    button.userPressed();
    EXPECT_EQ(senders, std::vector<Control*>({&button}));
}

// A bound check box whose binding and action write down what they are given.
class CheckBoxModel : public testing::Test {
protected:
    CheckBoxModel() {
        box.setValueWriter([this](const Value& value) {
            log.push_back("write " + value.textReading() + (value.as<bool>() != nullptr ? " flag" : ""));
        });
        box.setAction([this](Control&) { log.push_back("act " + std::to_string(box.state())); });
    }
    CheckBox box{"optionButton"};
    Words log;
};

TEST_F(CheckBoxModel, StartsOff) {
    EXPECT_EQ(box.state(), 0);
    EXPECT_FALSE(box.isOn());
}

TEST_F(CheckBoxModel, SetByProgramNeitherWritesNorActs) {
    box.setOn(true);
    EXPECT_EQ(box.state(), 1);
    EXPECT_TRUE(box.isOn());
    EXPECT_EQ(log, Words());
}

TEST_F(CheckBoxModel, SetThroughTheBindingWritesAndDoesNotAct) {
    box.setOnThroughBinding(true);
    EXPECT_TRUE(box.isOn());
    EXPECT_EQ(log, Words({"write 1 flag"}));
}

TEST_F(CheckBoxModel, TheUserChangesThenWritesThenActsOnce) {
    box.userSetOn(true);
    EXPECT_EQ(log, Words({"write 1 flag", "act 1"}));
}

TEST_F(CheckBoxModel, TheUserActsEvenIfItStoodSoAlready) {
    box.userSetOn(false);
    EXPECT_EQ(log, Words({"write 0 flag", "act 0"}));
}

TEST_F(CheckBoxModel, TellsChangesOnly) {
    ChangeCounter changes(box);
    box.setOn(true);
    EXPECT_EQ(changes.takeCount(), 1);
    box.setOn(true);
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST_F(CheckBoxModel, WorksWithoutBindingAndAction) {
    CheckBox loose("looseBox");
    loose.userSetOn(true);
    EXPECT_TRUE(loose.isOn());
}

// A bound field whose binding and action write down what they are given.
class NumberFieldModel : public testing::Test {
protected:
    NumberFieldModel() {
        field.setValueWriter([this](const Value& value) { written.push_back(value); });
        countActions(field, actions);
    }
    NumberField field{"redField"};
    std::vector<Value> written;
    int actions = 0;
};

TEST_F(NumberFieldModel, SetByProgramNeitherWritesNorActs) {
    field.setValue(12.5);
    EXPECT_EQ(field.value(), 12.5);
    EXPECT_TRUE(written.empty());
    EXPECT_EQ(actions, 0);
}

TEST_F(NumberFieldModel, SetByProgramIsNotLimited) {
    field.setLimits(-20, 20);
    field.setValue(25);
    EXPECT_EQ(field.value(), 25);
    EXPECT_EQ(field.minimum(), -20);
    EXPECT_EQ(field.maximum(), 20);
}

TEST_F(NumberFieldModel, AWholeNumberIsWrittenAsAnInteger) {
    for (const double number : {10.0, -20.0, 0.0, -0.0}) {
        SCOPED_TRACE(number);
        written.clear();
        field.setValueThroughBinding(number);
        EXPECT_EQ(written, std::vector<Value>({Value(static_cast<int>(number))}));
    }
    EXPECT_EQ(actions, 0);
}

TEST_F(NumberFieldModel, AFractionIsWrittenAsAReal) {
    for (const double number : {10.4, -0.5}) {
        SCOPED_TRACE(number);
        written.clear();
        field.setValueThroughBinding(number);
        EXPECT_EQ(written, std::vector<Value>({Value(number)}));
    }
}

TEST_F(NumberFieldModel, TheUserWritesThenActsOnce) {
    std::size_t writtenBefore = 0;
    double seen = 0;
    field.setAction([&](Control&) {
        ++actions;
        writtenBefore = written.size();
        seen = field.value();
    });
    field.userSetValue(5);
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(writtenBefore, 1u);
    EXPECT_EQ(seen, 5);
}

TEST_F(NumberFieldModel, TheUserActsEvenIfTheNumberStoodThereAlready) {
    field.setValue(5);
    field.userSetValue(5);
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(written.size(), 1u);
}

TEST_F(NumberFieldModel, IntegerValueIsCutTowardZero) {
    field.setValue(7.9);
    EXPECT_EQ(field.integerValue(), 7);
    field.setValue(-7.9);
    EXPECT_EQ(field.integerValue(), -7);
}

TEST_F(NumberFieldModel, SingleValueHasSinglePrecision) {
    field.setValue(0.1);
    EXPECT_EQ(field.singleValue(), 0.1F);
}

TEST_F(NumberFieldModel, TellsChangesOnly) {
    ChangeCounter changes(field);
    field.setValue(1);
    EXPECT_EQ(changes.takeCount(), 1);
    field.setValue(1);
    EXPECT_EQ(changes.takeCount(), 0);
    field.setTextColor(TextColor::Disabled);
    EXPECT_EQ(changes.takeCount(), 1);
    field.setTextColor(TextColor::Disabled);
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST(LabelModel, TellsChangesOfTextAndColor) {
    Label label("mediaTypeLabel");
    EXPECT_EQ(label.textColor(), TextColor::Enabled);
    ChangeCounter changes(label);
    label.setText("Media Type: ");
    label.setTextColor(TextColor::Disabled);
    EXPECT_EQ(changes.takeCount(), 2);
    label.setText("Media Type: ");
    label.setTextColor(TextColor::Disabled);
    EXPECT_EQ(changes.takeCount(), 0);
    EXPECT_EQ(label.text(), "Media Type: ");
}

TEST(TitledBoxModel, TellsANewTitle) {
    TitledBox box("qualityBox");
    ChangeCounter changes(box);
    box.setTitle("Quality");
    EXPECT_EQ(box.title(), "Quality");
    EXPECT_EQ(changes.takeCount(), 1);
}

Image pictureNamed(const char* name, int width = 0) {
    Image picture;
    picture.name = name;
    picture.width = width;
    return picture;
}

TEST(ImageViewModel, EveryPictureCountsAnEqualOneToo) {
    ImageView view("effectImageView");
    ChangeCounter changes(view);
    view.setImage(pictureNamed("Plain"));
    view.setImage(pictureNamed("Plain"));
    EXPECT_EQ(view.imageCount(), 2);
    EXPECT_EQ(changes.takeCount(), 2);
}

TEST(ImageViewModel, APictureCanBeTakenAway) {
    ImageView view("effectImageView");
    view.setImage(pictureNamed("Plain"));
    view.setImage(std::nullopt);
    EXPECT_FALSE(view.image().has_value());
    EXPECT_EQ(view.imageCount(), 2);
}

TEST(ImageViewModel, RenamingKeepsThePictureAndIsNoNewOne) {
    ImageView view("effectImageView");
    view.setImage(pictureNamed("Plain", 3));
    ChangeCounter changes(view);
    view.renameImage("None");
    ASSERT_TRUE(view.image().has_value());
    EXPECT_EQ(view.image()->name, "None");
    EXPECT_EQ(view.image()->width, 3);
    EXPECT_EQ(view.imageCount(), 1);
    EXPECT_EQ(changes.takeCount(), 1);
}

TEST(ImageViewModel, RenamingNoPictureDoesNothing) {
    ImageView view("effectImageView");
    ChangeCounter changes(view);
    view.renameImage("None");
    EXPECT_FALSE(view.image().has_value());
    EXPECT_EQ(changes.takeCount(), 0);
}

TEST(ImageViewModel, DrawsAtOnceWhenTold) {
    ImageView view("effectImageView");
    ChangeCounter changes(view);
    view.displayNow();
    EXPECT_EQ(changes.takeCount(), 1);
    EXPECT_EQ(view.imageCount(), 0);
}

TEST(WindowModel, IsHiddenUntilItIsShown) {
    Window window("envAlertWindow");
    EXPECT_TRUE(window.isHidden());
    window.setHidden(false);
    EXPECT_FALSE(window.isHidden());
}

TEST(WindowModel, KeepsItsContentInOrder) {
    Window window("envAlertWindow");
    Label label("text");
    PushButton button("okButton");
    window.addContent(label);
    window.addContent(button);
    EXPECT_EQ(window.content(), std::vector<View*>({&label, &button}));
}

TEST(WindowModel, TellsTitleAndDisplay) {
    Window window("envAlertWindow");
    ChangeCounter changes(window);
    window.setTitle("Envelope");
    EXPECT_EQ(window.title(), "Envelope");
    EXPECT_EQ(changes.takeCount(), 1);
    window.display();
    EXPECT_EQ(changes.takeCount(), 1);
}

} // namespace
} // namespace toolkit
