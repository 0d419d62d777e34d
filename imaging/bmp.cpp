#include "imaging/bmp.h"

#include "imaging/file_bytes.h"
#include "imaging/loading.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <sys/stat.h>
#include <vector>

namespace imaging {
namespace {

constexpr std::uint32_t kFileHeaderSize = 14;
constexpr std::uint32_t kCoreHeaderSize = 12;  // the oldest header, with 16-bit dimensions
constexpr std::uint32_t kInfoHeaderSize = 40;  // the masks of bit fields follow it
constexpr std::uint32_t kMaskHeaderSize = 52;  // from here on they are part of the header
constexpr std::uint32_t kAlphaHeaderSize = 56; // and the mask of the alpha too
constexpr std::uint32_t kLargestHeaderSize = 124;
constexpr std::uint32_t kKnownHeaderSizes[] = {
    kCoreHeaderSize, kInfoHeaderSize, kMaskHeaderSize, kAlphaHeaderSize, 64, 108, kLargestHeaderSize};
constexpr std::uint32_t kMasksAt = 40; // in the header, or right behind the one of this size

enum Compression : std::uint32_t { kUncompressed = 0, kBitFields = 3, kAlphaBitFields = 6 };

/// A little-endian number at a place in bytes that are there.
std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t size) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= std::uint32_t{bytes[at + i]} << (8 * i);
    return number;
}

struct Header {
    std::uint32_t size = 0;
    std::uint32_t pixelsAt = 0; // in the file
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool isTopDown = false;
    std::uint32_t planes = 0;
    std::uint32_t bitsPerPixel = 0;
    std::uint32_t compression = kUncompressed;
    std::uint32_t colorsUsed = 0;
    std::array<std::uint32_t, 4> masks{}; // red, green, blue, alpha
    std::uint32_t paletteAt = 0;          // in the file
};

/// Reads the two headers. False when they are not there or of an unknown kind.
bool readHeader(int descriptor, Header& header) {
    std::array<std::uint8_t, kFileHeaderSize + kLargestHeaderSize> bytes{};
    if (!readAt(descriptor, 0, std::span(bytes).first(kFileHeaderSize + 4)))
        return false;
    header.pixelsAt = numberAt(bytes, 10, 4);
    header.size = numberAt(bytes, kFileHeaderSize, 4);
    if (std::ranges::find(kKnownHeaderSizes, header.size) == std::end(kKnownHeaderSizes))
        return false;
    if (!readAt(descriptor, kFileHeaderSize, std::span(bytes).subspan(kFileHeaderSize, header.size)))
        return false;

    const auto info = std::span<const std::uint8_t>(bytes).subspan(kFileHeaderSize);
    header.paletteAt = kFileHeaderSize + header.size;
    if (header.size == kCoreHeaderSize) {
        header.width = numberAt(info, 4, 2);
        header.height = numberAt(info, 6, 2);
        header.planes = numberAt(info, 8, 2);
        header.bitsPerPixel = numberAt(info, 10, 2);
        return true;
    }
    header.width = static_cast<std::int32_t>(numberAt(info, 4, 4));
    header.height = static_cast<std::int32_t>(numberAt(info, 8, 4));
    header.isTopDown = header.height < 0;
    header.height = header.isTopDown ? -header.height : header.height;
    header.planes = numberAt(info, 12, 2);
    header.bitsPerPixel = numberAt(info, 14, 2);
    header.compression = numberAt(info, 16, 4);
    header.colorsUsed = numberAt(info, 32, 4);

    if (header.compression == kBitFields || header.compression == kAlphaBitFields) {
        std::size_t masks = header.size >= kAlphaHeaderSize ? 4 : 3;
        if (header.size == kInfoHeaderSize) {
            masks = header.compression == kAlphaBitFields ? 4 : 3;
            if (!readAt(descriptor, kFileHeaderSize + kMasksAt,
                        std::span(bytes).subspan(kFileHeaderSize + kMasksAt, 4 * masks)))
                return false;
        }
        for (std::size_t i = 0; i < masks; ++i)
            header.masks[i] = numberAt(info, kMasksAt + 4 * i, 4);
    } else if (header.bitsPerPixel == 16) {
        header.masks = {0x7C00, 0x03E0, 0x001F, 0};
    } else if (header.bitsPerPixel == 32) {
        header.masks = {0x00FF0000, 0x0000FF00, 0x000000FF, 0};
    }
    return true;
}

