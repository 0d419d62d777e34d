// How values go between the PPD's marks, the pending values and the controls.

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"

#include "toolkit/button.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

namespace {

using namespace keywords;

// The word for a state of a Boolean option.
std::string onOffWord(bool on, std::string_view key) {
    if (key == kMirrorPrint)
        return std::string(on ? kTrue : kFalse);
    return std::string(on ? kOn : kOff);
}

bool isOnWord(const toolkit::Value& value) {
    return value.isText(kOn) || value.isText(kTrue);
}

// Selects what represents the value, or sets the box's state. False, and nothing changed, where nothing represents it.
bool showValue(toolkit::View* control, const toolkit::Value& value) {
    if (auto* box = dynamic_cast<toolkit::CheckBox*>(control)) {
        box->setOn(isOnWord(value));
        return true;
    }
    const auto* keyword = value.as<std::string>();
    if (keyword == nullptr)
        return false;
    if (auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(control))
        return matrix->selectCellWithKeyword(*keyword);
    auto* popup = dynamic_cast<toolkit::PopUpList*>(control);
    return popup != nullptr && popup->selectItemWithKeyword(*keyword);
}

} // namespace

bool CVPrintQualityPDE::outputBinHolds(std::string_view key, std::string_view value) const {
    return toolkit::valueInMap(outputBin_, key).isText(value);
}

std::optional<std::string> CVPrintQualityPDE::outputBinKeyword(std::string_view key) const {
    const auto* keyword = toolkit::valueInMap(outputBin_, key).as<std::string>();
    return keyword == nullptr ? std::nullopt : std::optional(*keyword);
}

std::optional<std::string> CVPrintQualityPDE::markedChoice(std::string_view option) const {
    return ppd->markedChoice(option);
}

void CVPrintQualityPDE::setPPDKeys(const std::optional<std::vector<std::string>>& keys) {
    if (!keys)
        return;
    std::vector<std::string> present;
    for (const std::string& key : *keys)
        if (ppd->option(key) != nullptr)
            present.push_back(key);
    PPDKeys = std::move(present);
}

bool CVPrintQualityPDE::restoreValuesAndReturnError(const framework::ErrorSlot&) {
    checkFax();
    setDefaults();
    for (const std::string& key : managedKeys())
        if (const printing::Option* option = ppd->option(key))
            outputBin_.insert_or_assign(key, markedChoice(key).value_or(option->defaultChoice));
    checkColorSync();
    restoreOptionState();
    checkConstraints();
    if (popupInited)
        updateUI();
    saveAllValues();
    return true;
}

void CVPrintQualityPDE::saveAllValues() {
    if (!popupInited)
        return;
    getUIValues();
    saveOptionState();
}

bool CVPrintQualityPDE::setAndMarkValueForKey(const std::optional<std::string>& value,
                                              const std::optional<std::string>& key) {
    if (!key || !value)
        return false;
    if (outputBinHolds(*key, *value))
        return false;
    if (!pdePluginCallbackObject_->willChangePPDOptionKeyValuePpdChoice(*key, *value))
        return false;
    outputBin_.insert_or_assign(*key, *value);
    return true;
}

void CVPrintQualityPDE::requestNewOutputBin(toolkit::View* sender) {
    const std::string key = determineKey(sender).value_or("");
    std::optional<std::string> value;
    if (const auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(sender)) {
        if (const auto* cell = matrix->selectedCell())
            value = cell->keyword;
    } else if (const auto* popup = dynamic_cast<toolkit::PopUpList*>(sender)) {
        value = popup->selectedKeyword();
    } else if (const auto* box = dynamic_cast<toolkit::CheckBox*>(sender)) {
        value = onOffWord(box->isOn(), key);
    }
    if (value) {
        if (pdePluginCallbackObject_->willChangePPDOptionKeyValuePpdChoice(key, *value)) {
            outputBin_.insert_or_assign(key, *value);
            updateUIforKey(key);
        } else {
            revertUIForKey(sender, key);
        }
    }
    saveAllValues();
}

