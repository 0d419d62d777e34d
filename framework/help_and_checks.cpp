// Help, the environment's checks and the memory of suppressed alerts.

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"

#include <filesystem>

namespace {

constexpr std::string_view kColorMatchingAttribute = "APSupportsCustomColorMatching";
constexpr std::string_view kHelpAnchor = "CvHelpAnchor";

} // namespace

std::optional<toolkit::Value> CVPrintQualityPDE::printSettingForKey(std::string_view key) const {
    printing::PrintSettings* settings = pdePluginCallbackObject_->printSettings();
    const auto stored = settings == nullptr ? std::nullopt : settings->valueForKey(key);
    if (!stored)
        return std::nullopt;
    return std::visit([](const auto& value) { return toolkit::Value(value); }, *stored);
}

void CVPrintQualityPDE::setPrintSettingForKey(printing::SettingValue value, std::string_view key) {
    if (printing::PrintSettings* settings = pdePluginCallbackObject_->printSettings())
        settings->setValueForKey(std::move(value), key);
}

void CVPrintQualityPDE::checkColorSync() {
    if (!ppd->hasAttribute(kColorMatchingAttribute)) {
        setFlag(kImageModeVendorColorMatching, false);
        return;
    }
    if (!pdePluginCallbackObject_->respondsToSelector(framework::kPrintSettingsSelector) ||
        pdePluginCallbackObject_->printSettings() == nullptr)
        return;
    const auto mode = printSettingForKey(printing::kColorMatchingModeKey);
    setFlag(kImageModeVendorColorMatching, !mode || !mode->isText(printing::kApplicationColorMatching));
}

void CVPrintQualityPDE::checkFax() {
    setFlag(kImageModeFaxOutput, markedChoice(keywords::kOutput) == keywords::kFax);
}

bool CVPrintQualityPDE::registerHelp() {
    // <folder>/<folder of bundles>/<bundle> has its books in <folder>/Help.
    const std::filesystem::path folder = pluginBundle->path().parent_path().parent_path();
    const std::filesystem::path book = folder.native() + "/Help/" + thePDEName_.value_or("") + ".help";
    std::error_code missing;
    return std::filesystem::exists(book, missing) && application().registerHelpBooks(book);
}

std::optional<std::string> CVPrintQualityPDE::helpAnchor() {
    return std::string(kHelpAnchor);
}

std::optional<std::string> CVPrintQualityPDE::helpBook() {
    const auto* name = toolkit::valueInMap(pluginBundle->infoDictionary(), "CFBundleHelpBookName").as<std::string>();
    return name == nullptr ? std::nullopt : std::optional(*name);
}

bool CVPrintQualityPDE::shouldShowHelp() {
    if (!hasFlag(kImageModeHelpRegistered))
        return true;
    const auto anchor = helpAnchor();
    const auto book = helpBook();
    if (!anchor || !book)
        return true;
    application().openHelpAnchor(*anchor, *book);
    return false;
}

void CVPrintQualityPDE::showHelpFile(toolkit::View*) {
    if (hasFlag(kImageModeHelpRegistered))
        shouldShowHelp();
}

bool CVPrintQualityPDE::shouldShowAlert(const std::optional<std::string>& key) {
    toolkit::UserDefaults* defaults = application().userDefaults();
    const auto identifier = pluginBundle->identifier();
    if (defaults == nullptr || !identifier || !key)
        return true;
    const toolkit::ValueMap domain = defaults->persistentDomainForName(*identifier).value_or(toolkit::ValueMap());
    const toolkit::Value& entry = toolkit::valueInMap(domain, *key);
    return entry.isAbsent() || entry.booleanReading();
}

void CVPrintQualityPDE::alertDidEndReturnCodeContextInfo(const toolkit::AlertAnswer& alert, int,
                                                         const std::optional<std::string>& key) {
    if (key)
        storeAlertSuppression(*key, alert.suppressionButtonOn);
}

void CVPrintQualityPDE::storeAlertSuppression(std::string_view key, bool suppressed) {
    toolkit::UserDefaults* defaults = application().userDefaults();
    const auto identifier = pluginBundle->identifier();
    if (defaults == nullptr || !identifier)
        return;
    toolkit::ValueMap domain = defaults->persistentDomainForName(*identifier).value_or(toolkit::ValueMap());
    domain.insert_or_assign(std::string(key), !suppressed); // the entry says whether to show the alert
    defaults->setPersistentDomainForName(std::move(domain), *identifier);
    defaults->synchronize();
}
