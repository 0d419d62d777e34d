#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace host {

/// A file that is being printed, read from its start in pieces. Owns its descriptor; not copied, not moved.
class Document {
public:
    Document() = default;
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Opens a regular, readable file that is not empty. Never waits: a FIFO is refused, not opened and hung upon.
    /// Returns an empty text, or the sentence that says why the document cannot be printed.
    [[nodiscard]] std::string open(const std::string& path);

    std::uint64_t size() const { return size_; } ///< bytes, as they were at open()

    /// Fills the buffer as far as the file reaches. Returns the bytes read, 0 at the end, -1 if reading failed or if
    /// the file is no longer as long as it was: error() then holds the sentence.
    std::ptrdiff_t read(std::span<char> buffer);

    const std::string& error() const { return error_; }

private:
    int descriptor_ = -1;
    std::uint64_t size_ = 0;
    std::uint64_t read_ = 0;
    std::string path_;
    std::string error_;
};

} // namespace host
