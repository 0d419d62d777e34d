// The panel's options, what it offers in which state of colour, and how it follows the Print Settings panel.

#include "color_settings/CVInkColorSettingPDE.h"
#include "color_settings/ColorTransformer.h"

#include "framework/control_binding.h"
#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <algorithm>

using namespace keywords;

namespace {

constexpr double kPanelHeight = 110, kAdvancedHeight = 202; // points
constexpr std::string_view kKeysInfoEntry = "PMPPDKeysSupportedColor";

} // namespace

struct CVInkColorSettingPDE::Binding : framework::ControlBinding<CVInkColorSettingPDE> {
    toolkit::View* (*field)(const CVInkColorSettingPDE& panel); // of the adjustments only
};

// The order is that in which a control or a keyword is looked up.
template <auto Field>
constexpr auto field = &framework::fieldOf<Field, CVInkColorSettingPDE>;
using Panel = CVInkColorSettingPDE;
constexpr Panel::Binding CVInkColorSettingPDE::kBindings[] = {
    // keyword, control, label                                                                   field
    {{kColorMatching, field<&Panel::colorMatchingMatrix>, field<&Panel::colorMatchingLabel>}, nullptr},
    {{kHalfTonePattern, field<&Panel::ditherPopup>, field<&Panel::ditherLabel>}, nullptr},
    {{kColorEnhancement, field<&Panel::colorEnhanceButton>, nullptr}, nullptr},
    {{kAdjustments[kTagBrightness].key, nullptr, field<&Panel::brightnessLabel>}, field<&Panel::brightnessField>},
    {{kAdjustments[kTagContrast].key, nullptr, field<&Panel::contrastLabel>}, field<&Panel::contrastField>},
    {{kAdjustments[kTagRed].key, nullptr, field<&Panel::redLabel>}, field<&Panel::redField>},
    {{kAdjustments[kTagGreen].key, nullptr, field<&Panel::greenLabel>}, field<&Panel::greenField>},
    {{kAdjustments[kTagBlue].key, nullptr, field<&Panel::blueLabel>}, field<&Panel::blueField>},
};

bool CVInkColorSettingPDE::initWithCallback(framework::HostCallback* callback) {
    if (!CVPrintQualityPDE::initWithCallback(callback))
        return false;
    setThePDEName("CVInkColorSetting");
    setPPDKeys(keysInInfoEntry(kKeysInfoEntry));
    setEffectDefaults();
    restoreEffectValues();
    saveEffectValues();
    toolkit::ValueTransformer::registerTransformer(std::make_shared<ColorTransformer>(), ColorTransformer::kName);
    observe(kInkPrintSettingNotification, pdePluginCallbackObject_, &CVInkColorSettingPDE::printSettingsNotified);
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = std::string(kInkPrintSettingNotification), .sender = pdePluginCallbackObject_, .userInfo = {}});
    return true;
}

std::string CVInkColorSettingPDE::panelName() {
    return localizedString("Color Setting");
}

std::optional<std::string> CVInkColorSettingPDE::helpBook() {
    return "Corvane Color Settings Help";
}

std::optional<std::string> CVInkColorSettingPDE::determineKey(toolkit::View* control) {
    for (const Binding& binding : kBindings)
        if (control != nullptr && binding.control != nullptr && binding.control(*this) == control)
            return std::string(binding.keyword);
    return std::nullopt;
}

toolkit::View* CVInkColorSettingPDE::determineUI(const std::optional<std::string>& key) {
    for (const Binding& binding : kBindings)
        if (binding.keyword == key)
            return binding.control == nullptr ? nullptr : binding.control(*this);
    return nullptr;
}

toolkit::View* CVInkColorSettingPDE::determineLabel(const std::optional<std::string>& key) {
    for (const Binding& binding : kBindings)
        if (binding.keyword == key)
            return binding.label == nullptr ? nullptr : binding.label(*this);
    return nullptr;
}

toolkit::View* CVInkColorSettingPDE::determineField(const std::optional<std::string>& key) {
    for (const Binding& binding : kBindings)
        if (binding.keyword == key)
            return binding.field == nullptr ? nullptr : binding.field(*this);
    return nullptr;
}

void CVInkColorSettingPDE::setDefaults() {} // replaces the base's on purpose

void CVInkColorSettingPDE::PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) {
    CVPrintQualityPDE::PPDOptionKeyValueDidChangePpdChoice(option, choice);
}

bool CVInkColorSettingPDE::restoreValuesAndReturnError(const framework::ErrorSlot& error) {
    CVPrintQualityPDE::restoreValuesAndReturnError(error);
    return true;
}

bool CVInkColorSettingPDE::saveValuesAndReturnError(const framework::ErrorSlot& error) {
    CVPrintQualityPDE::saveValuesAndReturnError(error);
    saveEffectValues();
    return true;
}

void CVInkColorSettingPDE::saveAllValues() {
    CVPrintQualityPDE::saveAllValues();
    saveEffectValues();
}

void CVInkColorSettingPDE::willShow() {
    CVPrintQualityPDE::willShow();
    if (effectContent != nullptr)
        effectContent->setValueForKey(0.0, kFrameHeight);
    updateUI();
}

bool CVInkColorSettingPDE::shouldHide() {
    return CVPrintQualityPDE::shouldHide();
}

void CVInkColorSettingPDE::updateUI() {
    CVPrintQualityPDE::updateUI();
}

