#include "host/script/dialog.h"

#include "host/script/script_error.h"

#include "toolkit/exception.h"
#include "toolkit/json_values.h"
#include "toolkit/preferred_languages.h"
#include "toolkit/user_defaults.h"

#include <algorithm>
#include <array>

namespace host {
namespace {

constexpr std::array<std::string_view, 2> kPanelNames = {"print", "color"}; // in the order in which they are made

constexpr Member kPaperMembers[] = {
    {"name", MemberKind::TextOrNull},
    {"ppdName", MemberKind::TextOrNull},
    {"width", MemberKind::NumberOrNull},
    {"height", MemberKind::NumberOrNull},
};

std::unique_ptr<printing::PrinterDescription> openDescription(const CommandReader& command,
                                                              const std::vector<std::string>& languages) {
    if (command.has("ppd") == command.has("ppdText"))
        throw ScriptError("\"open\" needs one of \"ppd\" (a path) and \"ppdText\" (the text of a PPD).");
    std::string error;
    auto description = command.has("ppd")
                           ? printing::PrinterDescription::openFile(command.text("ppd"), languages, error)
                           : printing::PrinterDescription::openText(command.text("ppdText"), languages, error);
    if (description == nullptr)
        throw ScriptError(command.has("ppd") ? error : "The PPD's text cannot be used: " + error);
    if (command.boolean("markDefaults", true))
        description->markDefaults();
    return description;
}

void applyMarks(const CommandReader& command, printing::PrinterDescription& description) {
    if (!command.has("mark"))
        return;
    for (const auto& [option, choice] : command.at("mark").items()) {
        if (description.option(option) == nullptr)
            throw ScriptError("The printer has no option \"" + option + "\".");
        if (choice.is_null())
            description.unmark(option);
        else if (!choice.is_string())
            throw ScriptError("A choice in \"mark\" must be a text or null.");
        else if (!description.mark(option, choice.get<std::string>()))
            throw ScriptError("The option \"" + option + "\" has no choice \"" + choice.get<std::string>() + "\".");
    }
}

toolkit::BundleView bundleView(const CommandReader& command) {
    toolkit::BundleView view;
    view.languages = command.texts("languages");
    if (view.languages.empty())
        view.languages = toolkit::preferredLanguages();
    view.localize = command.boolean("localize", true);
    if (command.has("strings"))
        for (const auto& [key, text] : command.at("strings").items()) {
            if (!text.is_string())
                throw ScriptError("A text in \"strings\" must be a text.");
            view.strings.emplace(key, text.get<std::string>());
        }
    if (command.has("info"))
        for (const auto& [key, value] : command.at("info").items()) {
            if (value.is_null())
                view.removedInfo.push_back(key);
            else
                view.info.insert_or_assign(key, toolkit::valueFromJson(nlohmann::json(value)));
        }
    return view;
}

std::unique_ptr<toolkit::UserDefaults> openUserDefaults(const CommandReader& command) {
    if (command.has("defaults") && command.at("defaults").is_string()) {
        if (command.text("defaults") != "user")
            throw ScriptError("\"defaults\" must be an object, or \"user\" for the user's own file.");
        const auto folder = toolkit::FileUserDefaults::userFolder();
        if (!folder)
            throw ScriptError("The user has no folder for preferences: set HOME or XDG_CONFIG_HOME.");
        return std::make_unique<toolkit::FileUserDefaults>(*folder);
    }
    if (command.has("defaults") && !command.at("defaults").is_object())
        throw ScriptError("\"defaults\" must be an object, or \"user\" for the user's own file.");
    return std::make_unique<toolkit::MemoryUserDefaults>();
}

} // namespace

std::optional<printing::Paper> paperFromJson(const Json& json) {
    if (json.is_null())
        return std::nullopt;
    checkMembers(json, kPaperMembers, "A paper");
    const auto text = [&](const char* name) {
        return json.contains(name) && json[name].is_string() ? std::optional(json[name].get<std::string>())
                                                             : std::nullopt;
    };
    const auto number = [&](const char* name) {
        return json.contains(name) && json[name].is_number() ? std::optional(json[name].get<double>()) : std::nullopt;
    };
    return printing::Paper{
        .name = text("name"), .ppdName = text("ppdName"), .width = number("width"), .height = number("height")};
}

std::optional<printing::SettingValue> settingFromJson(const Json& json) {
    if (json.is_string())
        return json.get<std::string>();
    const toolkit::Value value = toolkit::valueFromJson(nlohmann::json(json));
    if (const auto* flag = value.as<bool>())
        return *flag;
    if (const auto* number = value.as<std::int64_t>())
        return *number;
    if (const auto* real = value.as<double>())
        return *real;
    return std::nullopt;
}

std::optional<printing::PrintSettings> settingsFromJson(const Json& json) {
    if (json.is_null())
        return std::nullopt;
    printing::PrintSettings settings;
    for (const auto& [key, value] : json.items()) {
        const auto setting = settingFromJson(value);
        if (!setting)
            throw ScriptError("The print setting \"" + key + "\" must be a text, a number, or true or false.");
        settings.setValueForKey(*setting, key);
    }
    return settings;
}

Dialog::Refusals Dialog::refusalsFromJson(const Json& options) {
    Refusals refusals;
    for (const auto& [option, choices] : options.items()) {
        if (choices.is_boolean() && choices.get<bool>()) {
            refusals.emplace(option, std::nullopt);
            continue;
        }
        if (!choices.is_array() || !std::ranges::all_of(choices, [](const Json& each) { return each.is_string(); }))
            throw ScriptError("What \"refuse\" says of \"" + option + "\" must be a list of choices, or true.");
        refusals.emplace(option, choices.get<std::vector<std::string>>());
    }
    return refusals;
}

std::map<std::string, bool> Dialog::raisesFromJson(const Json& options) {
    std::map<std::string, bool> raises;
    for (const auto& [option, kind] : options.items()) {
        if (kind != "toolkit" && kind != "other")
            throw ScriptError("What \"raise\" says of \"" + option + "\" must be \"toolkit\" or \"other\".");
        raises.emplace(option, kind == "toolkit");
    }
    return raises;
}

void Dialog::setRefusals(const Json& options) {
    refusals_ = refusalsFromJson(options);
}

void Dialog::setRaises(const Json& options) {
    raises_ = raisesFromJson(options);
}

std::optional<std::string> Dialog::filterAsk(const std::string& option, const std::string& choice) const {
    if (const auto raise = raises_.find(option); raise != raises_.end()) {
        const std::string reason = "The host raises an exception when it is asked for \"" + option + "\".";
        if (raise->second)
            throw toolkit::Exception(reason);
        throw std::runtime_error(reason);
    }
    const auto refusal = refusals_.find(option);
    if (refusal == refusals_.end())
        return std::nullopt;
    if (refusal->second && std::ranges::find(*refusal->second, choice) == refusal->second->end())
        return std::nullopt;
    return "The script refuses \"" + choice + "\" for \"" + option + "\".";
}

Dialog::Dialog(const CommandReader& command, const std::filesystem::path& defaultBundle,
               std::unique_ptr<ScriptUser> user)
    : user_(std::move(user)), userDefaults_(openUserDefaults(command)) {
    std::string error;
    options_.bundleView = bundleView(command);
    options_.plugIn =
        PlugIn::load(command.has("bundle") ? std::filesystem::path(command.text("bundle")) : defaultBundle, error);
    if (options_.plugIn == nullptr)
        throw ScriptError(error);
    options_.description = openDescription(command, options_.bundleView.languages);
    applyMarks(command, *options_.description);
    if (command.has("settings"))
        options_.settings = settingsFromJson(command.at("settings"));
    if (command.has("paper")) {
        options_.pageFormat = printing::PageFormat{.paper = paperFromJson(command.at("paper"))};
        if (options_.pageFormat->paper && options_.pageFormat->paper->ppdName)
            options_.description->mark("PageSize", *options_.pageFormat->paper->ppdName);
    }
    if (command.has("window"))
        options_.windowHeight = command.numberOrNone("window");
    options_.lacks = command.texts("lacks");
    if (command.has("type"))
        options_.panelType = command.text("type");
    if (command.has("refuse"))
        setRefusals(command.at("refuse"));
    if (command.has("raise"))
        setRaises(command.at("raise"));
    const bool ownDefaults = command.has("defaults") && command.at("defaults").is_object();
    options_.userDefaults = userDefaults_.get();
    options_.presenter = &alerts_;
    options_.askFilter = [this](const std::string& option, const std::string& choice) {
        return filterAsk(option, choice);
    };
    if (ownDefaults) {
        const auto info = toolkit::Bundle::open(options_.plugIn->path(), options_.bundleView, error);
        if (info != nullptr && info->identifier())
            userDefaults_->setPersistentDomainForName(
                *toolkit::valueFromJson(nlohmann::json(command.at("defaults"))).as<toolkit::ValueMap>(),
                *info->identifier());
    }
}

void Dialog::begin() {
    std::string error;
    session_ = Session::open(std::move(options_), error);
    if (session_ == nullptr)
        throw ScriptError(error);
    user_->sessionDidOpen(*session_);
}

Dialog::~Dialog() {
    if (session_ != nullptr)
        user_->sessionWillEnd();
}

CVPrintQualityPDE& Dialog::panel(const std::string& name) {
    const auto found = std::ranges::find(kPanelNames, name);
    const auto index = static_cast<std::size_t>(found - kPanelNames.begin());
    if (found == kPanelNames.end())
        throw ScriptError("There is no panel \"" + name + "\": the panels are \"print\" and \"color\".");
    if (index >= session_->panels().size())
        throw ScriptError("The plug-in gave this dialog no panel \"" + name + "\".");
    return *session_->panels()[index];
}

const framework::PanelInspection& Dialog::inspection() const {
    if (session_->inspection() == nullptr)
        throw ScriptError("The bundle's panel inspection is of another version than this program's.");
    return *session_->inspection();
}

Json Dialog::panelsInWords() {
    Json panels = Json::array();
    for (std::size_t index = 0; index < session_->panels().size() && index < kPanelNames.size(); ++index) {
        CVPrintQualityPDE& panel = *session_->panels()[index];
        const auto keys = panel.supportedPPDOptionKeys();
        panels.push_back({{"panel", kPanelNames[index]},
                          {"title", panel.panelName()},
                          {"kind", panel.panelKind()},
                          {"keys", keys ? Json(*keys) : Json(nullptr)}});
    }
    return panels;
}

} // namespace host
