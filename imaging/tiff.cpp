#include "imaging/tiff.h"

#include "imaging/file_bytes.h"
#include "imaging/loading.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <tiffio.h>
#include <utility>
#include <vector>

namespace imaging {
namespace {

/// No picture that is accepted has a strip or a tile beyond this: four samples of 16 bits per pixel.
constexpr tmsize_t kLargestAllocation = tmsize_t{kMaxLoadedPixels} * 8;
constexpr std::uint16_t kMostSamples = 8;
constexpr off_t kLargestFile = off_t{1} << 30;

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
struct FreeOptions {
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

/// Keeps the first error, which names the cause; those that follow are its consequences.
int keepFirstError(TIFF*, void* error, const char*, const char* format, va_list arguments) {
    auto& text = *static_cast<std::string*>(error);
    if (text.empty()) {
        std::array<char, 256> line{};
        std::vsnprintf(line.data(), line.size(), format, arguments);
        text = line.data();
    }
    return 1; // do not print
}

int dropWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1; // do not print
}

/// The file's bytes, all of them, as libtiff asks for them. Unlike a mapped file they stay when the file is cut
/// meanwhile, and only what is mapped or as good as mapped may have tiles of any size without compression.
class MemoryFile {
public:
    /// False when the file is too large or cannot be read.
    bool read(int descriptor) {
        struct stat status {};
        if (fstat(descriptor, &status) != 0 || status.st_size > kLargestFile)
            return false;
        size_ = static_cast<std::size_t>(status.st_size);
        bytes_ = std::make_unique_for_overwrite<std::uint8_t[]>(size_);
        return readAt(descriptor, 0, {bytes_.get(), size_});
    }

    /// This object and the error must live as long as what is returned.
    Tiff open(TIFFOpenOptions* options) {
        return Tiff(TIFFClientOpenExt("picture", "r", this, readProc, writeProc, seekProc, closeProc, sizeProc, mapProc,
                                      unmapProc, options));
    }

private:
    static MemoryFile& of(thandle_t handle) { return *static_cast<MemoryFile*>(handle); }

    static tmsize_t readProc(thandle_t handle, void* target, tmsize_t wanted) {
        MemoryFile& file = of(handle);
        if (file.position_ >= file.size_ || wanted <= 0)
            return 0;
        const std::size_t count = std::min(static_cast<std::size_t>(wanted), file.size_ - file.position_);
        std::memcpy(target, file.bytes_.get() + file.position_, count);
        file.position_ += count;
        return static_cast<tmsize_t>(count);
    }
    static tmsize_t writeProc(thandle_t, void*, tmsize_t) { return 0; }
    static toff_t seekProc(thandle_t handle, toff_t offset, int whence) {
        MemoryFile& file = of(handle);
        const toff_t base = whence == SEEK_CUR ? file.position_ : whence == SEEK_END ? file.size_ : 0;
        file.position_ = base + offset;
        return file.position_;
    }
    static int closeProc(thandle_t) { return 0; }
    static toff_t sizeProc(thandle_t handle) { return of(handle).size_; }
    static int mapProc(thandle_t handle, void** base, toff_t* size) {
        *base = of(handle).bytes_.get();
        *size = of(handle).size_;
        return 1;
    }
    static void unmapProc(thandle_t, void*, toff_t) {}

    std::unique_ptr<std::uint8_t[]> bytes_;
    std::size_t size_ = 0;
    toff_t position_ = 0;
};

/// What libtiff has to say goes to the error, never to the terminal.
Tiff openTiff(MemoryFile& file, std::string& error) {
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(TIFFOpenOptionsAlloc());
    if (!options)
        return nullptr;
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kLargestAllocation);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepFirstError, &error);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), dropWarning, nullptr);
    return file.open(options.get());
}

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

std::uint64_t pixelsOf(const Size& size) {
    return std::uint64_t{size.width} * size.height;
}

/// The size that whole tiles cover; nothing when the tiles are larger than any picture. Strips have the picture's
/// width.
Size paddedSize(TIFF* tiff, const Size& size) {
    if (!TIFFIsTiled(tiff))
        return size;
    Size tile;
    TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &tile.width);
    TIFFGetField(tiff, TIFFTAG_TILELENGTH, &tile.height);
    if (tile.width == 0 || tile.height == 0 || tile.width > kMaxLoadedPixels || tile.height > kMaxLoadedPixels)
        return {};
    const auto roundedUp = [](std::uint32_t side, std::uint32_t unit) { return (side + unit - 1) / unit * unit; };
    return {roundedUp(size.width, tile.width), roundedUp(size.height, tile.height)};
}

