/// The preview's render pass as a multiple of memcpy of the same bytes, and the same work by image libraries.
///
///     preview_benchmark [--check]
///
/// All ways of one picture size take turns in one run, so that what else the machine does falls on all of them. With
/// --check the exit code is 1 when the median of a ratio is above its limit.

#include "imaging/picture.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#ifdef CV_HAS_OPENCV
#include <opencv2/core.hpp>
#endif
#ifdef CV_HAS_VIPS
#include <vips/vips.h>
#endif

namespace {

using imaging::Bitmap;
using imaging::ColorControls;
using imaging::ColorMatrix;
using imaging::ColorMonochrome;
using imaging::Picture;

struct Size {
    int width, height;
    double goal, limit; ///< of the ratio to memcpy
};
constexpr Size kSizes[] = {
    // width  height  goal  limit on a machine that does other work too
    {640, 480, 1.25, 1.4},
    {2000, 1500, 1.15, 1.4},
    {8000, 6000, 1.15, 2},
};

enum class Kind { Memcpy, Preview, Other };

struct Way {
    std::string name;
    Kind kind;
    std::function<void()> run;
    std::vector<double> seconds = {};
};

Picture colorPreview(const Picture& picture) {
    const ColorMatrix matrix{.r = {1.2, 0, 0, 0}, .g = {0, 0.9, 0, 0}, .b = {0, 0, 1.1, 0}};
    return picture.filteredBy(ColorControls{0.05F, 1.0625F, 1}).filteredBy(matrix);
}

Picture monoPreview(const Picture& picture) {
    return picture.filteredBy(ColorControls{0.05F, 1.0625F, 1}).filteredBy(ColorMonochrome{{1, 1, 1}, 1});
}

std::shared_ptr<const Bitmap> noisePicture(const Size& size) {
    auto bitmap = std::make_shared<Bitmap>(size.width, size.height);
    std::uint32_t state = 1;
    for (int y = 0; y < size.height; ++y)
        for (int byte = 0; byte < 4 * size.width; ++byte) {
            state = state * 1664525U + 1013904223U;
            bitmap->row(y)[byte] = static_cast<std::uint8_t>(state >> 24);
        }
    return bitmap;
}

#ifdef CV_HAS_OPENCV
void addOpenCv(std::vector<Way>& ways, const Bitmap& source, Bitmap& target) {
    cv::setNumThreads(1);
    const auto matOf = [](const Bitmap& bitmap) {
        return cv::Mat(bitmap.height(), bitmap.width(), CV_8UC4, const_cast<std::uint8_t*>(bitmap.row(0)),
                       bitmap.stride());
    };
    const cv::Mat from = matOf(source);
    cv::Mat to = matOf(target);
    cv::Mat table(1, 256, CV_8UC4);
    for (int value = 0; value < 256; ++value)
        table.at<cv::Vec4b>(0, value) =
            cv::Vec4b(cv::saturate_cast<uchar>(value * 1.275 + 7), cv::saturate_cast<uchar>(value * 0.956 + 5),
                      cv::saturate_cast<uchar>(value * 1.169 + 6), static_cast<uchar>(value));
    ways.push_back({"OpenCV LUT, colour", Kind::Other, [=]() mutable { cv::LUT(from, table, to); }});
    const cv::Mat matrix = (cv::Mat_<float>(4, 5) << 0.226F, 0.760F, 0.077F, 0, 6, 0.226F, 0.760F, 0.077F, 0, 6, 0.226F,
                            0.760F, 0.077F, 0, 6, 0, 0, 0, 1, 0);
    ways.push_back({"OpenCV transform, mono", Kind::Other, [=]() mutable { cv::transform(from, to, matrix); }});
}
#endif

#ifdef CV_HAS_VIPS
/// The results are libvips' own memory: it cannot render into a picture that is there.
void addVips(std::vector<Way>& ways, const Bitmap& source) {
    vips_concurrency_set(1);
    vips_cache_set_max(0);
    const auto bytes = source.stride() * static_cast<std::size_t>(source.height());
    const std::shared_ptr<VipsImage> from(
        vips_image_new_from_memory(source.row(0), bytes, static_cast<int>(source.stride() / Bitmap::kBytesPerPixel),
                                   source.height(), 4, VIPS_FORMAT_UCHAR),
        g_object_unref);
    const auto evaluate = [](VipsImage* result) {
        std::size_t size = 0;
        g_free(vips_image_write_to_memory(result, &size));
        g_object_unref(result);
    };
    ways.push_back({"libvips linear, colour", Kind::Other, [=] {
                        std::array<double, 4> scale = {1.275, 0.956, 1.169, 1};
                        std::array<double, 4> offset = {7, 5, 6, 0};
                        VipsImage* result = nullptr;
                        if (vips_linear(from.get(), &result, scale.data(), offset.data(), 4, "uchar", TRUE, nullptr) ==
                            0)
                            evaluate(result);
                    }});
    std::array<std::uint8_t, 4 * 256> levels{};
    for (std::size_t i = 0; i < levels.size(); ++i)
        levels[i] = static_cast<std::uint8_t>(i / 4);
    const std::shared_ptr<VipsImage> table(
        vips_image_new_from_memory_copy(levels.data(), levels.size(), 256, 1, 4, VIPS_FORMAT_UCHAR), g_object_unref);
    ways.push_back({"libvips maplut, colour", Kind::Other, [=] {
                        VipsImage* result = nullptr;
                        if (vips_maplut(from.get(), &result, table.get(), nullptr) == 0)
                            evaluate(result);
                    }});
}
#endif

double secondsOf(const std::function<void()>& run, int times) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < times; ++i)
        run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / times;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Prints the ratios for one size; false when a preview is above its limit.
