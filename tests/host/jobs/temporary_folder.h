#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace test_support {

/// A folder of a test's own, searchable by every user; removed with all that it holds.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file into it and returns its path.
    std::string write(const std::string& name, std::string_view contents) const;

private:
    std::filesystem::path path_;
};

std::string contentsOf(const std::filesystem::path& file);

/// The names in a folder, hidden ones too.
std::set<std::string> namesIn(const std::filesystem::path& folder);

/// Bytes of all values that repeat no short pattern, so that a lost, doubled or moved piece shows.
std::string variedBytes(std::size_t count);

} // namespace test_support
