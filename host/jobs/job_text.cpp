#include "host/jobs/job_text.h"

#include "host/jobs/job.h"

#include <algorithm>

namespace host {
namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
constexpr std::size_t kMaximumQuotedBytes = 200;
constexpr int kMaximumCopies = 9999;

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

bool isControl(unsigned char byte) {
    return byte < 0x20U || byte == 0x7FU;
}

/// What may follow a first byte. The second byte's range keeps out overlong forms, surrogates and what lies above
/// U+10FFFF.
struct SequenceForm {
    unsigned char firstLow, firstHigh;
    unsigned char secondLow, secondHigh;
    std::size_t length;
};

constexpr SequenceForm kSequenceForms[] = {
    // first byte   second byte  bytes
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

/// The bytes of the character at the text's start; 0 if it is malformed.
std::size_t characterLength(std::string_view text) {
    const auto byteAt = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80U)
        return 1;
    const auto form = std::ranges::find_if(
        kSequenceForms, [first](const auto& row) { return row.firstLow <= first && first <= row.firstHigh; });
    if (form == std::end(kSequenceForms) || text.size() < form->length || byteAt(1) < form->secondLow ||
        byteAt(1) > form->secondHigh)
        return 0;
    for (std::size_t index = 2; index < form->length; ++index)
        if (!isContinuation(byteAt(index)))
            return 0;
    return form->length;
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
        const std::size_t length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool hasControlCharacters(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) { return isControl(static_cast<unsigned char>(byte)); });
}

std::string plainText(std::string_view text, std::size_t maximumBytes) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
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
