#include "fuzz/scratch_folder.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {
namespace {

[[noreturn]] void giveUp(const char* what) {
    std::perror(what);
    std::abort();
}

} // namespace

const std::filesystem::path& scratchFolder() {
    static const std::filesystem::path folder = [] {
        std::string name = (std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            giveUp(name.c_str());
        return std::filesystem::path(name);
    }();
    return folder;
}

void writeFile(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush())
        giveUp(file.c_str());
}

MemoryFile::MemoryFile(std::string_view bytes) : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || ::write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        giveUp("a file in memory");
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

std::filesystem::path MemoryFile::path() const {
    return "/proc/self/fd/" + std::to_string(descriptor_);
}

} // namespace fuzz
