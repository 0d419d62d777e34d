#pragma once

#include "toolkit/export.h"

#include <filesystem>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>

namespace toolkit {

/// Owns what the system opened; a number below 0 stands for nothing. Closing it gives up its locks.
class FileDescriptor {
public:
    /// Takes over what the system opened under this number.
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (isOpen())
            ::close(number_);
    }

    /// Whether it owns anything.
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    /// For the system's calls; stays its own.
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

/// Writes all bytes, in as many pieces as it takes. False with errno set where not all of them were written.
CV_TOOLKIT_EXPORT bool writeAll(int descriptor, std::string_view bytes);

/// Puts a file with this content and these permissions in the file's place, whole or not at all, and on the disk before
/// it answers. 0, or the system's error number, and the file as it was.
CV_TOOLKIT_EXPORT int replaceFile(const std::filesystem::path& file, std::string_view content, mode_t permissions);

/// Removes what processes that were killed in replaceFile() left beside the file. Only for who holds a lock that every
/// process takes that replaces this file: the temporary file of another one would go too. What cannot be removed stays.
CV_TOOLKIT_EXPORT void removeAbandonedFilesBeside(const std::filesystem::path& file);

} // namespace toolkit