void CVPrintQualityPDE::revertUIForKey(toolkit::View* control, const std::optional<std::string>& key) {
    const toolkit::Value value = key ? toolkit::valueInMap(outputBin_, *key) : toolkit::Value();
    if (key == kMediaType && value.isText(kPlainDuplex) && dynamic_cast<toolkit::PopUpList*>(control) != nullptr)
        showValue(control, std::string(kPlain));
    else
        showValue(control, value);
}

void CVPrintQualityPDE::updateUI() {
    for (const std::string& key : std::vector(managedKeys()))
        updateUIforKey(key);
    checkUIConstraints();
}

void CVPrintQualityPDE::updateUIforKey(const std::optional<std::string>& key) {
    toolkit::View* const control = determineUI(key);
    if (control == nullptr)
        return;
    const toolkit::Value value = key ? toolkit::valueInMap(outputBin_, *key) : toolkit::Value();
    auto* popup = dynamic_cast<toolkit::PopUpList*>(control);
    if (showValue(control, value) || popup == nullptr || key != kMediaType)
        return;
    const std::string substitute(value.isText(kHagakiUra) ? kGlossy : kPlain);
    if (!popup->selectItemWithKeyword(substitute) || value.isText(kPlainDuplex))
        return;
    setAndMarkValueForKey(substitute, key);
}

void CVPrintQualityPDE::getUIValues() {
    checkUIConstraints();
    for (const std::string& key : std::vector(managedKeys())) {
        toolkit::View* const control = determineUI(key);
        if (const auto* matrix = dynamic_cast<toolkit::RadioMatrix*>(control)) {
            if (const auto* cell = matrix->selectedCell(); cell != nullptr && cell->keyword)
                setAndMarkValueForKey(cell->keyword, key);
        } else if (const auto* popup = dynamic_cast<toolkit::PopUpList*>(control)) {
            if (const auto keyword = popup->selectedKeyword())
                setAndMarkValueForKey(
                    hasFlag(kImageModeDuplex) && key == kMediaType ? std::string(kPlainDuplex) : *keyword, key);
        } else if (const auto* box = dynamic_cast<toolkit::CheckBox*>(control)) {
            setAndMarkValueForKey(onOffWord(box->isOn(), key), key);
            if (!box->isEnabled() && key != kSlowDrying && !hasFlag(kImageModeFaxOutput))
                setAndMarkValueForKey(onOffWord(false, key), key);
        }
    }
}

void CVPrintQualityPDE::PPDOptionKeyValueDidChangePpdChoice(const std::string& option, const std::string& choice) {
    if (!managesKey(option))
        return;
    outputBin_.insert_or_assign(option, choice);
    if (panelView_ != nullptr)
        updateUIforKey(option);
}

std::optional<std::vector<std::string>> CVPrintQualityPDE::availablePPDOptionKeys() {
    return supportedPPDOptionKeys();
}

std::optional<toolkit::ValueMap> CVPrintQualityPDE::summaryInfo() {
    toolkit::ValueMap summary;
    toolkit::ValueList order;
    restoreValuesAndReturnError();
    for (const std::string& key : availablePPDOptionKeys().value_or(std::vector<std::string>())) {
        const printing::Option* option = ppd->option(key);
        if (option == nullptr)
            continue;
        const toolkit::Value& value = toolkit::valueInMap(outputBin_, key);
        std::string text;
        if (value.isText(kOn) || value.isText(kOff)) {
            text = localizedString(value.textReading());
        } else if (value.isText(kTrue) || value.isText(kFalse)) {
            text = localizedString(value.isText(kTrue) ? kOn : kOff);
        } else {
            const auto* keyword = value.as<std::string>();
            const printing::Choice* choice = keyword == nullptr ? nullptr : option->choice(*keyword);
            if (choice == nullptr)
                continue;
            text = choice->text;
        }
        summary.insert_or_assign(option->text, text);
        order.emplace_back(option->text);
    }
    summary.insert_or_assign(std::string(kSummaryDisplayOrder), std::move(order));
    return summary;
}
