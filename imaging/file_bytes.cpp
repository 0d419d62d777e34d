#include "imaging/file_bytes.h"

#include <cstddef>
#include <unistd.h>

namespace imaging {

bool readAt(int descriptor, std::uint64_t at, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t got = pread(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(at));
        if (got <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(got));
        at += static_cast<std::uint64_t>(got);
    }
    return true;
}

} // namespace imaging
