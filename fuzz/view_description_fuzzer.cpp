// A view description: loaded, its store written to and its controls used.

#include "fuzz/panel_walk.h"
#include "fuzz/scratch_folder.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::string_view kForm = "Resources/Form.ui";

// A bundle lists its resources when it is opened: the form is there by then.
std::shared_ptr<toolkit::Bundle> openBundle() {
    const std::filesystem::path folder = fuzz::scratchFolder() / "Forms.plugin";
    std::filesystem::create_directories(folder / "Resources");
    fuzz::writeFile(folder / "Info.json", "{}");
    fuzz::writeFile(folder / kForm, "");
    std::string error;
    return toolkit::Bundle::open(folder, {.languages = {"en"}, .localize = false}, error);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto bundle = openBundle();
    fuzz::writeFile(bundle->path() / kForm, {reinterpret_cast<const char*>(data), size});
    std::string error;
    const auto views = toolkit::LoadedViews::load(*bundle, "Form", error);
    if (views == nullptr) {
        if (error.empty()) {
            std::fputs("a description is refused without a reason\n", stderr);
            std::abort();
        }
        return 0;
    }
    for (const char* key : {"CVOutput", "CVBrightness", "isColor"})
        for (const toolkit::Value& value :
             {toolkit::Value(true), toolkit::Value(7), toolkit::Value("off"), toolkit::Value()})
            views->store()->setValueForKey(value, key);
    int uses = 50;
    fuzz::useControls(*views, uses);
    return 0;
}
