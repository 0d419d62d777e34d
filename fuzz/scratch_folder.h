#pragma once

#include <filesystem>
#include <string_view>

namespace fuzz {

/// This process's own empty folder under the temporary folder. Made at the first call; whoever runs the fuzzer removes
/// the temporary folder (a fuzzer that finds something does not end in order).
const std::filesystem::path& scratchFolder();

/// Writes the file anew. Aborts where that fails: nothing could be learnt.
void writeFile(const std::filesystem::path& file, std::string_view bytes);

/// A file in memory with these bytes, under a path that opens it.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    [[nodiscard]] std::filesystem::path path() const;

private:
    int descriptor_;
};

} // namespace fuzz
