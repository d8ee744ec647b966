#ifndef VARNO_APPS_VARNO_COMMANDLINE_VISIBLETEXT_H
#define VARNO_APPS_VARNO_COMMANDLINE_VISIBLETEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace varno {

/// Most bytes of a message that are printed. Names of files have up to 4096.
inline constexpr std::size_t kMostLineBytes = 1000;

/// Text of unknown origin for a terminal: control characters, and those that change the direction of text, as
/// \u and four digits, which JSON reads as the same character; bytes that are not UTF-8 as \x and two. Line
/// feeds and tabs stay.
std::string visibleText(std::string_view text);

/// The same as one line: line feeds and tabs as \n and \t, and the middle left out beyond kMostLineBytes.
std::string visibleLine(std::string_view text);

} // namespace varno

#endif
