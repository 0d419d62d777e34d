#pragma once

#include "toolkit/image.h"
#include "toolkit/localized_text.h"

#include <optional>
#include <string>
#include <vector>

namespace toolkit {

enum class AlertStyle { Informational, Critical };

/// A question or a message for the user. The first button is the default one.
struct Alert {
    AlertStyle style = AlertStyle::Informational; ///< how serious it is
    std::string messageText;                      ///< one sentence, in bold
    std::optional<std::string> informativeText;   ///< what follows from it
    std::vector<LocalizedText> buttons;           ///< in their order
    bool showsSuppressionButton = false;          ///< the box "do not show again"
    std::optional<Image> icon;                    ///< none: the host's own
};

/// How an alert was answered.
struct AlertAnswer {
    int button = 0;                   ///< position in Alert::buttons
    bool suppressionButtonOn = false; ///< false where there is no box
};

/// A plain message with one button, as the platform's alert panel shows it.
struct AlertPanel {
    std::string title;           ///< of the window
    std::string message;         ///< several lines
    LocalizedText defaultButton; ///< the only one
};

} // namespace toolkit
