/// A measured figure: a table that is printed to be read, or as JSON for scripts.
#ifndef VARNO_APPS_VARNO_MEASURE_FIGURE_H
#define VARNO_APPS_VARNO_MEASURE_FIGURE_H

#include "CommandLine/Json.h"

#include <string>
#include <variant>
#include <vector>

namespace varno {

/// One column of a figure.
struct FigureColumn {
    std::string key;     ///< Name in the JSON: "change_db".
    std::string heading; ///< With its unit: "CHANGE dB".
    int decimals = 0;    ///< Of its numbers where they are printed to be read.
};

/// A cell: a number in the column's unit, a text, or nothing where the value does not exist.
using FigureCell = std::variant<std::monostate, double, std::string>;

/// What one measurement found.
struct Figure {
    std::string name;        ///< As it is asked for: "curves".
    std::string explanation; ///< Sentences: what was measured, with which signal and settings.
    std::vector<FigureColumn> columns;
    std::vector<std::vector<FigureCell>> rows = {}; ///< A cell per column.
};

/// The figure as a paragraph and a table.
std::string figureText(const Figure& figure);

/// An object with the name, the explanation and an object for each row, by the keys of the columns. Numbers
/// are not rounded.
Json figureJson(const Figure& figure);

} // namespace varno

#endif
