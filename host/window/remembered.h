#pragma once

#include "host/session/session.h"
#include "host/window/printers.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// What the dialog keeps for its next time, in the user's preferences. What is read from there is only proposed: it is
/// looked at like choices from anywhere else.
class Remembered {
public:
    /// How the window differs from what its pages need. Pixels.
    struct WindowSize {
        int width = 0; ///< 0: not known
        int extraHeight = 0;
    };

    /// Null: nothing is remembered. Borrowed; outlives this object.
    explicit Remembered(toolkit::UserDefaults* defaults) : defaults_(defaults) {}

    /// nullopt where the user does not want them remembered.
    [[nodiscard]] std::optional<std::vector<JobOption>> choices(const Printer& printer) const;
    /// Both answer an empty text, or why it could not be written.
    std::string keepChoices(const Printer& printer, const std::vector<JobOption>& choices);
    std::string forgetChoices(const Printer& printer);

    [[nodiscard]] WindowSize windowSize() const;
    void keepWindowSize(const WindowSize& size);

private:
    std::string write(const std::string& key, const toolkit::Value& value);
    [[nodiscard]] toolkit::Value read(const std::string& key) const;

    toolkit::UserDefaults* defaults_;
};

/// What is chosen in the session, as options that a new one can begin with: the marks that differ from the PPD's
/// defaults, the paper, and the print settings.
[[nodiscard]] std::vector<JobOption> choicesToRemember(Session& session);

} // namespace host
