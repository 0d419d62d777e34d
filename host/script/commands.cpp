// What each command does.

#include "host/script/script_error.h"
#include "host/script/script_host.h"

#include "framework/option_keywords.h"
#include "host/jobs/folder_submission.h"
#include "host/jobs/queue_submission.h"
#include "imaging/png.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/json_values.h"
#include "toolkit/menu.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"
#include "toolkit/value_transformer.h"
#include "toolkit/window.h"

#include <algorithm>
#include <cmath>
#include <fstream>

namespace host {
namespace {

toolkit::Value valueFromJson(const Json& json) {
    return toolkit::valueFromJson(nlohmann::json(json));
}

Json jsonFromMap(const toolkit::ValueMap& map) {
    return Json(toolkit::jsonFromValue(map));
}

// A panel's alert windows are hidden while they are not run.
bool standsInHiddenWindow(const toolkit::LoadedViews& views, const toolkit::View& control) {
    return std::ranges::any_of(views.views(), [&](const auto& view) {
        const auto* window = dynamic_cast<const toolkit::Window*>(view.get());
        return window != nullptr && window->isHidden() &&
               std::ranges::find(window->content(), &control) != window->content().end();
    });
}

Json jsonFromSetting(const printing::SettingValue& value) {
    return std::visit([](const auto& content) { return Json(content); }, value);
}

} // namespace

template <typename Kind>
Kind& ScriptHost::usableControl(const CommandReader& command) {
    const std::string name = command.text("control");
    auto* found = dynamic_cast<Kind*>(&control(panel(command), name));
    if (found == nullptr)
        throw ScriptError("The control \"" + name + "\" is of another kind than this command needs.");
    if (found->isHidden() || standsInHiddenWindow(*panel(command).loadedViews(), *found))
        throw ScriptError("The control \"" + name + "\" is hidden.");
    if (!found->isEnabled())
        throw ScriptError("The control \"" + name + "\" is disabled.");
    return *found;
}

void ScriptHost::open(const CommandReader& command, Json& answer) {
    const std::string name = command.textOrNone("session").value_or("main");
    auto opened = std::make_unique<Dialog>(command, defaultBundle_, makeUser_());
    dialogs_.erase(name); // what stands under the name ends before the new panels are made
    opened->begin();
    answer["panels"] = opened->panelsInWords();
    dialogs_.insert_or_assign(name, std::move(opened));
}

void ScriptHost::view(const CommandReader& command, Json&) {
    if (panel(command).panelView() == nullptr)
        throw ScriptError("The panel's view description cannot be loaded.");
}

void ScriptHost::show(const CommandReader& command, Json&) {
    if (!dialog(command).user().showPanel(dialog(command).session(), panel(command)))
        throw ScriptError("The panel's view description cannot be loaded.");
}

void ScriptHost::hide(const CommandReader& command, Json& answer) {
    answer["hide"] = panel(command).shouldHide();
}

void ScriptHost::choose(const CommandReader& command, Json&) {
    const std::string choice = command.text("choice");
    auto& view = usableControl<toolkit::Control>(command);
    ScriptUser& user = dialog(command).user();
    const auto missing = [&] {
        return ScriptError("The control \"" + command.text("control") + "\" offers no \"" + choice + "\".");
    };
    if (auto* popup = dynamic_cast<toolkit::PopUpList*>(&view)) {
        const int index = popup->indexOfItemWithKeyword(choice);
        if (index < 0)
            throw missing();
        if (!popup->items()[static_cast<std::size_t>(index)].enabled)
            throw ScriptError("The item \"" + choice + "\" is disabled.");
        user.pickItem(*popup, index);
    } else if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(&view)) {
        const int row = matrix->rowWithKeyword(choice);
        if (row < 0)
            throw missing();
        user.pickRow(*matrix, row);
    } else if (auto* table = dynamic_cast<toolkit::TableView*>(&view)) {
        const int index = table->content() == nullptr ? -1 : table->content()->indexOfId(choice);
        if (index < 0)
            throw missing();
        user.pickEntry(*table, index);
    } else {
        throw ScriptError("The control \"" + command.text("control") + "\" has nothing to choose from.");
    }
}

