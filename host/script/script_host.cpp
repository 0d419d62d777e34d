// The table of commands and the way from a line to its answer.

#include "host/script/script_host.h"

#include "host/script/script_error.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::size_t kLongestLine = 8 << 20; // bytes; a PPD's text may stand in one
constexpr int kDeepestNesting = 64;           // of lists and objects; values are walked recursively

constexpr Member kPanel = {"panel", MemberKind::Text, true};
constexpr Member kControl = {"control", MemberKind::Text, true};

constexpr Member kOpenMembers[] = {
    {"ppd", MemberKind::Text},
    {"ppdText", MemberKind::Text},
    {"mark", MemberKind::Object},
    {"markDefaults", MemberKind::Boolean},
    {"settings", MemberKind::ObjectOrNull},
    {"paper", MemberKind::ObjectOrNull},
    {"languages", MemberKind::List},
    {"localize", MemberKind::Boolean},
    {"strings", MemberKind::Object},
    {"defaults", MemberKind::Any},
    {"window", MemberKind::NumberOrNull},
    {"lacks", MemberKind::List},
    {"refuse", MemberKind::Object},
    {"raise", MemberKind::Object},
    {"type", MemberKind::Text},
    {"bundle", MemberKind::Text},
    {"info", MemberKind::Object},
};
constexpr Member kPanelMembers[] = {kPanel};
constexpr Member kChooseMembers[] = {kPanel, kControl, {"choice", MemberKind::Text, true}};
constexpr Member kCheckMembers[] = {kPanel, kControl, {"on", MemberKind::Boolean, true}};
constexpr Member kPressMembers[] = {kPanel, kControl};
constexpr Member kAdjustMembers[] = {kPanel, kControl, {"value", MemberKind::Number, true}};
constexpr Member kMarkMembers[] = {
    {"option", MemberKind::Text, true}, {"choice", MemberKind::Text, true}, {"tell", MemberKind::Boolean}};
constexpr Member kPaperMembers[] = {
    {"paper", MemberKind::ObjectOrNull, true}, {"mapped", MemberKind::TextOrNull}, {"tell", MemberKind::Boolean}};
constexpr Member kSettingMembers[] = {{"key", MemberKind::Text, true}, {"value", MemberKind::Any, true}};
constexpr Member kSettingsMembers[] = {{"value", MemberKind::ObjectOrNull, true}};
constexpr Member kOptionsMembers[] = {{"options", MemberKind::Object, true}};
constexpr Member kAnswersMembers[] = {{"alerts", MemberKind::List, true}};
constexpr Member kWindowMembers[] = {{"height", MemberKind::NumberOrNull, true}};
constexpr Member kNotifyMembers[] = {
    {"name", MemberKind::Text, true}, {"info", MemberKind::ObjectOrNull}, {"from", MemberKind::Any}};
constexpr Member kPrintMembers[] = {
    {"file", MemberKind::Text}, {"to", MemberKind::Any}, {"title", MemberKind::Text}, {"copies", MemberKind::Number}};
constexpr Member kPreviewMembers[] = {kPanel, {"file", MemberKind::Text}};
constexpr Member kSendMembers[] = {kPanel, {"message", MemberKind::Text, true}, {"arguments", MemberKind::List}};
constexpr Member kAskMembers[] = {
    {"text", MemberKind::TextOrNull, true}, {"message", MemberKind::Text, true}, {"arguments", MemberKind::List}};
constexpr Member kTransformMembers[] = {
    {"name", MemberKind::Text, true}, {"value", MemberKind::Any, true}, {"reverse", MemberKind::Boolean}};
constexpr Member kPutMembers[] = {kPanel,
                                  {"field", MemberKind::Text},
                                  {"key", MemberKind::Text},
                                  {"value", MemberKind::Any},
                                  {"control", MemberKind::Text},
                                  {"choice", MemberKind::TextOrNull},
                                  {"state", MemberKind::Any},
                                  {"enabled", MemberKind::Boolean},
                                  {"number", MemberKind::Number}};

} // namespace

