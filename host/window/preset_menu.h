#pragma once

#include "host/jobs/presets.h"
#include "host/window/window_texts.h"

#include <QPushButton>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// The button beside the printer with the presets of its queue: each of them to be chosen, and what else can be done
/// with them, with the questions that this asks. The presets are read anew each time that the menu opens.
class PresetMenu : public QPushButton {
public:
    /// What the window does for it. All are set by the owner.
    struct Window {
        std::function<void(const Preset& preset)> apply;
        /// What is chosen now, as a preset keeps it; nullopt where it cannot be kept: then the user was told why.
        std::function<std::optional<std::vector<JobOption>>()> choices;
        std::function<void(const QString& message)> tell;
    };

    PresetMenu(Language language, Window window);

    /// The queue of the chosen printer. Empty: it is none; the button is disabled, and says why.
    void setQueue(const std::string& queue);

private:
    void fill();
    void save();
    void rename();
    void remove();

    Language language_;
    Window window_;
    std::string queue_;
};

} // namespace host
