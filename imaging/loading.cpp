#include "imaging/loading.h"

#include "imaging/bmp.h"
#include "imaging/tiff.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace imaging {
namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            close(number_);
    }
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

std::string systemMessage(int code) {
    return std::error_code(code, std::generic_category()).message();
}

using Reader = std::optional<Bitmap> (*)(int descriptor, std::string& error);

struct Format {
    std::array<std::uint8_t, 4> start;
    std::size_t length; // of the start
    Reader read;
};

constexpr Format kFormats[] = {
    // the file's first bytes       how many  read by
    {{'I', 'I', 42, 0}, 4, readTiff}, {{'M', 'M', 0, 42}, 4, readTiff},
    {{'I', 'I', 43, 0}, 4, readTiff}, // 64-bit offsets
    {{'M', 'M', 0, 43}, 4, readTiff}, {{'B', 'M'}, 2, readBmp},
};

std::optional<Bitmap> readFile(const std::string& path, std::string& error) {
    // Without blocking, because what is named may be a pipe that nobody writes to.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file.number() < 0 || fstat(file.number(), &status) != 0) {
        error = systemMessage(errno);
        return std::nullopt;
    }
    if (!S_ISREG(status.st_mode)) {
        error = "not a file";
        return std::nullopt;
    }
    std::array<std::uint8_t, 4> start{};
    const ssize_t got = pread(file.number(), start.data(), start.size(), 0);
    for (const Format& format : kFormats)
        if (got == static_cast<ssize_t>(start.size()) &&
            std::memcmp(start.data(), format.start.data(), format.length) == 0)
            return format.read(file.number(), error);
    error = "neither a TIFF nor a BMP file";
    return std::nullopt;
}

/// Control characters of file names and of libtiff's messages would break the line.
std::string asPlainLine(std::string text) {
    for (char& character : text)
        if (static_cast<unsigned char>(character) < ' ' || character == '\x7F')
            character = '?';
    return text;
}

} // namespace

LoadResult loadPicture(const std::string& path) {
    const std::filesystem::path file(path);
    LoadResult result;
    std::string error;
    try {
        if (auto bitmap = readFile(path, error))
            result.picture = Picture(std::make_shared<const Bitmap>(std::move(*bitmap)), file.stem().string());
    } catch (const std::bad_alloc&) {
        error = "not enough memory";
    }
    if (!result.picture)
        result.error =
            asPlainLine(file.filename().string() + ": " + (error.empty() ? "the file cannot be read" : error));
    return result;
}

} // namespace imaging
