#pragma once

#include <string>

namespace host {

/// A document that can be read only once, standard input or a pipe, kept in a temporary file of this user's until the
/// object ends. The file has no name, so that nothing of it is left behind, however the process ends.
class SpooledInput {
public:
    SpooledInput() = default;
    ~SpooledInput();
    SpooledInput(const SpooledInput&) = delete;
    SpooledInput& operator=(const SpooledInput&) = delete;

    /// Reads all that the descriptor has; `source` is how sentences call it. Empty, or the sentence that says why there
    /// is nothing to print: nobody is waited for at a terminal. Call it or readPipe() once.
    [[nodiscard]] std::string readFrom(int descriptor, const std::string& source);
    /// The same for a named pipe, whose writer is waited for.
    [[nodiscard]] std::string readPipe(const std::string& path);
    /// Where this process can read it, any number of times; empty before it was read.
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    int file_ = -1;
    std::string path_;
};

} // namespace host