void ScriptHost::check(const CommandReader& command, Json&) {
    dialog(command).user().setOn(usableControl<toolkit::CheckBox>(command), command.boolean("on", false));
}

void ScriptHost::press(const CommandReader& command, Json&) {
    dialog(command).user().press(usableControl<toolkit::PushButton>(command));
}

void ScriptHost::adjust(const CommandReader& command, Json&) {
    auto& field = usableControl<toolkit::NumberField>(command);
    const double value = command.at("value").get<double>();
    if (!(value >= field.minimum() && value <= field.maximum()))
        throw ScriptError("The value must lie between " + toolkit::Value(field.minimum()).textReading() + " and " +
                          toolkit::Value(field.maximum()).textReading() + ".");
    dialog(command).user().enter(field, value);
}

void ScriptHost::mark(const CommandReader& command, Json&) {
    const std::string option = command.text("option");
    if (option == keywords::kPageSize || option == "PageRegion")
        throw ScriptError("The page size is changed by the command \"paper\".");
    std::string error;
    if (!dialog(command).session().markFromOutside(option, command.text("choice"), command.boolean("tell", true),
                                                   error))
        throw ScriptError(error);
}

void ScriptHost::paper(const CommandReader& command, Json&) {
    Session& session = dialog(command).session();
    auto paper = paperFromJson(command.at("paper"));
    if (command.has("mapped")) {
        const auto mapped = command.textOrNone("mapped");
        if (mapped && !session.settings())
            throw ScriptError("The job has no print settings to hold the mapped paper.");
        if (mapped)
            session.settings()->setValueForKey(*mapped, printing::kPageToPaperMappingKey);
        else if (session.settings())
            session.settings()->removeKey(printing::kPageToPaperMappingKey);
    }
    session.setPaper(std::move(paper), command.boolean("tell", true));
}

void ScriptHost::setting(const CommandReader& command, Json&) {
    auto& settings = dialog(command).session().settings();
    if (!settings)
        throw ScriptError("The job has no print settings.");
    if (command.isNull("value")) {
        settings->removeKey(command.text("key"));
        return;
    }
    const auto value = settingFromJson(command.at("value"));
    if (!value)
        throw ScriptError("A print setting must be a text, a number, or true or false.");
    settings->setValueForKey(*value, command.text("key"));
}

void ScriptHost::settings(const CommandReader& command, Json&) {
    dialog(command).session().setPrintSettings(settingsFromJson(command.at("value")));
}

void ScriptHost::refuse(const CommandReader& command, Json&) {
    dialog(command).setRefusals(command.at("options"));
}

void ScriptHost::raise(const CommandReader& command, Json&) {
    dialog(command).setRaises(command.at("options"));
}

void ScriptHost::answers(const CommandReader& command, Json&) {
    constexpr Member kMembers[] = {{"button", MemberKind::Any}, {"suppress", MemberKind::Boolean}};
    std::deque<ScriptedAnswer> list;
    for (const Json& json : command.at("alerts")) {
        if (!json.is_object())
            throw ScriptError("An answer is an object with \"button\" and \"suppress\".");
        checkMembers(json, kMembers, "An answer");
        ScriptedAnswer& answer = list.emplace_back();
        if (json.contains("button")) {
            if (json["button"].is_number_integer())
                answer.button =
                    static_cast<int>(std::clamp<std::int64_t>(json["button"].get<std::int64_t>(), -1, 1000));
            else if (json["button"].is_string())
                answer.button = json["button"].get<std::string>();
            else
                throw ScriptError("An answer's \"button\" is the key of its text, or its position.");
        }
        if (json.contains("suppress"))
            answer.suppress = json["suppress"].get<bool>();
    }
    dialog(command).alerts().setAnswers(std::move(list));
}

void ScriptHost::window(const CommandReader& command, Json&) {
    dialog(command).session().setWindowHeight(command.numberOrNone("height"));
}

void ScriptHost::tracking(const CommandReader& command, Json&) {
    CVPrintQualityPDE& panel = this->panel(command);
    if (panel.loadedViews() != nullptr)
        dialog(command).session().postFromHost({.name = std::string(keywords::kViewDidUpdateTrackingAreas),
                                                .sender = &panel.loadedViews()->root(),
                                                .userInfo = {}});
}

