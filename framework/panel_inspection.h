#pragma once

#include "framework/CVInkQuality12PDEPlugIn.h"
#include "framework/CVPrintQualityPDE.h"
#include "framework/export.h"
#include "framework/message.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace framework {

/// Who a paper-name operation is asked of, and what it measures with.
struct TextReceiver {
    std::optional<std::string> text; ///< none: a missing receiver
    const toolkit::TextMeasurer& measurer;
};
using TextMessage = Message<const TextReceiver>;

/// Looks into panels for tests and for the scripted host. Dialogs do not use it. A bundle exports its own, with the
/// table of its operations on paper names.
class CV_FRAMEWORK_EXPORT PanelInspection {
public:
    explicit PanelInspection(std::span<const TextMessage> textMessages) : textMessages_(textMessages) {}

    /// The panel's fields by their names: "thePDEName", "PPDKeys", "outputBin", "imageModeFlag", "paperName",
    /// "popupInited", "effectContent", and what a panel's class adds.
    [[nodiscard]] toolkit::ValueMap fieldsOfPanel(const CVPrintQualityPDE& panel) const;
    /// Sets "imageModeFlag", "paperName", or one key of "outputBin" or "effectContent"; nothing is asked or run. An
    /// absent value removes. False where the field is none of these, or the value of another kind; `error` says which.
    bool setFieldOfPanel(CVPrintQualityPDE& panel, std::string_view field, const std::string& key,
                         const toolkit::Value& value, std::string& error) const;
    /// nullopt for a panel without a preview.
    [[nodiscard]] std::optional<PreviewState> previewOfPanel(const CVPrintQualityPDE& panel) const;

    /// Sends one of the factory's operations; the Host Callback stands for a null second argument.
    MessageResult sendToFactory(CVInkQuality12PDEPlugIn& factory, HostCallback* callback, std::string_view name,
                                std::span<const MessageValue> arguments) const;
    /// Sends one of the paper-name operations to a text.
    MessageResult sendToText(const TextReceiver& receiver, std::string_view name,
                             std::span<const MessageValue> arguments) const;
    /// Every message that the panel answers, and every field that its view description can connect.
    [[nodiscard]] std::vector<std::string_view> messagesOfPanel(const CVPrintQualityPDE& panel) const;
    [[nodiscard]] std::vector<std::string_view> outletsOfPanel(const CVPrintQualityPDE& panel) const;
    /// Connects a model to the panel's field of this name; false where there is no such field of its kind.
    bool connectOutlet(CVPrintQualityPDE& panel, std::string_view name, toolkit::View& view) const;

private:
    std::span<const TextMessage> textMessages_;
};

} // namespace framework
