#pragma once

#include "host/script/model_json.h"
#include "host/script/script_user.h"

#include <deque>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace host {

/// How a script answers one alert.
struct ScriptedAnswer {
    std::variant<std::string, int> button = 0; ///< the key of its text, or its position
    std::optional<bool> suppress;              ///< none: the box stays as it stands
};

/// Has alerts answered by the user as a script says, and keeps what was shown. The user is borrowed.
class ScriptAlerts final : public AlertPresenter {
public:
    explicit ScriptAlerts(ScriptUser& user) : user_(user) {}

    void setAnswers(std::deque<ScriptedAnswer> answers) { answers_ = std::move(answers); }
    /// Hands over what was shown since the last time, in order.
    [[nodiscard]] Json takeShown() { return std::exchange(shown_, Json::array()); }
    /// Hands over the help that was opened last; null where none was.
    [[nodiscard]] Json takeOpenedHelp() { return std::exchange(openedHelp_, nullptr); }

    toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) override;
    void presentPanel(const toolkit::AlertPanel& panel) override;
    void presentWindow(toolkit::Window& window) override;
    void openHelp(std::string_view anchor, std::string_view book) override;

private:
    [[nodiscard]] ScriptedAnswer nextAnswer();

    ScriptUser& user_;
    std::deque<ScriptedAnswer> answers_;
    Json shown_ = Json::array();
    Json openedHelp_ = nullptr;
};

} // namespace host
