#pragma once

#include "framework/CVPrintQualityPDE.h"
#include "framework/export.h"

#include <memory>
#include <string_view>
#include <vector>

/// The plug-in's principal object: the factory that a host asks for panels.
class CV_FRAMEWORK_EXPORT CVInkQuality12PDEPlugIn {
public:
    /// Makes one panel, fully built, or answers null.
    using PanelMaker = std::shared_ptr<CVPrintQualityPDE> (*)(framework::HostCallback* callback);

    /// The type of panels that stand in a print dialog.
    static constexpr std::string_view kPrintDialogPanelType = "BDB091F4-E57F-11D3-B5CC-0050E4603277";

    /// The makers in the order in which the panels are shown.
    explicit CVInkQuality12PDEPlugIn(std::vector<PanelMaker> makers);

    /// Always true: the bundle is not kept, each panel asks its dialog's application for it.
    bool initWithBundle(const std::shared_ptr<toolkit::Bundle>& bundle);
    /// The panels of this type for one dialog; a panel that cannot be built is left out, an unknown type has none.
    framework::PanelList PDEPanelsForTypeWithHostInfo(std::string_view type, framework::HostCallback* callback);

private:
    std::vector<PanelMaker> makers_;
};

/// A maker for a panel's class: the fields first, then the initialiser, which reaches the class's overrides.
template <typename Panel>
std::shared_ptr<CVPrintQualityPDE> makePanel(framework::HostCallback* callback) {
    auto panel = std::make_shared<Panel>();
    return panel->initWithCallback(callback) ? panel : nullptr;
}
