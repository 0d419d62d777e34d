#include "color_settings/reference_pictures.h"

#include "imaging/loading.h"

#include <cstdio>
#include <map>

namespace {

struct CachedPicture {
    std::filesystem::file_time_type written;
    std::optional<imaging::Picture> picture;
};

} // namespace

std::optional<imaging::Picture> referencePictureAtPath(const std::filesystem::path& path) {
    static std::map<std::filesystem::path, CachedPicture> cache;
    std::error_code missing;
    const auto written = std::filesystem::last_write_time(path, missing);
    if (const auto cached = cache.find(path); !missing && cached != cache.end() && cached->second.written == written)
        return cached->second.picture;
    imaging::LoadResult loaded = imaging::loadPicture(path.string());
    if (!loaded.picture)
        std::fprintf(stderr, "%s\n", loaded.error.c_str());
    cache.insert_or_assign(path, CachedPicture{.written = written, .picture = loaded.picture});
    return loaded.picture;
}
