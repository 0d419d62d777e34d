#include "fuzz/picture_input.h"

#include "fuzz/scratch_folder.h"
#include "imaging/loading.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

void loadAndShow(std::string_view bytes) {
    const MemoryFile file(bytes);
    const imaging::LoadResult loaded = imaging::loadPicture(file.path());
    if (!loaded.picture) {
        const bool isOneLine =
            !loaded.error.empty() && std::ranges::none_of(loaded.error, [](char c) { return c == '\n' || c == '\r'; });
        if (!isOneLine) {
            std::fprintf(stderr, "a refusal that gives no reason in one line: \"%s\"\n", loaded.error.c_str());
            std::abort();
        }
        return;
    }
    imaging::Bitmap shown;
    loaded.picture->filteredBy(imaging::ColorControls{.brightness = 0.1F, .contrast = 1.2F, .saturation = 0.5F})
        .filteredBy(imaging::ColorMatrix{.r = {0.9, 0.1, 0, 0}})
        .renderInto(shown);
    (void)imaging::meanColor(shown);
}

} // namespace fuzz
