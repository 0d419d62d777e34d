#include "imaging/render_pass.h"

#include "imaging/plain_run.h"
#include "imaging/render_plan.h"
#include "imaging/wide_run.h"

namespace imaging {
namespace {

constexpr std::size_t kBytesPerPixel = 4;

/// The way through a picture of so many bytes that is fastest when the same picture is rendered again and again, as a
/// preview is (docs/decisions/preview-memory.md).
Sweep nextSweep(std::size_t bytes) {
    constexpr std::size_t kStreamedBytes = std::size_t{32} * 1024 * 1024;
    if (bytes >= kStreamedBytes)
        return Sweep::Streaming;
    // To and fro: a pass begins with what the one before it left in the cache.
    thread_local Sweep last = Sweep::Backwards;
    last = last == Sweep::Backwards ? Sweep::Forwards : Sweep::Backwards;
    return last;
}

template <class Run>
void renderRows(const SourcePixels& source, const TargetPixels& target, Sweep sweep, const Run& renderRun) {
    const std::size_t rowBytes = source.width * kBytesPerPixel;
    if (source.stride == rowBytes && target.stride == rowBytes) {
        renderRun(source.firstRow, target.firstRow, source.width * source.height);
        return;
    }
    for (std::size_t i = 0; i < source.height; ++i) {
        const std::size_t y = sweep == Sweep::Backwards ? source.height - 1 - i : i;
        renderRun(source.firstRow + y * source.stride, target.firstRow + y * target.stride, source.width);
    }
}

} // namespace

void renderPass(const ColorTransform& transform, const SourcePixels& source, const TargetPixels& target) {
    renderPassWithVectors(0, transform, source, target);
}

std::vector<const char*> vectorsOfThisMachine() {
    std::vector<const char*> names;
    for (const WideRun& run : wideRuns())
        names.push_back(run.vectors);
    return names;
}

void renderPassWithVectors(std::size_t kind, const ColorTransform& transform, const SourcePixels& source,
                           const TargetPixels& target) {
    const RenderRun render = wideRuns()[kind].render;
    const RenderPlan plan = planFor(transform);
    const Sweep sweep = nextSweep(source.width * source.height * kBytesPerPixel);
    renderRows(source, target, sweep, [&](const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) {
        render(plan, from, to, pixels, sweep);
    });
}

void renderPassPlainly(const ColorTransform& transform, const SourcePixels& source, const TargetPixels& target) {
    const RenderPlan plan = planFor(transform);
    renderRows(source, target, Sweep::Forwards, [&](const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) {
        renderRunPlainly(plan, from, to, pixels);
    });
}

} // namespace imaging
