// The five adjustments: where their values live and in which direction they are copied.

#include "color_settings/CVInkColorSettingPDE.h"

#include "toolkit/number_field.h"

namespace {

using namespace keywords;

constexpr std::int64_t kSmallest = -20, kLargest = 20;

bool isInRange(std::int64_t value) {
    return kSmallest <= value && value <= kLargest;
}

// The last change of an adjustment in this process, whichever panel it happened in.
struct EffectVal {
    std::int64_t tag = -1; // none
    std::int64_t value = 0;
};

EffectVal& effectVal() {
    static EffectVal lastChange;
    return lastChange;
}

} // namespace

toolkit::ValueMap CVInkColorSettingPDE::ownFields() const {
    return {{"effectVal", toolkit::ValueList{effectVal().tag, effectVal().value}}};
}

void CVInkColorSettingPDE::setEffectDefaults() {
    effectVal() = {};
    if (PPDEffectKeys.empty()) {
        for (const Adjustment& adjustment : kAdjustments)
            PPDEffectKeys.emplace_back(adjustment.key);
        for (const std::string& key : PPDEffectKeys)
            if (const printing::Option* option = ppd->option(key))
                outputBin_.insert_or_assign(key, toolkit::integerInText(option->defaultChoice));
        ccFilter.setDefaults();
        ccFilter.setInputImage(refImage_);
        cmFilter.setDefaults();
        cmFilter.setInputImage(refImage_);
    }
    if (effectContent != nullptr)
        for (const std::string& key : PPDEffectKeys)
            effectContent->setValueForKey(toolkit::valueInMap(outputBin_, key), key);
}

void CVInkColorSettingPDE::restoreEffectValues() {
    if (pdePluginCallbackObject_->printSettings() == nullptr)
        return;
    for (std::size_t index = 0; index < PPDEffectKeys.size(); ++index) {
        const std::string& key = PPDEffectKeys[index];
        const auto stored = printSettingForKey(kAdjustments[index].settingKey);
        const std::int64_t value = stored ? stored->integerReading() : 0; // a missing value overrules the PPD's default
        outputBin_.insert_or_assign(key, isInRange(value) ? value : 0);
        if (effectContent != nullptr)
            effectContent->setValueForKey(toolkit::valueInMap(outputBin_, key), key);
    }
}

void CVInkColorSettingPDE::saveEffectValues() {
    if (pdePluginCallbackObject_->printSettings() == nullptr)
        return;
    for (std::size_t index = 0; index < PPDEffectKeys.size(); ++index) {
        const std::string& key = PPDEffectKeys[index];
        if (effectContent != nullptr)
            outputBin_.insert_or_assign(key, effectContent->valueForKey(key).integerReading());
        const toolkit::Value& value = toolkit::valueInMap(outputBin_, key);
        const bool usable = !value.isAbsent() && isInRange(value.integerReading());
        setPrintSettingForKey(usable ? value.textReading() : "0", kAdjustments[index].settingKey);
    }
}

void CVInkColorSettingPDE::revertEffectDialog(toolkit::View*) {
    effectVal() = {};
    ccFilter.setDefaults();
    cmFilter.setDefaults();
    if (effectContent != nullptr) {
        effectContent->setValueForKey(false, kColorEnhancement);
        effectContent->setValueForKey(false, kColorAvailable);
    }
    outputBin_.insert_or_assign(std::string(kColorEnhancement), std::string(kOff)); // pending only: nothing is marked
    setEffectDefaults();
    redrawEffectImage();
}

void CVInkColorSettingPDE::effectValueDidChange(toolkit::NumberField* sender) {
    const std::int64_t tag = sender == nullptr ? 0 : sender->tag();
    const float single = sender == nullptr ? 0 : sender->singleValue();
    if (tag == effectVal().tag && single == static_cast<float>(effectVal().value))
        return;
    effectVal() = {.tag = tag, .value = sender == nullptr ? 0 : sender->integerValue()};
    if (tag <= kTagBlue)
        redrawAfterChangeOfTag(static_cast<int>(tag < 0 ? -1 : tag));
}
