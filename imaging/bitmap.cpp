#include "imaging/bitmap.h"

#include <algorithm>
#include <new>
#include <utility>

namespace imaging {

Bitmap::Bitmap(int width, int height) {
    resize(width, height);
}

Bitmap::Bitmap(const Bitmap& other) {
    resize(other.width(), other.height());
    std::copy_n(other.pixels_, stride_ * static_cast<std::size_t>(height()), pixels_);
}

Bitmap::Bitmap(Bitmap&& other) noexcept
    : memory_(std::move(other.memory_)), pixels_(std::exchange(other.pixels_, nullptr)),
      capacity_(std::exchange(other.capacity_, 0)), stride_(std::exchange(other.stride_, 0)),
      extent_(std::exchange(other.extent_, Extent{})) {}

Bitmap& Bitmap::operator=(const Bitmap& other) {
    if (this != &other) {
        resize(other.width(), other.height());
        std::copy_n(other.pixels_, stride_ * static_cast<std::size_t>(height()), pixels_);
    }
    return *this;
}

Bitmap& Bitmap::operator=(Bitmap&& other) noexcept {
    if (this != &other) {
        memory_ = std::move(other.memory_);
        pixels_ = std::exchange(other.pixels_, nullptr);
        capacity_ = std::exchange(other.capacity_, 0);
        stride_ = std::exchange(other.stride_, 0);
        extent_ = std::exchange(other.extent_, Extent{});
    }
    return *this;
}

void Bitmap::resize(int width, int height) {
    if (width <= 0 || height <= 0) {
        extent_ = Extent{};
        stride_ = 0;
        return;
    }
    const std::size_t rowBytes = static_cast<std::size_t>(width) * kBytesPerPixel;
    const std::size_t stride = (rowBytes + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    const std::size_t needed = stride * static_cast<std::size_t>(height);
    if (needed > capacity_) {
        // Zeroed pages come from the system as they are first touched, so asking for zeros costs nothing here.
        std::unique_ptr<std::uint8_t, Free> memory(static_cast<std::uint8_t*>(std::calloc(needed + kRowAlignment, 1)));
        if (!memory)
            throw std::bad_alloc();
        void* aligned = memory.get();
        std::size_t space = needed + kRowAlignment;
        pixels_ = static_cast<std::uint8_t*>(std::align(kRowAlignment, needed, aligned, space));
        memory_ = std::move(memory);
        capacity_ = needed;
    }
    stride_ = stride;
    extent_ = {width, height};
}

std::array<double, 3> meanColor(const Bitmap& bitmap) {
    std::array<double, 3> means{};
    if (bitmap.isEmpty())
        return means;
    std::array<std::uint64_t, 3> sums{};
    for (int y = 0; y < bitmap.height(); ++y) {
        const std::uint8_t* pixel = bitmap.row(y);
        for (int x = 0; x < bitmap.width(); ++x, pixel += Bitmap::kBytesPerPixel)
            for (std::size_t channel = 0; channel < sums.size(); ++channel)
                sums[channel] += pixel[channel];
    }
    const double whole = 255.0 * bitmap.width() * bitmap.height();
    for (std::size_t channel = 0; channel < sums.size(); ++channel)
        means[channel] = static_cast<double>(sums[channel]) / whole;
    return means;
}

} // namespace imaging
