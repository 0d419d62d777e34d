#include "toolkit/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace toolkit {
namespace {

// Of a file that is being written. The X become letters and digits.
constexpr std::string_view kPart = ".part-", kRandom = "XXXXXX";

bool isTemporaryNameOf(std::string_view file, std::string_view name) {
    const auto isLetterOrDigit = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    };
    const std::size_t random = file.size() + kPart.size();
    return name.size() == random + kRandom.size() && name.starts_with(file) &&
           name.substr(file.size()).starts_with(kPart) && std::ranges::all_of(name.substr(random), isLetterOrDigit);
}

} // namespace

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

int replaceFile(const std::filesystem::path& file, std::string_view content, mode_t permissions) {
    std::string temporary = file.string() + std::string(kPart) + std::string(kRandom);
    const FileDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen())
        return errno;
    constexpr mode_t kAsMade = 0600; // also where a file system knows no others
    if ((permissions != kAsMade && ::fchmod(descriptor.number(), permissions) != 0) ||
        !writeAll(descriptor.number(), content) || ::fsync(descriptor.number()) != 0 ||
        ::rename(temporary.c_str(), file.c_str()) != 0) {
        const int error = errno;
        ::unlink(temporary.c_str());
        return error;
    }
    const FileDescriptor folder(::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        ::fsync(folder.number());
    return 0;
}

void removeAbandonedFilesBeside(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    std::error_code error;
    for (std::filesystem::directory_iterator entry(file.parent_path(), error), end; !error && entry != end;
         entry.increment(error))
        if (std::error_code unknown; isTemporaryNameOf(name, entry->path().filename().string()) &&
                                     entry->symlink_status(unknown).type() == std::filesystem::file_type::regular)
            ::unlink(entry->path().c_str());
}

} // namespace toolkit
