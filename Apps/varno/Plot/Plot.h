/// A plot as plain data: what is drawn, and where.
#ifndef VARNO_APPS_VARNO_PLOT_PLOT_H
#define VARNO_APPS_VARNO_PLOT_PLOT_H

#include "CommandLine/Json.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

struct PlotAxis {
    std::string label; ///< With its unit.
    bool isLogarithmic = false;
    /// What is shown; as far as the points reach where nothing stands.
    std::optional<double> least = {};
    std::optional<double> most = {};
};

struct PlotPoint {
    double x;
    double y;
};

/// A line through points.
struct PlotSeries {
    std::string name; ///< In the legend.
    std::vector<PlotPoint> points = {};
    bool isBehind = false; ///< Drawn broad and grey behind the others, as what they are compared with.
};

/// Values over a grid, drawn as colours with their numbers.
struct PlotMap {
    std::string label; ///< Of the values, with their unit.
    std::vector<double> xs = {};
    std::vector<double> ys = {};
    std::vector<double> values = {}; ///< All of the first y first.
};

/// Lines in one pair of axes, or a map.
struct PlotPanel {
    std::string title = {}; ///< Empty where the plot has one panel.
    PlotAxis x;
    PlotAxis y;
    std::vector<PlotSeries> series = {};
    std::optional<PlotMap> map = {};
};

struct Plot {
    std::string title;
    std::vector<PlotPanel> panels; ///< From top to bottom, at least one.
};

/// The numbers of a plot, for scripts.
Json plotJson(const Plot& plot);

} // namespace varno

#endif
