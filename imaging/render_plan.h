#pragma once

#include "imaging/color_transform.h"

#include <array>
#include <cstdint>

namespace imaging {

/// Which arithmetic renders a transform, from the cheapest to the most general.
enum class Arithmetic {
    Copy,   ///< nothing changes
    Scale,  ///< each channel depends on itself only: 16-bit fixed point
    Grey,   ///< red, green and blue become the same sum of the three, alpha stays: 16-bit fixed point
    Matrix, ///< any transform of moderate weights: 32-bit fixed point
    Exact,  ///< weights so large that fixed point would be off by more than a level: double precision
};

/// Scale and Grey: a sample in the high byte of 16 bits, times a weight of kWeightBits, keeps the high 16 bits of the
/// product: a value with kValueBits below the point. Adding the offset saturates at the top, taking kFloor away
/// saturates at the bottom, which leaves 0..255 and a fraction; the offset holds kFloor and the half that rounds.
namespace fixed16 {
inline constexpr int kWeightBits = 15;
inline constexpr int kValueBits = 7;
inline constexpr std::uint16_t kFloor = 0x8000;
} // namespace fixed16

/// Matrix: weights and offsets with kWeightBits below the point; the offset holds the half that rounds.
namespace fixed32 {
inline constexpr int kWeightBits = 15;
inline constexpr double kLargestWeight = 16;
} // namespace fixed32

/// A transform made ready for the pass over the pixels, in levels of 0..255. The member that the arithmetic names is
/// filled, the others are not.
struct RenderPlan {
    struct Scale {
        std::array<std::uint16_t, 4> weights{};
        std::array<std::uint16_t, 4> offsets{};
    };
    struct Grey {
        std::array<std::uint16_t, 3> weights{};
        std::uint16_t offset = 0;
    };
    struct Matrix {
        std::array<std::array<std::int32_t, 4>, 4> weights{};
        std::array<std::int32_t, 4> offsets{};
    };

    Arithmetic arithmetic = Arithmetic::Copy;
    Scale scale;
    Grey grey;
    Matrix matrix;
    ColorTransform exact; ///< the constants in levels
};

[[nodiscard]] RenderPlan planFor(const ColorTransform& transform);

} // namespace imaging