void ScriptHost::close(const CommandReader& command, Json&) {
    if (!dialog(command).session().closeKeyWindow())
        throw ScriptError("There is no key window to close.");
}

void ScriptHost::notify(const CommandReader& command, Json&) {
    Session& session = dialog(command).session();
    toolkit::Notification notification{.name = command.text("name"), .sender = nullptr, .userInfo = {}};
    if (command.has("info") && !command.isNull("info"))
        notification.userInfo = *valueFromJson(command.at("info")).as<toolkit::ValueMap>();
    std::unique_ptr<toolkit::Menu> menu;
    if (command.has("from") && !command.isNull("from")) {
        const Json& from = command.at("from");
        if (from == "callback") {
            notification.sender = &session;
        } else if (from.is_object() && from.size() == 1 && from.contains("menu") && from["menu"].is_array() &&
                   std::ranges::all_of(from["menu"], [](const Json& each) { return each.is_string(); })) {
            menu = std::make_unique<toolkit::Menu>(from["menu"].get<std::vector<std::string>>());
            notification.sender = menu.get();
        } else {
            throw ScriptError("\"from\" must be \"callback\", null, or {\"menu\": [titles]}.");
        }
    }
    session.postFromHost(notification);
}

void ScriptHost::save(const CommandReader& command, Json&) {
    panel(command).saveValuesAndReturnError();
}

void ScriptHost::restore(const CommandReader& command, Json&) {
    dialog(command).restore(panel(command));
}

void ScriptHost::summary(const CommandReader& command, Json& answer) {
    auto summary = panel(command).summaryInfo();
    if (!summary) {
        answer["summary"] = nullptr;
        return;
    }
    Json order = Json(toolkit::jsonFromValue(toolkit::valueInMap(*summary, keywords::kSummaryDisplayOrder)));
    summary->erase(std::string(keywords::kSummaryDisplayOrder));
    answer["summary"] = {{"order", std::move(order)}, {"entries", jsonFromMap(*summary)}};
}

void ScriptHost::help(const CommandReader& command, Json& answer) {
    Dialog& dialog = this->dialog(command);
    (void)dialog.alerts().takeOpenedHelp(); // what a help button opened before
    answer["help"] = panel(command).shouldShowHelp();
    answer["opened"] = dialog.alerts().takeOpenedHelp();
}

namespace {

// Where a job is to go.
struct Destination {
    std::string folder;
    std::optional<QueueAddress> queue;
};

Destination destinationFromJson(const Json& json) {
    constexpr Member kMembers[] = {{"server", MemberKind::Text, true}, {"queue", MemberKind::Text, true}};
    if (json.is_string())
        return {.folder = json.get<std::string>(), .queue = std::nullopt};
    if (!json.is_object())
        throw ScriptError("\"to\" must be a folder, or {\"server\", \"queue\"}.");
    checkMembers(json, kMembers, "A destination");
    return {.folder = {},
            .queue =
                QueueAddress{.server = json["server"].get<std::string>(), .queue = json["queue"].get<std::string>()}};
}

} // namespace

void ScriptHost::print(const CommandReader& command, Json& answer) {
    Session& session = dialog(command).session();
    JobRequest request;
    request.title = command.textOrNone("title").value_or("");
    const double copies = command.numberOrNone("copies").value_or(1);
    if (std::trunc(copies) != copies || copies < 1 || copies > 9999)
        throw ScriptError("The number of copies must be a whole number from 1 to 9999.");
    request.copies = static_cast<int>(copies);
    std::optional<Destination> destination;
    if (command.has("to"))
        destination = destinationFromJson(command.at("to"));
    request.documentPath = command.textOrNone("file").value_or("");
    const bool submits = destination && command.has("file");
    if (command.has("file")) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(request.documentPath, error))
            throw ScriptError("The document \"" + request.documentPath + "\" cannot be read: it is no file.");
        if (!std::ifstream(request.documentPath))
            throw ScriptError("The document \"" + request.documentPath + "\" cannot be read: permission denied.");
    }

    const bool go = session.shouldPrint();
    answer["go"] = go;
    if (!go)
        return;
    request.options = session.jobOptions();
    Json options = Json::object();
    for (const JobOption& option : request.options)
        options[option.name] = option.value;
    answer["ticket"] = {{"options", std::move(options)}};
    if (!submits)
        return;
    const JobResult result =
        destination->queue ? submitToQueue(*destination->queue, request) : submitToFolder(destination->folder, request);
    if (!result.ok)
        throw ScriptError(result.error);
    answer["job"] = destination->queue ? Json(result.jobId) : Json(result.path);
    if (!result.note.empty())
        answer["note"] = result.note;
}

