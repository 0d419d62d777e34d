// The print command: a stand-in for lp that prints through the panels, and the print dialog. It is a module: the
// program is linked with the C library alone, so that the linker looks for a module's names among those of the module
// first.

#include "host/command_line/command_entry.h"

#include <cstdio>
#include <dlfcn.h>

namespace {
constexpr int kNotLoaded = 1;
}

int main(int argumentCount, char* arguments[]) {
    void* module = ::dlopen(host::kPrintCommandModule, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    void* entry = module == nullptr ? nullptr : ::dlsym(module, host::kPrintCommandSymbol);
    if (entry == nullptr) {
        const char* reason = ::dlerror();
        std::fprintf(stderr, "corvane-print: The print command cannot be loaded: %s. Install corvane-print again.\n",
                     reason == nullptr ? "unknown" : reason);
        return kNotLoaded;
    }
    return reinterpret_cast<host::PrintCommandEntry*>(entry)(argumentCount, arguments);
}
