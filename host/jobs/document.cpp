#include "host/jobs/document.h"

#include "host/jobs/job_text.h"

#include <cassert>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace host {

Document::~Document() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::string Document::open(const std::string& path) {
    assert(descriptor_ < 0);
    path_ = path;
    const auto refusal = [&path](const std::string& why) {
        return "The document " + quotedText(path) + " cannot be printed: " + why;
    };
    if (path.empty())
        return "No document was named: give the file that is to be printed.";
    if (path.find('\0') != std::string::npos)
        return refusal("its name holds a null byte; give the name of a file.");
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0)
        return refusal(std::generic_category().message(errno) + "; check its name and its permissions.");
    if (S_ISDIR(status.st_mode))
        return refusal("it is a folder; give the name of a file.");
    if (!S_ISREG(status.st_mode))
        return refusal("it is not a regular file; save its contents to a file first.");
    if (status.st_size == 0)
        return refusal("it is empty; check that it was saved.");
    size_ = static_cast<std::uint64_t>(status.st_size);
    return {};
}

std::ptrdiff_t Document::read(std::span<char> buffer) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor_, buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        error_ = "The document " + quotedText(path_) + " could not be read to its end (" +
                 std::generic_category().message(errno) + "): check the disk it is on and print again.";
        return -1;
    }
    read_ += static_cast<std::uint64_t>(count);
    if (read_ > size_ || (count == 0 && read_ != size_)) {
        error_ = "The document " + quotedText(path_) +
                 " changed while it was read: wait until it has been saved and print again.";
        return -1;
    }
    return count;
}

} // namespace host
