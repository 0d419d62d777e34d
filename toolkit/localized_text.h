#pragma once

#include <string>

namespace toolkit {

/// A text for the user and the key it was looked up by. A host answers an alert by the keys of its buttons.
struct LocalizedText {
    std::string key;                                                              ///< empty where it was not looked up
    std::string text;                                                             ///< as the user reads it
    friend bool operator==(const LocalizedText&, const LocalizedText&) = default; ///< the same in every member
};

} // namespace toolkit
