#include "Measure/Figure.h"

#include "CommandLine/TextLayout.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>

namespace varno {
namespace {

std::string cellText(const FigureCell& cell, int decimals) {
    if (const auto* number = std::get_if<double>(&cell)) {
        return decimalText(*number, decimals);
    }
    const auto* text = std::get_if<std::string>(&cell);
    return text == nullptr ? "-" : *text;
}

Json cellJson(const FigureCell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) {
        return *number;
    }
    const auto* text = std::get_if<std::string>(&cell);
    return text == nullptr ? Json() : Json(*text);
}

// Texts stand at the left of their column, numbers at the right.
Align alignmentOf(const Figure& figure, std::size_t column) {
    const bool isText = std::ranges::any_of(
        figure.rows, [&](const auto& row) { return std::holds_alternative<std::string>(row[column]); });
    return isText ? Align::kLeft : Align::kRight;
}

} // namespace

std::string figureText(const Figure& figure) {
    std::vector<TextTable::Column> columns;
    for (std::size_t column = 0; column < figure.columns.size(); ++column) {
        columns.push_back({figure.columns[column].heading, alignmentOf(figure, column)});
    }
    TextTable table(std::move(columns));
    for (const auto& row : figure.rows) {
        std::vector<std::string> cells;
        for (std::size_t column = 0; column < row.size(); ++column) {
            cells.push_back(cellText(row[column], figure.columns[column].decimals));
        }
        table.addRow(std::move(cells));
    }
    return paragraph(figure.name + ": " + figure.explanation) + '\n' + table.text();
}

Json figureJson(const Figure& figure) {
    const auto rowJson = [&](const std::vector<FigureCell>& row) {
        Json::Object object;
        for (std::size_t column = 0; column < row.size(); ++column) {
            object.emplace_back(figure.columns[column].key, cellJson(row[column]));
        }
        return object;
    };
    return Json::Object{{"name", figure.name},
                        {"explanation", figure.explanation},
                        {"rows", jsonArray(figure.rows, rowJson)}};
}

} // namespace varno