void CVInkColorSettingPDE::initializePopup() {
    if (popupInited)
        return;
    CVPrintQualityPDE::initializePopup();
    if (optionLabel != nullptr)
        optionLabel->setText(localizedString("advancedcolorItem"));
    if (panelView_ != nullptr) {
        toolkit::Rect frame = panelView_->frame();
        frame.height = kPanelHeight;
        panelView_->setFrame(frame);
    }
    for (const std::string& key : effectKeys())
        if (const printing::Option* option = ppd->option(key))
            if (auto* label = dynamic_cast<toolkit::Label*>(determineLabel(key)))
                label->setText(option->text);
    restoreOptionState();
    if (effectContent != nullptr)
        for (const std::string& key : effectKeys())
            effectContent->setValueForKey(toolkit::valueInMap(outputBin_, key).integerReading(), key);
}

void CVInkColorSettingPDE::checkConstraints() {
    CVPrintQualityPDE::checkConstraints();
    restoreEffectValues();
}

void CVInkColorSettingPDE::checkUIConstraints() {
    CVPrintQualityPDE::checkUIConstraints();
    const auto store = [&](bool value, std::string_view key) {
        if (effectContent != nullptr)
            effectContent->setValueForKey(value, key);
    };
    const bool matching = hasFlag(kImageModeVendorColorMatching);
    store(matching, kColorMatching);
    if (hasFlag(kImageModeFaxOutput)) {
        const auto disabled = toolkit::TextColor::Disabled;
        if (optionLabel != nullptr)
            optionLabel->setTextColor(disabled);
        for (const std::string& key : managedKeys())
            if (auto* label = dynamic_cast<toolkit::Label*>(determineLabel(key)))
                label->setTextColor(disabled);
        for (const std::string& key : effectKeys())
            if (auto* field = dynamic_cast<toolkit::NumberField*>(determineField(key)))
                field->setTextColor(disabled);
        return;
    }
    const bool color = !hasFlag(kImageModeMonochrome);
    const bool enhancement = matching && outputBinHolds(kColorEnhancement, kOn);
    if (matching) {
        store(color, kMonoColor); // the key is named for mono and tells of colour
        store(enhancement, kColorEnhancement);
    } else {
        store(false, kColorEnhancement);
        store(false, kMonoColor);
    }
    store(enhancement && color, kColorAvailable);

    const auto picture = matching ? outputBinKeyword(kColorMatching) : std::optional(std::string(kNoneKeyword));
    if (!picture)
        return;
    setRefImageWithName(picture);
    if (hasFlag(kImageModePanelShown))
        redrawEffectImage();
}

std::optional<std::vector<std::string>> CVInkColorSettingPDE::availablePPDOptionKeys() {
    auto keys = CVPrintQualityPDE::availablePPDOptionKeys();
    if (!keys)
        return std::nullopt;
    const auto remove = [&](std::string_view key) { std::erase(*keys, key); };
    if (!hasFlag(kImageModeVendorColorMatching)) {
        remove(kColorMatching);
        remove(kColorEnhancement);
        remove(kSlowDrying);
        remove(kHalfTonePattern);
    } else if (hasFlag(kImageModeMonochrome)) {
        remove(kColorMatching);
    }
    for (const std::string& key : effectKeys()) // they have fields
        remove(key);
    return keys;
}

std::optional<toolkit::ValueMap> CVInkColorSettingPDE::summaryInfo() {
    auto summary = CVPrintQualityPDE::summaryInfo();
    if (!summary)
        return std::nullopt;
    restoreEffectValues();
    if (!hasFlag(kImageModeVendorColorMatching) || !outputBinHolds(kColorEnhancement, kOn))
        return summary;
    toolkit::ValueList order;
    if (const auto* titles = toolkit::valueInMap(*summary, kSummaryDisplayOrder).as<toolkit::ValueList>())
        order = *titles;
    const bool mono = hasFlag(kImageModeMonochrome);
    for (const std::string& key : effectKeys()) {
        const bool ofMono = key == kAdjustments[kTagBrightness].key || key == kAdjustments[kTagContrast].key;
        const printing::Option* option = mono && !ofMono ? nullptr : ppd->option(key);
        if (option == nullptr)
            continue;
        summary->insert_or_assign(option->text, toolkit::valueInMap(outputBin_, key));
        order.emplace_back(option->text);
    }
    summary->insert_or_assign(std::string(kSummaryDisplayOrder), std::move(order));
    return summary;
}

void CVInkColorSettingPDE::toggleShowOption(toolkit::View* sender) {
    const auto* button = dynamic_cast<toolkit::CheckBox*>(sender);
    const toolkit::Rect frame = panelView_ == nullptr ? toolkit::Rect() : panelView_->frame();
    const double growth = button != nullptr && button->isOn() ? kAdvancedHeight : -kAdvancedHeight;
    setViewFrameSize({.width = frame.width, .height = frame.height + growth});
}

void CVInkColorSettingPDE::printSettingsNotified(const toolkit::Notification& notification) {
    if (notification.userInfo) {
        const toolkit::Value& setting = toolkit::valueInMap(*notification.userInfo, kFromSetting);
        if (setting.isText(kMonoColor)) {
            setFlag(kImageModeMonochrome, toolkit::valueInMap(*notification.userInfo, kMonoColor).booleanReading());
        } else if (setting.isText(kHalfTonePattern)) {
            const bool diffusion = toolkit::valueInMap(*notification.userInfo, kHalfTonePattern).booleanReading();
            setFlag(kImageModeDiffusion, diffusion);
            setAndMarkValueForKey(std::string(diffusion ? kDiffusion : kDither), std::string(kHalfTonePattern));
        }
        return;
    }
    if (const auto mode = printSettingForKey(kMonoColor))
        setFlag(kImageModeMonochrome, !mode->isText(kColor));
    if (const auto pattern = printSettingForKey(kHalfTonePattern)) {
        if (pattern->isText(kDither))
            setFlag(kImageModeDiffusion, false);
        else if (pattern->isText(kDiffusion))
            setFlag(kImageModeDiffusion, true);
    }
}
