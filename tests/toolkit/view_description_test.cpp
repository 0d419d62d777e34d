#include "tests/toolkit/bundle_folder.h"
#include "tests/toolkit/form.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

#include <gtest/gtest.h>
#include <regex>
#include <typeinfo>

namespace toolkit {
namespace {

using namespace toolkit_tests;
using Words = std::vector<std::string>;

class ViewDescription : public testing::Test {
protected:
    void load(const std::string& inside) { views = folder.load(form(widget("QWidget", "panelView", inside))); }
    template <typename Model>
    Model& model(const char* name) const {
        return dynamic_cast<Model&>(*views->viewNamed(name));
    }
    [[nodiscard]] Words names() const {
        Words result;
        for (const auto& view : views->views())
            result.push_back(view->name());
        return result;
    }
    BundleFolder folder;
    std::unique_ptr<LoadedViews> views;
};

TEST_F(ViewDescription, EachClassOfWidgetHasItsModel) {
    const struct {
        const char* className;
        const char* kind;
        const std::type_info& model;
    } kKinds[] = {
        {"QComboBox", "", typeid(PopUpList)},
        {"QGroupBox", "matrix", typeid(RadioMatrix)},
        {"QGroupBox", "", typeid(TitledBox)},
        {"QCheckBox", "", typeid(CheckBox)},
        {"QToolButton", "", typeid(CheckBox)},
        {"QPushButton", "", typeid(PushButton)},
        {"QLabel", "image", typeid(ImageView)},
        {"QLabel", "", typeid(Label)},
        {"QSpinBox", "", typeid(NumberField)},
        {"QDoubleSpinBox", "", typeid(NumberField)},
        {"QSlider", "", typeid(NumberField)},
        {"QStackedWidget", "", typeid(TabView)},
        {"QTabWidget", "", typeid(TabView)},
        {"QListView", "", typeid(TableView)},
        {"QListWidget", "", typeid(TableView)},
        {"QDialog", "", typeid(Window)},
        {"QWidget", "", typeid(View)},
        {"QFrame", "", typeid(View)},
        {"Line", "", typeid(View)},
    };
    for (const auto& row : kKinds) {
        SCOPED_TRACE(std::string(row.className) + " " + row.kind);
        load(widget(row.className, "it", *row.kind == '\0' ? "" : text("kind", row.kind)));
        const View& view = *views->viewNamed("it");
        EXPECT_EQ(typeid(view), row.model);
    }
}

TEST_F(ViewDescription, TheRootIsTheOutermostWidget) {
    load(widget("QLabel", "label"));
    EXPECT_EQ(views->root().name(), "panelView");
    EXPECT_EQ(&views->root(), views->viewNamed("panelView"));
}

TEST_F(ViewDescription, ModelsComeInTheOrderOfTheFormFromLayoutsAndFromWidgets) {
    load(widget("QLabel", "first") + grid(widget("QFrame", "area", grid(widget("QComboBox", "inner")))) +
         widget("QCheckBox", "last"));
    EXPECT_EQ(names(), Words({"panelView", "first", "area", "inner", "last"}));
}

TEST_F(ViewDescription, AMissingNameHasNoModel) {
    load(widget("QLabel", "label"));
    EXPECT_EQ(views->viewNamed("Label"), nullptr);
    EXPECT_EQ(views->viewNamed("grid"), nullptr);
}

TEST_F(ViewDescription, ReadsTagAndActionOfAControl) {
    load(widget("QComboBox", "popup", number("tag", 10) + text("action", "requestNewOutputBin:")) +
         widget("QComboBox", "other"));
    EXPECT_EQ(model<Control>("popup").tag(), 10);
    EXPECT_EQ(model<Control>("popup").actionMessage(), "requestNewOutputBin:");
    EXPECT_EQ(model<Control>("other").tag(), 0);
    EXPECT_EQ(model<Control>("other").actionMessage(), "");
}

TEST_F(ViewDescription, HidesWhatIsMarkedAsHidden) {
    load(widget("QComboBox", "hidden", flag("hidden", true)) + widget("QComboBox", "shown", flag("hidden", false)) +
         widget("QComboBox", "plain"));
    EXPECT_TRUE(model<View>("hidden").isHidden());
    EXPECT_FALSE(model<View>("shown").isHidden());
    EXPECT_FALSE(model<View>("plain").isHidden());
}

TEST_F(ViewDescription, TheFrameIsTheModelsOwnAndNotTheWidgets) {
    load(widget("QFrame", "area", rect("geometry", 1, 2, 3, 4) + rect("modelFrame", 20, -5, 480, 110)) +
         widget("QFrame", "plain", rect("geometry", 1, 2, 3, 4)));
    EXPECT_EQ(model<View>("area").frame(), (Rect{.x = 20, .y = -5, .width = 480, .height = 110}));
    EXPECT_EQ(model<View>("plain").frame(), Rect());
}

TEST_F(ViewDescription, AMatrixHasItsRows) {
    load(widget("QGroupBox", "three", text("kind", "matrix") + number("rows", 3)) +
         widget("QGroupBox", "one", text("kind", "matrix")));
    EXPECT_EQ(model<RadioMatrix>("three").cells().size(), 3u);
    EXPECT_EQ(model<RadioMatrix>("one").cells().size(), 1u);
}

TEST_F(ViewDescription, ANumberFieldHasItsLimits) {
    load(widget("QSlider", "slider", number("minimum", -20) + number("maximum", 20)) + widget("QSlider", "plain") +
         widget("QDoubleSpinBox", "real", property("minimum", "<double>-0.5</double>")));
    EXPECT_EQ(model<NumberField>("slider").minimum(), -20);
    EXPECT_EQ(model<NumberField>("slider").maximum(), 20);
    EXPECT_EQ(model<NumberField>("plain").minimum(), 0);
    EXPECT_EQ(model<NumberField>("plain").maximum(), 99);
    EXPECT_EQ(model<NumberField>("real").minimum(), -0.5);
}

TEST_F(ViewDescription, KnowsTheDefaultButton) {
    load(widget("QPushButton", "okButton", flag("default", true)) + widget("QPushButton", "cancelButton"));
    EXPECT_TRUE(model<PushButton>("okButton").isDefault());
    EXPECT_FALSE(model<PushButton>("cancelButton").isDefault());
}

TEST_F(ViewDescription, TextsAreLookedUpByTheirKeys) {
    folder.writeTexts("en", {{"optionsKey", "More Options"}, {"labelKey", "Label"}, {"boxKey", "Box"}});
    load(widget("QCheckBox", "box", text("text", "optionsKey")) + widget("QLabel", "label", text("text", "labelKey")) +
         widget("QGroupBox", "titled", text("title", "boxKey")) + widget("QPushButton", "plain", text("text", "OK")) +
         widget("QPushButton", "empty", property("text", "<string/>")));
    EXPECT_EQ(model<CheckBox>("box").title(), "More Options");
    EXPECT_EQ(model<CheckBox>("box").titleKey(), "optionsKey");
    EXPECT_EQ(model<Label>("label").text(), "Label");
    EXPECT_EQ(model<TitledBox>("titled").title(), "Box");
    EXPECT_EQ(model<PushButton>("plain").title(), "OK");
    EXPECT_EQ(model<PushButton>("empty").title(), "");
    EXPECT_EQ(model<PushButton>("empty").titleKey(), "");
}

TEST_F(ViewDescription, ATableAndTabsFollowTheListThatTheyName) {
    load(text("list", "arrayController") +
         widget("QListView", "table", text("content", "arrayController") + number("columnWidth", 120)) +
         widget("QStackedWidget", "tabs", text("selection", "arrayController")) +
         widget("QListView", "plainTable", text("content", "other")) + widget("QStackedWidget", "plainTabs"));
    auto& list = model<ItemList>("arrayController");
    EXPECT_EQ(model<TableView>("table").content(), &list);
    EXPECT_EQ(model<TableView>("table").columnWidth(), 120);
    EXPECT_EQ(model<TabView>("tabs").selection(), &list);
    EXPECT_EQ(model<TableView>("plainTable").content(), nullptr);
    EXPECT_EQ(model<TabView>("plainTabs").selection(), nullptr);
}

TEST_F(ViewDescription, NamesTheMessageOfAChangedWindowHeight) {
    load(text("resizeAction", "updateImage:"));
    EXPECT_EQ(views->resizeAction(), "updateImage:");
    load("");
    EXPECT_EQ(views->resizeAction(), "");
}

TEST_F(ViewDescription, AWindowHoldsWhatStandsInIt) {
    load(widget("QDialog", "window",
                widget("QLabel", "label") + grid(widget("QFrame", "area", widget("QLabel", "in")))) +
         widget("QLabel", "outside"));
    const auto& window = model<Window>("window");
    EXPECT_TRUE(window.isHidden());
    Words content;
    for (const View* view : window.content())
        content.push_back(view->name());
    EXPECT_EQ(content, Words({"label", "area", "in"}));
}

TEST_F(ViewDescription, CompanionsAreLoadedInOrderAndShareTheStore) {
    folder.writeResource("FirstWindow.ui", form(widget("QDialog", "firstWindow", widget("QLabel", "firstLabel"))));
    folder.writeResource("SecondWindow.ui", form(widget("QDialog", "secondWindow",
                                                        widget("QCheckBox", "secondBox", text("bindValue", "a")))));
    load(text("companions", "FirstWindow SecondWindow") + widget("QCheckBox", "box", text("bindValue", "a")));
    EXPECT_EQ(names(), Words({"panelView", "box", "firstWindow", "firstLabel", "secondWindow", "secondBox"}));
    EXPECT_EQ(views->root().name(), "panelView");
    model<CheckBox>("secondBox").userSetOn(true);
    EXPECT_TRUE(model<CheckBox>("box").isOn());
}

TEST_F(ViewDescription, ACompanionsResizeActionDoesNotClearThePanels) {
    folder.writeResource("Window.ui", form(widget("QDialog", "window")));
    load(text("companions", "Window") + text("resizeAction", "updateImage:"));
    EXPECT_EQ(views->resizeAction(), "updateImage:");
}

TEST_F(ViewDescription, SpacersTabOrderAndConnectionsAreNoModels) {
    views = folder.load(form(widget("QWidget", "panelView",
                                    "<layout class=\"QVBoxLayout\" name=\"column\"><item><spacer name=\"gap\"/></item>"
                                    "</layout><addaction name=\"none\"/>") +
                             "<tabstops><tabstop>panelView</tabstop></tabstops><resources/><connections/>"));
    EXPECT_EQ(names(), Words({"panelView"}));
}

// The forms of the product.
class ProductForms : public testing::Test {
protected:
    ProductForms() {
        for (const auto& entry : std::filesystem::directory_iterator(CV_SOURCE_DIR "/resources/views"))
            folder.writeResource(entry.path().filename(), test_support::contentsOf(entry.path()));
    }
    [[nodiscard]] std::unique_ptr<LoadedViews> loadForm(const char* name) const {
        std::string error;
        auto views = LoadedViews::load(*folder.open(), name, error);
        if (views == nullptr)
            throw std::runtime_error(error);
        return views;
    }
    BundleFolder folder;
};

TEST_F(ProductForms, EveryWidgetHasAModel) {
    const std::pair<const char*, Words> kForms[] = {
        {"CVInkQuality12", {"CVInkQuality12", "envAlertWindow", "normalPaperAlertWindow", "customPaperAlertWindow"}},
        {"CVInkColorSetting", {"CVInkColorSetting"}},
        {"envAlertWindow", {"envAlertWindow"}},
        {"normalPaperAlertWindow", {"normalPaperAlertWindow"}},
        {"customPaperAlertWindow", {"customPaperAlertWindow"}},
    };
    for (const auto& [name, files] : kForms) {
        SCOPED_TRACE(name);
        const auto views = loadForm(name);
        const std::regex kWidget("<widget class=\"[A-Za-z]+\" name=\"([A-Za-z0-9]+)\"");
        for (const std::string& file : files) {
            const std::string form = test_support::contentsOf(CV_SOURCE_DIR "/resources/views/" + file + ".ui");
            for (std::sregex_iterator match(form.begin(), form.end(), kWidget), end; match != end; ++match) {
                SCOPED_TRACE((*match)[1].str());
                EXPECT_NE(views->viewNamed((*match)[1].str()), nullptr);
            }
        }
    }
}

TEST_F(ProductForms, ThePrintSettingsPanelFollowsItsList) {
    const auto views = loadForm("CVInkQuality12");
    auto* list = dynamic_cast<ItemList*>(views->viewNamed("arrayController"));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(dynamic_cast<TableView&>(*views->viewNamed("advancedTableView")).content(), list);
    EXPECT_EQ(dynamic_cast<TabView&>(*views->viewNamed("advancedTabView")).selection(), list);
}

TEST_F(ProductForms, TheAlertWindowsAreHiddenAndHoldTheirButtons) {
    const auto views = loadForm("CVInkQuality12");
    for (const char* name : {"envAlertWindow", "normalPaperAlertWindow", "customPaperAlertWindow"}) {
        SCOPED_TRACE(name);
        const auto& window = dynamic_cast<Window&>(*views->viewNamed(name));
        EXPECT_TRUE(window.isHidden());
        int buttons = 0;
        for (const View* view : window.content())
            buttons += dynamic_cast<const PushButton*>(view) != nullptr ? 1 : 0;
        EXPECT_EQ(buttons, 2);
    }
}

TEST_F(ProductForms, TheColorSettingsPanelFollowsTheWindowsHeight) {
    EXPECT_EQ(loadForm("CVInkColorSetting")->resizeAction(), "updateImage:");
}

TEST(FormForWidgets, LeavesOutWhatIsForModelsAloneAndTheBlanksThatIndent) {
    const std::string given = form(R"(
 <widget class="QWidget" name="panelView">
  )" + text("store", "effectContent") +
                                   R"(
  <property name="toolTip">
   <string> </string>
  </property>
  <widget class="QSlider" name="slider">
   )" + text("action", "setBrightness:") +
                                   number("tag", 5) + R"(
   )" + text("disclosedBy", "optionButton") +
                                   R"(
  </widget>
  <spacer name="spacer">
   )" + property("sizeHint", "<size><width>8</width></size>") +
                                   R"(
  </spacer>
 </widget>
)");
    const std::string left = "<widget class=\"QWidget\" name=\"panelView\">"
                             "<property name=\"toolTip\"><string> </string></property>"
                             "<widget class=\"QSlider\" name=\"slider\">" +
                             text("disclosedBy", "optionButton") + "</widget><spacer name=\"spacer\">" +
                             property("sizeHint", "<size><width>8</width></size>") + "</spacer></widget>";
    const std::string result = formForWidgets(given);
    EXPECT_EQ(result.substr(result.find("<widget")), left + "</ui>");
}

TEST(FormForWidgets, LeavesAWidgetsOwnPropertyOfTheSameName) {
    const std::string own = widget("QTableWidget", "table", "<property name=\"rows\"><number>2</number></property>");
    EXPECT_NE(formForWidgets(form(own)).find(own), std::string::npos);
}

TEST(FormForWidgets, AnswersWhatIsNoXmlAsItIs) {
    EXPECT_EQ(formForWidgets("<ui> <widget"), "<ui> <widget");
}

} // namespace
} // namespace toolkit
