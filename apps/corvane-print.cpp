// The print command: a stand-in for lp that prints through the panels, and the print dialog. It is a module: the
// program is linked with the C library alone, so that the linker looks for a module's names among those of the module
// first.

#include "host/command_line/command_entry.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <unistd.h>

namespace {

constexpr int kNotLoaded = 1;
constexpr int kFolders = 2; // from the program up to the prefix

// By its path: a bare name is looked for by the run path of whoever calls dlopen(), which may be a sanitizer's library
// that stands in between. A link to the program, as lp may be one, is followed.
void* loadCommand() {
    char prefix[PATH_MAX] = "";
    if (::readlink("/proc/self/exe", prefix, sizeof prefix - 1) < 0)
        return nullptr;
    for (int folder = 0; folder < kFolders; ++folder)
        if (char* slash = std::strrchr(prefix, '/'); slash != nullptr)
            *slash = '\0';
    char path[2 * PATH_MAX];
    std::snprintf(path, sizeof path, "%s/" CV_PRIVATE_DIR "/%s", prefix, host::kPrintCommandModule);
    return ::dlopen(path, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    void* module = loadCommand();
    void* entry = module == nullptr ? nullptr : ::dlsym(module, host::kPrintCommandSymbol);
    if (entry == nullptr) {
        const char* reason = ::dlerror();
        std::fprintf(stderr, "corvane-print: The print command cannot be loaded: %s. Install corvane-print again.\n",
                     reason == nullptr ? "the program does not know its own place" : reason);
        return kNotLoaded;
    }
    return reinterpret_cast<host::PrintCommandEntry*>(entry)(argumentCount, arguments);
}
