#include "tests/host/jobs/temporary_folder.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <stdlib.h>

namespace test_support {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string pattern = fs::temp_directory_path() / "jobs-test-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot make " + pattern);
    path_ = pattern;
    fs::permissions(path_, fs::perms(0755));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(const std::string& name, std::string_view contents) const {
    const fs::path file = path_ / name;
    std::ofstream stream(file, std::ios::binary);
    stream << contents;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
    return file;
}

std::string contentsOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename());
    return names;
}

std::string variedBytes(std::size_t count) {
    std::mt19937 generator(4711);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator() & 0xFFU);
    return bytes;
}

} // namespace test_support
