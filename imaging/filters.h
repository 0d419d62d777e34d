#pragma once

#include <array>
#include <variant>

namespace imaging {

/// How much each of red, green and blue counts in a pixel's luminance. They add up to 1, so grey stays what it is.
inline constexpr std::array<double, 3> kLuminanceWeights = {0.2126, 0.7152, 0.0722};

/// Brightness, contrast and saturation, applied in this order: brightness is added to each colour channel (1 is the
/// whole way from black to white), contrast scales each channel about mid-grey, saturation mixes the colour (1) with
/// its luminance (0). The defaults change nothing. Alpha passes through.
struct ColorControls {
    float brightness = 0;                                  ///< added to each channel
    float contrast = 1;                                    ///< scales about mid-grey
    float saturation = 1;                                  ///< 0: grey
    bool operator==(const ColorControls&) const = default; ///< the same in every member
};

/// Each output channel is the dot product of the pixel (red, green, blue, alpha, 0 to 1 each) with the channel's
/// vector, plus the channel's element of the bias. The defaults change nothing.
struct ColorMatrix {
    std::array<double, 4> r{1, 0, 0, 0};                 ///< of the red it makes
    std::array<double, 4> g{0, 1, 0, 0};                 ///< of the green
    std::array<double, 4> b{0, 0, 1, 0};                 ///< of the blue
    std::array<double, 4> a{0, 0, 0, 1};                 ///< of the alpha
    std::array<double, 4> bias{0, 0, 0, 0};              ///< added at the end
    bool operator==(const ColorMatrix&) const = default; ///< the same in every member
};

/// The pixel's luminance times the colour (red, green, blue, 0 to 1), mixed with the pixel by the intensity (0: the
/// pixel, 1: the tinted luminance). White at intensity 1 is the plain grey picture. Alpha passes through.
struct ColorMonochrome {
    std::array<double, 3> color{0.6, 0.45, 0.3};             ///< red, green, blue, 0 to 1
    double intensity = 1;                                    ///< 0: unfiltered
    bool operator==(const ColorMonochrome&) const = default; ///< the same in every member
};

/// One stage of a picture's chain of filters.
using Filter = std::variant<ColorControls, ColorMatrix, ColorMonochrome>;

} // namespace imaging
