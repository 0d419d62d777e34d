#include "host/window/pictures.h"

#include "imaging/bitmap.h"
#include "imaging/loading.h"

#include <QImage>

namespace host {
namespace {

// A picture's pixels may be written anew by its owner, so the pixmap gets a copy.
QPixmap copied(const std::uint8_t* pixels, int width, int height, std::size_t stride) {
    return QPixmap::fromImage(
        QImage(pixels, width, height, static_cast<qsizetype>(stride), QImage::Format_RGBA8888).copy());
}

} // namespace

QPixmap pixmapOfImage(const toolkit::Image& image) {
    if (image.pixels != nullptr && image.width > 0 && image.height > 0)
        return copied(image.pixels.get(), image.width, image.height, image.stride);
    if (image.path.empty())
        return {};
    const auto loaded = imaging::loadPicture(image.path);
    if (!loaded.picture)
        return {};
    imaging::Bitmap bitmap;
    loaded.picture->renderInto(bitmap);
    return bitmap.isEmpty() ? QPixmap() : copied(bitmap.row(0), bitmap.width(), bitmap.height(), bitmap.stride());
}

} // namespace host
