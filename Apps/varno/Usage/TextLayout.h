#ifndef VARNO_APPS_VARNO_USAGE_TEXTLAYOUT_H
#define VARNO_APPS_VARNO_USAGE_TEXTLAYOUT_H

#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Widest line of everything that the program prints to be read, so that it fits a terminal of 80 columns.
inline constexpr int kTextColumns = 79;

/// Breaks text at blanks into lines of at most `columns` bytes (text is ASCII); a longer word stands alone.
std::vector<std::string> wrapText(std::string_view text, int columns);

/// A paragraph, every line indented by that many blanks and ended by a line feed.
std::string paragraph(std::string_view text, int indent = 0);

/// A term at column 2 and its explanation from column `textColumn`, on the next line where the term is too
/// long; ended by a line feed.
std::string termAndText(std::string_view term, std::string_view text, int textColumn);

/// Text padded with blanks on the right (or left) to that many bytes.
std::string padRight(std::string_view text, std::size_t width);
std::string padLeft(std::string_view text, std::size_t width);

} // namespace varno

#endif
