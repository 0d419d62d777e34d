#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace toolkit_tests {

/// A folder for a test's files, removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string name = testing::TempDir() + "toolkit-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no scratch folder");
        path_ = name;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() { std::filesystem::remove_all(path_); }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Writes a file, and the folders that it stands in.
    void write(const std::filesystem::path& name, std::string_view contents) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << contents;
    }

private:
    std::filesystem::path path_;
};

inline std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace toolkit_tests
