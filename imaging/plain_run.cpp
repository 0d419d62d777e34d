#include "imaging/plain_run.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace imaging {
namespace {

std::uint32_t weighted16(std::uint8_t sample, std::uint16_t weight) {
    return (std::uint32_t{sample} << 8) * weight >> 16;
}

std::uint8_t level16(std::uint32_t value, std::uint16_t offset) {
    const std::uint32_t raised = std::min<std::uint32_t>(value + offset, 0xFFFF);
    const std::uint32_t cut = std::max<std::uint32_t>(raised, fixed16::kFloor) - fixed16::kFloor;
    return static_cast<std::uint8_t>(cut >> fixed16::kValueBits);
}

void scalePixel(const RenderPlan::Scale& scale, const std::uint8_t* source, std::uint8_t* target) {
    for (std::size_t channel = 0; channel < 4; ++channel)
        target[channel] = level16(weighted16(source[channel], scale.weights[channel]), scale.offsets[channel]);
}

void greyPixel(const RenderPlan::Grey& grey, const std::uint8_t* source, std::uint8_t* target) {
    std::uint32_t sum = 0;
    for (std::size_t channel = 0; channel < 3; ++channel)
        sum += weighted16(source[channel], grey.weights[channel]);
    const std::uint8_t level = level16(sum, grey.offset);
    const std::uint8_t alpha = source[3];
    std::fill_n(target, 3, level);
    target[3] = alpha;
}

void matrixPixel(const RenderPlan::Matrix& matrix, const std::uint8_t* source, std::uint8_t* target) {
    std::uint8_t levels[4];
    for (std::size_t out = 0; out < 4; ++out) {
        std::int32_t sum = matrix.offsets[out];
        for (std::size_t in = 0; in < 4; ++in)
            sum += matrix.weights[out][in] * source[in];
        levels[out] = static_cast<std::uint8_t>(std::clamp(sum >> fixed32::kWeightBits, 0, 255));
    }
    std::memcpy(target, levels, sizeof levels);
}

void exactPixel(const ColorTransform& transform, const std::uint8_t* source, std::uint8_t* target) {
    std::uint8_t levels[4];
    for (std::size_t out = 0; out < 4; ++out) {
        const ColorTransform::Row& row = transform.rows[out];
        double sum = row[4];
        for (std::size_t in = 0; in < 4; ++in)
            sum += row[in] * source[in];
        // What is no number (infinite weights can cancel out) becomes black, as do negative values.
        levels[out] = sum > 0 ? static_cast<std::uint8_t>(std::min(std::floor(sum + 0.5), 255.0)) : std::uint8_t{0};
    }
    std::memcpy(target, levels, sizeof levels);
}

/// The constants come by value: were they in memory, every byte written might be one of theirs.
template <auto renderPixel, class Constants>
void renderPixels(const Constants constants, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i)
        renderPixel(constants, source + 4 * i, target + 4 * i);
}

} // namespace

void renderRunPlainly(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels) {
    switch (plan.arithmetic) {
    case Arithmetic::Copy:
        if (pixels != 0)
            std::memmove(target, source, 4 * pixels);
        break;
    case Arithmetic::Scale:
        renderPixels<scalePixel>(plan.scale, source, target, pixels);
        break;
    case Arithmetic::Grey:
        renderPixels<greyPixel>(plan.grey, source, target, pixels);
        break;
    case Arithmetic::Matrix:
        renderPixels<matrixPixel>(plan.matrix, source, target, pixels);
        break;
    case Arithmetic::Exact:
        renderPixels<exactPixel>(plan.exact, source, target, pixels);
        break;
    }
}

} // namespace imaging
