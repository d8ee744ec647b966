#include "TextTable.h"

#include "TextLayout.h"

#include <algorithm>

namespace varno {
namespace {

constexpr const char* kGap = "  ";

} // namespace

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
