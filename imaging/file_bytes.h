#pragma once

#include <cstdint>
#include <span>

namespace imaging {

/// Fills the bytes from a place in the file that is open as the descriptor. False when that failed or the file ends
/// before.
[[nodiscard]] bool readAt(int descriptor, std::uint64_t at, std::span<std::uint8_t> bytes);

} // namespace imaging
