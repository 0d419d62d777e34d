#pragma once

#include "framework/CVInkQuality12PDEPlugIn.h"
#include "framework/panel_inspection.h"

#include <memory>

namespace framework {

/// What a bundle exports, under the name kPlugInEntrySymbol. A host looks at the version of an interface before it
/// calls anything of it; the versions stand first and never move.
struct PlugInEntry {
    int interfaceVersion;
    int inspectionVersion;
    std::unique_ptr<CVInkQuality12PDEPlugIn> (*makePrincipalObject)();
    const PanelInspection& (*panelInspection)();
};

inline constexpr int kPlugInInterfaceVersion = 1;
inline constexpr int kPanelInspectionVersion = 1;
inline constexpr const char* kPlugInEntrySymbol = "CVPrintPlugInEntry";

} // namespace framework