constexpr ScriptHost::Command ScriptHost::kCommands[] = {
    {"open", &ScriptHost::open, kOpenMembers},
    {"view", &ScriptHost::view, kPanelMembers},
    {"show", &ScriptHost::show, kPanelMembers},
    {"hide", &ScriptHost::hide, kPanelMembers},
    {"choose", &ScriptHost::choose, kChooseMembers},
    {"check", &ScriptHost::check, kCheckMembers},
    {"press", &ScriptHost::press, kPressMembers},
    {"adjust", &ScriptHost::adjust, kAdjustMembers},
    {"mark", &ScriptHost::mark, kMarkMembers},
    {"paper", &ScriptHost::paper, kPaperMembers},
    {"setting", &ScriptHost::setting, kSettingMembers},
    {"settings", &ScriptHost::settings, kSettingsMembers},
    {"refuse", &ScriptHost::refuse, kOptionsMembers},
    {"raise", &ScriptHost::raise, kOptionsMembers},
    {"answers", &ScriptHost::answers, kAnswersMembers},
    {"window", &ScriptHost::window, kWindowMembers},
    {"tracking", &ScriptHost::tracking, kPanelMembers},
    {"close", &ScriptHost::close, {}},
    {"notify", &ScriptHost::notify, kNotifyMembers},
    {"save", &ScriptHost::save, kPanelMembers},
    {"restore", &ScriptHost::restore, kPanelMembers},
    {"summary", &ScriptHost::summary, kPanelMembers},
    {"help", &ScriptHost::help, kPanelMembers},
    {"print", &ScriptHost::print, kPrintMembers},
    {"state", &ScriptHost::state, kPanelMembers},
    {"host", &ScriptHost::hostState, {}},
    {"preview", &ScriptHost::preview, kPreviewMembers},
    {"send", &ScriptHost::send, kSendMembers},
    {"ask", &ScriptHost::ask, kAskMembers},
    {"transform", &ScriptHost::transform, kTransformMembers},
    {"put", &ScriptHost::put, kPutMembers},
};

bool ScriptHost::isCommand(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    return first != std::string_view::npos && line[first] != '#';
}

std::string ScriptHost::answerLine(std::string_view line) {
    Json result;
    try {
        result = answer(line);
    } catch (const std::exception& error) {
        result = {{"ok", false}, {"error", error.what()}};
    }
    lastFailed_ = !result["ok"].get<bool>();
    return result.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json ScriptHost::answer(std::string_view line) {
    if (line.size() > kLongestLine)
        throw ScriptError("The line is longer than 8 MB.");
    if (line.find('\0') != std::string_view::npos) // the parser would take it for the end
        throw ScriptError("The line is not JSON.");
    bool tooDeep = false;
    const auto watchDepth = [&](int depth, Json::parse_event_t, Json&) {
        tooDeep = tooDeep || depth > kDeepestNesting;
        return !tooDeep;
    };
    const Json json = Json::parse(line, watchDepth, false);
    if (tooDeep)
        throw ScriptError("The line is nested too deeply.");
    if (json.is_discarded())
        throw ScriptError("The line is not JSON.");
    if (!json.is_object() || !json.contains("do") || !json["do"].is_string())
        throw ScriptError("A command is an object with a text \"do\".");
    const auto name = json["do"].get<std::string>();
    const auto command = std::ranges::find(kCommands, std::string_view(name), &Command::name);
    if (command == std::end(kCommands))
        throw ScriptError("There is no command \"" + name + "\".");
    const CommandReader reader(json, command->members);
    Json answer = {{"ok", true}};
    (this->*command->handler)(reader, answer);
    return answer;
}

Dialog& ScriptHost::dialog(const CommandReader& command) {
    const std::string name = command.textOrNone("session").value_or("main");
    const auto found = dialogs_.find(name);
    if (found == dialogs_.end())
        throw ScriptError("The session \"" + name + "\" is not open: begin it with \"open\".");
    return *found->second;
}

CVPrintQualityPDE& ScriptHost::panel(const CommandReader& command) {
    return dialog(command).panel(command.text("panel"));
}

toolkit::View& ScriptHost::control(CVPrintQualityPDE& panel, const std::string& name) {
    if (panel.loadedViews() == nullptr)
        throw ScriptError("The panel's view was not made yet: use \"show\" or \"view\" first.");
    toolkit::View* view = panel.loadedViews()->viewNamed(name);
    if (view == nullptr)
        throw ScriptError("The panel has no control \"" + name + "\".");
    return *view;
}

} // namespace host
