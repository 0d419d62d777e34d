// Every message of the base panel can be sent, reaches its operation and checks its arguments.

#include "framework/panel_inspection.h"
#include "tests/framework/message_table.h"
#include "tests/framework/test_panel.h"

#include <algorithm>

namespace framework_tests {
namespace {

using framework::MessageResult;
using framework::PanelInspection;
using framework::PanelList;
using toolkit::Value;
using toolkit::ValueMap;

class BaseMessages : public testing::Test, public Dialog {
protected:
    MessageResult send(std::string_view name, const MessageList& arguments = {}) {
        return panel->sendMessage(name, arguments);
    }
    /// The value that the message answers; a text that says what went wrong where there is none.
    Value answer(std::string_view name, const MessageList& arguments = {}) {
        const MessageResult result = send(name, arguments);
        if (!result.error.empty() || !result.value)
            return Value("error: " + result.error);
        const auto* value = std::get_if<Value>(&result.value->content);
        return value == nullptr ? Value("error: no plain value") : *value;
    }

    struct Row : MessageRow {
        std::string step; ///< the first operation that it runs; empty where that is no override
    };
    std::vector<Row> rows() {
        const Argument text = {plain("CVMediaType"), plain(7)};
        const Argument view = {modelOf(media), plain("media")};
        const Argument anything = {plain("anything"), std::nullopt};
        const Argument notification = {none(), plain("text")};
        const Argument map = {plain(ValueMap{}), plain("text")};
        return {
            {{"panelName", {}}, "panelName"},
            {{"panelKind", {}}, ""},
            {{"panelView", {}}, ""},
            {{"willShow", {}}, "willShow"},
            {{"shouldHide", {}}, "shouldHide"},
            {{"shouldPrint", {}}, "shouldPrint"},
            {{"saveValuesAndReturnError:", {anything}}, "saveValues"},
            {{"restoreValuesAndReturnError:", {anything}}, "restoreValues"},
            {{"summaryInfo", {}}, "summaryInfo"},
            {{"supportedPPDOptionKeys", {}}, "supportedPPDOptionKeys"},
            {{"PPDOptionKeyValueDidChange:ppdChoice:", {text, {plain("Glossy"), plain(true)}}},
             "didChange CVMediaType=Glossy"},
            {{"shouldShowHelp", {}}, ""},
            {{"thePDEName", {}}, ""},
            {{"setThePDEName:", {text}}, ""},
            {{"outputBin", {}}, ""},
            {{"setOutputBin:", {map}}, ""},
            {{"imageModeFlag", {}}, ""},
            {{"setPPDKeys:", {{{MessageList{plain("CVBiDir")}}, MessageValue{MessageList{plain(7)}}}}}, "setPPDKeys"},
            {{"saveAllValues", {}}, "saveAllValues"},
            {{"requestNewOutputBin:", {view}}, "requestNewOutputBin"},
            {{"revertUI:forKey:", {view, text}}, "revertUI CVMediaType"},
            {{"updateUI", {}}, "updateUI"},
            {{"updateUIforKey:", {text}}, "updateUIforKey CVMediaType"},
            {{"setAndMarkValue:forKey:", {{plain("Glossy"), plain(1.5)}, text}}, "setAndMarkValue CVMediaType=Glossy"},
            {{"getUIValues", {}}, "getUIValues"},
            {{"availablePPDOptionKeys", {}}, "availablePPDOptionKeys"},
            {{"setDefaults", {}}, "setDefaults"},
            {{"initializePopup", {}}, "initializePopup"},
            {{"determineKey:", {view}}, "determineKey"},
            {{"determineUI:", {text}}, "determineUI"},
            {{"determineLabel:", {text}}, "determineLabel"},
            {{"checkConstraints", {}}, "checkConstraints"},
            {{"checkUIConstraints", {}}, "checkUIConstraints"},
            {{"checkModelName", {}}, "checkModelName"},
            {{"changeResolutionLetterB", {}}, "changeResolutionLetterB"},
            {{"optionName", {}}, "optionName"},
            {{"saveOptionState", {}}, "saveOptionState"},
            {{"restoreOptionState", {}}, "restoreOptionState"},
            {{"toggleShowOption:", {{modelOf(disclosure), plain(1)}}}, "toggleShowOption optionButton"},
            {{"adjustUIPosition:forParts:",
              {{plain(1.5), plain("1.5")}, {{MessageList{modelOf(media)}}, MessageValue{MessageList{plain("media")}}}}},
             ""},
            {{"setViewFrameSize:", {{{MessageList{plain(300), plain(200)}}, MessageValue{MessageList{plain(300)}}}}},
             ""},
            {{"dialogDidExpand:", {notification}}, ""},
            {{"changeImage:ofView:", {text, {none(), modelOf(media)}}}, ""},
            {{"checkColorSync", {}}, ""},
            {{"checkFax", {}}, ""},
            {{"registerHelp", {}}, ""},
            {{"helpAnchor", {}}, "helpAnchor"},
            {{"helpBook", {}}, "helpBook"},
            {{"showHelpFile:", {view}}, ""},
            {{"shouldShowAlert:", {text}}, ""},
            {{"alertDidEnd:returnCode:contextInfo:", {{none(), plain("text")}, {plain(1), plain("1")}, text}}, ""},
            {{"removeNotificationObserver:", {notification}}, ""},
        };
    }
};

TEST_F(BaseMessages, AreTheListedOnes) {
    const auto names = PanelInspection({}).messagesOfPanel(*panel);
    Words listed;
    for (const Row& row : rows())
        listed.push_back(row.name);
    EXPECT_EQ(Words(names.begin(), names.end()), listed);
}

TEST_F(BaseMessages, AnswerToTheirArguments) {
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.name);
        const MessageResult result = send(row.name, row.rightArguments());
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(result.value);
    }
}

