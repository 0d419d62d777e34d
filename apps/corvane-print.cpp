// The print command: a stand-in for lp that prints through the panels, and the print dialog.

#include "host/command_line/command_entry.h"

#include <dlfcn.h>
#include <iostream>

namespace {
constexpr int kNotLoaded = 1;
}

int main(int argumentCount, char* arguments[]) {
    void* module = ::dlopen(host::kPrintCommandModule, RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    void* entry = module == nullptr ? nullptr : ::dlsym(module, host::kPrintCommandSymbol);
    if (entry == nullptr) {
        const char* reason = ::dlerror();
        std::cerr << "corvane-print: The print command cannot be loaded: " << (reason == nullptr ? "unknown" : reason)
                  << ". Install corvane-print again.\n";
        return kNotLoaded;
    }
    return reinterpret_cast<host::PrintCommandEntry*>(entry)(argumentCount, arguments);
}
