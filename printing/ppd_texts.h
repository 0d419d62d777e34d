#pragma once

#include "printing/export.h"

#include <string>
#include <string_view>

namespace printing {

/// A text of a PPD as it can be shown: control characters and broken UTF-8 are taken out, and a character that libcups
/// cut off at its limit of 80 bytes goes with the rest.
CV_PRINTING_EXPORT std::string cleanText(std::string_view text);

} // namespace printing