bool isRunOfBits(std::uint32_t mask) {
    const std::uint32_t low = mask == 0 ? 0 : mask >> std::countr_zero(mask);
    return (low & (low + 1)) == 0;
}

std::uint64_t strideOf(const Header& header) {
    return (static_cast<std::uint64_t>(header.width) * header.bitsPerPixel + 31) / 32 * 4;
}

/// What is wrong with the header, in words; null when nothing is.
const char* faultOf(const Header& header, std::uint64_t fileSize) {
    constexpr std::uint32_t kDepths[] = {1, 4, 8, 16, 24, 32};
    if (header.width <= 0 || header.height <= 0)
        return "the picture has no pixels";
    if (header.width * header.height > kMaxLoadedPixels)
        return "the picture is larger than 64 megapixels";
    if (header.planes != 1 || std::ranges::find(kDepths, header.bitsPerPixel) == std::end(kDepths))
        return "the picture has an unknown depth";
    const bool hasMasks = header.bitsPerPixel == 16 || header.bitsPerPixel == 32;
    const bool saysMasks = header.compression == kBitFields || header.compression == kAlphaBitFields;
    if (header.compression != kUncompressed && !(hasMasks && saysMasks))
        return "the picture is compressed";
    if (hasMasks && !std::ranges::all_of(header.masks, isRunOfBits))
        return "the picture has broken bit fields";
    if (header.pixelsAt < header.paletteAt || header.pixelsAt > fileSize ||
        strideOf(header) * static_cast<std::uint64_t>(header.height) > fileSize - header.pixelsAt)
        return "the file is cut off";
    return nullptr;
}

using Pixel = std::array<std::uint8_t, 4>;
using Palette = std::array<Pixel, 256>;

/// The colours of a picture of at most 8 bits per pixel. Those that the file does not hold are black.
bool readPalette(int descriptor, const Header& header, Palette& palette) {
    palette.fill({0, 0, 0, 255});
    const std::size_t entrySize = header.size == kCoreHeaderSize ? 3 : 4;
    const std::size_t most = std::size_t{1} << header.bitsPerPixel;
    const std::size_t used = header.colorsUsed == 0 ? most : std::min<std::size_t>(header.colorsUsed, most);
    const std::size_t count = std::min(used, (header.pixelsAt - header.paletteAt) / entrySize);
    std::array<std::uint8_t, std::size_t{4} * 256> entries{};
    if (!readAt(descriptor, header.paletteAt, std::span(entries).first(count * entrySize)))
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* blueGreenRed = entries.data() + i * entrySize;
        palette[i] = {blueGreenRed[2], blueGreenRed[1], blueGreenRed[0], 255};
    }
    return true;
}

/// One channel of a pixel whose bits the file's masks share out, made 8 bits wide.
class BitField {
public:
    /// A channel without bits has the value given for it.
    BitField(std::uint32_t mask, std::uint8_t valueWithoutBits) : mask_(mask) {
        const int bits = std::popcount(mask);
        const int kept = std::min(bits, 8);
        shift_ = mask == 0 ? 0 : std::countr_zero(mask) + bits - kept;
        const unsigned largest = (1U << kept) - 1;
        for (unsigned value = 0; value <= largest; ++value)
            levels_[value] =
                largest == 0 ? valueWithoutBits : static_cast<std::uint8_t>((value * 255 + largest / 2) / largest);
    }

    [[nodiscard]] std::uint8_t levelIn(std::uint32_t pixel) const { return levels_[(pixel & mask_) >> shift_]; }

private:
    std::uint32_t mask_;
    int shift_;
    std::array<std::uint8_t, 256> levels_{};
};

