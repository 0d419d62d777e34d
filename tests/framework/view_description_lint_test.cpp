// Holds the view descriptions against the fields and messages of the panels that load them.

#include "color_settings/CVInkColorSettingPDE.h"
#include "framework/panel_inspection.h"
#include "print_settings/CVInkPrintSetting12PDE.h"
#include "tests/framework/scratch_bundle.h"
#include "tests/support/test_host.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/window.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <typeinfo>

namespace framework_tests {
namespace {

using framework::PanelInspection;
using framework::PanelList;
using tests::TestHost;
using Words = std::vector<std::string>;

constexpr std::string_view kPrintDialog = CVInkQuality12PDEPlugIn::kPrintDialogPanelType;

/// The two panels, with the view descriptions of this bundle loaded. In Japanese every binding holds.
struct Panels {
    explicit Panels(const std::shared_ptr<toolkit::Bundle>& bundle = nullptr) {
        if (bundle != nullptr)
            host.bundle = bundle;
        CVInkQuality12PDEPlugIn factory({makePanel<CVInkPrintSetting12PDE>, makePanel<CVInkColorSettingPDE>});
        panels = factory.PDEPanelsForTypeWithHostInfo(kPrintDialog, &host);
        for (const auto& panel : panels)
            if (panel->panelView() == nullptr)
                throw std::runtime_error("a panel has no view");
    }

