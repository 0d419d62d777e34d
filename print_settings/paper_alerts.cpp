// How the user is told, before printing, to load the paper.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_loading.h"
#include "print_settings/paper_names.h"
#include "print_settings/print_keywords.h"

#include "imaging/loading.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/window.h"

#include <cmath>

namespace {

using namespace keywords;

constexpr std::string_view kPortrait = "Portrait", kLandscape = "Landscape"; // how the sheet is loaded
constexpr const char* kLandscapeInstruction = "Landscape Instruction";       // alerts, by the keys of their messages
constexpr const char* kPortraitInstruction = "Portrait Instruction";
constexpr const char* kManualInstruction = "Manual Instruction";
constexpr const char* kNormalPaper = "Normal Paper"; // kinds of paper windows
constexpr const char* kCustomPaper = "Custom Paper";

constexpr int kModalOk = 1, kModalCancel = 0;
constexpr double kMessagePadding = 6; // points

} // namespace

std::string CVInkPrintSetting12PDE::firstLanguageSetting() {
    const std::vector<std::string> languages = application().preferredLanguages();
    return languages.empty() ? "" : languages.front();
}

void CVInkPrintSetting12PDE::setOrientation(std::string_view orientation) {
    setPrintSettingForKey(std::string(orientation), std::string(kPrintSettingsPrefix) + ".Orientation");
}

bool CVInkPrintSetting12PDE::checkPaperAndShowOrientationAlert() {
    setOrientation(kPortrait);
    if (paper_names::isKindOfJPEnvelope(paperName)) {
        readyToShowEnvelopeAlert();
        return showDialogWithAlertInfo(envAlertWindow, std::nullopt) == kModalOk;
    }
    if (paper_names::isKindOfLandscapePaper(paperName)) {
        if (!showNormalPaperAlert(kLandscapeInstruction, "Landscape"))
            return false;
        setOrientation(kLandscape);
        return true;
    }
    if (paper_names::isKindOfPortraitPaper(paperName))
        return showNormalPaperAlert(kPortraitInstruction, "Portrait");
    if (paper_names::isKindOfManualFeedPaper(paperName))
        return showNormalPaperAlert(kManualInstruction, "Manual");
    if (paperName == kUnsupportedPaper) {
        showUnsupportedPaperAlert();
        return false;
    }
    return checkCustomSizeAndShowAlert();
}

bool CVInkPrintSetting12PDE::checkCustomSizeAndShowAlert() {
    double width = 0, height = 0;
    if (pdePluginCallbackObject_->respondsToSelector(framework::kPrintSettingsSelector)) {
        const printing::Paper* paper = pageFormatPaper();
        if (paper == nullptr || !paper->width || !paper->height)
            return false;
        width = std::round(*paper->width); // halves away from zero
        height = std::round(*paper->height);
    }
    using paper_loading::Loading;
    switch (paper_loading::loadingForSize(width, height, ppd->customSizeLimits())) {
    case Loading::Landscape:
        if (!showCustomPaperAlert(kLandscapeInstruction, "Landscape"))
            return false;
        setOrientation(kLandscape);
        return true;
    case Loading::Portrait:
        return showCustomPaperAlert(kPortraitInstruction, "Portrait");
    case Loading::ByHand:
        return showCustomPaperAlert(kManualInstruction, "Manual");
    case Loading::Unsupported:
        break;
    }
    showUnsupportedPaperAlert();
    return false;
}

// Answers whether to go on: also when the user does not want to see the alert again.
bool CVInkPrintSetting12PDE::showNormalPaperAlert(const std::string& messageKey, const std::string& picture) {
    if (!shouldShowAlert(messageKey))
        return true;
    readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel(
        kNormalPaper, messageKey, normalPaperAlertWindow, normalPaperAlertImageView, picture,
        normalPaperInstructionLabel);
    return showDialogWithAlertInfo(normalPaperAlertWindow, messageKey) == kModalOk;
}

bool CVInkPrintSetting12PDE::showCustomPaperAlert(const std::string& messageKey, const std::string& picture) {
    readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel(
        kCustomPaper, messageKey, customPaperAlertWindow, customPaperAlertImageView, picture,
        customPaperInstructionLabel);
    return showDialogWithAlertInfo(customPaperAlertWindow, std::nullopt) == kModalOk;
}

