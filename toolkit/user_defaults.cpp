#include "toolkit/user_defaults.h"

#include "toolkit/files.h"
#include "toolkit/json_values.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace toolkit {
namespace {

constexpr std::uintmax_t kLargestFile = 1 << 20; // bytes; a preferences file holds a few entries
constexpr mode_t kOwnersOnly = 0600;

enum class FileState { Missing, Sound, Damaged };

struct StoredDomain {
    FileState state = FileState::Missing;
    ValueMap values;
};

StoredDomain readDomain(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return {};
    if (!std::filesystem::is_regular_file(file, error) || std::filesystem::file_size(file, error) > kLargestFile)
        return {.state = FileState::Damaged, .values = {}};
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    const auto json = nlohmann::json::parse(text.str(), nullptr, false);
    if (!stream || !json.is_object())
        return {.state = FileState::Damaged, .values = {}};
    return {.state = FileState::Sound, .values = *valueFromJson(json).as<ValueMap>()};
}

} // namespace

UserDefaults::~UserDefaults() = default;
MemoryUserDefaults::~MemoryUserDefaults() = default;
FileUserDefaults::~FileUserDefaults() = default;

std::optional<ValueMap> MemoryUserDefaults::persistentDomainForName(std::string_view name) {
    const auto found = domains_.find(name);
    return found == domains_.end() ? std::nullopt : std::optional(found->second);
}

void MemoryUserDefaults::setPersistentDomainForName(ValueMap domain, std::string_view name) {
    domains_.insert_or_assign(std::string(name), std::move(domain));
}

FileUserDefaults::FileUserDefaults(std::filesystem::path folder) : folder_(std::move(folder)) {}

std::optional<std::filesystem::path> FileUserDefaults::userFolder() {
    constexpr const char* kFolder = "corvane-print";
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    if (configuration != nullptr && configuration[0] == '/') // the convention: other than absolute paths are ignored
        return std::filesystem::path(configuration) / kFolder;
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] == '/')
        return std::filesystem::path(home) / ".config" / kFolder;
    return std::nullopt;
}

std::filesystem::path FileUserDefaults::fileForDomain(std::string_view name) const {
    std::string file;
    for (const char c : name)
        file += c == '/' || c == '\0' ? '_' : c;
    return folder_ / (file + ".json");
}

std::optional<ValueMap> FileUserDefaults::persistentDomainForName(std::string_view name) {
    if (const auto pending = pending_.find(name); pending != pending_.end())
        return pending->second.after;
    StoredDomain stored = readDomain(fileForDomain(name));
    lastRead_.insert_or_assign(std::string(name), stored.values);
    return stored.state == FileState::Sound ? std::optional(std::move(stored.values)) : std::nullopt;
}

void FileUserDefaults::setPersistentDomainForName(ValueMap domain, std::string_view name) {
    if (const auto pending = pending_.find(name); pending != pending_.end()) {
        pending->second.after = std::move(domain);
        return;
    }
    const auto known = lastRead_.find(name);
    ValueMap before = known != lastRead_.end() ? known->second : readDomain(fileForDomain(name)).values;
    pending_.emplace(name, Pending{.before = std::move(before), .after = std::move(domain)});
}

bool FileUserDefaults::writeDomain(const std::string& name, const ValueMap& changed) {
    const std::filesystem::path file = fileForDomain(name);
    const auto fail = [&](const char* what, int error) {
        lastError_ = std::string("The preferences could not be saved: ") + what + " \"" + file.string() +
                     "\": " + std::strerror(error) + ".";
        return false;
    };
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (error)
        return fail("the folder cannot be made for", error.value());
    const FileDescriptor lock(
        ::open((file.string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnersOnly));
    if (!lock.isOpen())
        return fail("there is no lock beside", errno);
    while (::flock(lock.number(), LOCK_EX) != 0)
        if (errno != EINTR)
            return fail("there is no lock beside", errno);

    StoredDomain stored = readDomain(file);
    if (stored.state == FileState::Damaged)
        std::filesystem::rename(file, file.string() + ".damaged", error);
    const ValueMap& before = pending_.at(name).before;
    for (const auto& [key, value] : before) // what this process took out
        if (!changed.contains(key))
            stored.values.erase(key);
    for (const auto& [key, value] : changed) // what it put in or changed
        if (valueInMap(before, key) != value)
            stored.values.insert_or_assign(key, value);
    std::filesystem::path target = std::filesystem::canonical(file, error); // a link stays a link to the user's place
    if (error)
        target = file;
    if (!std::filesystem::is_symlink(file, error)) // beside a link's target the lock counts for nothing
        removeAbandonedFilesBeside(target);
    if (const int failure = replaceFile(target, jsonFromValue(stored.values).dump(2) + "\n", kOwnersOnly); failure != 0)
        return fail("writing", failure);
    return true;
}

bool FileUserDefaults::synchronize() {
    lastError_.clear();
    for (auto entry = pending_.begin(); entry != pending_.end();) {
        if (writeDomain(entry->first, entry->second.after)) {
            lastRead_.erase(entry->first);
            entry = pending_.erase(entry);
        } else {
            ++entry;
        }
    }
    return lastError_.empty();
}

} // namespace toolkit
