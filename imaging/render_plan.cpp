#include "imaging/render_plan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace imaging {
namespace {

using Row = ColorTransform::Row;

constexpr double kLevels = 255;
constexpr std::size_t kConstant = 4;

std::optional<std::uint16_t> weight16(double weight) {
    const double scaled = std::round(weight * (1 << fixed16::kWeightBits));
    if (!(scaled >= 0 && scaled <= 0xFFFF))
        return std::nullopt;
    return static_cast<std::uint16_t>(scaled);
}

/// The offset for a constant in levels. Above the top any constant gives white, so it is cut there; one below the
/// bottom cannot be told from others by 16 bits.
std::optional<std::uint16_t> offset16(double constant) {
    const double scaled = std::round((constant + 0.5) * (1 << fixed16::kValueBits)) + fixed16::kFloor;
    if (!(scaled >= 0))
        return std::nullopt;
    return static_cast<std::uint16_t>(std::min(scaled, 65535.0));
}

std::optional<RenderPlan::Scale> scaleFor(const ColorTransform& levels) {
    RenderPlan::Scale scale;
    for (std::size_t channel = 0; channel < 4; ++channel) {
        const Row& row = levels.rows[channel];
        for (std::size_t in = 0; in < 4; ++in)
            if (in != channel && row[in] != 0)
                return std::nullopt;
        const auto weight = weight16(row[channel]);
        const auto offset = offset16(row[kConstant]);
        if (!weight || !offset)
            return std::nullopt;
        scale.weights[channel] = *weight;
        scale.offsets[channel] = *offset;
    }
    return scale;
}

std::optional<RenderPlan::Grey> greyFor(const ColorTransform& levels) {
    const Row& row = levels.rows[0];
    if (levels.rows[1] != row || levels.rows[2] != row || row[3] != 0 || levels.rows[3] != ColorTransform{}.rows[3])
        return std::nullopt;
    RenderPlan::Grey grey;
    unsigned sum = 0;
    for (std::size_t in = 0; in < 3; ++in) {
        const auto weight = weight16(row[in]);
        if (!weight)
            return std::nullopt;
        grey.weights[in] = *weight;
        sum += *weight;
    }
    const auto offset = offset16(row[kConstant]);
    if (!offset || sum > 0xFFFF) // then 255 times the weights would not fit
        return std::nullopt;
    grey.offset = *offset;
    return grey;
}

std::optional<RenderPlan::Matrix> matrixFor(const ColorTransform& levels) {
    constexpr double kOne = 1 << fixed32::kWeightBits;
    // Where the constant outweighs all that the pixel can add, it decides alone, however large it is.
    constexpr double kDecides = (4 * fixed32::kLargestWeight + 1) * kLevels;
    RenderPlan::Matrix matrix;
    for (std::size_t out = 0; out < 4; ++out) {
        const Row& row = levels.rows[out];
        for (std::size_t in = 0; in < 4; ++in) {
            if (!(std::abs(row[in]) <= fixed32::kLargestWeight))
                return std::nullopt;
            matrix.weights[out][in] = static_cast<std::int32_t>(std::round(row[in] * kOne));
        }
        if (std::isnan(row[kConstant]))
            return std::nullopt;
        const double constant = std::clamp(row[kConstant], -kDecides, kDecides);
        matrix.offsets[out] = static_cast<std::int32_t>(std::round((constant + 0.5) * kOne));
    }
    return matrix;
}

} // namespace

RenderPlan planFor(const ColorTransform& transform) {
    RenderPlan plan;
    if (transform == ColorTransform{})
        return plan;

    ColorTransform levels = transform;
    for (Row& row : levels.rows)
        row[kConstant] *= kLevels;

    if (const auto scale = scaleFor(levels)) {
        plan.arithmetic = Arithmetic::Scale;
        plan.scale = *scale;
    } else if (const auto grey = greyFor(levels)) {
        plan.arithmetic = Arithmetic::Grey;
        plan.grey = *grey;
    } else if (const auto matrix = matrixFor(levels)) {
        plan.arithmetic = Arithmetic::Matrix;
        plan.matrix = *matrix;
    } else {
        plan.arithmetic = Arithmetic::Exact;
        plan.exact = levels;
    }
    return plan;
}

} // namespace imaging
