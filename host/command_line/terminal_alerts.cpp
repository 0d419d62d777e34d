#include "host/command_line/terminal_alerts.h"

#include "host/jobs/job_text.h"
#include "toolkit/button.h"
#include "toolkit/label.h"

namespace host {
namespace {

constexpr std::size_t kLongestAlert = 2000; // bytes

} // namespace

void TerminalAlerts::tell(const std::string& title, const std::string& text) {
    wasShown_ = true;
    if (stream_ == nullptr)
        return;
    *stream_ << program_ << ": " << (title.empty() ? "" : plainText(title, kLongestAlert) + ": ");
    bool afterBlank = true; // paragraphs become one line
    for (const char character : plainText(text, kLongestAlert)) {
        if (character != ' ' || !afterBlank)
            *stream_ << character;
        afterBlank = character == ' ';
    }
    *stream_ << std::endl;
}

toolkit::AlertAnswer TerminalAlerts::presentAlert(const toolkit::Alert& alert, bool) {
    tell({}, alert.messageText + (alert.informativeText ? " " + *alert.informativeText : ""));
    const int last = alert.buttons.empty() ? 0 : static_cast<int>(alert.buttons.size()) - 1;
    return {.button = answer_ == Answer::Stop ? last : 0, .suppressionButtonOn = false};
}

void TerminalAlerts::presentPanel(const toolkit::AlertPanel& panel) {
    tell(panel.title, panel.message);
}

void TerminalAlerts::presentWindow(toolkit::Window& window) {
    std::string text;
    toolkit::PushButton* goOn = nullptr;
    toolkit::PushButton* refuse = nullptr;
    for (toolkit::View* view : window.content()) {
        if (view->isHidden())
            continue;
        if (const auto* label = dynamic_cast<toolkit::Label*>(view))
            text += (text.empty() ? "" : " ") + label->text();
        else if (auto* button = dynamic_cast<toolkit::PushButton*>(view))
            (button->isDefault() ? goOn : refuse) = button;
    }
    tell(window.title(), text);
    // Where it has no such button the run ends without an answer, and that stops the job.
    if (toolkit::PushButton* pressed = answer_ == Answer::Stop ? refuse : goOn)
        pressed->userPressed();
}

void TerminalAlerts::openHelp(std::string_view, std::string_view) {}

} // namespace host
