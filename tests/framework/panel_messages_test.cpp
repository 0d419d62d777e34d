// Every message of the two panels can be sent, answers what its operation answers, and checks its arguments.

#include "color_settings/CVInkColorSettingPDE.h"
#include "framework/panel_inspection.h"
#include "print_settings/CVInkPrintSetting12PDE.h"
#include "tests/framework/message_table.h"
#include "tests/support/test_host.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/window.h"

#include <gtest/gtest.h>

namespace framework_tests {
namespace {

using framework::MessageResult;
using framework::PanelInspection;
using tests::TestHost;
using toolkit::Value;

/// The kind of an answer in one word.
std::string kindOf(const MessageResult& result) {
    if (!result.value)
        return "error";
    const auto& content = result.value->content;
    if (std::holds_alternative<toolkit::View*>(content))
        return "model";
    if (std::holds_alternative<MessageList>(content))
        return "list";
    if (std::holds_alternative<imaging::Picture>(content))
        return "picture";
    const auto* value = std::get_if<Value>(&content);
    if (value == nullptr)
        return "other";
    return value->isAbsent()                      ? "nothing"
           : value->as<bool>() != nullptr         ? "Boolean"
           : value->as<std::int64_t>() != nullptr ? "number"
           : value->as<std::string>() != nullptr  ? "text"
                                                  : "other";
}

struct PanelRow : MessageRow {
    std::string answers;
};

class PanelMessages : public testing::Test {
protected:
    TestHost host{tests::samplePpd("corvane-a3")};
    toolkit::PopUpList popup{"popup"};
    toolkit::CheckBox box{"box"};
    toolkit::Label label{"label"};
    toolkit::ImageView imageView{"imageView"};
    toolkit::NumberField field{"field"};
    toolkit::Window window{"window"};
    const MessageValue picture{imaging::Picture(nullptr, "empty")};

    const Argument anyText = {plain("Plain"), plain(7)};
    const Argument text = {plain("text"), none()};
    const Argument flag = {plain(true), plain("YES")};
    const Argument number = {plain(1), plain(1.5)};
    const Argument view = {modelOf(label), plain("label")};
    const Argument notification = {none(), plain("text")};
    const Argument anyPicture = {picture, plain("picture")};

    std::vector<PanelRow> printSettingsRows() {
        const Argument list = {MessageValue{MessageList{plain("Plain")}}, MessageValue{MessageList{plain(1)}}};
        const Argument views = {MessageValue{MessageList{modelOf(label), none()}}, none()};
        const Argument aWindow = {modelOf(window), modelOf(label)};
        return {
            {{"initializeAdvOption:", {views}}, "nothing"},
            {{"addAdvOption:forKey:", {text, text}}, "nothing"},
            {{"setDefaultQuality:", {anyText}}, "nothing"},
            {{"allowedQuality:", {anyText}}, "list"},
            {{"defaultQualityForMediaType:", {anyText}}, "text"},
            {{"canSelectColorMode", {}}, "nothing"},
            {{"canSelectJpegPrint", {}}, "nothing"},
            {{"checkUIStateWithMediaType:", {flag}}, "nothing"},
            {{"addOnOffSuffix:ToString:", {{modelOf(box), modelOf(popup)}, text}}, "text"},
            {{"readPageSetup", {}}, "Boolean"},
            {{"checkPageSizeChange:", {notification}}, "nothing"},
            {{"checkDuplex", {}}, "nothing"},
            {{"checkDuplexChange:", {notification}}, "nothing"},
            {{"paperSizeIsCustomEnv", {}}, "Boolean"},
            {{"checkStateWithPaperFeed", {}}, "nothing"},
            {{"changeState:forArray:toEnable:toDefault:", {{modelOf(popup), modelOf(box)}, list, flag, flag}},
             "nothing"},
            {{"checkPaperAndShowOrientationAlert", {}}, "Boolean"},
            {{"showDialog:withAlertInfo:", {aWindow, anyText}}, "number"},
            {{"dialogOkDidClick:", {view}}, "nothing"},
            {{"dialogCancelDidClick:", {view}}, "nothing"},
            {{"readyToShowEnvelopeAlert", {}}, "nothing"},
            {{"readyToShowPaperAlertWithKind:orientationMessage:alertWindow:alertView:alertImage:alertMessageLabel:",
              {text, text, aWindow, {modelOf(imageView), modelOf(label)}, text, {modelOf(label), modelOf(popup)}}},
             "nothing"},
            {{"firstLanguageSetting", {}}, "text"},
            {{"checkIfOutputToFax", {}}, "Boolean"},
            {{"checkShouldShowDiscAlert", {}}, "Boolean"},
            {{"checkShouldShowDuplexAlert", {}}, "Boolean"},
        };
    }

