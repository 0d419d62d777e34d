#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <span>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// A folder of a test's own, searchable by every user; removed with all that it holds.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "scratch-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot make " + pattern);
        path_ = std::filesystem::canonical(pattern);
        std::filesystem::permissions(path_, std::filesystem::perms(0755));
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::string pathOf(const std::filesystem::path& name) const { return path_ / name; }

    /// Writes a new file in the place of an old one, and the folders that it stands in; returns its path. Truncating
    /// the old one would be slow: some file systems then wait for the disk.
    std::string write(const std::filesystem::path& name, std::string_view contents) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::filesystem::remove(file);
        std::ofstream stream(file, std::ios::binary);
        stream << contents;
        stream.close();
        if (!stream)
            throw std::runtime_error("cannot write " + file.string());
        return file;
    }
    std::string write(const std::filesystem::path& name, std::span<const std::uint8_t> bytes) const {
        return write(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }

private:
    std::filesystem::path path_;
};

/// What a file holds, as text or as bytes; nothing where it cannot be read.
template <typename Contents = std::string>
Contents contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The names in a folder, hidden ones too.
inline std::set<std::string> namesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename());
    return names;
}

/// Bytes of all values that repeat no short pattern, so that a lost, doubled or moved piece shows.
inline std::string variedBytes(std::size_t count) {
    std::mt19937 generator(4711);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() & 0xFFU);
    return bytes;
}

} // namespace test_support
