#include "host/jobs/job_text.h"

#include "host/jobs/job.h"
#include "toolkit/unicode.h"

#include <algorithm>
#include <strings.h>

namespace host {
namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
constexpr std::size_t kMaximumQuotedBytes = 200;
constexpr int kMaximumCopies = 9999;

bool isControl(unsigned char byte) {
    return byte < 0x20U || byte == 0x7FU;
}

std::string_view withoutOuterBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = toolkit::characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool equalWithoutCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool hasControlCharacters(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) { return isControl(static_cast<unsigned char>(byte)); });
}

std::string plainText(std::string_view text, std::size_t maximumBytes) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t length = toolkit::characterLength(text);
        std::string_view piece = length == 0 ? kReplacementCharacter : text.substr(0, length);
        if (isControl(static_cast<unsigned char>(piece.front())))
            piece = " ";
        text.remove_prefix(std::max<std::size_t>(length, 1));
        if (piece == " " && plain.empty())
            continue; // a leading blank must not use up the room
        if (plain.size() + piece.size() > maximumBytes)
            break;
        plain += piece;
    }
    return std::string(withoutOuterBlanks(plain));
}

std::string documentName(std::string_view path) {
    constexpr std::string_view kDescriptors = "/proc/self/fd/"; // a file there has a number in a name's place
    if (path.starts_with(kDescriptors))
        return "document";
    const std::size_t slash = path.rfind('/');
    std::string name = plainText(slash == std::string_view::npos ? path : path.substr(slash + 1), kMaximumTitleBytes);
    return name.empty() ? "document" : name;
}

std::string jobTitle(const JobRequest& request) {
    std::string title = plainText(request.title, kMaximumTitleBytes);
    return title.empty() ? documentName(request.documentPath) : title;
}

std::string quotedText(std::string_view text) {
    std::string plain = plainText(text, kMaximumQuotedBytes);
    return "\"" + plain + (text.size() > kMaximumQuotedBytes ? "..." : "") + "\"";
}

std::string refusalForCopies(int copies) {
    if (copies >= 1 && copies <= kMaximumCopies)
        return {};
    return "A job cannot have " + std::to_string(copies) + " copies: ask for 1 to " + std::to_string(kMaximumCopies) +
           ".";
}

} // namespace host
