#ifndef VARNO_APPS_VARNO_COMMANDLINE_TEXTLAYOUT_H
#define VARNO_APPS_VARNO_COMMANDLINE_TEXTLAYOUT_H

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

enum class Align { kLeft, kRight };

/// Rows of text in columns as wide as their widest cell, two blanks apart.
class TextTable {
public:
    struct Column {
        std::string heading;
        Align align;
    };

    /// Without any heading there is no heading line.
    explicit TextTable(std::vector<Column> columns);

    /// @param cells one per column
    void addRow(std::vector<std::string> cells);

    /// All lines, each ended by a line feed and without blanks before it.
    std::string text() const;

private:
    std::string line(const std::vector<std::string>& cells) const;

    std::vector<Column> mColumns;
    std::vector<std::size_t> mWidths;
    std::vector<std::vector<std::string>> mRows;
};

} // namespace varno

#endif
