// The Print Settings panel's messages and outlets: the one list of what can be sent and connected by name.

#include "print_settings/CVInkPrintSetting12PDE.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/item_list.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"
#include "toolkit/table_view.h"
#include "toolkit/window.h"

CVPrintQualityPDE::MessageTables CVInkPrintSetting12PDE::messageTables() const {
    using Panel = CVInkPrintSetting12PDE;
#define CV_MESSAGE(name, operation) framework::message<CVPrintQualityPDE, &Panel::operation>(name)
    static constexpr PanelMessage kMessages[] = {
        // Setup
        CV_MESSAGE("initializeAdvOption:", initializeAdvOption),
        CV_MESSAGE("addAdvOption:forKey:", addAdvOptionForKey),
        // Option changes and defaults
        CV_MESSAGE("setDefaultQuality:", setDefaultQuality),
        // Media, quality and colour-mode rules
        CV_MESSAGE("allowedQuality:", allowedQuality),
        CV_MESSAGE("defaultQualityForMediaType:", defaultQualityForMediaType),
        CV_MESSAGE("canSelectColorMode", canSelectColorMode),
        CV_MESSAGE("canSelectJpegPrint", canSelectJpegPrint),
        CV_MESSAGE("checkUIStateWithMediaType:", checkUIStateWithMediaType),
        CV_MESSAGE("addOnOffSuffix:ToString:", addOnOffSuffixToString),
        // Paper tracking
        CV_MESSAGE("readPageSetup", readPageSetup),
        CV_MESSAGE("checkPageSizeChange:", checkPageSizeChange),
        CV_MESSAGE("checkDuplex", checkDuplex),
        CV_MESSAGE("checkDuplexChange:", checkDuplexChange),
        CV_MESSAGE("paperSizeIsCustomEnv", paperSizeIsCustomEnv),
        CV_MESSAGE("checkStateWithPaperFeed", checkStateWithPaperFeed),
        CV_MESSAGE("changeState:forArray:toEnable:toDefault:", changeStateForArrayToEnableToDefault),
        // Paper alerts
        CV_MESSAGE("checkPaperAndShowOrientationAlert", checkPaperAndShowOrientationAlert),
        CV_MESSAGE("showDialog:withAlertInfo:", showDialogWithAlertInfo),
        CV_MESSAGE("dialogOkDidClick:", dialogOkDidClick),
        CV_MESSAGE("dialogCancelDidClick:", dialogCancelDidClick),
        CV_MESSAGE("readyToShowEnvelopeAlert", readyToShowEnvelopeAlert),
        CV_MESSAGE("readyToShowPaperAlertWithKind:orientationMessage:alertWindow:alertView:alertImage:"
                   "alertMessageLabel:",
                   readyToShowPaperAlertWithKindOrientationMessageAlertWindowAlertViewAlertImageAlertMessageLabel),
        CV_MESSAGE("firstLanguageSetting", firstLanguageSetting),
        // Pre-print checks
        CV_MESSAGE("checkIfOutputToFax", checkIfOutputToFax),
        CV_MESSAGE("checkShouldShowDiscAlert", checkShouldShowDiscAlert),
        CV_MESSAGE("checkShouldShowDuplexAlert", checkShouldShowDuplexAlert),
    };
#undef CV_MESSAGE
    MessageTables tables = CVPrintQualityPDE::messageTables();
    tables.insert(tables.begin(), kMessages);
    return tables;
}

CVPrintQualityPDE::OutletTables CVInkPrintSetting12PDE::outletTables() const {
    using Panel = CVInkPrintSetting12PDE;
#define CV_OUTLET(field) framework::outlet<CVPrintQualityPDE, &Panel::field>(#field)
    static constexpr PanelOutlet kOutlets[] = {
        CV_OUTLET(mediaTypePopup),
        CV_OUTLET(resolutionPopup),
        CV_OUTLET(paperThickPopup),
        CV_OUTLET(paperFeedPopup),
        CV_OUTLET(monoColorPopup),
        CV_OUTLET(jpegPopup),
        CV_OUTLET(duplexPopup),
        CV_OUTLET(slowDryButton),
        CV_OUTLET(biDirButton),
        CV_OUTLET(mirrorButton),
        CV_OUTLET(reverseButton),
        CV_OUTLET(vertLineAlignA3Button),
        CV_OUTLET(vertLineAlignA4Button),
        CV_OUTLET(vertLineAlignOtherButton),
        CV_OUTLET(vertLineAlignQT22Button),
        CV_OUTLET(mediaTypeLabel),
        CV_OUTLET(resolutionLabel),
        CV_OUTLET(paperThickLabel),
        CV_OUTLET(paperFeedLabel),
        CV_OUTLET(monoColorLabel),
        CV_OUTLET(jpegLabel),
        CV_OUTLET(duplexLabel),
        CV_OUTLET(arrayController),
        CV_OUTLET(advancedTabView),
        CV_OUTLET(advancedTableView),
        CV_OUTLET(optionLabel),
        CV_OUTLET(vertLineLabel),
        CV_OUTLET(vertLineSeparater),
        CV_OUTLET(envAlertWindow),
        CV_OUTLET(envAlertImageView),
        CV_OUTLET(envInstructionLabel1),
        CV_OUTLET(envAlertOKButton),
        CV_OUTLET(envAlertCancelButton),
        CV_OUTLET(envAlertSummary),
        CV_OUTLET(normalPaperAlertWindow),
        CV_OUTLET(normalPaperAlertImageView),
        CV_OUTLET(normalPaperInstructionLabel),
        CV_OUTLET(normalPaperAlertOKButton),
        CV_OUTLET(normalPaperAlertCancelButton),
        CV_OUTLET(suppressionButton),
        CV_OUTLET(customPaperAlertWindow),
        CV_OUTLET(customPaperAlertImageView),
        CV_OUTLET(customPaperInstructionLabel),
        CV_OUTLET(customPaperAlertOKButton),
        CV_OUTLET(customPaperAlertCancelButton),
    };
#undef CV_OUTLET
    OutletTables tables = CVPrintQualityPDE::outletTables();
    tables.insert(tables.begin(), kOutlets);
    return tables;
}
