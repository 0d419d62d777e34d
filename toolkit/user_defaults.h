#pragma once

#include "toolkit/export.h"
#include "toolkit/value.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

/// The user's lasting preferences: one map for each domain.
class CV_TOOLKIT_EXPORT UserDefaults {
public:
    virtual ~UserDefaults();

    /// nullopt where the domain holds nothing.
    [[nodiscard]] virtual std::optional<ValueMap> persistentDomainForName(std::string_view name) = 0;
    /// Keeps the map; it lasts from the next synchronize() on.
    virtual void setPersistentDomainForName(ValueMap domain, std::string_view name) = 0;
    /// False where a domain could not be written; lastError() then says what and where.
    virtual bool synchronize() = 0;
    [[nodiscard]] virtual std::string lastError() const { return {}; } ///< of the last write; empty: none
};

/// Preferences that last as long as the object.
class CV_TOOLKIT_EXPORT MemoryUserDefaults : public UserDefaults {
public:
    ~MemoryUserDefaults() override;
    std::optional<ValueMap> persistentDomainForName(std::string_view name) override;
    void setPersistentDomainForName(ValueMap domain, std::string_view name) override;
    bool synchronize() override { return true; }

private:
    std::map<std::string, ValueMap, std::less<>> domains_;
};

/// Preferences in one JSON file per domain, `<folder>/<domain>.json`. A file is replaced whole (temporary file, sync,
/// rename), under a lock against other processes; entries that another process wrote meanwhile are kept, unless this
/// one changed them too. What a process left that was killed while it wrote goes with the next writing, unless the file
/// is a link. (Who reaches the same file by a link in another folder holds another lock; its writing may fail then,
/// which is reported.) The file's permissions are the user's alone after each writing, also where it was read-only. A
/// file that is no JSON object counts as empty and is set aside as `<domain>.json.damaged` before the first writing.
class CV_TOOLKIT_EXPORT FileUserDefaults : public UserDefaults {
public:
    /// The folder is made when something is written first.
    explicit FileUserDefaults(std::filesystem::path folder);
    ~FileUserDefaults() override;

    /// $XDG_CONFIG_HOME/corvane-print, else ~/.config/corvane-print; nullopt where neither is known.
    static std::optional<std::filesystem::path> userFolder();

    std::optional<ValueMap> persistentDomainForName(std::string_view name) override;
    void setPersistentDomainForName(ValueMap domain, std::string_view name) override;
    bool synchronize() override;
    [[nodiscard]] std::string lastError() const override { return lastError_; } ///< of the last write; empty: none

private:
    [[nodiscard]] std::filesystem::path fileForDomain(std::string_view name) const;
    bool writeDomain(const std::string& name, const ValueMap& changed);

    struct Pending {
        ValueMap before; ///< as it was read
        ValueMap after;  ///< as it was set
    };
    std::filesystem::path folder_;
    std::map<std::string, Pending, std::less<>> pending_;
    std::map<std::string, ValueMap, std::less<>> lastRead_; ///< what the caller knows of each domain
    std::string lastError_;
};

} // namespace toolkit
