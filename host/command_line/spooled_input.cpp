#include "host/command_line/spooled_input.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <system_error>
#include <unistd.h>

namespace host {
namespace {

std::string systemError() {
    return std::generic_category().message(errno);
}

bool writeAll(int descriptor, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

/// Copies to the end. Empty, or the sentence that says what went wrong.
std::string copyAll(int from, int to) {
    std::array<char, 64 * 1024> piece;
    bool isEmpty = true;
    for (;;) {
        const ssize_t count = ::read(from, piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return "Standard input cannot be read: " + systemError() + ".";
        if (count == 0)
            return isEmpty ? "Standard input holds nothing to print." : "";
        isEmpty = false;
        if (!writeAll(to, {piece.data(), static_cast<std::size_t>(count)}))
            return "Standard input cannot be kept for printing: " + systemError() + ".";
    }
}

} // namespace

SpooledInput::~SpooledInput() {
    if (!path_.empty())
        ::unlink(path_.c_str());
}

std::string SpooledInput::readFrom(int descriptor) {
    if (::isatty(descriptor) == 1)
        return "There is no document: name a file, or send one to standard input.";
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error)
        folder = "/tmp";
    std::string pattern = folder / "corvane-print-XXXXXX";
    const int file = ::mkstemp(pattern.data());
    if (file < 0)
        return "Standard input cannot be kept for printing in \"" + folder.string() + "\": " + systemError() + ".";
    path_ = pattern;
    const std::string failure = copyAll(descriptor, file);
    ::close(file);
    return failure;
}

} // namespace host