/// Turns a row of the file into a row of the bitmap.
class RowReader {
public:
    RowReader(const Header& header, const Palette& palette)
        : bitsPerPixel_(header.bitsPerPixel), width_(static_cast<std::size_t>(header.width)),
          palette_(palette), fields_{BitField(header.masks[0], 0), BitField(header.masks[1], 0),
                                     BitField(header.masks[2], 0), BitField(header.masks[3], 255)} {}

    void read(std::span<const std::uint8_t> row, std::uint8_t* target) const {
        if (bitsPerPixel_ == 24)
            readTrueColors(row, target);
        else
            for (std::size_t x = 0; x < width_; ++x, target += Bitmap::kBytesPerPixel) {
                const Pixel pixel = pixelAt(row, x);
                std::memcpy(target, pixel.data(), pixel.size());
            }
    }

private:
    // The kind of most pictures, thus without a look at the kind for each pixel.
    void readTrueColors(std::span<const std::uint8_t> row, std::uint8_t* target) const {
        const std::uint8_t* blueGreenRed = row.data();
        for (std::size_t x = 0; x < width_; ++x, blueGreenRed += 3, target += Bitmap::kBytesPerPixel) {
            target[0] = blueGreenRed[2];
            target[1] = blueGreenRed[1];
            target[2] = blueGreenRed[0];
            target[3] = 255;
        }
    }

    [[nodiscard]] Pixel pixelAt(std::span<const std::uint8_t> row, std::size_t x) const {
        if (bitsPerPixel_ <= 8) {
            const std::size_t bit = x * bitsPerPixel_;
            const unsigned inByte = 8 - bitsPerPixel_ - bit % 8; // the leftmost pixel is in the highest bits
            return palette_[row[bit / 8] >> inByte & ((1U << bitsPerPixel_) - 1)];
        }
        const std::uint32_t bytes = bitsPerPixel_ / 8;
        const std::uint32_t value = numberAt(row, x * bytes, bytes);
        return {fields_[0].levelIn(value), fields_[1].levelIn(value), fields_[2].levelIn(value),
                fields_[3].levelIn(value)};
    }

    std::uint32_t bitsPerPixel_;
    std::size_t width_;
    const Palette& palette_;
    std::array<BitField, 4> fields_;
};

} // namespace

std::optional<Bitmap> readBmp(int descriptor, std::string& error) {
    struct stat status {};
    Header header;
    if (fstat(descriptor, &status) != 0 || !readHeader(descriptor, header)) {
        error = "the header is cut off or of an unknown kind";
        return std::nullopt;
    }
    if (const char* fault = faultOf(header, static_cast<std::uint64_t>(status.st_size))) {
        error = fault;
        return std::nullopt;
    }
    Palette palette;
    if (header.bitsPerPixel <= 8 && !readPalette(descriptor, header, palette)) {
        error = "the palette cannot be read";
        return std::nullopt;
    }

    const int height = static_cast<int>(header.height);
    Bitmap bitmap(static_cast<int>(header.width), height);
    const RowReader reader(header, palette);
    constexpr std::size_t kBandBytes = 1 << 18;
    const std::size_t stride = strideOf(header);
    const auto bandRows = static_cast<int>(std::clamp<std::size_t>(kBandBytes / stride, 1, kBandBytes));
    std::vector<std::uint8_t> band(stride * static_cast<std::size_t>(std::min(bandRows, height)));
    for (int firstRow = 0; firstRow < height; firstRow += bandRows) {
        const int rows = std::min(bandRows, height - firstRow);
        const auto bytes = std::span(band).first(stride * static_cast<std::size_t>(rows));
        if (!readAt(descriptor, header.pixelsAt + stride * static_cast<std::uint64_t>(firstRow), bytes)) {
            error = "the pixels cannot be read";
            return std::nullopt;
        }
        for (int y = 0; y < rows; ++y) {
            const int place = header.isTopDown ? firstRow + y : height - 1 - firstRow - y;
            reader.read(bytes.subspan(stride * static_cast<std::size_t>(y), stride), bitmap.row(place));
        }
    }
    return bitmap;
}

} // namespace imaging
