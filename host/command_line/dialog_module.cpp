#include "host/command_line/dialog_module.h"

#include "host/session/program_files.h"

#include <array>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <string_view>

namespace host {
namespace {

/// Where a window can be shown: a display, or the platform that the user names.
constexpr std::array kDisplays = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};

bool hasDisplay() {
    for (const char* name : kDisplays)
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0')
            return true;
    return false;
}

} // namespace

DialogEntry* loadDialog(std::string& error) {
    if (!hasDisplay()) {
        error = "There is no display for the print dialog: print without it by --no-dialog, or drive the panels by "
                "corvane-panel-session.";
        return nullptr;
    }
    const std::filesystem::path path = pathOfWindowModule();
    std::error_code missing;
    if (!std::filesystem::exists(path, missing)) {
        error = "The print dialog's window is not installed: install the package corvane-print-window (" +
                path.string() + "), or print without it by --no-dialog.";
        return nullptr;
    }
    void* library = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        const char* reason = ::dlerror();
        error = "The window module \"" + path.string() +
                "\" cannot be loaded: " + (reason == nullptr ? "unknown" : reason) + ".";
        return nullptr;
    }
    const auto* version = static_cast<const int*>(::dlsym(library, kDialogVersionSymbol));
    auto* entry = reinterpret_cast<DialogEntry*>(::dlsym(library, kDialogEntrySymbol));
    if (version == nullptr || entry == nullptr || *version != kDialogInterfaceVersion) {
        error = "The window module \"" + path.string() +
                "\" is of another version than this program: install both from one release.";
        return nullptr;
    }
    return entry;
}

} // namespace host
