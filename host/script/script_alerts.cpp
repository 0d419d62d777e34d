#include "host/script/script_alerts.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"

#include <algorithm>

namespace host {
namespace {

// The position of the button that the answer means; the first for one that is not there.
std::size_t buttonOf(const ScriptedAnswer& answer, const std::vector<toolkit::LocalizedText>& buttons) {
    if (const int* position = std::get_if<int>(&answer.button))
        return *position >= 0 && static_cast<std::size_t>(*position) < buttons.size()
                   ? static_cast<std::size_t>(*position)
                   : 0;
    const auto found = std::ranges::find(buttons, std::get<std::string>(answer.button), &toolkit::LocalizedText::key);
    return found == buttons.end() ? 0 : static_cast<std::size_t>(found - buttons.begin());
}

Json titlesOf(const std::vector<toolkit::LocalizedText>& buttons) {
    Json titles = Json::array();
    for (const toolkit::LocalizedText& button : buttons)
        titles.push_back(button.text);
    return titles;
}

// What stands in a panel's own alert window.
struct WindowParts {
    std::string message;
    std::optional<std::string> informative;
    std::optional<std::string> picture;
    toolkit::CheckBox* suppression = nullptr;
    std::vector<toolkit::PushButton*> buttons; // the default one first

    explicit WindowParts(const toolkit::Window& window) {
        for (toolkit::View* view : window.content()) {
            if (view->isHidden())
                continue;
            if (const auto* label = dynamic_cast<toolkit::Label*>(view)) {
                if (label->name().find("Instruction") != std::string::npos) // the label that holds the message
                    message = label->text();
                else
                    informative = label->text();
            } else if (const auto* image = dynamic_cast<toolkit::ImageView*>(view)) {
                picture = image->image() ? image->image()->name : std::nullopt;
            } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(view)) {
                suppression = box;
            } else if (auto* button = dynamic_cast<toolkit::PushButton*>(view)) {
                buttons.insert(button->isDefault() ? buttons.begin() : buttons.end(), button);
            }
        }
    }
};

Json textOrNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

} // namespace

ScriptedAnswer ScriptAlerts::nextAnswer() {
    if (answers_.empty())
        return {};
    ScriptedAnswer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

toolkit::AlertAnswer ScriptAlerts::presentAlert(const toolkit::Alert& alert, bool asSheet) {
    const ScriptedAnswer answer = nextAnswer();
    const std::size_t button = buttonOf(answer, alert.buttons);
    const std::size_t at = shown_.size();
    shown_.push_back({{"how", asSheet ? "sheet" : "alert"},
                      {"style", alert.style == toolkit::AlertStyle::Critical ? "critical" : "informational"},
                      {"window", nullptr},
                      {"title", nullptr},
                      {"message", alert.messageText},
                      {"informative", textOrNull(alert.informativeText)},
                      {"buttons", titlesOf(alert.buttons)},
                      {"suppression", alert.showsSuppressionButton},
                      {"icon", alert.icon ? textOrNull(alert.icon->name) : Json(nullptr)},
                      {"answered", nullptr}});
    const toolkit::AlertAnswer given =
        user_.answerAlert(alert, asSheet,
                          {.button = static_cast<int>(button),
                           .suppressionButtonOn = alert.showsSuppressionButton && answer.suppress.value_or(false)});
    if (!alert.buttons.empty())
        shown_[at]["answered"] = alert.buttons[static_cast<std::size_t>(given.button)].key;
    return given;
}

void ScriptAlerts::presentPanel(const toolkit::AlertPanel& panel) {
    [[maybe_unused]] const ScriptedAnswer answer = nextAnswer(); // there is one button
    shown_.push_back({{"how", "panel"},
                      {"style", nullptr},
                      {"window", nullptr},
                      {"title", panel.title},
                      {"message", panel.message},
                      {"informative", nullptr},
                      {"buttons", {panel.defaultButton.text}},
                      {"suppression", false},
                      {"icon", nullptr},
                      {"answered", panel.defaultButton.key}});
    user_.answerPanel(panel);
}

void ScriptAlerts::presentWindow(toolkit::Window& window) {
    const ScriptedAnswer answer = nextAnswer();
    const WindowParts parts(window);
    std::vector<toolkit::LocalizedText> titles;
    for (const toolkit::PushButton* button : parts.buttons)
        titles.push_back({.key = button->titleKey(), .text = button->title()});
    const std::size_t button = buttonOf(answer, titles);
    shown_.push_back({{"how", "window"},
                      {"style", nullptr},
                      {"window", window.name()},
                      {"title", window.title()},
                      {"message", parts.message},
                      {"informative", textOrNull(parts.informative)},
                      {"buttons", titlesOf(titles)},
                      {"suppression", parts.suppression != nullptr},
                      {"icon", textOrNull(parts.picture)},
                      {"answered", titles.empty() ? Json(nullptr) : Json(titles[button].key)}});
    user_.answerWindow(window, {.button = parts.buttons.empty() ? nullptr : parts.buttons[button],
                                .suppressionButton = answer.suppress ? parts.suppression : nullptr,
                                .suppressionButtonOn = answer.suppress.value_or(false)});
}

void ScriptAlerts::openHelp(std::string_view anchor, std::string_view book) {
    openedHelp_ = {{"book", book}, {"anchor", anchor}};
}

} // namespace host