void ScriptHost::state(const CommandReader& command, Json& answer) {
    CVPrintQualityPDE& panel = this->panel(command);
    Json state = jsonFromMap(dialog(command).inspection().fieldsOfPanel(panel));
    const toolkit::LoadedViews* views = panel.loadedViews();
    if (views == nullptr)
        state["view"] = nullptr;
    else
        state["view"] = {{"width", jsonFromNumber(views->root().frame().width)},
                         {"height", jsonFromNumber(views->root().frame().height)}};
    state["controls"] = jsonFromViews(views);
    answer["state"] = std::move(state);
}

void ScriptHost::hostState(const CommandReader& command, Json& answer) {
    Dialog& dialog = this->dialog(command);
    Session& session = dialog.session();
    Json marks = Json::object();
    for (const auto& [option, choice] : session.description().marks())
        marks[option] = choice ? Json(*choice) : Json(nullptr);
    Json settings = nullptr;
    if (session.settings()) {
        settings = Json::object();
        for (const auto& [key, value] : session.settings()->entries())
            settings[key] = jsonFromSetting(value);
    }
    const auto identifier = session.pluginBundle()->identifier();
    const auto domain =
        identifier ? dialog.userDefaults().persistentDomainForName(*identifier) : std::optional<toolkit::ValueMap>();
    const SessionRecord record = session.takeRecord();
    Json asked = Json::array();
    for (const AskedMark& each : record.asked)
        asked.push_back({each.option, each.choice, each.accepted});
    Json refused = Json::array();
    for (const RefusedMark& each : record.refused) {
        Json with = Json::array();
        for (const auto& [option, choice] : each.with)
            with.push_back({option, choice});
        refused.push_back({{"option", each.option}, {"choice", each.choice}, {"with", with}, {"reason", each.reason}});
    }
    Json posted = Json::array();
    for (const toolkit::Notification& each : record.posted)
        posted.push_back({each.name, each.userInfo ? jsonFromMap(*each.userInfo) : Json(nullptr)});
    answer["host"] = {{"marks", std::move(marks)},
                      {"settings", std::move(settings)},
                      {"defaults", domain ? jsonFromMap(*domain) : Json::object()},
                      {"asked", std::move(asked)},
                      {"refused", std::move(refused)},
                      {"posted", std::move(posted)},
                      {"alerts", dialog.alerts().takeShown()},
                      {"resized", record.resized}};
}

void ScriptHost::preview(const CommandReader& command, Json& answer) {
    CVPrintQualityPDE& panel = this->panel(command);
    const auto preview = dialog(command).inspection().previewOfPanel(panel);
    if (!preview)
        throw ScriptError("The panel \"" + command.text("panel") + "\" has no preview.");
    imaging::Bitmap bitmap;
    if (preview->shown)
        preview->shown->renderInto(bitmap);
    const toolkit::ImageView* view = nullptr;
    if (panel.loadedViews() != nullptr)
        view = dynamic_cast<const toolkit::ImageView*>(panel.loadedViews()->viewNamed("effectImageView"));
    answer["size"] = {bitmap.width(), bitmap.height()};
    answer["mean"] = imaging::meanColor(bitmap);
    answer["source"] = preview->shown ? Json(preview->shown->sourceName()) : Json(nullptr);
    answer["redraws"] = view == nullptr ? 0 : view->imageCount();
    answer["chain"] = preview->shown ? jsonFromChain(*preview->shown) : Json::array();
    answer["filters"] = {{"ccFilter", jsonFromFilter(preview->colorControls)},
                         {"cmFilter", jsonFromFilter(preview->colorMatrix)}};
    std::string error;
    if (command.has("file") && !imaging::writePng(bitmap, command.text("file"), error))
        throw ScriptError("The preview cannot be written: " + error + ".");
}