/// Checks all that decides how much memory reading takes. False, with the reason, where it is out of proportion.
bool checkDimensions(TIFF* tiff, Size& size, std::string& error) {
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &size.width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &size.height);
    if (pixelsOf(size) == 0) {
        error = "the picture has no pixels";
        return false;
    }
    if (pixelsOf(size) > static_cast<std::uint64_t>(kMaxLoadedPixels)) {
        error = "the picture is larger than 64 megapixels";
        return false;
    }
    std::uint16_t samples = 1;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
    if (samples > kMostSamples) {
        error = "the picture has too many samples per pixel";
        return false;
    }
    const Size padded = paddedSize(tiff, size);
    constexpr std::uint64_t kPaddingOfSmallPictures = 1 << 22;
    if (pixelsOf(padded) == 0 || pixelsOf(padded) > std::max(2 * pixelsOf(size), kPaddingOfSmallPictures)) {
        error = "the picture's tiles do not fit its size";
        return false;
    }
    return true;
}

/// Has libtiff hand out the colours as they are in the file: it would multiply straight colours by their alpha. Returns
/// whether they are in the file multiplied by it.
bool takeColorsAsTheyAre(TIFF* tiff) {
    std::uint16_t count = 0;
    std::uint16_t* types = nullptr;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &types);
    if (count == 0)
        return false;
    const std::uint16_t first = types[0];
    if (first == EXTRASAMPLE_UNASSALPHA) {
        std::vector<std::uint16_t> changed(types, types + count); // setting frees what it replaces
        changed[0] = EXTRASAMPLE_ASSOCALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, count, changed.data());
    }
    return first == EXTRASAMPLE_ASSOCALPHA;
}

/// The memory that libtiff fills for a TIFFRGBAImage.
class RgbaImage {
public:
    RgbaImage(TIFF* tiff, std::string& error) {
        std::array<char, 1024> message{};
        constexpr int kStopOnError = 1;
        isOpen_ = TIFFRGBAImageBegin(&image_, tiff, kStopOnError, message.data()) == 1;
        if (!isOpen_) {
            if (error.empty())
                error = message.data();
            return;
        }
        image_.req_orientation = image_.orientation; // rows in the file's order; they are turned here
    }
    RgbaImage(const RgbaImage&) = delete;
    RgbaImage& operator=(const RgbaImage&) = delete;
    ~RgbaImage() {
        if (isOpen_)
            TIFFRGBAImageEnd(&image_);
    }

    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// Fills the raster with rows of the padded width: with the picture's own width, libtiff 4.5 misreads the tiles at
    /// the right edge of some kinds of grey pictures.
    bool readRows(std::uint32_t firstRow, std::uint32_t rows, std::uint32_t paddedWidth, std::uint32_t* raster) {
        image_.row_offset = static_cast<int>(firstRow);
        image_.width = paddedWidth;
        return TIFFRGBAImageGet(&image_, raster, paddedWidth, rows) == 1;
    }

private:
    TIFFRGBAImage image_{};
    bool isOpen_ = false;
};

/// Where the file's pixels go in the upright picture: the first one, and the steps in bytes along and across a row.
struct Placement {
    std::uint8_t* first;
    std::ptrdiff_t along;
    std::ptrdiff_t across;
};

/// Makes the bitmap as large as the upright picture.
Placement placeUpright(std::uint16_t orientation, const Size& size, Bitmap& bitmap) {
    const bool isTurned = orientation >= ORIENTATION_LEFTTOP && orientation <= ORIENTATION_LEFTBOT;
    const int width = static_cast<int>(isTurned ? size.height : size.width);
    const int height = static_cast<int>(isTurned ? size.width : size.height);
    bitmap.resize(width, height);

    struct Corner {
        bool right, bottom;
    };
    // the corner of the upright picture that holds the file's first pixel, by orientation, 1 to 8
    static constexpr Corner kCorners[] = {{false, false}, {true, false}, {true, true}, {false, true},
                                          {false, false}, {true, false}, {true, true}, {false, true}};
    const bool isKnown = orientation >= ORIENTATION_TOPLEFT && orientation <= ORIENTATION_LEFTBOT;
    const Corner corner = isKnown ? kCorners[orientation - ORIENTATION_TOPLEFT] : Corner{};

    constexpr auto kPixel = static_cast<std::ptrdiff_t>(Bitmap::kBytesPerPixel);
    const std::ptrdiff_t toRight = corner.right ? -kPixel : kPixel;
    const std::ptrdiff_t down = static_cast<std::ptrdiff_t>(bitmap.stride()) * (corner.bottom ? -1 : 1);
    return {bitmap.row(corner.bottom ? height - 1 : 0) + (corner.right ? (width - 1) * kPixel : 0),
            isTurned ? down : toRight, isTurned ? toRight : down};
}

