#pragma once

#include "imaging/bitmap.h"

#include <optional>
#include <string>

namespace imaging {

/// Reads the uncompressed BMP file that is open for reading as the descriptor, which stays open. None when that failed;
/// the error then says why. Throws std::bad_alloc.
[[nodiscard]] std::optional<Bitmap> readBmp(int descriptor, std::string& error);

} // namespace imaging
