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
    AlertStyle style = AlertStyle::Informational;
    std::string messageText;
    std::optional<std::string> informativeText;
    std::vector<LocalizedText> buttons;
    bool showsSuppressionButton = false;
    std::optional<Image> icon; ///< none: the host's own
};

/// How an alert was answered.
struct AlertAnswer {
    int button = 0; ///< position in Alert::buttons
    bool suppressionButtonOn = false;
};

/// A plain message with one button, as the platform's alert panel shows it.
struct AlertPanel {
    std::string title;
    std::string message;
    LocalizedText defaultButton;
};

} // namespace toolkit
