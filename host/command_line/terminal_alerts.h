#pragma once

#include "host/session/session.h"

#include <ostream>
#include <string>

namespace host {

/// Tells the panels' alerts on a stream, one line each, and answers them at once: the default button, or, where alerts
/// stop the job, the one that refuses. A suppression box stays as it stands.
class TerminalAlerts final : public AlertPresenter {
public:
    enum class Answer { GoOn, Stop };

    /// The stream is borrowed; null: nothing is told.
    TerminalAlerts(std::ostream* stream, std::string program, Answer answer)
        : stream_(stream), program_(std::move(program)), answer_(answer) {}

    /// Whether an alert was shown.
    [[nodiscard]] bool wasShown() const { return wasShown_; }

    toolkit::AlertAnswer presentAlert(const toolkit::Alert& alert, bool asSheet) override;
    void presentPanel(const toolkit::AlertPanel& panel) override;
    void presentWindow(toolkit::Window& window) override;
    void openHelp(std::string_view anchor, std::string_view book) override;

private:
    void tell(const std::string& title, const std::string& text);

    std::ostream* stream_;
    std::string program_;
    Answer answer_;
    bool wasShown_ = false;
};

} // namespace host
