#pragma once

#include "imaging/color_transform.h"
#include "imaging/export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace imaging {

/// Rows of 8-bit RGBA pixels in someone else's memory, borrowed. Rows need no alignment; width and height are not
/// negative; stride is the bytes from one row to the next, at least four times the width.
struct SourcePixels {
    const std::uint8_t* firstRow = nullptr;
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t stride = 0;
};

/// As SourcePixels, to be written to. Bytes between the rows are not touched.
struct TargetPixels {
    std::uint8_t* firstRow = nullptr;
    std::size_t stride = 0;
};

/// Puts the transform on every pixel of the source and writes the result, cut to 0..255, to as many rows and pixels of
/// the target: one pass, with the widest vectors that the machine has, on the caller's thread. The result differs from
/// the exact value, rounded, by at most one. The target either is the source or does not overlap it.
CV_IMAGING_EXPORT void renderPass(const ColorTransform& transform, const SourcePixels& source,
                                  const TargetPixels& target);

/// The kinds of vectors that this machine has, by name, the widest first; never empty.
CV_IMAGING_EXPORT std::vector<const char*> vectorsOfThisMachine();

/// The same as renderPass, which takes the widest vectors, with another kind: an index of vectorsOfThisMachine().
CV_IMAGING_EXPORT void renderPassWithVectors(std::size_t kind, const ColorTransform& transform,
                                             const SourcePixels& source, const TargetPixels& target);

/// The same without wide vectors, pixel by pixel; every byte comes out the same.
CV_IMAGING_EXPORT void renderPassPlainly(const ColorTransform& transform, const SourcePixels& source,
                                         const TargetPixels& target);

} // namespace imaging