framework::MessageValue ScriptHost::messageArgument(const Json& json, Dialog* dialog, CVPrintQualityPDE* panel,
                                                    std::vector<std::unique_ptr<toolkit::View>>& loose) {
    if (json.is_array()) {
        framework::MessageList list;
        for (const Json& element : json)
            list.push_back(messageArgument(element, dialog, panel, loose));
        return {std::move(list)};
    }
    const auto isMade = [&](std::initializer_list<const char*> names) {
        return json.is_object() && json.size() == names.size() &&
               std::ranges::all_of(names, [&](const char* name) { return json.contains(name); });
    };
    if (isMade({"control"}) && json["control"].is_string()) {
        if (panel == nullptr)
            throw ScriptError("There is no panel whose controls could be named.");
        return {&control(*panel, json["control"].get<std::string>())};
    }
    if (isMade({"tag", "value"}) && json["tag"].is_number_integer() && json["value"].is_number()) {
        auto field = std::make_unique<toolkit::NumberField>("loose");
        field->setTag(json["tag"].get<std::int64_t>());
        field->setValue(json["value"].get<double>());
        return {loose.emplace_back(std::move(field)).get()};
    }
    if (isMade({"picture"}) && json["picture"].is_string()) {
        const auto preview =
            panel == nullptr || dialog == nullptr ? std::nullopt : dialog->inspection().previewOfPanel(*panel);
        if (!preview || json["picture"] != "refImage")
            throw ScriptError("The only picture that can be named is the colour panel's \"refImage\".");
        return framework::messageValue(preview->reference);
    }
    if (isMade({"font", "size"}) && json["font"].is_string() && json["size"].is_number())
        return {toolkit::Font{.role = json["font"].get<std::string>(), .size = json["size"].get<double>()}};
    return {valueFromJson(json)};
}

std::vector<framework::MessageValue> ScriptHost::messageArguments(const CommandReader& command, Dialog* dialog,
                                                                  CVPrintQualityPDE* panel,
                                                                  std::vector<std::unique_ptr<toolkit::View>>& loose) {
    std::vector<framework::MessageValue> arguments;
    if (command.has("arguments"))
        for (const Json& json : command.at("arguments"))
            arguments.push_back(messageArgument(json, dialog, panel, loose));
    return arguments;
}

namespace {

Json resultOf(framework::MessageResult result) {
    if (!result.value)
        throw ScriptError(result.error);
    return jsonFromMessageValue(*result.value);
}

} // namespace

void ScriptHost::send(const CommandReader& command, Json& answer) {
    Dialog& dialog = this->dialog(command);
    std::vector<std::unique_ptr<toolkit::View>> loose;
    if (command.text("panel") == "plugin") {
        const auto arguments = messageArguments(command, &dialog, nullptr, loose);
        answer["result"] = resultOf(dialog.inspection().sendToFactory(
            dialog.session().principalObject(), &dialog.session(), command.text("message"), arguments));
        return;
    }
    CVPrintQualityPDE& panel = this->panel(command);
    const auto arguments = messageArguments(command, &dialog, &panel, loose);
    answer["result"] = resultOf(panel.sendMessage(command.text("message"), arguments));
}

std::shared_ptr<PlugIn> ScriptHost::plugInForAsking() {
    std::string error;
    auto plugIn = PlugIn::load(defaultBundle_, error);
    if (plugIn == nullptr)
        throw ScriptError(error);
    if (plugIn->inspection() == nullptr)
        throw ScriptError("The bundle's panel inspection is of another version than this program's.");
    return plugIn;
}

void ScriptHost::ask(const CommandReader& command, Json& answer) {
    static const toolkit::FixedAdvanceMeasurer measurer;
    std::vector<std::unique_ptr<toolkit::View>> loose;
    const auto arguments = messageArguments(command, nullptr, nullptr, loose);
    const framework::TextReceiver receiver{.text = command.textOrNone("text"), .measurer = measurer};
    answer["result"] =
        resultOf(plugInForAsking()->inspection()->sendToText(receiver, command.text("message"), arguments));
}

