#include "tests/toolkit/message_catalogue.h"

#include <cstdint>
#include <vector>

namespace toolkit_tests {
namespace {

void append(std::string& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
}

// The hash function of the format, by P. J. Weinberger.
std::uint32_t hashOf(const std::string& key) {
    std::uint32_t hash = 0;
    for (const char c : key) {
        hash = (hash << 4) + static_cast<unsigned char>(c);
        if (const std::uint32_t high = hash & 0xF0000000; high != 0)
            hash ^= high >> 24 ^ high;
    }
    return hash;
}

bool isPrime(std::uint32_t number) {
    for (std::uint32_t divisor = 2; divisor * divisor <= number; ++divisor)
        if (number % divisor == 0)
            return false;
    return true;
}

} // namespace

std::string messageCatalogue(std::map<std::string, std::string> texts) {
    constexpr std::uint32_t kMagic = 0x950412DE, kHeaderSize = 28;
    texts[""] = "Content-Type: text/plain; charset=UTF-8\n";
    const auto count = static_cast<std::uint32_t>(texts.size());
    std::uint32_t hashSize = count * 2 + 3;
    while (!isPrime(hashSize))
        ++hashSize;
    std::vector<std::uint32_t> slots(hashSize);
    std::uint32_t number = 0;
    for (const auto& [key, text] : texts) {
        const std::uint32_t hash = hashOf(key), step = 1 + hash % (hashSize - 2);
        std::uint32_t slot = hash % hashSize;
        while (slots[slot] != 0)
            slot = (slot + step) % hashSize;
        slots[slot] = ++number;
    }
    const std::uint32_t keysAt = kHeaderSize, textsAt = keysAt + 8 * count, hashAt = textsAt + 8 * count;
    const std::uint32_t stringsAt = hashAt + 4 * hashSize;
    std::string bytes, strings;
    for (const std::uint32_t field : {kMagic, std::uint32_t{0}, count, keysAt, textsAt, hashSize, hashAt})
        append(bytes, field);
    const auto entry = [&](const std::string& text) {
        append(bytes, static_cast<std::uint32_t>(text.size()));
        append(bytes, stringsAt + static_cast<std::uint32_t>(strings.size()));
        strings += text + '\0';
    };
    for (const auto& [key, text] : texts)
        entry(key);
    for (const auto& [key, text] : texts)
        entry(text);
    for (const std::uint32_t slot : slots)
        append(bytes, slot);
    return bytes + strings;
}

} // namespace toolkit_tests
