#include "Plot/Plot.h"

namespace varno {
namespace {

Json seriesJson(const PlotSeries& series) {
    return Json::Object{{"name", series.name},
                        {"x", jsonArray(series.points, [](const PlotPoint& point) { return point.x; })},
                        {"y", jsonArray(series.points, [](const PlotPoint& point) { return point.y; })}};
}

Json mapJson(const PlotMap& map) {
    return Json::Object{{"label", map.label},
                        {"x", jsonArray(map.xs)},
                        {"y", jsonArray(map.ys)},
                        {"values", jsonArray(map.values)}};
}

Json panelJson(const PlotPanel& panel) {
    Json::Object object{{"title", panel.title}, {"x_axis", panel.x.label}, {"y_axis", panel.y.label}};
    if (panel.map) {
        object.emplace_back("map", mapJson(*panel.map));
    } else {
        object.emplace_back("series", jsonArray(panel.series, seriesJson));
    }
    return object;
}

} // namespace

Json plotJson(const Plot& plot) {
    return Json::Object{{"title", plot.title}, {"panels", jsonArray(plot.panels, panelJson)}};
}

} // namespace varno
