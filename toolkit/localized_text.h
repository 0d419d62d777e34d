#pragma once

#include <string>

namespace toolkit {

/// A text for the user and the key it was looked up by. A host answers an alert by the keys of its buttons.
struct LocalizedText {
    std::string key;
    std::string text;
    friend bool operator==(const LocalizedText&, const LocalizedText&) = default;
};

} // namespace toolkit
