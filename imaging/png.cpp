#include "imaging/png.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <png.h>
#include <system_error>

namespace imaging {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string lastSystemMessage() {
    return std::error_code(errno, std::generic_category()).message();
}

bool writeTo(std::FILE* file, const Bitmap& bitmap, std::string& error) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(bitmap.width());
    image.height = static_cast<png_uint_32>(bitmap.height());
    image.format = PNG_FORMAT_RGBA;
    constexpr int kAlreadyEightBits = 0;
    if (!png_image_write_to_stdio(&image, file, kAlreadyEightBits, bitmap.row(0), static_cast<int>(bitmap.stride()),
                                  nullptr)) {
        error = image.message;
        return false;
    }
    return true;
}

} // namespace

bool writePng(const Bitmap& bitmap, const std::string& path, std::string& error) {
    if (bitmap.isEmpty()) {
        error = path + ": the picture has no pixels";
        return false;
    }
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wbe"));
    if (!file) {
        error = path + ": " + lastSystemMessage();
        return false;
    }
    std::string reason;
    bool isWritten = writeTo(file.get(), bitmap, reason);
    if (std::fclose(file.release()) != 0 && isWritten) { // the last bytes are written here
        reason = lastSystemMessage();
        isWritten = false;
    }
    if (!isWritten) {
        error = path + ": " + reason;
        std::error_code ignored;
        if (std::filesystem::is_regular_file(path, ignored)) // a device is not ours to remove
            std::filesystem::remove(path, ignored);
    }
    return isWritten;
}

} // namespace imaging
