#pragma once

#include "imaging/render_plan.h"

#include <cstddef>
#include <cstdint>

namespace imaging {

/// Renders a run of neighbouring pixels, one after the other. The target either is the source or does not overlap it.
void renderRunPlainly(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels);

} // namespace imaging
