#pragma once

#include <map>
#include <string>

namespace toolkit_tests {

/// The bytes of a compiled gettext catalogue (.mo) with these texts by their keys, a header, and a hash table as the
/// gettext compiler writes it. The texts stand at the end, in the order of their keys.
std::string messageCatalogue(std::map<std::string, std::string> texts);

} // namespace toolkit_tests
