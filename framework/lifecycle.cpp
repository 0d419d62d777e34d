#include "framework/CVPrintQualityPDE.h"

#include "framework/option_keywords.h"

#include <algorithm>

namespace framework {

HostCallback::~HostCallback() = default;

} // namespace framework

CVPrintQualityPDE::CVPrintQualityPDE() = default;

CVPrintQualityPDE::~CVPrintQualityPDE() {
    views_.reset();
    toolkit::NotificationCenter::defaultCenter().removeObserver(this);
}

bool CVPrintQualityPDE::initWithCallback(framework::HostCallback* callback) {
    if (callback == nullptr)
        return false;
    pdePluginCallbackObject_ = callback;
    pluginBundle = application().pluginBundle();
    if (pluginBundle == nullptr) {
        pdePluginCallbackObject_ = nullptr;
        return false;
    }
    outputBin_.clear();
    if (const auto* name = toolkit::valueInMap(pluginBundle->infoDictionary(), "CFBundleName").as<std::string>())
        setThePDEName(*name);
    paperName.reset();
    popupInited = false;
    imageModeFlag_ = 0;
    if (!callback->respondsToSelector(framework::kWillChangeOptionSelector)) {
        pdePluginCallbackObject_ = nullptr;
        pluginBundle.reset();
        return false;
    }
    static const printing::PrinterDescription noPrinter;
    ppd = callback->ppdFile();
    if (ppd == nullptr)
        ppd = &noPrinter;
    checkModelName();
    restoreValuesAndReturnError();
    checkConstraints();
    return true;
}

std::string CVPrintQualityPDE::panelKind() {
    return "com.corvane.print.pde.Cocoa" + thePDEName_.value_or("(null)");
}

toolkit::View* CVPrintQualityPDE::panelView() {
    if (panelView_ != nullptr)
        return panelView_;
    std::string error;
    views_ = toolkit::LoadedViews::load(*pluginBundle, thePDEName_.value_or(""), error);
    if (views_ == nullptr)
        return nullptr; // the host says that the panel has no view
    panelView_ = &views_->root();
    effectContent = views_->store();
    connectOutlets();
    return panelView_;
}

void CVPrintQualityPDE::connectOutlets() {
    for (const auto& table : outletTables())
        for (const PanelOutlet& outlet : table)
            if (toolkit::View* view = views_->viewNamed(outlet.name))
                outlet.connect(*this, *view);
    // The controls are this panel's own and end with it: their actions may name it plainly. A running action holds it.
    for (const auto& view : views_->views())
        if (auto* control = dynamic_cast<toolkit::Control*>(view.get());
            control != nullptr && !control->actionMessage().empty())
            control->setAction([this](toolkit::Control& sender) {
                const auto held = shared_from_this();
                const framework::MessageValue argument{&sender};
                sendMessage(sender.actionMessage(), {&argument, 1});
            });
}

void CVPrintQualityPDE::willShow() {
    setFlag(kImageModePanelShown, true);
    checkColorSync();
    checkFax();
    initializePopup();
}

bool CVPrintQualityPDE::shouldHide() {
    setFlag(kImageModePanelShown, false);
    return true;
}

bool CVPrintQualityPDE::shouldPrint() {
    saveValuesAndReturnError();
    return true;
}

bool CVPrintQualityPDE::saveValuesAndReturnError(const framework::ErrorSlot&) {
    return true;
}

std::optional<std::vector<std::string>> CVPrintQualityPDE::supportedPPDOptionKeys() {
    return PPDKeys;
}

void CVPrintQualityPDE::removeNotificationObserver(const toolkit::Notification&) {
    toolkit::NotificationCenter::defaultCenter().removeObserver(this);
}

const std::vector<std::string>& CVPrintQualityPDE::managedKeys() const {
    static const std::vector<std::string> none;
    return PPDKeys ? *PPDKeys : none;
}

bool CVPrintQualityPDE::managesKey(std::string_view key) const {
    return std::ranges::find(managedKeys(), key) != managedKeys().end();
}

std::optional<std::vector<std::string>> CVPrintQualityPDE::keysInInfoEntry(std::string_view entry) const {
    const auto* list = toolkit::valueInMap(pluginBundle->infoDictionary(), entry).as<toolkit::ValueList>();
    if (list == nullptr)
        return std::nullopt;
    std::vector<std::string> keys;
    for (const toolkit::Value& value : *list)
        if (const auto* key = value.as<std::string>())
            keys.push_back(*key);
    return keys;
}
