#pragma once

#include "imaging/bitmap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <vector>

namespace imaging_tests {

using Bytes = std::vector<std::uint8_t>;

/// Red, green, blue, alpha.
using Pixel = std::array<std::uint8_t, 4>;

inline Pixel pixelAt(const imaging::Bitmap& bitmap, int x, int y) {
    const std::uint8_t* bytes = bitmap.row(y) + imaging::Bitmap::kBytesPerPixel * static_cast<std::size_t>(x);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

inline void setPixel(imaging::Bitmap& bitmap, int x, int y, const Pixel& pixel) {
    std::uint8_t* bytes = bitmap.row(y) + imaging::Bitmap::kBytesPerPixel * static_cast<std::size_t>(x);
    for (std::size_t channel = 0; channel < pixel.size(); ++channel)
        bytes[channel] = pixel[channel];
}

inline imaging::Bitmap makeBitmap(int width, int height, const std::function<Pixel(int x, int y)>& pixel) {
    imaging::Bitmap bitmap(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            setPixel(bitmap, x, y, pixel(x, y));
    return bitmap;
}

/// Bytes without a pattern, the same in every run.
class Noise {
public:
    std::uint8_t byte() {
        state_ = state_ * 1664525U + 1013904223U;
        return static_cast<std::uint8_t>(state_ >> 24);
    }
    Pixel pixel() { return {byte(), byte(), byte(), byte()}; }

private:
    std::uint32_t state_ = 1;
};

} // namespace imaging_tests
