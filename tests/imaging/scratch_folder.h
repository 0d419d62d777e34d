#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <span>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <vector>

namespace imaging_tests {

using Bytes = std::vector<std::uint8_t>;

/// A folder for a test's files, removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = testing::TempDir() + "imaging-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no scratch folder");
        path_ = name;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::remove_all(path_); }

    [[nodiscard]] std::string pathOf(const std::string& name) const { return (path_ / name).string(); }

    /// Writes a new file in the place of an old one and returns its path. Truncating the old one would be slow: some
    /// file systems then wait for the disk.
    [[nodiscard]] std::string fileWith(std::span<const std::uint8_t> bytes, const std::string& name) const {
        std::filesystem::remove(pathOf(name));
        std::ofstream(pathOf(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return pathOf(name);
    }

private:
    std::filesystem::path path_;
};

inline Bytes bytesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace imaging_tests
