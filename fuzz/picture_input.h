#pragma once

#include <string_view>

namespace fuzz {

/// Loads the bytes as a picture file and renders it through both colour filters. Aborts where a refusal gives no
/// reason, or one of several lines.
void loadAndShow(std::string_view bytes);

} // namespace fuzz
