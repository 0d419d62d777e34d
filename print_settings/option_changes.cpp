// What follows when the user changes an option, the start values, and saving.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_names.h"
#include "print_settings/print_keywords.h"

#include "toolkit/popup_list.h"

using namespace keywords;

void CVInkPrintSetting12PDE::requestNewOutputBin(toolkit::View* sender) {
    CVPrintQualityPDE::requestNewOutputBin(sender);
    const std::optional<std::string> key = determineKey(sender);
    if (key == kMediaType) {
        checkUIStateWithMediaType(true);
        getUIValues();
    } else if (key == kResolution) {
        if (outputBinHolds(kResolution, kBest) && !outputBinMediaIsPlain())
            showBestQualityAlert();
        canSelectJpegPrint();
    } else if (key == kInputSlot) {
        checkStateWithPaperFeed();
    } else if (key == kMonoColor) {
        canSelectColorMode();
    } else if (key == kPaperThick) {
        if (paperSizeIsCustomEnv())
            setAndMarkValueForKey(std::string(kOff), std::string(kBiDir));
        else if (outputBinMediaIsPlain())
            setAndMarkValueForKey(std::string(kOn), std::string(kBiDir));
        if (popupInited) {
            checkUIConstraints();
            updateUIforKey(std::string(kBiDir));
        }
    }
}

void CVInkPrintSetting12PDE::showBestQualityAlert() {
    const std::string key = "Best Alert"; // the informative text's key has another stem
    toolkit::Alert alert{.style = toolkit::AlertStyle::Informational,
                         .messageText = localizedString(key),
                         .informativeText = localizedString("Highest Alert2"),
                         .buttons = {pluginBundle->localizedText("OK")},
                         .showsSuppressionButton = true,
                         .icon = {}};
    if (!shouldShowAlert(key))
        return;
    application().beginSheet(alert, [this, key](const toolkit::AlertAnswer& answer) {
        alertDidEndReturnCodeContextInfo(answer, answer.button, key);
    });
}

bool CVInkPrintSetting12PDE::outputBinMediaIsPlain() const {
    return paper_names::isKindOfPlainPaper(outputBinKeyword(kMediaType));
}

void CVInkPrintSetting12PDE::setDefaultQuality(const std::optional<std::string>& mediaType) {
    setAndMarkValueForKey(defaultQualityForMediaType(mediaType), std::string(kResolution));
}

void CVInkPrintSetting12PDE::setDefaults() {
    for (const std::string& key : std::vector(managedKeys())) {
        const printing::Option* option = ppd->option(key);
        if (option == nullptr || outputBinHolds(key, option->defaultChoice))
            continue;
        if (ppd->isDefaultMarked(*option)) {
            if (key == kPaperThick && hasFlag(kImageModeEnvelope))
                setAndMarkValueForKey(std::string(kEnvelopeThickness), key);
            else if (key == kBiDir && hasFlag(kImageModeBiDirDisabled))
                setAndMarkValueForKey(std::string(kOff), key);
        } else if (!markedChoice(key) &&
                   pdePluginCallbackObject_->willChangePPDOptionKeyValuePpdChoice(key, option->defaultChoice)) {
            outputBin_.insert_or_assign(key, option->defaultChoice);
        }
    }
}

bool CVInkPrintSetting12PDE::saveValuesAndReturnError(const framework::ErrorSlot& error) {
    CVPrintQualityPDE::saveValuesAndReturnError(error);
    checkDuplex();
    const std::string mediaType(kMediaType);
    const bool duplex = hasFlag(kImageModeDuplex);
    if (popupInited) {
        if (selectedMediaType() == kPlain)
            setAndMarkValueForKey(std::string(duplex ? kPlainDuplex : kPlain), mediaType);
    } else if (duplex) {
        setAndMarkValueForKey(std::string(kPlainDuplex), mediaType);
        setAndMarkValueForKey(std::string(kPlainNormal), std::string(kResolution));
    } else if (outputBinHolds(kMediaType, kPlainDuplex)) {
        setAndMarkValueForKey(std::string(kPlain), mediaType);
    }
    return true;
}
