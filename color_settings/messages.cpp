// The Color Settings panel's messages and outlets: the one list of what can be sent and connected by name.

#include "color_settings/CVInkColorSettingPDE.h"

#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/label.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

CVPrintQualityPDE::MessageTables CVInkColorSettingPDE::messageTables() const {
    using Panel = CVInkColorSettingPDE;
#define CV_MESSAGE(name, operation) framework::message<CVPrintQualityPDE, &Panel::operation>(name)
    static constexpr PanelMessage kMessages[] = {
        // Options
        CV_MESSAGE("determineField:", determineField),
        CV_MESSAGE("printSettingsNotified:", printSettingsNotified),
        // The five adjustments
        CV_MESSAGE("setEffectDefaults", setEffectDefaults),
        CV_MESSAGE("restoreEffectValues", restoreEffectValues),
        CV_MESSAGE("saveEffectValues", saveEffectValues),
        CV_MESSAGE("revertEffectDialog:", revertEffectDialog),
        CV_MESSAGE("effectValueDidChange:", effectValueDidChange),
        // The preview
        CV_MESSAGE("refImage", refImage),
        CV_MESSAGE("setRefImage:", setRefImage),
        CV_MESSAGE("setRefImageWithName:", setRefImageWithName),
        CV_MESSAGE("applyColorControlFilter:code:", applyColorControlFilterCode),
        CV_MESSAGE("applyColorMatrixFilter:code:", applyColorMatrixFilterCode),
        CV_MESSAGE("redrawEffectImage", redrawEffectImage),
        CV_MESSAGE("updateImage:", updateImage),
    };
#undef CV_MESSAGE
    MessageTables tables = CVPrintQualityPDE::messageTables();
    tables.insert(tables.begin(), kMessages);
    return tables;
}

CVPrintQualityPDE::OutletTables CVInkColorSettingPDE::outletTables() const {
    using Panel = CVInkColorSettingPDE;
#define CV_OUTLET(field) framework::outlet<CVPrintQualityPDE, &Panel::field>(#field)
    static constexpr PanelOutlet kOutlets[] = {
        CV_OUTLET(colorMatchingMatrix),
        CV_OUTLET(ditherPopup),
        CV_OUTLET(colorEnhanceButton),
        CV_OUTLET(colorMatchingLabel),
        CV_OUTLET(ditherLabel),
        CV_OUTLET(brightnessLabel),
        CV_OUTLET(contrastLabel),
        CV_OUTLET(redLabel),
        CV_OUTLET(greenLabel),
        CV_OUTLET(blueLabel),
        CV_OUTLET(brightnessField),
        CV_OUTLET(contrastField),
        CV_OUTLET(redField),
        CV_OUTLET(greenField),
        CV_OUTLET(blueField),
        CV_OUTLET(optionLabel),
        CV_OUTLET(effectImageView),
        CV_OUTLET(colorModeImageView),
    };
#undef CV_OUTLET
    OutletTables tables = CVPrintQualityPDE::outletTables();
    tables.insert(tables.begin(), kOutlets);
    return tables;
}
