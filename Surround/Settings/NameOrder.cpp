#include "Surround/Settings/NameOrder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace varno {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The length of the character that `bytes` begins with; 0 where it begins with none. Characters written
// longer than necessary, surrogates and those beyond U+10FFFF are none.
std::size_t characterLength(std::string_view bytes) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned first = at(0);
    if (first < 0x80U) {
        return 1;
    }
    const std::size_t length = first >= 0xC2U && first < 0xE0U   ? 2
                               : first >= 0xE0U && first < 0xF0U ? 3
                               : first >= 0xF0U && first < 0xF5U ? 4
                                                                 : 0;
    if (length == 0 || bytes.size() < length ||
        !std::all_of(bytes.begin() + 1, bytes.begin() + static_cast<std::ptrdiff_t>(length),
                     isContinuation)) {
        return 0;
    }
    const unsigned second = at(1);
    const bool isTooLong = (first == 0xE0U && second < 0xA0U) || (first == 0xF0U && second < 0x90U);
    const bool isBeyond = (first == 0xEDU && second >= 0xA0U) || (first == 0xF4U && second >= 0x90U);
    return isTooLong || isBeyond ? 0 : length;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr char smallLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// U+00C0 to U+00FF by the letter that they stand beside; a blank for none.
constexpr std::string_view kLatinLetters = "aaaaaaaceeeeiiiidnooooo ouuuuytsaaaaaaaceeeeiiiidnooooo ouuuuyty";
static_assert(kLatinLetters.size() == 64);

// Takes a character off the front of a name, as the key that orders it.
char takeKey(std::string_view& name) {
    constexpr unsigned kFirstLead = 0xC3U; // of U+00C0 to U+00FF
    const char first = name.front();
    if (static_cast<unsigned char>(first) == kFirstLead && name.size() > 1 && isContinuation(name[1])) {
        const char letter = kLatinLetters[static_cast<unsigned char>(name[1]) & 0x3FU];
        if (letter != ' ') {
            name.remove_prefix(2);
            return letter;
        }
    }
    name.remove_prefix(1);
    return smallLetter(first);
}

std::string_view takeNumber(std::string_view& name) {
    const auto end = std::ranges::find_if_not(name, isDigit);
    std::string_view digits = name.substr(0, static_cast<std::size_t>(end - name.begin()));
    name.remove_prefix(digits.size());
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

// Below 0 where the left one stands first, above 0 where the right one does.
int compareKeys(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const std::string_view a = takeNumber(left);
            const std::string_view b = takeNumber(right);
            if (a.size() != b.size()) {
                return a.size() < b.size() ? -1 : 1;
            }
            if (const int order = a.compare(b)) {
                return order;
            }
            continue;
        }
        const auto a = static_cast<unsigned char>(takeKey(left));
        const auto b = static_cast<unsigned char>(takeKey(right));
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return static_cast<int>(!left.empty()) - static_cast<int>(!right.empty());
}

} // namespace

std::string validUtf8(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        text += length > 0 ? bytes.substr(0, length) : kReplacement;
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

bool standsBefore(std::string_view left, std::string_view right) {
    const int order = compareKeys(left, right);
    return order != 0 ? order < 0 : left < right;
}

} // namespace varno
