#include "imaging/color_transform.h"

#include <cstddef>

namespace imaging {
namespace {

constexpr std::size_t kColorChannels = 3;
constexpr std::size_t kChannels = 4;
constexpr std::size_t kConstant = 4; // the column of a row that is not weighted

ColorTransform transformOf(const ColorControls& controls) {
    // ((value + brightness - mid) * contrast + mid), of which the saturation keeps its part and the luminance the rest.
    // The luminance weights add up to 1, so the constant is the same in the colour and in its luminance.
    constexpr double kMidGrey = 0.5;
    const double contrast = controls.contrast;
    const double saturation = controls.saturation;
    const double constant = (controls.brightness - kMidGrey) * contrast + kMidGrey;
    ColorTransform transform;
    for (std::size_t out = 0; out < kColorChannels; ++out) {
        for (std::size_t in = 0; in < kColorChannels; ++in) {
            const double own = out == in ? saturation : 0;
            transform.rows[out][in] = contrast * (own + (1 - saturation) * kLuminanceWeights[in]);
        }
        transform.rows[out][kConstant] = constant;
    }
    return transform;
}

ColorTransform transformOf(const ColorMatrix& matrix) {
    const std::array<double, 4>* const vectors[] = {&matrix.r, &matrix.g, &matrix.b, &matrix.a};
    ColorTransform transform;
    for (std::size_t out = 0; out < kChannels; ++out) {
        for (std::size_t in = 0; in < kChannels; ++in)
            // cppcheck-suppress legacyUninitvar; its braces initialise it
            transform.rows[out][in] = (*vectors[out])[in];
        transform.rows[out][kConstant] = matrix.bias[out];
    }
    return transform;
}

ColorTransform transformOf(const ColorMonochrome& monochrome) {
    ColorTransform transform;
    for (std::size_t out = 0; out < kColorChannels; ++out)
        for (std::size_t in = 0; in < kColorChannels; ++in) {
            const double own = out == in ? 1 - monochrome.intensity : 0;
            transform.rows[out][in] = own + monochrome.intensity * monochrome.color[out] * kLuminanceWeights[in];
        }
    return transform;
}

ColorTransform composed(const ColorTransform& first, const ColorTransform& second) {
    ColorTransform result;
    for (std::size_t out = 0; out < kChannels; ++out) {
        for (std::size_t in = 0; in <= kConstant; ++in) {
            double sum = in == kConstant ? second.rows[out][kConstant] : 0;
            for (std::size_t between = 0; between < kChannels; ++between)
                sum += second.rows[out][between] * first.rows[between][in];
            result.rows[out][in] = sum;
        }
    }
    return result;
}

} // namespace

ColorTransform foldFilters(std::span<const Filter> filters) {
    ColorTransform folded;
    for (const Filter& filter : filters)
        folded = composed(folded, std::visit([](const auto& parameters) { return transformOf(parameters); }, filter));
    return folded;
}

} // namespace imaging
