#include "Surround/Settings/NameOrder.h"

#include "Surround/Settings/Characters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace varno {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// U+00C0 to U+00FF by the letter that they stand beside; a blank for none.
constexpr std::uint32_t kFirstLatin = 0xC0;
constexpr std::string_view kLatinLetters = "aaaaaaaceeeeiiiidnooooo ouuuuytsaaaaaaaceeeeiiiidnooooo ouuuuyty";

// Takes a character off the front of a name, as the key that orders it. A byte that is no character counts as
// one of its number.
std::uint32_t takeKey(std::string_view& name) {
    const auto first = static_cast<unsigned char>(name.front());
    const auto [code, bytes] = firstCharacter(name);
    name.remove_prefix(std::max<std::size_t>(bytes, 1));
    const std::uint32_t key = bytes == 0 ? first : code;
    if (key >= 'A' && key <= 'Z') {
        return key - 'A' + 'a';
    }
    const bool isLatin = key >= kFirstLatin && key - kFirstLatin < kLatinLetters.size();
    const char letter = isLatin ? kLatinLetters[key - kFirstLatin] : ' ';
    return letter == ' ' ? key : static_cast<unsigned char>(letter);
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
        const std::uint32_t a = takeKey(left);
        const std::uint32_t b = takeKey(right);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    return static_cast<int>(!left.empty()) - static_cast<int>(!right.empty());
}

} // namespace

bool standsBefore(std::string_view left, std::string_view right) {
    const int order = compareKeys(left, right);
    return order != 0 ? order < 0 : left < right;
}

} // namespace varno
