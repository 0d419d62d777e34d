#pragma once

#include "imaging/render_plan.h"

#include <cstddef>
#include <cstdint>

namespace imaging {

/// The way through a picture.
enum class Sweep {
    Forwards,  ///< through the caches
    Backwards, ///< the same from the end
    Streaming, ///< forwards, the results past the caches
};

/// Renders a run of neighbouring pixels with the widest vectors that the machine has. The target either is the source
/// or does not overlap it.
void renderRunWide(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels,
                   Sweep sweep);

} // namespace imaging