    std::vector<PanelRow> colorSettingsRows() {
        const Argument brightness = {plain("CVBrightness"), plain(7)};
        return {
            {{"determineField:", {brightness}}, "model"},
            {{"printSettingsNotified:", {notification}}, "nothing"},
            {{"setEffectDefaults", {}}, "nothing"},
            {{"restoreEffectValues", {}}, "nothing"},
            {{"saveEffectValues", {}}, "nothing"},
            {{"revertEffectDialog:", {view}}, "nothing"},
            {{"effectValueDidChange:", {{modelOf(field), modelOf(label)}}}, "nothing"},
            {{"refImage", {}}, "nothing"}, // none was set yet
            {{"setRefImage:", {anyPicture}}, "nothing"},
            {{"setRefImageWithName:", {anyText}}, "nothing"},
            {{"applyColorControlFilter:code:", {anyPicture, number}}, "picture"},
            {{"applyColorMatrixFilter:code:", {anyPicture, number}}, "picture"},
            {{"redrawEffectImage", {}}, "nothing"},
            {{"updateImage:", {view}}, "nothing"},
        };
    }

    struct Class {
        std::string name;
        CVInkQuality12PDEPlugIn::PanelMaker make;
        std::vector<PanelRow> rows;
    };
    std::vector<Class> classes() {
        return {{"Print Settings", makePanel<CVInkPrintSetting12PDE>, printSettingsRows()},
                {"Color Settings", makePanel<CVInkColorSettingPDE>, colorSettingsRows()}};
    }
};

TEST_F(PanelMessages, AreTheListedOnesAndThenTheBases) {
    const PanelInspection inspection({});
    for (const Class& each : classes()) {
        SCOPED_TRACE(each.name);
        const auto panel = each.make(&host);
        const auto names = inspection.messagesOfPanel(*panel);
        ASSERT_GT(names.size(), each.rows.size());
        for (std::size_t index = 0; index < each.rows.size(); ++index)
            EXPECT_EQ(names[index], each.rows[index].name);
        EXPECT_EQ(names[each.rows.size()], "panelName");
        EXPECT_EQ(names.back(), "removeNotificationObserver:");
    }
}

TEST_F(PanelMessages, AnswerWhatTheirOperationsAnswer) {
    for (const Class& each : classes())
        for (const PanelRow& row : each.rows) {
            SCOPED_TRACE(each.name + " " + row.name);
            const auto panel = each.make(&host);
            panel->panelView();
            const MessageResult result = panel->sendMessage(row.name, row.rightArguments());
            EXPECT_EQ(result.error, "");
            EXPECT_EQ(kindOf(result), row.answers);
        }
}

TEST_F(PanelMessages, NeedNoView) {
    for (const Class& each : classes())
        for (const PanelRow& row : each.rows) {
            SCOPED_TRACE(each.name + " " + row.name);
            const auto panel = each.make(&host);
            EXPECT_EQ(panel->sendMessage(row.name, row.rightArguments()).error, "");
        }
}

TEST_F(PanelMessages, RefuseOneArgumentTooMany) {
    for (const Class& each : classes()) {
        const auto panel = each.make(&host);
        for (const PanelRow& row : each.rows) {
            SCOPED_TRACE(each.name + " " + row.name);
            MessageList arguments = row.rightArguments();
            arguments.push_back(none());
            EXPECT_EQ(panel->sendMessage(row.name, arguments).error,
                      "\"" + row.name + "\" takes " + std::to_string(row.arguments.size()) + " argument(s), not " +
                          std::to_string(arguments.size()) + ".");
        }
    }
}

TEST_F(PanelMessages, RefuseAnArgumentOfAnotherKind) {
    for (const Class& each : classes()) {
        const auto panel = each.make(&host);
        for (const PanelRow& row : each.rows)
            for (std::size_t index = 0; index < row.arguments.size(); ++index) {
                SCOPED_TRACE(each.name + " " + row.name + " " + std::to_string(index + 1));
                const MessageResult result = panel->sendMessage(row.name, row.withWrongArgument(index));
                EXPECT_TRUE(result.error.starts_with("\"" + row.name + "\" needs ")) << result.error;
                EXPECT_TRUE(result.error.ends_with(" as argument " + std::to_string(index + 1) + ".")) << result.error;
                EXPECT_FALSE(result.value);
            }
    }
}

TEST_F(PanelMessages, AreTheOwnPanelsOnly) {
    const auto print = makePanel<CVInkPrintSetting12PDE>(&host);
    const auto color = makePanel<CVInkColorSettingPDE>(&host);
    for (const PanelRow& row : printSettingsRows())
        EXPECT_EQ(color->sendMessage(row.name, row.rightArguments()).error,
                  "There is no operation \"" + row.name + "\".");
    for (const PanelRow& row : colorSettingsRows())
        EXPECT_EQ(print->sendMessage(row.name, row.rightArguments()).error,
                  "There is no operation \"" + row.name + "\".");
}

} // namespace
} // namespace framework_tests
