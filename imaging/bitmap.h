#pragma once

#include "imaging/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace imaging {

/// The size of a picture in pixels, neither side negative. A picture without pixels is 0 by 0.
struct Extent {
    int width = 0;                                  ///< pixels
    int height = 0;                                 ///< pixels
    bool operator==(const Extent&) const = default; ///< the same in both
};

/// 8-bit pixels in memory: red, green, blue, alpha, one byte each, the alpha straight (the colours are not
/// multiplied by it). Colours are sRGB-coded. Rows run from the top down, each begins on a multiple of kRowAlignment
/// bytes. Owns its memory; a copy copies the pixels. A row's pointer is borrowed: valid until resize() or the end.
class CV_IMAGING_EXPORT Bitmap {
public:
    static constexpr std::size_t kBytesPerPixel = 4; ///< red, green, blue, alpha
    static constexpr std::size_t kRowAlignment = 64; ///< bytes

    Bitmap() = default;
    /// Transparent black. Throws std::bad_alloc when there is no memory for it.
    Bitmap(int width, int height);
    Bitmap(const Bitmap& other);                ///< copies the pixels
    Bitmap(Bitmap&& other) noexcept;            ///< leaves an empty one behind
    Bitmap& operator=(const Bitmap& other);     ///< copies the pixels
    Bitmap& operator=(Bitmap&& other) noexcept; ///< leaves an empty one behind
    ~Bitmap() = default;

    /// Makes the bitmap width by height; 0 by 0 if either is not positive. Memory that is large enough is kept, and
    /// then the pixels hold leftovers; new memory is transparent black. Throws std::bad_alloc and stays as it was
    /// when there is no memory.
    void resize(int width, int height);

    [[nodiscard]] int width() const { return extent_.width; }          ///< pixels
    [[nodiscard]] int height() const { return extent_.height; }        ///< pixels
    [[nodiscard]] Extent extent() const { return extent_; }            ///< width and height
    [[nodiscard]] bool isEmpty() const { return extent_ == Extent{}; } ///< 0 by 0

    /// Bytes from one row to the next. The bytes behind a row's last pixel are the bitmap's own, of any value.
    [[nodiscard]] std::size_t stride() const { return stride_; }

    /// The first byte of row y, 0 <= y < height().
    [[nodiscard]] std::uint8_t* row(int y) { return pixels_ + static_cast<std::size_t>(y) * stride_; }
    [[nodiscard]] const std::uint8_t* row(int y) const { return pixels_ + static_cast<std::size_t>(y) * stride_; }

private:
    struct Free {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };

    std::unique_ptr<std::uint8_t, Free> memory_;
    std::uint8_t* pixels_ = nullptr; // the first aligned byte of memory_
    std::size_t capacity_ = 0;       // bytes from pixels_ on
    std::size_t stride_ = 0;
    Extent extent_;
};

/// The mean of red, green and blue over all pixels, 0 to 1 each, whatever the alpha; zeros for an empty bitmap.
[[nodiscard]] CV_IMAGING_EXPORT std::array<double, 3> meanColor(const Bitmap& bitmap);

} // namespace imaging
