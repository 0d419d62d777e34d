#include "print_settings/paper_loading.h"

namespace paper_loading {

// The order of the cases decides.
Loading loadingForSize(double width, double height, const printing::CustomSizeLimits& limits) {
    constexpr double kNarrow = 360, kLetterWidth = 612, kA4Height = 842; // points
    const double minWidth = static_cast<double>(limits.minWidth);
    const double maxWidth = static_cast<double>(limits.maxWidth);
    const double maxHeight = static_cast<double>(limits.maxHeight);
    const bool widthWithinLimits = minWidth <= width && width <= maxWidth;
    const bool heightOfA4 = kLetterWidth < height && height <= kA4Height;
    if (kNarrow <= width && width <= kLetterWidth && heightOfA4)
        return Loading::Landscape;
    if (widthWithinLimits && kNarrow <= height && height <= kLetterWidth)
        return Loading::Portrait;
    if (widthWithinLimits && kA4Height < height && height <= maxHeight)
        return Loading::ByHand;
    if (minWidth <= width && width < kNarrow && heightOfA4)
        return Loading::ByHand;
    if (kLetterWidth < width && width <= maxWidth && heightOfA4)
        return Loading::ByHand;
    return Loading::Unsupported;
}

} // namespace paper_loading
