// What the bundle exports: its principal object with the makers of its panels, and the panel inspection.

#include "color_settings/CVInkColorSettingPDE.h"
#include "framework/plug_in_entry.h"
#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_names.h"

namespace {

std::unique_ptr<CVInkQuality12PDEPlugIn> makePrincipalObject() {
    // The order in which a dialog shows them.
    return std::make_unique<CVInkQuality12PDEPlugIn>(std::vector<CVInkQuality12PDEPlugIn::PanelMaker>{
        makePanel<CVInkPrintSetting12PDE>, makePanel<CVInkColorSettingPDE>});
}

const framework::PanelInspection& panelInspection() {
    static const framework::PanelInspection inspection(paper_names::messages());
    return inspection;
}

} // namespace

extern "C" __attribute__((visibility("default"))) const framework::PlugInEntry CVPrintPlugInEntry = {
    .interfaceVersion = framework::kPlugInInterfaceVersion,
    .inspectionVersion = framework::kPanelInspectionVersion,
    .makePrincipalObject = makePrincipalObject,
    .panelInspection = panelInspection,
};
