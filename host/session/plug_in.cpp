#include "host/session/plug_in.h"

#include "toolkit/bundle.h"

#include <dlfcn.h>
#include <map>

namespace host {

std::shared_ptr<PlugIn> PlugIn::load(const std::filesystem::path& bundle, std::string& error) {
    static std::map<std::filesystem::path, std::shared_ptr<PlugIn>> loaded;
    std::error_code missing;
    const std::filesystem::path path = std::filesystem::weakly_canonical(bundle, missing);
    if (const auto found = loaded.find(path); found != loaded.end())
        return found->second;

    toolkit::BundleView entries;
    entries.localize = false;
    const auto info = toolkit::Bundle::open(path, std::move(entries), error);
    if (info == nullptr)
        return nullptr;
    const auto* executable = toolkit::valueInMap(info->infoDictionary(), "CFBundleExecutable").as<std::string>();
    if (executable == nullptr || executable->find('/') != std::string::npos) {
        error = "The bundle \"" + path.string() + "\" does not name its executable.";
        return nullptr;
    }
    void* library = ::dlopen((path / *executable).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        const char* reason = ::dlerror();
        error =
            "The bundle \"" + path.string() + "\" cannot be loaded: " + (reason == nullptr ? "unknown" : reason) + ".";
        return nullptr;
    }
    const auto* entry = static_cast<const framework::PlugInEntry*>(::dlsym(library, framework::kPlugInEntrySymbol));
    if (entry == nullptr) {
        error = "The bundle \"" + path.string() + "\" is no print-dialog plug-in.";
        return nullptr;
    }
    if (entry->interfaceVersion != framework::kPlugInInterfaceVersion) {
        error = "The bundle \"" + path.string() + "\" is of interface version " +
                std::to_string(entry->interfaceVersion) + "; this program needs version " +
                std::to_string(framework::kPlugInInterfaceVersion) + ".";
        return nullptr;
    }
    auto plugIn = std::make_shared<PlugIn>();
    plugIn->path_ = path;
    plugIn->info_ = info->infoDictionary();
    plugIn->entry_ = entry;
    loaded.emplace(path, plugIn);
    return plugIn;
}

std::unique_ptr<CVInkQuality12PDEPlugIn> PlugIn::makePrincipalObject() const {
    return entry_->makePrincipalObject();
}

const framework::PanelInspection* PlugIn::inspection() const {
    return entry_->inspectionVersion == framework::kPanelInspectionVersion ? &entry_->panelInspection() : nullptr;
}

} // namespace host
