#include "host/command_line/spooled_input.h"

#include "host/jobs/job_text.h"
#include "toolkit/files.h"

#include <array>
#include <cassert>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace host {
namespace {

std::string systemError() {
    return std::generic_category().message(errno);
}

std::string cannotBeKept(const std::string& source, const std::string& folder) {
    return source + " cannot be kept for printing in " + quotedText(folder) + " (" + systemError() +
           "): make room there, or name another folder by TMPDIR.";
}

/// Copies to the end. Empty, or the sentence that says what went wrong.
std::string copyAll(int from, int to, const std::string& source, const std::string& folder) {
    std::array<char, 1 << 16> piece;
    bool isEmpty = true;
    for (;;) {
        const ssize_t count = ::read(from, piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return source + " cannot be read: " + systemError() + ".";
        if (count == 0)
            return isEmpty ? source + " holds nothing to print." : "";
        isEmpty = false;
        if (!toolkit::writeAll(to, {piece.data(), static_cast<std::size_t>(count)}))
            return cannotBeKept(source, folder);
    }
}

} // namespace

SpooledInput::~SpooledInput() {
    if (file_ >= 0)
        ::close(file_);
}

std::string SpooledInput::readFrom(int descriptor, const std::string& source) {
    assert(file_ < 0);
    if (::isatty(descriptor) == 1)
        return "There is no document: name a file, or send one to standard input.";
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error)
        folder = "/tmp";
    std::string pattern = folder / "corvane-print-XXXXXX";
    file_ = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (file_ < 0)
        return cannotBeKept(source, folder);
    ::unlink(pattern.c_str());
    path_ = "/proc/self/fd/" + std::to_string(file_);
    return copyAll(descriptor, file_, source, folder);
}

std::string SpooledInput::readPipe(const std::string& path) {
    const std::string source = "The pipe " + quotedText(path);
    const toolkit::FileDescriptor pipe(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    return pipe.isOpen() ? readFrom(pipe.number(), source) : source + " cannot be read: " + systemError() + ".";
}

} // namespace host
