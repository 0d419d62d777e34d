#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

namespace test_support {

/// The user who stands for a plain one where the tests run as root; empty where they do not: then this process's user
/// is a plain one already.
std::string plainUser();

/// Runs the function in a process of a plain user, and returns what it returned.
std::string asPlainUser(const std::function<std::string()>& function);

/// Within asPlainUser: mounts a file system of so many bytes on a folder of the user's, for this process alone. False
/// where the system does not let a user do that.
bool mountSmallFileSystem(const std::filesystem::path& folder, std::size_t bytes);

} // namespace test_support
