#pragma once

#include "imaging/bitmap.h"

#include <optional>
#include <string>

namespace imaging {

/// Reads the first page of the TIFF file that is open for reading as the descriptor, which stays open. None when that
/// failed; the error then says why. Throws std::bad_alloc.
[[nodiscard]] std::optional<Bitmap> readTiff(int descriptor, std::string& error);

} // namespace imaging
