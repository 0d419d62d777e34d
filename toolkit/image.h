#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace toolkit {

/// A picture as a view shows it: either pixels, or a file that the host loads and draws.
struct Image {
    std::optional<std::string> name;            ///< of the resource
    int width = 0, height = 0;                  ///< in pixels; 0 by 0 where the host loads the file
    std::size_t stride = 0;                     ///< bytes from one row of `pixels` to the next
    std::shared_ptr<const std::uint8_t> pixels; ///< 8-bit RGBA rows, top first; null where the host loads the file
    std::string path;                           ///< the file it came from; empty where it came from none
};

} // namespace toolkit
