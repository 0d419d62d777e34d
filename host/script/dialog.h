#pragma once

#include "host/script/command_reader.h"
#include "host/script/script_alerts.h"
#include "host/session/session.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// One dialog of a script: a session, and how the script makes its host behave.
class Dialog {
public:
    /// Reads what the command `open` says; begin() then opens it. The bundle is the one of the command, else the
    /// default one. The user is never null. Throws ScriptError.
    Dialog(const CommandReader& command, const std::filesystem::path& defaultBundle, std::unique_ptr<ScriptUser> user);
    ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    /// Makes the panels. Once, before anything else. Throws ScriptError; what an ask raises passes through.
    void begin();
    [[nodiscard]] Session& session() { return *session_; }
    [[nodiscard]] ScriptUser& user() { return *user_; }
    [[nodiscard]] ScriptAlerts& alerts() { return alerts_; }
    [[nodiscard]] toolkit::UserDefaults& userDefaults() { return *userDefaults_; }
    /// "print" or "color". Throws ScriptError where there is no such panel.
    [[nodiscard]] CVPrintQualityPDE& panel(const std::string& name);
    [[nodiscard]] const framework::PanelInspection& inspection() const;
    /// {"panel", "title", "kind", "keys"} of each.
    [[nodiscard]] Json panelsInWords();

    void setRefusals(const Json& options);
    void setRaises(const Json& options);
    /// A restore before the first show ends the restoring that the first show would begin with.
    void restore(CVPrintQualityPDE& panel) { session_->restorePanel(panel); }

private:
    /// The choices that are refused; none: every one.
    using Refusals = std::map<std::string, std::optional<std::vector<std::string>>, std::less<>>;
    static Refusals refusalsFromJson(const Json& options);
    static std::map<std::string, bool> raisesFromJson(const Json& options);
    [[nodiscard]] std::optional<std::string> filterAsk(const std::string& option, const std::string& choice) const;

    std::unique_ptr<ScriptUser> user_;
    ScriptAlerts alerts_{*user_};
    std::unique_ptr<toolkit::UserDefaults> userDefaults_;
    Refusals refusals_;
    std::map<std::string, bool> raises_; // true: a toolkit exception
    SessionOptions options_;             // until begin() hands them over
    std::shared_ptr<Session> session_;
};

/// The paper that an object {"name", "ppdName", "width", "height"} or null says.
std::optional<printing::Paper> paperFromJson(const Json& json);
/// A setting's value; nullopt for what is no text, number or Boolean.
std::optional<printing::SettingValue> settingFromJson(const Json& json);
/// Print settings from an object, none from null.
std::optional<printing::PrintSettings> settingsFromJson(const Json& json);

} // namespace host
