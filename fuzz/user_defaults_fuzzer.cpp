// A user-defaults file: read, changed, written back, and read again.

#include "fuzz/scratch_folder.h"
#include "toolkit/user_defaults.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* kDomain = "com.corvane.fuzz";

void expect(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::filesystem::path folder = fuzz::scratchFolder() / "preferences";
    std::filesystem::create_directory(folder);
    fuzz::writeFile(folder / (std::string(kDomain) + ".json"), {reinterpret_cast<const char*>(data), size});
    toolkit::FileUserDefaults defaults(folder);
    const auto before = defaults.persistentDomainForName(kDomain);
    toolkit::ValueMap changed = before.value_or(toolkit::ValueMap());
    if (changed.size() > 1)
        changed.erase(changed.begin());
    changed.insert_or_assign("Portrait Instruction", true);
    defaults.setPersistentDomainForName(changed, kDomain);
    expect(defaults.synchronize(), "the preferences could not be written");
    expect(toolkit::FileUserDefaults(folder).persistentDomainForName(kDomain) == changed,
           "other preferences are read than were written");
    return 0;
}
