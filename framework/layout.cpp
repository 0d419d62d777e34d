// The disclosure of the advanced options, the panel's size and the pictures that change.

#include "framework/CVPrintQualityPDE.h"
#include "framework/option_keywords.h"

#include "imaging/loading.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"

namespace {

constexpr double kWindowMargin = 96; // points between the panel's height and the window's
constexpr std::string_view kColorPanelName = "CVInkColorSetting";

std::string disclosureKey(const std::string& optionName) {
    return std::string(keywords::kPrintSettingsPrefix) + "." + optionName;
}

} // namespace

std::string CVPrintQualityPDE::optionName() {
    return thePDEName_ == kColorPanelName ? "advancedcolorItem" : "advancedItem";
}

void CVPrintQualityPDE::saveOptionState() {
    const bool shown = effectContent != nullptr && effectContent->valueForKey(optionName()).booleanReading();
    setPrintSettingForKey(shown, disclosureKey(optionName()));
}

void CVPrintQualityPDE::restoreOptionState() {
    const std::optional<toolkit::Value> stored = printSettingForKey(disclosureKey(optionName()));
    if (effectContent == nullptr)
        return;
    const bool current = effectContent->valueForKey(optionName()).booleanReading();
    const bool wanted = stored && stored->booleanReading();
    if (wanted == current)
        return;
    effectContent->setValueForKey(wanted, optionName()); // the button's state follows before it is looked at
    toggleShowOption(optionButton);
}

void CVPrintQualityPDE::toggleShowOption(toolkit::View*) {}

void CVPrintQualityPDE::adjustUIPositionForParts(double offset, const std::vector<toolkit::View*>& parts) {
    for (toolkit::View* view : parts) {
        if (view == nullptr)
            continue;
        toolkit::Rect frame = view->frame();
        frame.y += offset;
        view->setFrame(frame);
    }
}

void CVPrintQualityPDE::setViewFrameSize(const toolkit::Size& size) {
    if (!pdePluginCallbackObject_->respondsToSelector(framework::kPanelViewDidResizeSelector))
        return;
    if (panelView_ != nullptr) {
        toolkit::Rect frame = panelView_->frame();
        frame.width = size.width;
        frame.height = size.height;
        panelView_->setFrame(frame);
    }
    const toolkit::Window* window = application().keyWindow();
    if (!hasFlag(kImageModePanelShown) || window == nullptr)
        return;
    if (window->frame().height > size.height + kWindowMargin)
        pdePluginCallbackObject_->panelViewDidResize();
    else
        observe(keywords::kViewDidUpdateTrackingAreas, panelView_, &CVPrintQualityPDE::dialogDidExpand);
}

void CVPrintQualityPDE::dialogDidExpand(const toolkit::Notification&) {
    toolkit::NotificationCenter::defaultCenter().removeObserver(this, keywords::kViewDidUpdateTrackingAreas,
                                                                panelView_);
    pdePluginCallbackObject_->panelViewDidResize();
}

void CVPrintQualityPDE::changeImageOfView(const std::optional<std::string>& name, toolkit::ImageView* view) {
    if (view == nullptr || (view->image() && view->image()->name && view->image()->name == name))
        return;
    const std::string resource = name.value_or("");
    if (const auto* tiff = pluginBundle->pathForResource(resource, "tiff")) {
        if (const auto loaded = imaging::loadPicture(tiff->string()); loaded.picture)
            view->setImage(toolkit::Image{.name = name,
                                          .width = loaded.picture->extent().width,
                                          .height = loaded.picture->extent().height,
                                          .pixels = nullptr,
                                          .path = tiff->string()});
    } else if (const auto* pdf = pluginBundle->pathForResource(resource, "pdf")) {
        view->setImage(toolkit::Image{.name = name, .pixels = nullptr, .path = pdf->string()}); // the host loads it
    } else {
        view->renameImage("None");
        view->setHidden(true);
        return;
    }
    view->setHidden(false);
}
