// The base panel's messages and outlets: the one list of what can be sent and connected by name.

#include "framework/CVPrintQualityPDE.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"

framework::MessageResult CVPrintQualityPDE::sendMessage(std::string_view name,
                                                        std::span<const framework::MessageValue> arguments) {
    return framework::sendMessage<CVPrintQualityPDE>(*this, messageTables(), name, arguments);
}

CVPrintQualityPDE::MessageTables CVPrintQualityPDE::messageTables() const {
    using Panel = CVPrintQualityPDE;
#define CV_MESSAGE(name, operation) framework::message<CVPrintQualityPDE, &Panel::operation>(name)
    static constexpr PanelMessage kMessages[] = {
        // The panel protocol
        CV_MESSAGE("panelName", panelName),
        CV_MESSAGE("panelKind", panelKind),
        CV_MESSAGE("panelView", panelView),
        CV_MESSAGE("willShow", willShow),
        CV_MESSAGE("shouldHide", shouldHide),
        CV_MESSAGE("shouldPrint", shouldPrint),
        CV_MESSAGE("saveValuesAndReturnError:", saveValuesAndReturnError),
        CV_MESSAGE("restoreValuesAndReturnError:", restoreValuesAndReturnError),
        CV_MESSAGE("summaryInfo", summaryInfo),
        CV_MESSAGE("supportedPPDOptionKeys", supportedPPDOptionKeys),
        CV_MESSAGE("PPDOptionKeyValueDidChange:ppdChoice:", PPDOptionKeyValueDidChangePpdChoice),
        CV_MESSAGE("shouldShowHelp", shouldShowHelp),
        // Accessors
        CV_MESSAGE("thePDEName", thePDEName),
        CV_MESSAGE("setThePDEName:", setThePDEName),
        CV_MESSAGE("outputBin", outputBin),
        CV_MESSAGE("setOutputBin:", setOutputBin),
        CV_MESSAGE("imageModeFlag", imageModeFlag),
        // Option values
        CV_MESSAGE("setPPDKeys:", setPPDKeys),
        CV_MESSAGE("saveAllValues", saveAllValues),
        CV_MESSAGE("requestNewOutputBin:", requestNewOutputBin),
        CV_MESSAGE("revertUI:forKey:", revertUIForKey),
        CV_MESSAGE("updateUI", updateUI),
        CV_MESSAGE("updateUIforKey:", updateUIforKey),
        CV_MESSAGE("setAndMarkValue:forKey:", setAndMarkValueForKey),
        CV_MESSAGE("getUIValues", getUIValues),
        CV_MESSAGE("availablePPDOptionKeys", availablePPDOptionKeys),
        CV_MESSAGE("setDefaults", setDefaults),
        // Population
        CV_MESSAGE("initializePopup", initializePopup),
        CV_MESSAGE("determineKey:", determineKey),
        CV_MESSAGE("determineUI:", determineUI),
        CV_MESSAGE("determineLabel:", determineLabel),
        // Constraints
        CV_MESSAGE("checkConstraints", checkConstraints),
        CV_MESSAGE("checkUIConstraints", checkUIConstraints),
        CV_MESSAGE("checkModelName", checkModelName),
        CV_MESSAGE("changeResolutionLetterB", changeResolutionLetterB),
        // Layout and disclosure
        CV_MESSAGE("optionName", optionName),
        CV_MESSAGE("saveOptionState", saveOptionState),
        CV_MESSAGE("restoreOptionState", restoreOptionState),
        CV_MESSAGE("toggleShowOption:", toggleShowOption),
        CV_MESSAGE("adjustUIPosition:forParts:", adjustUIPositionForParts),
        CV_MESSAGE("setViewFrameSize:", setViewFrameSize),
        CV_MESSAGE("dialogDidExpand:", dialogDidExpand),
        CV_MESSAGE("changeImage:ofView:", changeImageOfView),
        // Help, colour matching, fax, alerts
        CV_MESSAGE("checkColorSync", checkColorSync),
        CV_MESSAGE("checkFax", checkFax),
        CV_MESSAGE("registerHelp", registerHelp),
        CV_MESSAGE("helpAnchor", helpAnchor),
        CV_MESSAGE("helpBook", helpBook),
        CV_MESSAGE("showHelpFile:", showHelpFile),
        CV_MESSAGE("shouldShowAlert:", shouldShowAlert),
        CV_MESSAGE("alertDidEnd:returnCode:contextInfo:", alertDidEndReturnCodeContextInfo),
        CV_MESSAGE("removeNotificationObserver:", removeNotificationObserver),
    };
#undef CV_MESSAGE
    return {kMessages};
}

CVPrintQualityPDE::OutletTables CVPrintQualityPDE::outletTables() const {
    static constexpr PanelOutlet kOutlets[] = {
        framework::outlet<CVPrintQualityPDE, &CVPrintQualityPDE::optionButton>("optionButton"),
    };
    return {kOutlets};
}
