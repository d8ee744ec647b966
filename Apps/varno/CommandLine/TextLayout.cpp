#include "CommandLine/TextLayout.h"

#include <algorithm>

namespace varno {
namespace {

constexpr int kTermIndent = 2;
constexpr int kLeastGap = 2; // blanks between a term and its text

std::string blanks(std::size_t count) {
    return std::string(count, ' ');
}

constexpr const char* kGap = "  ";

} // namespace

std::vector<std::string> wrapText(std::string_view text, int columns) {
    std::vector<std::string> lines;
    std::string line;
    while (!text.empty()) {
        const auto end = std::min(text.find(' '), text.size());
        const auto word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.size() + 1 + word.size() > static_cast<std::size_t>(columns)) {
            lines.push_back(std::move(line));
            line.clear();
        }
        if (!line.empty()) {
            line += ' ';
        }
        line += word;
    }
    if (!line.empty()) {
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string paragraph(std::string_view text, int indent) {
    std::string result;
    for (const auto& line : wrapText(text, kTextColumns - indent)) {
        result += blanks(static_cast<std::size_t>(indent)) + line + '\n';
    }
    return result;
}

std::string termAndText(std::string_view term, std::string_view text, int textColumn) {
    const auto column = static_cast<std::size_t>(textColumn);
    std::string result = blanks(kTermIndent) + std::string(term);
    const auto lines = wrapText(text, kTextColumns - textColumn);
    if (lines.empty()) {
        return result + '\n';
    }
    if (result.size() + kLeastGap > column) {
        result += '\n' + blanks(column);
    } else {
        result = padRight(result, column);
    }
    result += lines.front() + '\n';
    for (std::size_t i = 1; i < lines.size(); ++i) {
        result += blanks(column) + lines[i] + '\n';
    }
    return result;
}

std::string padRight(std::string_view text, std::size_t width) {
    return std::string(text) + blanks(width > text.size() ? width - text.size() : 0);
}

std::string padLeft(std::string_view text, std::size_t width) {
    return blanks(width > text.size() ? width - text.size() : 0) + std::string(text);
}

TextTable::TextTable(std::vector<Column> columns)
    : mColumns(std::move(columns)),
      mWidths(mColumns.size()) {
    std::vector<std::string> headings;
    for (const auto& column : mColumns) {
        headings.push_back(column.heading);
    }
    const auto isEmpty = [](const std::string& heading) { return heading.empty(); };
    if (!std::ranges::all_of(headings, isEmpty)) {
        addRow(std::move(headings));
    }
}

void TextTable::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < mWidths.size(); ++i) {
        mWidths[i] = std::max(mWidths[i], cells[i].size());
    }
    mRows.push_back(std::move(cells));
}

std::string TextTable::text() const {
    std::string result;
    for (const auto& cells : mRows) {
        result += line(cells);
    }
    return result;
}

std::string TextTable::line(const std::vector<std::string>& cells) const {
    std::string result;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        result += i == 0 ? "" : kGap;
        result += mColumns[i].align == Align::kLeft ? padRight(cells[i], mWidths[i])
                                                    : padLeft(cells[i], mWidths[i]);
    }
    return result.erase(result.find_last_not_of(' ') + 1) + '\n';
}

} // namespace varno
