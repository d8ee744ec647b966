#include "Platform/X11/Latin1.h"

#include <cstddef>

namespace varno {

namespace {

constexpr unsigned kFirstBeyondAscii = 0x80;
constexpr unsigned kLeadOfTwo = 0xC0;
constexpr unsigned kLeadOfThree = 0xE0;
constexpr unsigned kLeadOfFour = 0xF0;
constexpr unsigned kContinuation = 0x80;
constexpr unsigned kContinuationMask = 0xC0;
constexpr unsigned kPayloadMask = 0x3F;
constexpr int kPayloadBits = 6;
// Every character from 0x80 to 0xFF is led by one of these two.
constexpr unsigned kFirstLatin1Lead = 0xC2;
constexpr unsigned kLastLatin1Lead = 0xC3;

std::size_t lengthLedBy(unsigned lead) {
    if (lead < kLeadOfTwo) {
        return 1;
    }
    return lead < kLeadOfThree ? 2 : lead < kLeadOfFour ? 3 : 4;
}

// The bytes of the first character of the text, as many of them as are present.
std::string_view firstCharacter(std::string_view text) {
    const std::size_t length = lengthLedBy(static_cast<unsigned char>(text.front()));
    std::size_t present = 1;
    while (present < length && present < text.size() &&
           (static_cast<unsigned char>(text[present]) & kContinuationMask) == kContinuation) {
        ++present;
    }
    return text.substr(0, present);
}

char latin1Of(std::string_view character) {
    const unsigned lead = static_cast<unsigned char>(character.front());
    if (lead < kFirstBeyondAscii) {
        return character.front();
    }
    if (character.size() == 2 && lead >= kFirstLatin1Lead && lead <= kLastLatin1Lead) {
        const unsigned low = static_cast<unsigned char>(character[1]) & kPayloadMask;
        return static_cast<char>(((lead & kPayloadMask) << kPayloadBits) | low);
    }
    return '?';
}

} // namespace

std::string latin1FromUtf8(std::string_view text) {
    std::string latin1;
    latin1.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = firstCharacter(text);
        latin1 += latin1Of(character);
        text.remove_prefix(character.size());
    }
    return latin1;
}

std::string utf8FromLatin1(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char character : text) {
        const unsigned code = static_cast<unsigned char>(character);
        if (code < kFirstBeyondAscii) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(kLeadOfTwo | (code >> kPayloadBits));
            utf8 += static_cast<char>(kContinuation | (code & kPayloadMask));
        }
    }
    return utf8;
}

} // namespace varno
