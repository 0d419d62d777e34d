// The preview of the adjustments on a reference picture.

#include "color_settings/CVInkColorSettingPDE.h"
#include "color_settings/reference_pictures.h"

#include "toolkit/image_view.h"
#include "toolkit/window.h"

#include <algorithm>

namespace {

using namespace keywords;

// An adjustment's value divided by these gives the filter's parameter, or its distance from 1.
constexpr float kBrightnessDivisor = 200, kContrastDivisor = 160; // in single precision
constexpr double kVectorDivisor = 70;                             // in double precision
constexpr double kWindowMargin = 96;                              // points between the panel's height and the window's

constexpr int kAllValues = -1; // as a code: every parameter of the filter

// The plain grey rendering: white at full intensity.
std::optional<imaging::Picture> monochrome(const std::optional<imaging::Picture>& picture) {
    imaging::FilterNode<imaging::ColorMonochrome> filter;
    filter.setInputImage(picture);
    filter.parameters.color = {1, 1, 1};
    filter.parameters.intensity = 1;
    return filter.outputImage();
}

} // namespace

std::optional<framework::PreviewState> CVInkColorSettingPDE::preview() const {
    return framework::PreviewState{.shown = shownPicture_,
                                   .reference = refImage_,
                                   .colorControls = ccFilter.parameters,
                                   .colorMatrix = cmFilter.parameters};
}

void CVInkColorSettingPDE::setRefImageWithName(const std::optional<std::string>& name) {
    if (const auto* path = pluginBundle->pathForResource(name.value_or(""), "tiff"))
        setRefImage(referencePictureAtPath(*path));
}

std::int64_t CVInkColorSettingPDE::adjustment(AdjustmentTag tag) const {
    return effectContent == nullptr ? 0 : effectContent->valueForKey(kAdjustments[tag].key).integerReading();
}

bool CVInkColorSettingPDE::enhancementIsOn() const {
    return effectContent != nullptr && effectContent->valueForKey(kColorEnhancement).booleanReading();
}

void CVInkColorSettingPDE::setBrightness() {
    ccFilter.parameters.brightness = static_cast<float>(adjustment(kTagBrightness)) / kBrightnessDivisor;
}

void CVInkColorSettingPDE::setContrast() {
    ccFilter.parameters.contrast = static_cast<float>(adjustment(kTagContrast)) / kContrastDivisor + 1;
}

void CVInkColorSettingPDE::setColorVector(AdjustmentTag tag) {
    const std::size_t channel = tag - kTagRed;
    std::array<double, 4> vector{};
    vector[channel] = static_cast<double>(adjustment(tag)) / kVectorDivisor + 1;
    imaging::ColorMatrix& matrix = cmFilter.parameters;
    (channel == 0 ? matrix.r : channel == 1 ? matrix.g : matrix.b) = vector;
}

std::optional<imaging::Picture>
CVInkColorSettingPDE::applyColorControlFilterCode(const std::optional<imaging::Picture>& picture, int code) {
    ccFilter.setInputImage(picture);
    if (code == kTagBrightness || code == kTagContrast) {
        const auto tag = static_cast<AdjustmentTag>(code);
        if (effectContent != nullptr) // a whole number as a single-precision one
            effectContent->setValueForKey(static_cast<double>(static_cast<float>(adjustment(tag))),
                                          kAdjustments[tag].key);
    }
    if (code < 0 || code == kTagBrightness)
        setBrightness();
    if (code < 0 || code == kTagContrast)
        setContrast();
    return enhancementIsOn() ? ccFilter.outputImage() : picture;
}

std::optional<imaging::Picture>
CVInkColorSettingPDE::applyColorMatrixFilterCode(const std::optional<imaging::Picture>& picture, int code) {
    cmFilter.setInputImage(picture);
    if (code < 0) {
        for (const AdjustmentTag tag : {kTagRed, kTagGreen, kTagBlue})
            setColorVector(tag);
    } else if (code <= kTagBlue - kTagRed) {
        const auto tag = static_cast<AdjustmentTag>(kTagRed + code);
        if (effectContent != nullptr)
            effectContent->setValueForKey(adjustment(tag), kAdjustments[tag].key);
        setColorVector(tag);
    }
    if (hasFlag(kImageModeMonochrome))
        return monochrome(picture);
    return enhancementIsOn() ? cmFilter.outputImage() : picture;
}

void CVInkColorSettingPDE::redrawEffectImage() {
    if (hasFlag(kImageModeFaxOutput)) {
        setRefImageWithName(std::string(kNoneKeyword));
        show(monochrome(refImage_));
        return;
    }
    show(applyColorMatrixFilterCode(applyColorControlFilterCode(refImage_, kAllValues), kAllValues));
}

// One value changed: only its parameter is set, and the colour controls come last where a colour changed.
void CVInkColorSettingPDE::redrawAfterChangeOfTag(int tag) {
    std::optional<imaging::Picture> result;
    if (tag <= kTagContrast) {
        const auto controlled = applyColorControlFilterCode(refImage_, tag);
        if (hasFlag(kImageModeMonochrome)) {
            result = monochrome(controlled);
        } else {
            cmFilter.setInputImage(controlled);
            result = cmFilter.outputImage();
        }
    } else {
        ccFilter.setInputImage(applyColorMatrixFilterCode(refImage_, tag - kTagRed));
        result = ccFilter.outputImage();
    }
    if (result)
        show(result);
}

void CVInkColorSettingPDE::show(const std::optional<imaging::Picture>& picture) {
    shownPicture_ = picture;
    if (effectImageView == nullptr)
        return;
    toolkit::Image image;
    if (picture) {
        std::shared_ptr<const imaging::Bitmap> bitmap = picture->source();
        if (!picture->filters().empty()) {
            picture->renderInto(*rendered_);
            bitmap = rendered_;
        }
        image.width = bitmap->width();
        image.height = bitmap->height();
        image.stride = bitmap->stride();
        if (!bitmap->isEmpty())
            image.pixels = std::shared_ptr<const std::uint8_t>(bitmap, bitmap->row(0));
    }
    effectImageView->setImage(std::move(image));
}

void CVInkColorSettingPDE::updateImage(toolkit::View*) {
    if (!hasFlag(kImageModePanelShown))
        return;
    const toolkit::Window* window = application().keyWindow();
    const double height = window == nullptr ? 0 : window->frame().height;
    const double panelHeight = panelView_ == nullptr ? 0 : panelView_->frame().height;
    if (effectContent != nullptr) {
        if (height == effectContent->valueForKey(kFrameHeight).realReading())
            return;
        effectContent->setValueForKey(height, kFrameHeight);
    }
    if (height > panelHeight + kWindowMargin) {
        if (effectImageView != nullptr)
            effectImageView->displayNow();
        redrawEffectImage();
    }
}
