#pragma once

#include "imaging/export.h"
#include "imaging/picture.h"

#include <optional>
#include <string>

namespace imaging {

/// The most pixels that a file may hold; a larger one is refused before memory is taken for it.
inline constexpr long long kMaxLoadedPixels = 64'000'000;

/// A loaded picture, or why there is none: one line of plain text that begins with the file's name.
struct LoadResult {
    std::optional<Picture> picture; ///< none where the file cannot be read
    std::string error;              ///< empty when there is a picture
};

/// Reads a TIFF file (8 or 16 bits per sample, and what else libtiff can turn into RGBA; the first page) or an
/// uncompressed BMP file; which of them, the content decides. Rows are turned upright as the file says. The picture's
/// source name is the file's name without folder and extension. A file that is damaged anywhere gives no picture.
/// Files are not trusted; nothing is printed.
[[nodiscard]] CV_IMAGING_EXPORT LoadResult loadPicture(const std::string& path);

} // namespace imaging
