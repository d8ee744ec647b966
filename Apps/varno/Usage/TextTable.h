#ifndef VARNO_APPS_VARNO_USAGE_TEXTTABLE_H
#define VARNO_APPS_VARNO_USAGE_TEXTTABLE_H

#include <string>
#include <vector>

namespace varno {

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
