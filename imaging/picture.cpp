#include "imaging/picture.h"

#include "imaging/color_transform.h"
#include "imaging/render_pass.h"

#include <utility>

namespace imaging {

Picture::Picture(std::shared_ptr<const Bitmap> source, std::string sourceName)
    : source_(source ? std::move(source) : std::make_shared<const Bitmap>()), sourceName_(std::move(sourceName)) {}

Picture Picture::filteredBy(Filter filter) const {
    Picture result = *this;
    result.filters_.push_back(filter);
    return result;
}

void Picture::renderInto(Bitmap& target) const {
    const Bitmap& source = *source_;
    target.resize(source.width(), source.height());
    if (source.isEmpty())
        return;
    // Bitmaps of one width have one stride, and the bytes between the rows are theirs: rows with them are one run.
    const SourcePixels pixels = {source.row(0), source.stride() / Bitmap::kBytesPerPixel,
                                 static_cast<std::size_t>(source.height()), source.stride()};
    renderPass(foldFilters(filters_), pixels, {target.row(0), target.stride()});
}

} // namespace imaging
