#include "imaging/wide_run.h"

#include "imaging/plain_run.h"

// Neither is needed here, and not every machine that has wide vectors has them.
#define HWY_DISABLE_PCLMUL_AES
#define HWY_DISABLE_F16C

#include <algorithm>
#include <hwy/base.h>
#include <hwy/cache_control.h>

// This file is compiled once for each kind of vectors; the last lines list those of the machine. Other processors than
// x86 have one kind, which is always there.
#if !HWY_ARCH_X86
#define HWY_COMPILE_ONLY_STATIC
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imaging/wide_run.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace imaging::HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

void renderRun(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels, Sweep) {
    renderRunPlainly(plan, source, target, pixels);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using Bytes = hn::ScalableTag<std::uint8_t>;
using Words = hn::Repartition<std::uint16_t, Bytes>;
using Pixels = hn::Repartition<std::uint32_t, Bytes>;
using Sums = hn::Repartition<std::int32_t, Bytes>;
using ByteVector = hn::Vec<Bytes>;
using WordVector = hn::Vec<Words>;
using SumVector = hn::Vec<Sums>;

constexpr Bytes kBytes;
constexpr Words kWords;
constexpr Pixels kPixels;
constexpr Sums kSums;

/// The two words of each pixel: the even ones belong to red or green, the odd ones to blue or alpha.
HWY_INLINE WordVector alternating(std::uint16_t even, std::uint16_t odd) {
    return hn::BitCast(kWords, hn::Set(kPixels, std::uint32_t{odd} << 16 | even));
}

/// Red and blue samples, each in the high byte of its word.
HWY_INLINE WordVector redAndBlue(ByteVector pixels) {
    return hn::ShiftLeft<8>(hn::BitCast(kWords, pixels));
}

/// Green and alpha samples, each in the high byte of its word.
HWY_INLINE WordVector greenAndAlpha(ByteVector pixels) {
    return hn::And(hn::BitCast(kWords, pixels), hn::Set(kWords, 0xFF00));
}

HWY_INLINE WordVector cutToLevels(WordVector values, WordVector offsets) {
    return hn::SaturatedSub(hn::SaturatedAdd(values, offsets), hn::Set(kWords, fixed16::kFloor));
}

class ScaleKernel {
public:
    explicit ScaleKernel(const RenderPlan::Scale& scale)
        : redBlueWeights_(alternating(scale.weights[0], scale.weights[2])),
          greenAlphaWeights_(alternating(scale.weights[1], scale.weights[3])),
          redBlueOffsets_(alternating(scale.offsets[0], scale.offsets[2])),
          greenAlphaOffsets_(alternating(scale.offsets[1], scale.offsets[3])) {}

    HWY_INLINE ByteVector operator()(ByteVector pixels) const {
        const WordVector redBlue = cutToLevels(hn::MulHigh(redAndBlue(pixels), redBlueWeights_), redBlueOffsets_);
        const WordVector greenAlpha =
            cutToLevels(hn::MulHigh(greenAndAlpha(pixels), greenAlphaWeights_), greenAlphaOffsets_);
        const WordVector high = hn::ShiftLeft<8 - fixed16::kValueBits>(greenAlpha);
        const WordVector low = hn::ShiftRight<fixed16::kValueBits>(redBlue);
        return hn::BitCast(kBytes, hn::OrAnd(low, high, hn::Set(kWords, 0xFF00)));
    }

private:
    WordVector redBlueWeights_, greenAlphaWeights_, redBlueOffsets_, greenAlphaOffsets_;
};

class GreyKernel {
public:
    explicit GreyKernel(const RenderPlan::Grey& grey)
        : redBlueWeights_(alternating(grey.weights[0], grey.weights[2])),
          greenWeights_(alternating(grey.weights[1], 0)), offset_(hn::Set(kWords, grey.offset)) {
        alignas(16) static constexpr std::uint8_t kSwapWords[16] = {2,  3,  0, 1, 6,  7,  4,  5,
                                                                    10, 11, 8, 9, 14, 15, 12, 13};
        constexpr std::uint8_t kZero = 0x80;
        alignas(16) static constexpr std::uint8_t kSpread[16] = {0, 0, 0, kZero, 4,  4,  4,  kZero,
                                                                 8, 8, 8, kZero, 12, 12, 12, kZero};
        swapWords_ = hn::LoadDup128(kBytes, kSwapWords);
        spread_ = hn::LoadDup128(kBytes, kSpread);
    }

    HWY_INLINE ByteVector operator()(ByteVector pixels) const {
        const WordVector halves = hn::Add(hn::MulHigh(redAndBlue(pixels), redBlueWeights_),
                                          hn::MulHigh(greenAndAlpha(pixels), greenWeights_));
        const WordVector sums = hn::Add(halves, hn::TableLookupBytes(halves, hn::BitCast(kWords, swapWords_)));
        const WordVector levels = hn::ShiftRight<fixed16::kValueBits>(cutToLevels(sums, offset_));
        const ByteVector grey = hn::TableLookupBytesOr0(hn::BitCast(kBytes, levels), spread_);
        return hn::OrAnd(grey, pixels, hn::BitCast(kBytes, hn::Set(kPixels, 0xFF000000)));
    }

private:
    WordVector redBlueWeights_, greenWeights_, offset_;
    ByteVector swapWords_, spread_;
};

class MatrixKernel {
public:
    explicit MatrixKernel(const RenderPlan::Matrix& matrix) : matrix_(matrix) {}

    HWY_INLINE ByteVector operator()(ByteVector pixels) const {
        const SumVector all = hn::BitCast(kSums, pixels);
        const SumVector byteMask = hn::Set(kSums, 0xFF);
        const SumVector red = hn::And(all, byteMask);
        const SumVector green = hn::And(hn::ShiftRight<8>(all), byteMask);
        const SumVector blue = hn::And(hn::ShiftRight<16>(all), byteMask);
        const SumVector alpha = hn::And(hn::ShiftRight<24>(all), byteMask);
        const auto level = [&](std::size_t out) HWY_ATTR {
            const auto& weights = matrix_.weights[out];
            const SumVector redGreen =
                hn::Add(hn::Mul(red, hn::Set(kSums, weights[0])), hn::Mul(green, hn::Set(kSums, weights[1])));
            const SumVector blueAlpha =
                hn::Add(hn::Mul(blue, hn::Set(kSums, weights[2])), hn::Mul(alpha, hn::Set(kSums, weights[3])));
            const SumVector sum = hn::Add(hn::Add(redGreen, blueAlpha), hn::Set(kSums, matrix_.offsets[out]));
            return hn::Min(hn::Max(hn::ShiftRight<fixed32::kWeightBits>(sum), hn::Zero(kSums)), byteMask);
        };
        const SumVector low = hn::Or(level(0), hn::ShiftLeft<8>(level(1)));
        const SumVector high = hn::Or(hn::ShiftLeft<16>(level(2)), hn::ShiftLeft<24>(level(3)));
        return hn::BitCast(kBytes, hn::Or(low, high));
    }

private:
    const RenderPlan::Matrix& matrix_;
};

constexpr std::size_t kPage = 4096;

/// Renders two vectors: the step of all loops, so that their loads and sums overlap.
template <class Kernel>
HWY_INLINE void renderStep(const Kernel& kernel, const std::uint8_t* source, std::uint8_t* target) {
    const ByteVector first = kernel(hn::LoadU(kBytes, source));
    const ByteVector second = kernel(hn::LoadU(kBytes, source + hn::Lanes(kBytes)));
    hn::StoreU(first, kBytes, target);
    hn::StoreU(second, kBytes, target + hn::Lanes(kBytes));
}

/// Asks for the cache lines of a step some way from a place in memory. Outside the memory this does no harm.
HWY_INLINE void prefetchStep(const std::uint8_t* place, std::ptrdiff_t distance) {
    constexpr std::size_t kCacheLine = 64;
    const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(place) + static_cast<std::uintptr_t>(distance);
    for (std::size_t at = 0; at < 2 * hn::Lanes(kBytes); at += kCacheLine)
        hwy::Prefetch(reinterpret_cast<const std::uint8_t*>(first + at));
}

/// Renders whole steps. The lines to be written are asked for well ahead: they are fetched before they are written,
/// which the processor foresees badly.
template <class Kernel>
HWY_INLINE void storeCached(const Kernel& kernel, const std::uint8_t* source, std::uint8_t* target, std::size_t bytes,
                            Sweep sweep) {
    constexpr std::ptrdiff_t kAhead = kPage / 2;
    const std::size_t step = 2 * hn::Lanes(kBytes);
    if (sweep == Sweep::Backwards) {
        for (std::size_t at = bytes; at != 0;) {
            at -= step;
            prefetchStep(target + at, -kAhead);
            renderStep(kernel, source + at, target + at);
        }
    } else {
        for (std::size_t at = 0; at != bytes; at += step) {
            prefetchStep(target + at, kAhead);
            renderStep(kernel, source + at, target + at);
        }
    }
}

/// Writes past the caches, to a few pages by turns, which fills memory fastest.
template <class Kernel>
HWY_INLINE std::size_t storeStreaming(const Kernel& kernel, const std::uint8_t* source, std::uint8_t* target,
                                      std::size_t bytes) {
    constexpr std::size_t kPages = 4;
    const std::size_t lanes = hn::Lanes(kBytes);
    std::size_t done = 0;
    for (; done + kPages * kPage <= bytes; done += kPages * kPage)
        for (std::size_t at = done; at < done + kPage; at += 2 * lanes)
            for (std::size_t turn = at; turn < at + kPages * kPage; turn += kPage) {
                const ByteVector first = kernel(hn::LoadU(kBytes, source + turn));
                const ByteVector second = kernel(hn::LoadU(kBytes, source + turn + lanes));
                hn::Stream(first, kBytes, target + turn);
                hn::Stream(second, kBytes, target + turn + lanes);
            }
    hwy::FlushStream();
    return done;
}

/// Renders as many whole steps as there are and returns their bytes.
template <class Kernel>
HWY_INLINE std::size_t renderSteps(const Kernel& kernel, const std::uint8_t* source, std::uint8_t* target,
                                   std::size_t bytes, Sweep sweep) {
    const std::size_t steps = bytes - bytes % (2 * hn::Lanes(kBytes));
    std::size_t done = 0;
    if (sweep == Sweep::Streaming)
        done = storeStreaming(kernel, source, target, steps);
    storeCached(kernel, source + done, target + done, steps - done, sweep);
    return steps;
}

std::size_t renderWhatFits(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t bytes,
                           Sweep sweep) {
    switch (plan.arithmetic) {
    case Arithmetic::Scale:
        return renderSteps(ScaleKernel(plan.scale), source, target, bytes, sweep);
    case Arithmetic::Grey:
        return renderSteps(GreyKernel(plan.grey), source, target, bytes, sweep);
    case Arithmetic::Matrix:
        return renderSteps(MatrixKernel(plan.matrix), source, target, bytes, sweep);
    case Arithmetic::Copy:
    case Arithmetic::Exact:
        break;
    }
    return 0;
}

void renderRun(const RenderPlan& plan, const std::uint8_t* source, std::uint8_t* target, std::size_t pixels,
               Sweep sweep) {
    std::size_t done = 0; // pixels
    if (sweep == Sweep::Streaming) {
        const std::size_t misaligned = reinterpret_cast<std::uintptr_t>(target) % hn::Lanes(kBytes);
        if (misaligned % 4 != 0)
            sweep = Sweep::Forwards; // no pixel begins where a vector may
        else if (misaligned != 0)
            done = std::min(pixels, (hn::Lanes(kBytes) - misaligned) / 4);
        renderRunPlainly(plan, source, target, done);
    }
    done += renderWhatFits(plan, source + 4 * done, target + 4 * done, 4 * (pixels - done), sweep) / 4;
    renderRunPlainly(plan, source + 4 * done, target + 4 * done, pixels - done);
}

#endif

} // namespace
} // namespace imaging::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace imaging {
namespace {

// The library's own choice at run time would load its shared object, which takes milliseconds to measure its clock as
// it is loaded: docs/decisions/vectors-are-chosen-here.md.
std::vector<WideRun> runsOfThisMachine() {
    std::vector<WideRun> runs;
#if HWY_TARGETS & HWY_AVX3
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512vl") &&
        __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx2") &&
        __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2"))
        runs.push_back({"AVX-512", N_AVX3::renderRun});
#endif
#if HWY_TARGETS & HWY_AVX2
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi") &&
        __builtin_cpu_supports("bmi2"))
        runs.push_back({"AVX2", N_AVX2::renderRun});
#endif
#if HWY_TARGETS & HWY_SSE4
    if (__builtin_cpu_supports("sse4.2"))
        runs.push_back({"SSE4", N_SSE4::renderRun});
#endif
#if HWY_TARGETS & HWY_SSSE3
    if (__builtin_cpu_supports("ssse3"))
        runs.push_back({"SSSE3", N_SSSE3::renderRun});
#endif
    runs.push_back({"baseline", HWY_STATIC_DISPATCH(renderRun)});
    return runs;
}

} // namespace

const std::vector<WideRun>& wideRuns() {
    static const std::vector<WideRun> runs = runsOfThisMachine();
    return runs;
}

} // namespace imaging
#endif
