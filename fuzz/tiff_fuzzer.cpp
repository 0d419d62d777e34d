// A TIFF file: loaded as a reference picture is, and shown through a filter.

#include "fuzz/picture_input.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::loadAndShow({reinterpret_cast<const char*>(data), size});
    return 0;
}