TEST_F(BaseMessages, ReachTheirOverrides) {
    for (const Row& row : rows()) {
        if (row.step.empty())
            continue;
        SCOPED_TRACE(row.name);
        std::optional<std::string> first;
        panel->onStep = [&](const std::string& step) {
            if (!first)
                first = step;
        };
        send(row.name, row.rightArguments());
        EXPECT_EQ(first, row.step);
    }
}

TEST_F(BaseMessages, RefuseOneArgumentTooMany) {
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.name);
        MessageList arguments = row.rightArguments();
        arguments.push_back(none());
        const auto count = [](std::size_t number) { return std::to_string(number); };
        bool ran = false;
        panel->onStep = [&](const std::string&) { ran = true; };
        const MessageResult result = send(row.name, arguments);
        EXPECT_EQ(result.error, "\"" + row.name + "\" takes " + count(row.arguments.size()) + " argument(s), not " +
                                    count(row.arguments.size() + 1) + ".");
        EXPECT_FALSE(result.value);
        EXPECT_FALSE(ran);
    }
}

TEST_F(BaseMessages, RefuseAnArgumentOfAnotherKind) {
    for (const Row& row : rows())
        for (std::size_t index = 0; index < row.arguments.size(); ++index) {
            if (!row.arguments[index].wrong)
                continue;
            SCOPED_TRACE(row.name + " " + std::to_string(index + 1));
            bool ran = false;
            panel->onStep = [&](const std::string&) { ran = true; };
            const MessageResult result = send(row.name, row.withWrongArgument(index));
            EXPECT_TRUE(result.error.starts_with("\"" + row.name + "\" needs ")) << result.error;
            EXPECT_TRUE(result.error.ends_with(" as argument " + std::to_string(index + 1) + ".")) << result.error;
            EXPECT_FALSE(result.value);
            EXPECT_FALSE(ran);
        }
}

TEST_F(BaseMessages, RefuseATextThatMayNotBeMissing) {
    EXPECT_EQ(send("PPDOptionKeyValueDidChange:ppdChoice:", {plain("CVMediaType")}).error,
              "\"PPDOptionKeyValueDidChange:ppdChoice:\" needs a text as argument 2.");
    EXPECT_EQ(send("PPDOptionKeyValueDidChange:ppdChoice:").error,
              "\"PPDOptionKeyValueDidChange:ppdChoice:\" needs a text as argument 1.");
}

TEST_F(BaseMessages, TakeArgumentsThatAreLeftOutForNull) {
    std::string step;
    panel->onStep = [&](const std::string& name) { step = name; };
    EXPECT_EQ(send("revertUI:forKey:", {modelOf(media)}).error, "");
    EXPECT_EQ(step, "revertUI null");
    EXPECT_EQ(send("toggleShowOption:").error, "");
    EXPECT_EQ(step, "toggleShowOption null");
    EXPECT_EQ(send("restoreValuesAndReturnError:").error, "");
}

TEST_F(BaseMessages, AreNoOthers) {
    for (const char* name : {"", "dealloc", "initWithCallback:", "willshow", "willShow:", "requestNewOutputBin"}) {
        SCOPED_TRACE(name);
        const MessageResult result = send(name);
        EXPECT_EQ(result.error, "There is no operation \"" + std::string(name) + "\".");
        EXPECT_FALSE(result.value);
    }
}

TEST_F(BaseMessages, AnswerWhatTheirOperationsAnswer) {
    panel->imageModeFlag_ = 0x80000001;
    EXPECT_EQ(answer("panelName"), "Test Setting");
    EXPECT_EQ(answer("panelKind"), "com.corvane.print.pde.CocoaCVInkQuality12");
    EXPECT_EQ(answer("thePDEName"), "CVInkQuality12");
    EXPECT_EQ(answer("imageModeFlag"), std::int64_t{0x80000001});
    EXPECT_EQ(answer("shouldHide"), true);
    EXPECT_EQ(answer("outputBin"), panel->outputBin());
    EXPECT_EQ(answer("setAndMarkValue:forKey:", {plain("Glossy"), plain("CVMediaType")}), true);
    EXPECT_EQ(answer("setAndMarkValue:forKey:", {plain("Glossy"), plain("CVMediaType")}), false);
    EXPECT_EQ(answer("determineKey:", {modelOf(media)}), "CVMediaType");
    EXPECT_TRUE(answer("determineKey:", {modelOf(root)}).isAbsent());
    EXPECT_TRUE(answer("determineUI:", {plain("CVJpeg")}).isAbsent());
    EXPECT_TRUE(answer("updateUI").isAbsent()); // it answers nothing
    EXPECT_NE(answer("summaryInfo").as<ValueMap>(), nullptr);
}

