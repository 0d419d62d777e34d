#include "toolkit/files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace toolkit {

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
    std::string temporary = file.string() + ".XXXXXX";
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

} // namespace toolkit
