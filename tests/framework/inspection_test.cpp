// What tests and the scripted host see of a panel.

#include "framework/panel_inspection.h"
#include "tests/framework/message_table.h"
#include "tests/framework/test_panel.h"

#include <algorithm>

namespace framework_tests {
namespace {

using framework::PanelInspection;
using toolkit::Value;
using toolkit::ValueList;
using toolkit::ValueMap;

std::int64_t lengthOfText(const framework::TextReceiver& receiver, const std::optional<std::string>& suffix) {
    return static_cast<std::int64_t>((receiver.text.value_or("") + suffix.value_or("")).size());
}
constexpr framework::TextMessage kTextMessages[] = {
    {"lengthWith:", [](const framework::TextReceiver& receiver, std::span<const MessageValue> arguments) {
         return framework::callWithArguments<Value, std::optional<std::string>>(
             arguments, [&](const auto& suffix) { return Value(lengthOfText(receiver, suffix)); });
     }}};

class Inspection : public testing::Test, public Dialog {
protected:
    bool set(std::string_view field, const std::string& key, const Value& value) {
        error.clear();
        return inspection.setFieldOfPanel(*panel, field, key, value, error);
    }

    const PanelInspection inspection{kTextMessages};
    std::string error;
};

TEST_F(Inspection, ShowsTheFields) {
    panel->setPPDKeys(Words{"CVBiDir", "CVMediaType"});
    panel->outputBin_ = {{"CVBiDir", "ON"}};
    panel->imageModeFlag_ = 0x80000200;
    panel->paperName = "A4";
    panel->popupInited = true;
    panel->effectContent->setValueForKey(true, "advancedItem");
    EXPECT_EQ(inspection.fieldsOfPanel(*panel), (ValueMap{{"thePDEName", "CVInkQuality12"},
                                                          {"PPDKeys", ValueList{"CVBiDir", "CVMediaType"}},
                                                          {"outputBin", ValueMap{{"CVBiDir", "ON"}}},
                                                          {"imageModeFlag", std::int64_t{0x80000200}},
                                                          {"paperName", "A4"},
                                                          {"popupInited", true},
                                                          {"effectContent", ValueMap{{"advancedItem", true}}}}));
}

TEST_F(Inspection, ShowsWhatIsNotThereAsAbsent) {
    panel->PPDKeys.reset();
    panel->effectContent.reset();
    panel->setThePDEName(std::nullopt);
    const ValueMap fields = inspection.fieldsOfPanel(*panel);
    for (const char* name : {"PPDKeys", "effectContent", "thePDEName", "paperName"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(fields.contains(name));
        EXPECT_TRUE(toolkit::valueInMap(fields, name).isAbsent());
    }
}

TEST_F(Inspection, SetsTheFieldsThatCanBeSet) {
    panel->tellsSteps = true;
    EXPECT_TRUE(set("imageModeFlag", "", std::int64_t{0xFFFFFFFF}));
    EXPECT_EQ(panel->imageModeFlag(), 0xFFFFFFFF);
    EXPECT_TRUE(set("paperName", "", "A4"));
    EXPECT_EQ(panel->paperName, "A4");
    EXPECT_TRUE(set("paperName", "", {}));
    EXPECT_EQ(panel->paperName, std::nullopt);
    EXPECT_TRUE(set("outputBin", "CVMediaType", "Matte"));
    EXPECT_EQ(pending("CVMediaType"), "Matte");
    EXPECT_TRUE(set("outputBin", "CVMediaType", {}));
    EXPECT_FALSE(panel->outputBin().contains("CVMediaType"));
    EXPECT_TRUE(set("effectContent", "CVOutput", false));
    EXPECT_EQ(panel->effectContent->valueForKey("CVOutput"), false);
    EXPECT_TRUE(set("effectContent", "CVOutput", {}));
    EXPECT_TRUE(panel->effectContent->entries().empty());
    EXPECT_EQ(host.log, Words{}); // nothing was asked and nothing run
}

TEST_F(Inspection, SaysWhyAFieldIsNotSet) {
    struct {
        const char* field;
        Value value;
        const char* error;
    } const rows[] = {
        {"imageModeFlag", "1", "\"imageModeFlag\" is a whole number of 32 bits."},
        {"imageModeFlag", -1, "\"imageModeFlag\" is a whole number of 32 bits."},
        {"imageModeFlag", std::int64_t{0x100000000}, "\"imageModeFlag\" is a whole number of 32 bits."},
        {"imageModeFlag", Value(), "\"imageModeFlag\" is a whole number of 32 bits."},
        {"paperName", 4, "\"paperName\" is a text or null."},
        {"PPDKeys", ValueList{}, "There is no field \"PPDKeys\" that can be set."},
        {"", "text", "There is no field \"\" that can be set."},
    };
    const ValueMap before = inspection.fieldsOfPanel(*panel);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.field);
        EXPECT_FALSE(set(row.field, "key", row.value));
        EXPECT_EQ(error, row.error);
    }
    EXPECT_EQ(inspection.fieldsOfPanel(*panel), before);
    panel->effectContent.reset();
    EXPECT_FALSE(set("effectContent", "key", true));
    EXPECT_EQ(error, "There is no \"effectContent\" before the panel's view is made.");
}

TEST_F(Inspection, HasNoPreviewOfABasePanel) {
    EXPECT_FALSE(inspection.previewOfPanel(*panel));
}

TEST_F(Inspection, ListsOutletsOfTheClassBeforeThoseOfItsBase) {
    const auto outlets = inspection.outletsOfPanel(*panel);
    EXPECT_EQ(Words(outlets.begin(), outlets.end()), (Words{"mediaPopup", "matchingMatrix", "optionButton"}));
}

TEST_F(Inspection, ConnectsAModelToTheFieldOfItsKind) {
    panel->optionButton = nullptr;
    EXPECT_TRUE(inspection.connectOutlet(*panel, "mediaPopup", media));
    EXPECT_EQ(panel->mediaPopup, &media);
    EXPECT_TRUE(inspection.connectOutlet(*panel, "optionButton", disclosure));
    EXPECT_EQ(panel->optionButton, &disclosure);
    EXPECT_FALSE(inspection.connectOutlet(*panel, "mediaPopup", matching));
    EXPECT_EQ(panel->mediaPopup, &media);
    EXPECT_FALSE(inspection.connectOutlet(*panel, "noSuchField", media));
}

TEST_F(Inspection, SendsTheFactorysMessages) {
    CVInkQuality12PDEPlugIn factory({makePanel<TestPanel>, makePanel<TestPanel>});
    const MessageList dialogType = {plain("BDB091F4-E57F-11D3-B5CC-0050E4603277"), none()};
    const auto panels = inspection.sendToFactory(factory, &host, "PDEPanelsForType:withHostInfo:", dialogType);
    ASSERT_TRUE(panels.value) << panels.error;
    EXPECT_EQ(std::get<framework::PanelList>(panels.value->content).size(), 2U);
    const auto others = inspection.sendToFactory(factory, &host, "PDEPanelsForType:withHostInfo:", {});
    EXPECT_TRUE(std::get<framework::PanelList>(others.value->content).empty());
    const auto accepted = inspection.sendToFactory(factory, nullptr, "initWithBundle:", {});
    EXPECT_EQ(std::get<Value>(accepted.value->content), true);
    EXPECT_EQ(inspection.sendToFactory(factory, &host, "panelName", {}).error, "There is no operation \"panelName\".");
    const MessageList wrong = {plain(7)};
    EXPECT_EQ(inspection.sendToFactory(factory, &host, "PDEPanelsForType:withHostInfo:", wrong).error,
              "\"PDEPanelsForType:withHostInfo:\" needs a text or null as argument 1.");
}

TEST_F(Inspection, SendsMessagesToATextAndToAMissingOne) {
    const framework::TextReceiver receiver{"text", host.measurer}, missing{std::nullopt, host.measurer};
    const MessageList suffix = {plain("12")};
    EXPECT_EQ(std::get<Value>(inspection.sendToText(receiver, "lengthWith:", suffix).value->content), 6);
    EXPECT_EQ(std::get<Value>(inspection.sendToText(missing, "lengthWith:", suffix).value->content), 2);
    EXPECT_EQ(inspection.sendToText(receiver, "width", {}).error, "There is no operation \"width\".");
}

} // namespace
} // namespace framework_tests