void ScriptHost::transform(const CommandReader& command, Json& answer) {
    const auto transformer = toolkit::ValueTransformer::transformerNamed(command.text("name"));
    if (transformer == nullptr)
        throw ScriptError("No value transformer is registered as \"" + command.text("name") + "\".");
    const toolkit::Value value = valueFromJson(command.at("value"));
    const toolkit::TransformedValue result = command.boolean("reverse", false)
                                                 ? transformer->reverseTransformedValue(value)
                                                 : transformer->transformedValue(value);
    answer["result"] = nullptr;
    if (const auto* color = std::get_if<toolkit::TextColor>(&result))
        answer["result"] = *color == toolkit::TextColor::Enabled ? "enabled" : "disabled";
    else if (const auto* plain = std::get_if<toolkit::Value>(&result))
        answer["result"] = Json(toolkit::jsonFromValue(*plain));
    answer["reversible"] = transformer->allowsReverseTransformation();
    answer["resultClass"] = transformer->transformedValueClass();
}

namespace {

// Picks what represents the choice as a program does, null for nothing; false where the control offers no such choice.
bool putChoice(toolkit::View& view, const std::optional<std::string>& choice, bool only) {
    if (auto* popup = dynamic_cast<toolkit::PopUpList*>(&view)) {
        const int index = choice ? popup->indexOfItemWithKeyword(*choice) : -1;
        if (!only && (index >= 0 || !choice))
            popup->selectItemAtIndex(index);
        return index >= 0 || !choice;
    }
    if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(&view)) {
        const int row = choice ? matrix->rowWithKeyword(*choice) : -1;
        if (!only && (row >= 0 || !choice))
            matrix->selectRow(row);
        return row >= 0 || !choice;
    }
    auto* table = dynamic_cast<toolkit::TableView*>(&view);
    const int entry =
        table == nullptr || table->content() == nullptr || !choice ? -1 : table->content()->indexOfId(*choice);
    if (!only && entry >= 0)
        table->content()->selectIndex(entry);
    return entry >= 0;
}

// A choice, a state, an enabling or a number, set as a program sets it: all of them, or none.
void putIntoControl(const CommandReader& command, toolkit::View& view) {
    const std::string name = command.text("control");
    auto* box = dynamic_cast<toolkit::CheckBox*>(&view);
    auto* field = dynamic_cast<toolkit::NumberField*>(&view);
    auto* control = dynamic_cast<toolkit::Control*>(&view);
    const auto need = [&](bool holds, const char* what) {
        if (!holds)
            throw ScriptError("The control \"" + name + "\" " + what + ".");
    };
    const Json state = command.has("state") ? command.at("state") : Json(0);
    need(command.has("choice") || command.has("state") || command.has("enabled") || command.has("number"),
         "needs one of \"choice\", \"state\", \"enabled\" and \"number\"");
    need(!command.has("choice") || putChoice(view, command.textOrNone("choice"), true), "offers no such choice");
    need(!command.has("state") || box != nullptr, "has no state");
    need(state == 0 || state == 1 || state.is_boolean(), "has the states 0 and 1");
    need(!command.has("number") || field != nullptr, "holds no number");
    need(!command.has("enabled") || control != nullptr, "cannot be enabled");
    if (command.has("choice"))
        putChoice(view, command.textOrNone("choice"), false);
    if (command.has("state"))
        box->setOnThroughBinding(state.is_boolean() ? state.get<bool>() : state == 1);
    if (command.has("number"))
        field->setValueThroughBinding(command.at("number").get<double>());
    if (command.has("enabled"))
        control->setEnabled(command.boolean("enabled", true));
}

} // namespace

void ScriptHost::put(const CommandReader& command, Json&) {
    CVPrintQualityPDE& panel = this->panel(command);
    if (command.has("field") == command.has("control"))
        throw ScriptError("\"put\" needs one of \"field\" and \"control\".");
    if (command.has("control")) {
        putIntoControl(command, control(panel, command.text("control")));
        return;
    }
    const std::string field = command.text("field");
    const bool isStore = field == "outputBin" || field == "effectContent";
    if (!command.has("value") || isStore != command.has("key"))
        throw ScriptError("The field \"" + field + "\" needs " +
                          (isStore ? "\"key\" and \"value\"." : "\"value\" alone."));
    std::string error;
    const std::string key = command.textOrNone("key").value_or("");
    if (!dialog(command).inspection().setFieldOfPanel(panel, field, key, valueFromJson(command.at("value")), error))
        throw ScriptError(error);
}

} // namespace host
