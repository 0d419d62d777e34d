#pragma once

#include "imaging/export.h"
#include "imaging/filters.h"

#include <array>
#include <span>

namespace imaging {

/// What any chain of filters comes to: each output channel is a weighted sum of the pixel's red, green, blue and
/// alpha, plus a constant. Values are 0 to 1, unbounded on the way. The default changes nothing.
struct ColorTransform {
    /// One row per output channel (red, green, blue, alpha): the weights of the four input channels, then the constant.
    using Row = std::array<double, 5>;
    std::array<Row, 4> rows = {{{1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, 0, 1, 0, 0}, {0, 0, 0, 1, 0}}};
    bool operator==(const ColorTransform&) const = default;
};

/// The one transform that does what the filters do in their order.
[[nodiscard]] CV_IMAGING_EXPORT ColorTransform foldFilters(std::span<const Filter> filters);

} // namespace imaging