std::uint8_t dividedByAlpha(std::uint32_t sample, std::uint32_t alpha) {
    if (alpha == 0)
        return 0;
    return static_cast<std::uint8_t>(std::min((sample * 255 + alpha / 2) / alpha, std::uint32_t{255}));
}

void storePixel(std::uint32_t value, bool isMultiplied, std::uint8_t* target) {
    const std::uint32_t alpha = TIFFGetA(value);
    const std::array<std::uint32_t, 3> colors = {TIFFGetR(value), TIFFGetG(value), TIFFGetB(value)};
    for (std::size_t channel = 0; channel < colors.size(); ++channel)
        target[channel] =
            isMultiplied ? dividedByAlpha(colors[channel], alpha) : static_cast<std::uint8_t>(colors[channel]);
    target[3] = static_cast<std::uint8_t>(alpha);
}

void storeRow(std::span<const std::uint32_t> values, bool isMultiplied, std::uint8_t* target, std::ptrdiff_t along) {
    // Most pictures need no more: libtiff's red is the lowest byte of its value, and so the first one.
    if (std::endian::native == std::endian::little && !isMultiplied &&
        along == static_cast<std::ptrdiff_t>(Bitmap::kBytesPerPixel)) {
        std::memcpy(target, values.data(), values.size_bytes());
        return;
    }
    for (const std::uint32_t value : values) {
        storePixel(value, isMultiplied, target);
        target += along;
    }
}

/// How many rows to read at a time: whole strips or tiles, so that none is decoded twice, and not too few.
std::uint32_t rowsAtATime(TIFF* tiff, const Size& size) {
    constexpr std::uint32_t kFewest = 64;
    std::uint32_t unit = 0;
    if (TIFFIsTiled(tiff))
        TIFFGetField(tiff, TIFFTAG_TILELENGTH, &unit);
    else
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &unit);
    unit = std::clamp(unit, std::uint32_t{1}, size.height);
    const std::uint32_t units = std::max(kFewest / unit, std::uint32_t{1});
    return std::min(unit * units, size.height);
}

} // namespace

std::optional<Bitmap> readTiff(int descriptor, std::string& error) {
    MemoryFile file;
    if (!file.read(descriptor)) {
        error = "the file is too large or cannot be read";
        return std::nullopt;
    }
    const Tiff tiff = openTiff(file, error);
    Size size;
    if (!tiff || !checkDimensions(tiff.get(), size, error))
        return std::nullopt;
    const bool isMultiplied = takeColorsAsTheyAre(tiff.get());
    RgbaImage image(tiff.get(), error);
    if (!image.isOpen())
        return std::nullopt;

    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ORIENTATION, &orientation);
    const std::uint32_t bandRows = rowsAtATime(tiff.get(), size);
    const std::uint32_t paddedWidth = paddedSize(tiff.get(), size).width;
    std::vector<std::uint32_t> band(std::size_t{paddedWidth} * bandRows);
    Bitmap bitmap;
    const Placement placement = placeUpright(orientation, size, bitmap);
    for (std::uint32_t firstRow = 0; firstRow < size.height; firstRow += bandRows) {
        const std::uint32_t rows = std::min(bandRows, size.height - firstRow);
        // Some damage is reported as an error while the call succeeds.
        if (!image.readRows(firstRow, rows, paddedWidth, band.data()) || !error.empty())
            return std::nullopt;
        for (std::uint32_t y = 0; y < rows; ++y)
            storeRow({band.data() + std::size_t{y} * paddedWidth, size.width}, isMultiplied,
                     placement.first + static_cast<std::ptrdiff_t>(firstRow + y) * placement.across, placement.along);
    }
    return bitmap;
}

} // namespace imaging
