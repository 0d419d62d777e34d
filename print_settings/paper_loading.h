#pragma once

#include "printing/printer_description.h"

namespace paper_loading {

/// How a sheet of a user-defined size goes into the printer.
enum class Loading { Landscape, Portrait, ByHand, Unsupported };

/// The sides in whole points.
Loading loadingForSize(double width, double height, const printing::CustomSizeLimits& limits);

} // namespace paper_loading
