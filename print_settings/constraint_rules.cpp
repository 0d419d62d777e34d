// The two passes that keep the options consistent: first the values, then the controls.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_names.h"
#include "print_settings/print_keywords.h"

#include "toolkit/button.h"
#include "toolkit/label.h"
#include "toolkit/popup_list.h"

#include <algorithm>

using namespace keywords;

void CVInkPrintSetting12PDE::checkConstraints() {
    CVPrintQualityPDE::checkConstraints();

    // Quality allowed for the media
    if (const auto media = outputBinKeyword(kMediaType)) {
        const std::vector<std::string> allowed = allowedQuality(media);
        if (std::ranges::find(allowed, outputBinKeyword(kResolution)) == allowed.end())
            setDefaultQuality(media);
    }

    // Borderless paper forbids transparencies and fast printing on plain paper
    if (hasFlag(kImageModeBorderless)) {
        const std::string plain(kPlain);
        if (outputBinHolds(kMediaType, kTransparencies)) {
            setAndMarkValueForKey(plain, std::string(kMediaType));
            setDefaultQuality(plain);
            setFlag(kImageModeSlowDryingDisabled, true);
            setAndMarkValueForKey(std::string(kOn), std::string(kBiDir));
        } else if (outputBinMediaIsPlain() && (isBorderlessA3() || outputBinHolds(kResolution, kPlainFast))) {
            setDefaultQuality(plain);
        }
    }

    // Media types offered. This moves the pop-up to plain paper; what is pending comes back with the next updateUI().
    changeState(mediaTypePopup,
                {kPlain, kInkjet, kTransparencies, kCorvaneGlossyR, kCorvaneGlossy, kQT20Matte, kGlossy, kHagakiAtena,
                 kHagakiUra},
                true, true);

    // Bi-directional printing comes back on in every pass, except for envelopes and postcards
    paperSizeIsCustomEnv();
    setAndMarkValueForKey(std::string(hasFlag(kImageModeBiDirDisabled) ? kOff : kOn), std::string(kBiDir));

    // Transparencies
    setFlag(kImageModeTransparency, outputBinHolds(kMediaType, kTransparencies));

    // Two-sided printing has a medium of its own, whatever medium was chosen
    if (hasFlag(kImageModeDuplex))
        setAndMarkValueForKey(std::string(kPlainDuplex), std::string(kMediaType));

    // Colour mode
    canSelectColorMode();
}

void CVInkPrintSetting12PDE::checkUIConstraints() {
    CVPrintQualityPDE::checkUIConstraints();
    if (hasFlag(kImageModeFaxOutput))
        return;

    const auto disable = [](toolkit::Control* control) {
        if (control != nullptr)
            control->setEnabled(false);
    };
    const auto switchOffBiDir = [&] {
        disable(biDirButton);
        if (biDirButton != nullptr)
            biDirButton->setOn(false);
    };

    // Borderless paper: no transparencies
    if (hasFlag(kImageModeBorderless))
        changeState(mediaTypePopup, {kTransparencies}, false, false);

    // Envelopes and postcards: no bi-directional printing
    if (hasFlag(kImageModeBiDirDisabled))
        disable(biDirButton);

    // Slow drying that the media or the colour matching does not allow
    if (hasFlag(kImageModeSlowDryingDisabled))
        disable(slowDryButton);

    // Transparencies: no mirror printing
    if (hasFlag(kImageModeTransparency))
        disable(mirrorButton);

    // JPEG printing
    const bool jpeg = !hasFlag(kImageModeJpegUnavailable);
    if (jpegLabel != nullptr)
        jpegLabel->setTextColor(jpeg ? toolkit::TextColor::Enabled : toolkit::TextColor::Disabled);
    if (jpegPopup != nullptr)
        jpegPopup->setEnabled(jpeg);

    // The finest qualities print in one direction
    const auto quality = resolutionPopup == nullptr ? std::nullopt : resolutionPopup->selectedKeyword();
    if (quality == kPhoto || quality == kBest)
        switchOffBiDir();

    // So do matte papers and transparencies
    const auto media = selectedMediaType();
    if (media == kInkjet || media == kQT20Matte || media == kTransparencies)
        switchOffBiDir();

    // The separator before the dedicated media of vertical-line alignment stands in Japanese only
    if (firstLanguageSetting() != kJapanese && vertLineSeparater != nullptr)
        vertLineSeparater->setHidden(true);
}
