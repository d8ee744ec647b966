/// Characters of texts whose origin is unknown.
#ifndef VARNO_SURROUND_SETTINGS_CHARACTERS_H
#define VARNO_SURROUND_SETTINGS_CHARACTERS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace varno {

/// A character of UTF-8.
struct Character {
    std::uint32_t code = 0; ///< As Unicode numbers it.
    std::size_t bytes = 0;  ///< 0: none.
};

/// The character that a text begins with; none where that is not UTF-8: cut off, longer than necessary, a
/// surrogate, or beyond U+10FFFF. @param text not empty [any]
Character firstCharacter(std::string_view text);

/// Whether a byte is one of a character's, but not its first. [any]
bool isContinuation(char byte);

/// Whether a character is no part of a line that people read: a control character, a separator of lines, or a
/// mark that reorders what is around it. [any]
bool isUnsafe(std::uint32_t code);

/// A text for people: U+FFFD stands for each byte that is no UTF-8 and for each unsafe character. [any]
std::string safeText(std::string_view text);

} // namespace varno

#endif
