#pragma once

#include <functional>
#include <string>

namespace test_support {

/// The user who stands for a plain one where the tests run as root; empty where they do not: then this process's user
/// is a plain one already.
std::string plainUser();

/// Runs the function in a process of a plain user, and returns what it returned.
std::string asPlainUser(const std::function<std::string()>& function);

} // namespace test_support
