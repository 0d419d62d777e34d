#pragma once

#include "framework/plug_in_entry.h"

#include <filesystem>
#include <memory>
#include <string>

namespace host {

/// A bundle whose shared object is loaded. It is never unloaded: panels and what they registered may outlive us.
class PlugIn {
public:
    /// Null where the bundle is missing, broken, or of another interface version; `error` then says which, in one
    /// sentence. The same bundle is loaded once in a process.
    static std::shared_ptr<PlugIn> load(const std::filesystem::path& bundle, std::string& error);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    /// The bundle's own entries (Info.json), as they were when it was loaded.
    [[nodiscard]] const toolkit::ValueMap& infoDictionary() const { return info_; }
    [[nodiscard]] std::unique_ptr<CVInkQuality12PDEPlugIn> makePrincipalObject() const;
    /// Null where the bundle exports another version of the inspection: it can be used all the same.
    [[nodiscard]] const framework::PanelInspection* inspection() const;

private:
    std::filesystem::path path_;
    toolkit::ValueMap info_;
    const framework::PlugInEntry* entry_ = nullptr;
};

} // namespace host