int CVInkPrintSetting12PDE::showDialogWithAlertInfo(toolkit::Window* window,
                                                    const std::optional<std::string>& suppressionKey) {
    if (window == nullptr)
        return kModalCancel;
    const int result = application().runModalForWindow(*window);
    if (result == kModalOk && suppressionKey)
        storeAlertSuppression(*suppressionKey, suppressionButton != nullptr && suppressionButton->isOn());
    window->setHidden(true);
    return result;
}

void CVInkPrintSetting12PDE::dialogOkDidClick(toolkit::View*) {
    application().stopModalWithCode(kModalOk);
}

void CVInkPrintSetting12PDE::dialogCancelDidClick(toolkit::View*) {
    application().stopModalWithCode(kModalCancel);
}

void CVInkPrintSetting12PDE::showPicture(const std::string& name, toolkit::ImageView* view) {
    const auto* path = pluginBundle->pathForResource(name, "BMP");
    if (view == nullptr || !path)
        return;
    const auto loaded = imaging::loadPicture(path->string());
    if (loaded.picture)
        view->setImage(toolkit::Image{.name = name,
                                      .width = loaded.picture->extent().width,
                                      .height = loaded.picture->extent().height,
                                      .pixels = nullptr,
                                      .path = path->string()});
}

void CVInkPrintSetting12PDE::readyToShowEnvelopeAlert() {
    showPicture("Envelope", envAlertImageView);
    if (envInstructionLabel1 != nullptr)
        envInstructionLabel1->setText(localizedString("Envelope Alert1") + "\n\n" + localizedString("Envelope Alert2"));
    if (envAlertOKButton != nullptr)
        envAlertOKButton->setTitle(pluginBundle->localizedText("OK"));
    if (envAlertCancelButton != nullptr)
        envAlertCancelButton->setTitle(pluginBundle->localizedText("Cancel"));
    if (envAlertSummary != nullptr)
        envAlertSummary->setText(localizedString("Envelope Alert Summary"));
    if (envAlertWindow != nullptr)
        envAlertWindow->setTitle(localizedString("Envelope Alert Title"));
}

void CVInkPrintSetting12PDE::
    readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel(
        const std::string& kind, const std::string& messageKey, toolkit::Window* window, toolkit::ImageView* view,
        const std::string& picture, toolkit::Label* label) {
    const auto setTitle = [&](toolkit::Button* button, std::string_view key) {
        if (button != nullptr)
            button->setTitle(pluginBundle->localizedText(key));
    };
    showPicture(picture, view);
    const std::string message = localizedString(messageKey);
    if (kind == kNormalPaper) {
        setTitle(normalPaperAlertOKButton, "OK");
        setTitle(normalPaperAlertCancelButton, "Cancel");
        setTitle(suppressionButton, "Suppression");
    }
    setTitle(customPaperAlertOKButton, "OK");
    setTitle(customPaperAlertCancelButton, "Cancel");
    double growth = 0;
    if (label != nullptr) {
        label->setText(message);
        toolkit::Rect frame = label->frame();
        const double height =
            kMessagePadding + paper_names::heightForSpecifiedFontSpecifiedWidth(
                                  message, toolkit::Font::control(), frame.width, application().textMeasurer());
        growth = height - frame.height;
        frame.height = height;
        label->setFrame(frame);
    }
    if (window != nullptr) {
        toolkit::Rect frame = window->frame();
        frame.height += growth;
        window->setFrame(frame);
        window->display();
        window->setTitle(localizedString("Paper Orientation Title"));
    }
}

void CVInkPrintSetting12PDE::showUnsupportedPaperAlert() {
    application().runAlertPanel(
        {.title = localizedString("Unsupported Paper Title"),
         .message = localizedString("Unsupported Paper MSG1") + "\n\n" + localizedString("Unsupported Paper MSG2") +
                    "\n" + localizedString("Unsupported Paper MSG3") + "\n" + localizedString("Unsupported Paper MSG4"),
         .defaultButton = pluginBundle->localizedText("OK")});
}
