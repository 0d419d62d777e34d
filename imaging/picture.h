#pragma once

#include "imaging/bitmap.h"
#include "imaging/export.h"
#include "imaging/filters.h"

#include <memory>
#include <string>
#include <vector>

namespace imaging {

/// A picture: shared source pixels and the filters put on them, in the order in which the pixels pass them. Nothing is
/// computed before renderInto(). Cheap to copy; the source is shared by all pictures made from it and never changed.
class CV_IMAGING_EXPORT Picture {
public:
    /// A null source is an empty picture. The name says where the pixels come from; it is carried along, not read.
    Picture(std::shared_ptr<const Bitmap> source, std::string sourceName);

    [[nodiscard]] const std::string& sourceName() const { return sourceName_; } ///< of the file that it was loaded from
    [[nodiscard]] Extent extent() const { return source_->extent(); }           ///< in pixels
    /// The pixels as they are without the filters. Never null.
    [[nodiscard]] const std::shared_ptr<const Bitmap>& source() const { return source_; }
    [[nodiscard]] const std::vector<Filter>& filters() const { return filters_; } ///< in the order of the data

    /// This picture with one more filter behind those that it has.
    [[nodiscard]] Picture filteredBy(Filter filter) const;

    /// Makes the target as large as the picture and computes its pixels, in one pass, on the caller's thread. The
    /// filters work on unbounded values; only the result is cut to 0..255. The target's memory is reused where it is
    /// large enough: keep one bitmap for repeated rendering. The target may be the source itself. Throws
    /// std::bad_alloc, the target unchanged, when there is no memory.
    void renderInto(Bitmap& target) const;

private:
    std::shared_ptr<const Bitmap> source_;
    std::string sourceName_;
    std::vector<Filter> filters_;
};

} // namespace imaging