TEST_F(BaseMessages, AnswerModelsAndLists) {
    EXPECT_EQ(std::get<toolkit::View*>(send("determineUI:", {plain("CVMediaType")}).value->content), &media);
    EXPECT_EQ(std::get<toolkit::View*>(send("determineLabel:", {plain("CVMediaType")}).value->content), &mediaLabel);
    panel->setPPDKeys(Words{"CVBiDir", "CVMediaType"});
    const auto keys = std::get<MessageList>(send("supportedPPDOptionKeys").value->content);
    ASSERT_EQ(keys.size(), 2U);
    EXPECT_EQ(std::get<Value>(keys[0].content), "CVBiDir");
    EXPECT_EQ(std::get<Value>(keys[1].content), "CVMediaType");
    panel->PPDKeys.reset();
    EXPECT_TRUE(answer("supportedPPDOptionKeys").isAbsent());
}

TEST_F(BaseMessages, LoadTheView) {
    const MessageResult result = send("panelView");
    ASSERT_TRUE(std::holds_alternative<toolkit::View*>(result.value->content));
    EXPECT_EQ(std::get<toolkit::View*>(result.value->content), &panel->loadedViews()->root());
}

TEST_F(BaseMessages, SetFields) {
    send("setThePDEName:", {plain("Other")});
    EXPECT_EQ(panel->thePDEName(), "Other");
    send("setThePDEName:", {none()});
    EXPECT_EQ(panel->thePDEName(), std::nullopt);
    send("setOutputBin:", {plain(ValueMap{{"CVMediaType", "Glossy"}})});
    EXPECT_EQ(panel->outputBin(), (ValueMap{{"CVMediaType", "Glossy"}}));
    send("setOutputBin:", {none()});
    EXPECT_TRUE(panel->outputBin().empty());
    send("setPPDKeys:", {{MessageList{plain("MirrorPrint"), plain("CVBiDir")}}});
    EXPECT_EQ(panel->PPDKeys, (Words{"MirrorPrint", "CVBiDir"}));
    send("setPPDKeys:", {none()});
    EXPECT_EQ(panel->PPDKeys, (Words{"MirrorPrint", "CVBiDir"}));
}

TEST_F(BaseMessages, LayOutThePanel) {
    panel->panelView_ = &root;
    panel->imageModeFlag_ = kImageModePanelShown;
    send("adjustUIPosition:forParts:", {plain(1.5), {MessageList{modelOf(media), none()}}});
    EXPECT_EQ(media.frame().y, 1.5);
    send("setViewFrameSize:", {{MessageList{plain(300), plain(200)}}});
    EXPECT_EQ(root.frame().height, 200);
    EXPECT_EQ(host.takeLog(), Words{"resized"});
    send("dialogDidExpand:", {none()});
    EXPECT_EQ(host.takeLog(), Words{"resized"});
    toolkit::ImageView view("view");
    send("changeImage:ofView:", {plain("NoSuchPicture"), modelOf(view)});
    EXPECT_TRUE(view.isHidden());
    panel->observe("Something", nullptr, &TestPanel::dialogDidExpand);
    send("removeNotificationObserver:", {none()});
    toolkit::NotificationCenter::defaultCenter().post({.name = "Something", .sender = nullptr, .userInfo = {}});
    EXPECT_EQ(host.takeLog(), Words{});
}

TEST_F(BaseMessages, CheckColourAndFax) {
    panel->imageModeFlag_ = 0xFFFFFFFF;
    send("checkColorSync");
    EXPECT_EQ(panel->imageModeFlag(), ~std::uint32_t{kImageModeVendorColorMatching});
    panel->imageModeFlag_ = 0xFFFFFFFF;
    send("checkFax");
    EXPECT_EQ(panel->imageModeFlag(), ~std::uint32_t{kImageModeFaxOutput});
}

TEST_F(BaseMessages, ShowHelpAndRememberAlerts) {
    EXPECT_EQ(answer("registerHelp"), true);
    EXPECT_EQ(host.takeLog().size(), 1U);
    EXPECT_EQ(answer("helpAnchor"), "CvHelpAnchor");
    EXPECT_EQ(answer("helpBook"), "Corvane Print Settings Help");
    panel->imageModeFlag_ = kImageModeHelpRegistered;
    send("showHelpFile:");
    EXPECT_EQ(host.takeLog(), Words{"help CvHelpAnchor in Corvane Print Settings Help"});
    EXPECT_EQ(answer("shouldShowHelp"), false);
    EXPECT_EQ(answer("shouldShowAlert:", {plain("Key")}), true);
    send("alertDidEnd:returnCode:contextInfo:", {plain(ValueMap{{"suppress", true}}), plain(0), plain("Key")});
    EXPECT_EQ(answer("shouldShowAlert:", {plain("Key")}), false);
}

} // namespace
} // namespace framework_tests
