#pragma once

#include <string>

namespace host {

/// Standard input, kept in a temporary file of this user's until the object ends.
class SpooledInput {
public:
    SpooledInput() = default;
    ~SpooledInput();
    SpooledInput(const SpooledInput&) = delete;
    SpooledInput& operator=(const SpooledInput&) = delete;

    /// Reads all that the descriptor has. Empty, or the sentence that says why there is nothing to print: nobody is
    /// waited for at a terminal.
    [[nodiscard]] std::string readFrom(int descriptor);
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
};

} // namespace host
