#pragma once

#include "imaging/bitmap.h"
#include "imaging/export.h"

#include <string>

namespace imaging {

/// Writes the bitmap as an 8-bit RGBA PNG file, over a file that is there. False when that failed (an empty bitmap, a
/// folder that is missing, a full disk); the error then holds one line that says why, and no part of a file is left.
[[nodiscard]] CV_IMAGING_EXPORT bool writePng(const Bitmap& bitmap, const std::string& path, std::string& error);

} // namespace imaging