    TestHost host{tests::samplePpd("corvane-a3"), {"ja"}};
    PanelList panels;
};

const PanelInspection& inspection() {
    static const PanelInspection itself({});
    return itself;
}

bool contains(const std::vector<std::string_view>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

toolkit::View* viewAnsweredBy(CVPrintQualityPDE& panel, std::string_view message, const std::string& key) {
    const framework::MessageValue argument{toolkit::Value(key)};
    const auto result = panel.sendMessage(message, {&argument, 1});
    auto* const* view = result.value ? std::get_if<toolkit::View*>(&result.value->content) : nullptr;
    return view == nullptr ? nullptr : *view;
}

Words managedKeys(CVPrintQualityPDE& panel) {
    Words keys;
    for (const char* entry : {"PMPPDKeysSupported", "PMPPDKeysSupportedColor"}) {
        std::string error;
        const auto bundle =
            toolkit::Bundle::open(std::string(CV_BINARY_DIR) + "/PlugIns/CVInkQuality12.plugin", {}, error);
        for (const auto& key : *toolkit::valueInMap(bundle->infoDictionary(), entry).as<toolkit::ValueList>())
            if (viewAnsweredBy(panel, "determineUI:", key.textReading()) != nullptr)
                keys.push_back(key.textReading());
    }
    return keys;
}

// The rules. Each answers what is wrong, a sentence for each fault.

Words actionsAreMessages(CVPrintQualityPDE& panel) {
    Words faults;
    const auto messages = inspection().messagesOfPanel(panel);
    const auto check = [&](const std::string& name, const std::string& action) {
        if (!action.empty() && (!contains(messages, action) || framework::argumentsInName(action) != 1))
            faults.push_back(name + " sends \"" + action + "\"");
    };
    for (const auto& view : panel.loadedViews()->views())
        if (const auto* control = dynamic_cast<const toolkit::Control*>(view.get()))
            check(control->name(), control->actionMessage());
    check(panel.loadedViews()->root().name(), panel.loadedViews()->resizeAction());
    return faults;
}

Words fieldsHaveModelsOfTheirKind(CVPrintQualityPDE& panel) {
    Words faults;
    for (const std::string_view name : inspection().outletsOfPanel(panel)) {
        toolkit::View* const view = panel.loadedViews()->viewNamed(name);
        if (view == nullptr)
            faults.push_back(std::string(name) + " has no model");
        else if (!inspection().connectOutlet(panel, name, *view))
            faults.push_back(std::string(name) + " is of another kind");
    }
    return faults;
}

Words modelsAreFieldsOrTheDescriptionsOwn(CVPrintQualityPDE& panel) {
    Words faults;
    const auto outlets = inspection().outletsOfPanel(panel);
    for (const auto& view : panel.loadedViews()->views()) {
        const toolkit::View& model = *view;
        const bool isContainer = typeid(model) == typeid(toolkit::View);
        const bool isOwn =
            model.name() == "helpButton" || model.name() == "revertButton" || model.name().ends_with("Slider");
        if (!contains(outlets, model.name()) && !isContainer && !isOwn)
            faults.push_back(model.name() + " is no field");
    }
    return faults;
}

Words controlsOfOptionsWaitHidden(CVPrintQualityPDE& panel) {
    Words faults;
    for (const std::string& key : managedKeys(panel)) {
        const toolkit::View* control = viewAnsweredBy(panel, "determineUI:", key);
        if (!control->isHidden())
            faults.push_back(control->name() + " is shown at once");
        const toolkit::View* label = viewAnsweredBy(panel, "determineLabel:", key);
        if (dynamic_cast<const toolkit::PopUpList*>(control) != nullptr && label != nullptr && !label->isHidden())
            faults.push_back(label->name() + " is shown at once");
    }
    return faults;
}

Words controlsOfOptionsSendTheirChange(CVPrintQualityPDE& panel) {
    Words faults;
    for (const std::string& key : managedKeys(panel)) {
        const auto* control = dynamic_cast<const toolkit::Control*>(viewAnsweredBy(panel, "determineUI:", key));
        if (control == nullptr || control->actionMessage() != "requestNewOutputBin:")
            faults.push_back(key + " does not send its change");
    }
    return faults;
}

Words buttonsSendTheirMessages(CVPrintQualityPDE& panel) {
    Words faults;
    for (const auto& [name, message] :
         {std::pair("optionButton", "toggleShowOption:"), {"helpButton", "showHelpFile:"}}) {
        const auto* button = dynamic_cast<const toolkit::Button*>(panel.loadedViews()->viewNamed(name));
        if (button == nullptr || button->actionMessage() != message)
            faults.push_back(std::string(name) + " does not send " + message);
    }
    return faults;
}

Words disclosureFollowsTheStore(CVPrintQualityPDE& panel) {
    const auto result = panel.sendMessage("optionName", {});
    const std::string key = std::get<toolkit::Value>(result.value->content).textReading();
    const auto* button = dynamic_cast<const toolkit::CheckBox*>(panel.loadedViews()->viewNamed("optionButton"));
    for (const bool shown : {true, false}) {
        panel.loadedViews()->store()->setValueForKey(shown, key);
        if (button == nullptr || button->isOn() != shown)
            return {"optionButton does not follow " + key};
    }
    return {};
}

Words labelsAreThereForPopUps(CVPrintQualityPDE& panel) {
    Words faults;
    for (const std::string& key : managedKeys(panel))
        if (dynamic_cast<toolkit::PopUpList*>(viewAnsweredBy(panel, "determineUI:", key)) != nullptr &&
            dynamic_cast<toolkit::Label*>(viewAnsweredBy(panel, "determineLabel:", key)) == nullptr)
            faults.push_back(key + " has no label");
    return faults;
}

Words windowsWaitHidden(CVPrintQualityPDE& panel) {
    Words faults;
    for (const auto& view : panel.loadedViews()->views())
        if (dynamic_cast<const toolkit::Window*>(view.get()) != nullptr && !view->isHidden())
            faults.push_back(view->name() + " is shown at once");
    return faults;
}

using Rule = Words (*)(CVPrintQualityPDE& panel);
const std::pair<const char*, Rule> kRules[] = {
    {"actionsAreMessages", actionsAreMessages},
    {"fieldsHaveModelsOfTheirKind", fieldsHaveModelsOfTheirKind},
    {"modelsAreFieldsOrTheDescriptionsOwn", modelsAreFieldsOrTheDescriptionsOwn},
    {"controlsOfOptionsWaitHidden", controlsOfOptionsWaitHidden},
    {"controlsOfOptionsSendTheirChange", controlsOfOptionsSendTheirChange},
    {"buttonsSendTheirMessages", buttonsSendTheirMessages},
    {"disclosureFollowsTheStore", disclosureFollowsTheStore},
    {"labelsAreThereForPopUps", labelsAreThereForPopUps},
    {"windowsWaitHidden", windowsWaitHidden},
};

TEST(ViewDescriptions, FollowEveryRule) {
    Panels panels;
    ASSERT_EQ(panels.panels.size(), 2U);
    for (const auto& panel : panels.panels)
        for (const auto& [name, rule] : kRules) {
            SCOPED_TRACE(panel->panelName() + " " + name);
            EXPECT_EQ(rule(*panel), Words{});
        }
}

TEST(ViewDescriptions, AreAllLoadedByAPanel) {
    Panels panels;
    std::set<std::string> loaded, described;
    for (const auto& panel : panels.panels) {
        loaded.insert(*panel->thePDEName());
        for (const auto& view : panel->loadedViews()->views())
            if (dynamic_cast<const toolkit::Window*>(view.get()) != nullptr)
                loaded.insert(view->name());
    }
    for (const auto& file : std::filesystem::directory_iterator(std::string(CV_SOURCE_DIR) + "/resources/views"))
        described.insert(file.path().stem().string());
    EXPECT_EQ(loaded, described);
}

TEST(ViewDescriptions, GiveEveryManagedOptionAControlButTheAdjustments) {
    Panels panels;
    EXPECT_EQ(
        managedKeys(*panels.panels.at(0)),
        (Words{"CVMediaType", "CVResolution", "CVColorPaperThick", "CVInputSlot", "CVMonoColor", "CVSlowDrying",
               "CVBiDir", "MirrorPrint", "CVMirror", "CVReverse", "CVJpeg", "CVDuplexMode", "CVVertLineAlignA3B4Ledger",
               "CVVertLineAlignA4Letter", "CVVertLineAlignOther", "CVVertLineAlignDedicated"}));
    EXPECT_EQ(managedKeys(*panels.panels.at(1)), (Words{"CVColorMatching", "CVHalfTonePattern", "CVColorEnhancement"}));
}

/// The descriptions with one text of theirs replaced.
class FaultyDescription : public testing::Test {
protected:
    enum Panel { Print = 0, Color = 1 };

    /// What the rule finds in the panel's descriptions with the first `sound` replaced by `faulty`.
    Words findingsOf(Rule rule, Panel which, const std::string& sound, const std::string& faulty) {
        const ScratchBundle files;
        const std::string views = std::string(CV_SOURCE_DIR) + "/resources/views";
        bool replaced = false;
        for (const auto& file : std::filesystem::directory_iterator(views)) {
            std::ifstream stream(file.path());
            std::string text(std::istreambuf_iterator<char>(stream), {});
            const bool isColor = file.path().stem() == "CVInkColorSetting";
            const std::size_t position =
                isColor == (which == Color) && !replaced ? text.find(sound) : std::string::npos;
            if (position != std::string::npos) {
                text.replace(position, sound.size(), faulty);
                replaced = true;
            }
            files.writeResource(file.path().filename().string(), text);
        }
        if (!replaced)
            throw std::runtime_error("no description holds " + sound);
        const toolkit::ValueMap info = {{"CFBundleName", "CVInkQuality12"}};
        Panels panels(files.open({.languages = {}, .localize = false, .strings = {}, .info = info, .removedInfo = {}}));
        return rule(*panels.panels.at(which));
    }
};

TEST_F(FaultyDescription, IsFound) {
    const std::string hidden = "<property name=\"hidden\" stdset=\"0\">\n        <bool>true</bool>";
    const struct {
        Rule rule;
        Panel panel;
        std::string sound, faulty;
        Words findings;
    } rows[] = {
        {actionsAreMessages, Color, "showHelpFile:", "showHelpfile:", {"helpButton sends \"showHelpfile:\""}},
        {actionsAreMessages, Color, "updateImage:", "redrawImage:", {"panelView sends \"redrawImage:\""}},
        {actionsAreMessages, Color, "showHelpFile:", "willShow", {"helpButton sends \"willShow\""}},
        {actionsAreMessages,
         Print,
         "showHelpFile:",
         "effectValueDidChange:",
         {"helpButton sends \"effectValueDidChange:\""}}, // the other panel's
        {fieldsHaveModelsOfTheirKind,
         Print,
         "name=\"biDirButton\"",
         "name=\"bidirButton\"",
         {"biDirButton has no model"}},
        {fieldsHaveModelsOfTheirKind,
         Print,
         "class=\"QCheckBox\" name=\"biDirButton\"",
         "class=\"QPushButton\" name=\"biDirButton\"",
         {"biDirButton is of another kind"}},
        {fieldsHaveModelsOfTheirKind,
         Print,
         "name=\"envAlertSummary\"",
         "name=\"envSummary\"",
         {"envAlertSummary has no model"}},
        {modelsAreFieldsOrTheDescriptionsOwn,
         Print,
         "name=\"biDirButton\"",
         "name=\"bidirButton\"",
         {"bidirButton is no field"}},
        {modelsAreFieldsOrTheDescriptionsOwn,
         Color,
         "name=\"brightnessSlider\"",
         "name=\"brightnessKnob\"",
         {"brightnessKnob is no field"}},
        {controlsOfOptionsWaitHidden,
         Print,
         "name=\"mediaTypePopup\"",
         "name=\"mediaTypePopup\"><property name=\"hidden\"><bool>false</bool></property",
         {"mediaTypePopup is shown at once"}},
        {controlsOfOptionsWaitHidden,
         Print,
         "name=\"mediaTypeLabel\"",
         "name=\"mediaTypeLabel\"><property name=\"hidden\"><bool>false</bool></property",
         {"mediaTypeLabel is shown at once"}},
        {controlsOfOptionsSendTheirChange,
         Print,
         "requestNewOutputBin:",
         "toggleShowOption:",
         {"CVMediaType does not send its change"}},
        {buttonsSendTheirMessages,
         Print,
         "toggleShowOption:",
         "showHelpFile:",
         {"optionButton does not send toggleShowOption:"}},
        {buttonsSendTheirMessages,
         Color,
         "name=\"helpButton\"",
         "name=\"aidButton\"",
         {"helpButton does not send showHelpFile:"}},
        {disclosureFollowsTheStore,
         Color,
         "advancedcolorItem",
         "advancedItem",
         {"optionButton does not follow advancedcolorItem"}},
        {labelsAreThereForPopUps,
         Color,
         "name=\"ditherLabel\"",
         "name=\"ditherText\"",
         {"CVHalfTonePattern has no label"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.faulty);
        EXPECT_EQ(findingsOf(row.rule, row.panel, row.sound, row.faulty), row.findings);
    }
}

} // namespace
} // namespace framework_tests
