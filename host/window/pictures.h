#pragma once

#include "toolkit/image.h"

#include <QPixmap>

namespace host {

/// The picture's own copy of its pixels, or of those of its file. Null where there are none, or the file cannot be
/// read.
QPixmap pixmapOfImage(const toolkit::Image& image);

} // namespace host
