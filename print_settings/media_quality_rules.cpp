// Which qualities a media type allows, and what else follows from the media type, the quality and the colour mode.

#include "print_settings/CVInkPrintSetting12PDE.h"
#include "print_settings/paper_names.h"
#include "print_settings/print_keywords.h"

#include "toolkit/button.h"
#include "toolkit/popup_list.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

using namespace keywords;

constexpr std::array kPlainQualities = {kPlainFast, kPlainNormal, kHigh, kBest};
constexpr std::array kTwoSidedQualities = {kPlainFast, kPlainNormal, kBest};
constexpr std::array kMatteQualities = {kNormal, kPhoto};
constexpr std::array kGlossyQualities = {kFast, kPhoto, kBest};
constexpr std::array kTransparencyQualities = {kNormal};
constexpr std::array kDiscQualities = {kDiscNormal, kDiscSlow};
constexpr std::array kGlossyDiscQualities = {kDiscNormal};

struct MediaQualities {
    std::string_view media;
    std::span<const std::string_view> qualities; // in the order in which they are offered
};

// Ordinary media beside the plain papers.
constexpr MediaQualities kMediaQualities[] = {
    // media            allowed qualities
    {kInkjet, kMatteQualities},
    {kQT20Matte, kMatteQualities},
    {kCorvaneGlossy, kGlossyQualities},
    {kCorvaneGlossyR, kGlossyQualities},
    {kGlossy, kGlossyQualities},
    {kHagakiUra, kGlossyQualities},
    {kTransparencies, kTransparencyQualities},
};

// What is printed on discs.
constexpr MediaQualities kDiscMediaQualities[] = {
    {kPrintableDisc, kDiscQualities},
    {kGlossyPrintableDisc, kGlossyDiscQualities},
};

// Qualities that borderless paper does not allow.
constexpr std::initializer_list<std::string_view> kNotOnBorderlessA3 = {kPlainFast, kPlainNormal, kHigh};
constexpr std::initializer_list<std::string_view> kNotOnBorderless = {kPlainFast};

std::vector<std::string> listOf(std::span<const std::string_view> keywords) {
    return {keywords.begin(), keywords.end()};
}

} // namespace

std::vector<std::string> CVInkPrintSetting12PDE::allowedQuality(const std::optional<std::string>& mediaType) {
    const bool disc = hasFlag(kImageModePrintableDisc);
    const bool plain = !disc && paper_names::isKindOfPlainPaper(mediaType);
    const auto table = disc ? std::span<const MediaQualities>(kDiscMediaQualities) : kMediaQualities;
    const auto row = std::ranges::find_if(table, [&](const MediaQualities& each) { return each.media == mediaType; });
    if (!plain && row != table.end())
        return listOf(row->qualities);
    if (!plain) { // a medium that is not known here is replaced
        const std::string replacement(disc ? kPrintableDisc : kPlain);
        setAndMarkValueForKey(replacement, std::string(kMediaType));
        setDefaultQuality(replacement);
    }
    if (disc)
        return listOf(kDiscQualities);
    return hasFlag(kImageModeDuplex) ? listOf(kTwoSidedQualities) : listOf(kPlainQualities);
}

std::string CVInkPrintSetting12PDE::defaultQualityForMediaType(const std::optional<std::string>& mediaType) {
    if (paper_names::isKindOfPlainPaper(mediaType))
        return std::string(isBorderlessA3() ? kBest : kPlainNormal);
    return std::string(mediaType == kTransparencies ? kNormal : kPhoto);
}

bool CVInkPrintSetting12PDE::isBorderlessA3() const {
    return paper_names::isBorderelessForPaperSize(paperName, "A3");
}

void CVInkPrintSetting12PDE::postSetting(std::string_view setting, ImageModeFlag bit) {
    toolkit::NotificationCenter::defaultCenter().post(
        {.name = std::string(kInkPrintSettingNotification),
         .sender = pdePluginCallbackObject_,
         .userInfo = toolkit::ValueMap{{std::string(setting), hasFlag(bit)},
                                       {std::string(kFromSetting), std::string(setting)}}});
}

void CVInkPrintSetting12PDE::canSelectColorMode() {
    setFlag(kImageModeMonochrome, outputBinHolds(kMonoColor, kMono));
    postSetting(kMonoColor, kImageModeMonochrome);
}

void CVInkPrintSetting12PDE::canSelectJpegPrint() {
    setFlag(kImageModeJpegUnavailable, false);
}

std::optional<std::string> CVInkPrintSetting12PDE::selectedMediaType() const {
    return mediaTypePopup == nullptr ? std::nullopt : mediaTypePopup->selectedKeyword();
}

void CVInkPrintSetting12PDE::checkUIStateWithMediaType(bool reset) {
    const std::optional<std::string> media = selectedMediaType(); // what is shown, not what is pending

    // Slow drying
    if (!hasFlag(kImageModeVendorColorMatching)) {
        setFlag(kImageModeSlowDryingDisabled, true);
    } else {
        setFlag(kImageModeSlowDryingDisabled, media != kPlain && media != kHagakiAtena);
        if (reset && slowDryButton != nullptr)
            slowDryButton->setOn(media == kHagakiAtena);
    }

    // Qualities
    changeStateForArrayToEnableToDefault(resolutionPopup, allowedQuality(media), true, reset);

    // Borderless paper
    if (hasFlag(kImageModeBorderless))
        changeState(resolutionPopup, isBorderlessA3() ? kNotOnBorderlessA3 : kNotOnBorderless, false, false);

    // Bi-directional printing
    if (reset && biDirButton != nullptr)
        biDirButton->setOn(paper_names::isKindOfPlainPaper(media));

    // Half-tone
    setFlag(kImageModeDiffusion, media != kPlain);
    if (reset)
        postSetting(kHalfTonePattern, kImageModeDiffusion);

    // Transparencies
    setFlag(kImageModeTransparency, media == kTransparencies);
}

std::string CVInkPrintSetting12PDE::addOnOffSuffixToString(toolkit::CheckBox* box, const std::string& text) {
    return text + (box != nullptr && box->isEnabled() && box->isOn() ? "_on" : "_off");
}

void CVInkPrintSetting12PDE::changeResolutionLetterB() {
    constexpr int kModelWithBorderlessLetter = 12;
    CVPrintQualityPDE::changeResolutionLetterB();
    if (paper_names::isBorderelessForPaperSize(paperName, "Letter") && ppd->modelNumber() == kModelWithBorderlessLetter)
        setDefaultQuality(std::string(kPlain));
}
