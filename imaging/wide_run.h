#pragma once

#include "imaging/render_plan.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaging {

/// The way through a picture.
enum class Sweep {
    Forwards,  ///< through the caches
    Backwards, ///< the same from the end
    Streaming, ///< forwards, the results past the caches
};

/// Renders a run of neighbouring pixels. The target either is the source or does not overlap it.
using RenderRun = void (*)(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels,
                           Sweep sweep);

/// A way to render with one kind of vectors.
struct WideRun {
    const char* vectors; ///< their name
    RenderRun render;
};

/// The ways that this machine has, the widest vectors first; never empty.
const std::vector<WideRun>& wideRuns();

} // namespace imaging
