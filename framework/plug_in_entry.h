#pragma once

#include "framework/CVInkQuality12PDEPlugIn.h"
#include "framework/panel_inspection.h"

#include <memory>

namespace framework {

/// What a bundle exports, under the name kPlugInEntrySymbol. A host looks at the version of an interface before it
/// calls anything of it; the versions stand first and never move.
struct PlugInEntry {
    int interfaceVersion;  ///< kPlugInInterfaceVersion of the bundle
    int inspectionVersion; ///< kPanelInspectionVersion of the bundle
    std::unique_ptr<CVInkQuality12PDEPlugIn> (*makePrincipalObject)();
    const PanelInspection& (*panelInspection)(); ///< for tests, lives as long as the bundle is loaded
};

inline constexpr int kPlugInInterfaceVersion = 1;                       ///< of this framework
inline constexpr int kPanelInspectionVersion = 1;                       ///< of this framework
inline constexpr const char* kPlugInEntrySymbol = "CVPrintPlugInEntry"; ///< what a host looks up

} // namespace framework