bool measure(const Size& size) {
    const auto source = noisePicture(size);
    Bitmap target(size.width, size.height);
    const std::size_t bytes = source->stride() * static_cast<std::size_t>(size.height);
    const Picture picture(source, "noise");
    const Picture color = colorPreview(picture);
    const Picture mono = monoPreview(picture);
    const Picture tinted = picture.filteredBy(ColorMonochrome());

    std::vector<Way> ways;
    ways.push_back({"memcpy", Kind::Memcpy, [&] { std::memcpy(target.row(0), source->row(0), bytes); }});
    ways.push_back({"preview, colour", Kind::Preview, [&] { color.renderInto(target); }});
    ways.push_back({"preview, mono", Kind::Preview, [&] { mono.renderInto(target); }});
    ways.push_back({"tinted", Kind::Other, [&] { tinted.renderInto(target); }});
#ifdef CV_HAS_OPENCV
    addOpenCv(ways, *source, target);
#endif
#ifdef CV_HAS_VIPS
    addVips(ways, *source);
#endif

    constexpr int kRounds = 31;
    constexpr std::size_t kBytesPerRound = 16 * 1000 * 1000;
    const int times = static_cast<int>(std::max<std::size_t>(1, kBytesPerRound / bytes));
    for (int round = 0; round < kRounds; ++round)
        for (Way& way : ways) {
            constexpr int kRoundsOfSlowWays = 5;
            if (way.kind != Kind::Other)
                way.seconds.push_back(secondsOf(way.run, times));
            else if (round < kRoundsOfSlowWays)
                way.seconds.push_back(secondsOf(way.run, 1));
        }

    bool isWithinLimits = true;
    const double copy = median(ways.front().seconds);
    std::printf("%d x %d: memcpy %.3f ms, %.1f GB/s\n", size.width, size.height, copy * 1e3,
                static_cast<double>(bytes) / copy / 1e9);
    for (const Way& way : ways) {
        if (way.kind == Kind::Memcpy)
            continue;
        const double ratio = median(way.seconds) / copy;
        std::printf("  %-24s %7.2f", way.name.c_str(), ratio);
        if (way.kind == Kind::Preview) {
            std::printf("  (goal %.2f, limit %.2f)", size.goal, size.limit);
            isWithinLimits = isWithinLimits && ratio <= size.limit;
        }
        std::printf("\n");
    }
    return isWithinLimits;
}

} // namespace

int main(int argc, char** argv) {
#ifdef CV_HAS_VIPS
    if (VIPS_INIT(argv[0]) != 0)
        return 2;
#endif
    bool isWithinLimits = true;
    for (const Size& size : kSizes)
        isWithinLimits = measure(size) && isWithinLimits;
    const bool isCheck = argc > 1 && std::string_view(argv[1]) == "--check";
    return isCheck && !isWithinLimits ? 1 : 0;
}
