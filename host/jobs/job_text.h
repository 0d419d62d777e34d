#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

struct JobRequest;

/// The most bytes a job's name may have on a print server.
inline constexpr std::size_t kMaximumTitleBytes = 255;

/// Is this well-formed UTF-8: no stray or missing bytes, no overlong forms, no surrogates?
bool isUtf8(std::string_view text);

/// Are these the same but for the case of their ASCII letters? So printing systems compare names and words.
bool equalWithoutCase(std::string_view left, std::string_view right);

/// Does it hold a control character (below 0x20, or 0x7F)?
bool hasControlCharacters(std::string_view text);

/// Plain text for people and servers: control characters become blanks, malformed bytes become U+FFFD, blanks at both
/// ends go, and the rest is cut at a character's border to at most `maximumBytes`.
std::string plainText(std::string_view text, std::size_t maximumBytes);

/// The last component of a path, as plain text; "document" for a path that has none, and for an open file's.
std::string documentName(std::string_view path);

/// The title that a job bears: the request's own, as plain text of at most kMaximumTitleBytes, or its document's name.
/// A print server would replace a title that it dislikes by one that says nothing; so it is cleaned here.
std::string jobTitle(const JobRequest& request);

/// A text from outside, as a sentence of ours quotes it: plain, and not too long.
std::string quotedText(std::string_view text);

/// Empty if the number of copies is one that a job may have, else the sentence that refuses it.
std::string refusalForCopies(int copies);

} // namespace host
