// What is asked before printing.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/print_keywords.h"

#include <algorithm>
#include <array>

namespace {

using namespace keywords;

// Sizes that are printed on both sides. Borderless variants are not.
constexpr std::array<std::string_view, 19> kTwoSidedPapers = {"A3",
                                                              "Tabloid",
                                                              "B4",
                                                              "A3.LongGrain",
                                                              "A3.ShortGrain",
                                                              "Tabloid.ShortGrain",
                                                              "B4.ShortGrain",
                                                              "Letter",
                                                              "Legal",
                                                              "Executive",
                                                              "B5",
                                                              "A4",
                                                              "A5",
                                                              "A6",
                                                              "Postcard",
                                                              "CvA3",
                                                              "CvA3_S",
                                                              "CvLedger_S",
                                                              "CvB4_S"};

} // namespace

bool CVInkPrintSetting12PDE::shouldPrint() {
    const bool saved = CVPrintQualityPDE::shouldPrint();
    if (saved && checkIfOutputToFax())
        return true;
    panelView(); // the alerts stand in its description
    return saved && checkPaperAndShowOrientationAlert();
}

bool CVInkPrintSetting12PDE::checkIfOutputToFax() {
    return markedChoice(kOutput) == kFax;
}

bool CVInkPrintSetting12PDE::checkShouldShowDiscAlert() {
    if (!hasFlag(kImageModePrintableDisc))
        return true;
    const auto media = markedChoice(kMediaType);
    if (media != kPrintableDisc && media != kGlossyPrintableDisc)
        return true;
    toolkit::Alert alert{.style = toolkit::AlertStyle::Informational,
                         .messageText = localizedString("DiscPrint Alert"),
                         .informativeText = localizedString("DiscPrint Alert2"),
                         .buttons = {pluginBundle->localizedText("OK"), pluginBundle->localizedText("Cancel")},
                         .icon = {}};
    if (const auto* path = pluginBundle->pathForResource("DiscPrint", "tiff"))
        alert.icon = toolkit::Image{.name = "DiscPrint", .pixels = nullptr, .path = path->string()};
    return application().runModalAlert(alert).button == 0;
}

bool CVInkPrintSetting12PDE::checkShouldShowDuplexAlert() {
    if (hasFlag(kImageModeDuplex) && paperName &&
        std::ranges::find(kTwoSidedPapers, *paperName) != kTwoSidedPapers.end())
        return true;
    application().runModalAlert({.style = toolkit::AlertStyle::Critical,
                                 .messageText = localizedString("Duplex Alert"),
                                 .informativeText = localizedString("Duplex Alert2"),
                                 .buttons = {pluginBundle->localizedText("OK")},
                                 .icon = {}});
    return false;
}
