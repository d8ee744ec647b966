#include "DemoGain_SampleRates.h"
#include "Measure/Measurements.h"
#include "Plot/Plots.h"

#include <cmath>

namespace varno {
namespace {

// What a graph of a filter or of a spectrum usually shows.
constexpr double kLowestHz = 20.0;
constexpr double kHighestHz = 20'000.0;
constexpr int kPointsPerOctave = 3;

double numberIn(const FigureCell& cell) {
    return std::get<double>(cell);
}

// The cells of a column over those of the first one, where there are numbers.
PlotSeries seriesOf(const Figure& figure, std::size_t column, const std::string& name) {
    PlotSeries series{name};
    for (const auto& row : figure.rows) {
        if (std::holds_alternative<double>(row[column])) {
            series.points.push_back({numberIn(row.front()), numberIn(row[column])});
        }
    }
    return series;
}

Grid evenly(double first, double last, int steps) {
    Grid grid;
    for (int step = 0; step <= steps; ++step) {
        grid.push_back(first + (last - first) * step / steps);
    }
    return grid;
}

Grid logarithmically(double first, double last, int perOctave) {
    Grid grid;
    const double octaves = std::log2(last / first);
    const int steps = static_cast<int>(std::ceil(octaves * perOctave));
    for (const double octave : evenly(0.0, octaves, steps)) {
        grid.push_back(first * std::exp2(octave));
    }
    return grid;
}

// Milliseconds at the start, where much happens, and then more rarely, for both halves of a burst.
Grid burstTimes() {
    constexpr double kFirstMS = 0.1;
    constexpr double kLastMS = 3000.0;
    constexpr int kPerOctave = 12;
    Grid times = {0.0};
    for (const double time : logarithmically(kFirstMS, kBurstMS, kPerOctave)) {
        times.push_back(time);
    }
    for (const double time : logarithmically(kFirstMS, kLastMS - kBurstMS, kPerOctave)) {
        times.push_back(kBurstMS + time);
    }
    return times;
}

} // namespace

Plot plotCurves(const EffectMaker& effect) {
    const Figure figure = measureCurves(effect);
    PlotPanel panel{.x = {"Input level, peak dBFS"}, .y = {"Output level, peak dBFS"}};
    PlotSeries unchanged{.name = "unchanged", .isBehind = true};
    for (const auto& row : figure.rows) {
        const double levelDB = numberIn(row.front());
        unchanged.points.push_back({levelDB, levelDB});
    }
    panel.series.push_back(std::move(unchanged));
    for (std::size_t column = 1; column < figure.columns.size(); ++column) {
        PlotSeries series = seriesOf(figure, column, "curve " + figure.columns[column].heading);
        for (PlotPoint& point : series.points) {
            point.y += point.x;
        }
        panel.series.push_back(std::move(series));
    }
    return {"Static curves (Ratio), 1 kHz, without drive", {std::move(panel)}};
}

Plot plotBurst(const EffectMaker& effect) {
    const Figure figure = measureBurst(effect, burstTimes());
    PlotPanel attack{.title = "Attack, from the start of the burst",
                     .x = {.label = "Time, ms", .least = 0.0, .most = kBurstMS},
                     .y = {.label = "Gain reduction, dB", .least = 0.0}};
    PlotPanel release{.title = "Release, from the end of the burst",
                      .x = {.label = "Time, ms", .least = 0.0},
                      .y = {.label = "Gain reduction, dB", .least = 0.0}};
    for (std::size_t column = 1; column < figure.columns.size(); ++column) {
        const PlotSeries whole = seriesOf(figure, column, figure.columns[column].heading);
        const std::string name = "knobs at " + whole.name.substr(whole.name.find(' ') + 1);
        attack.series.push_back({name});
        release.series.push_back({name});
        for (const PlotPoint& point : whole.points) {
            if (point.x <= kBurstMS) {
                attack.series.back().points.push_back(point);
            } else {
                release.series.back().points.push_back({point.x - kBurstMS, point.y});
            }
        }
    }
    return {"A burst of 300 ms at -6 dBFS, by Attack and Release", {std::move(attack), std::move(release)}};
}

Plot plotDetector(const EffectMaker& effect) {
    const Figure figure = measureDetector(effect, logarithmically(kLowestHz, kHighestHz, kPointsPerOctave));
    PlotPanel panel{
        .x = {.label = "Frequency, Hz", .isLogarithmic = true, .least = kLowestHz, .most = kHighestHz},
        .y = {"Change of the level that the detector hears, dB"}};
    panel.series = {seriesOf(figure, 1, "High Pass"), seriesOf(figure, 2, "Band")};
    return {"The detector's filters", {std::move(panel)}};
}

Plot plotHarmonics(const EffectMaker& effect) {
    constexpr int kSteps = 50;
    constexpr double kSoftestShownDB = -120.0;
    const Figure figure = measureHarmonics(effect, evenly(0.0, 1.0, kSteps));
    Plot plot{"Harmonics of 1 kHz at -12 dBFS over the drive", {}};
    for (const std::string select : {"off", "on"}) {
        Figure half = figure;
        std::erase_if(half.rows, [&](const auto& row) { return std::get<std::string>(row[1]) != select; });
        PlotPanel panel{.title = "Harmonic Select " + select,
                        .x = {.label = "Drive (Hot), place of the knob", .least = 0.0, .most = 1.0},
                        .y = {.label = "Against the fundamental, dB", .least = kSoftestShownDB, .most = 0.0}};
        constexpr std::size_t kFirstLevel = 2;
        for (std::size_t column = kFirstLevel; column < half.columns.size(); ++column) {
            const std::string name =
                column == kFirstLevel ? "all (THD)" : "harmonic " + std::to_string(column - kFirstLevel + 1);
            panel.series.push_back(seriesOf(half, column, name));
        }
        panel.series.front().isBehind = true;
        plot.panels.push_back(std::move(panel));
    }
    return plot;
}

Plot plotTransfer(const EffectMaker& effect) {
    const Figure figure = measureTransfer(effect, transferDrives());
    PlotPanel panel{.x = {.label = "Input sample, full scale 1", .least = -1.0, .most = 1.0},
                    .y = {"Output sample, full scale 1"}};
    for (std::size_t column = 1; column < figure.columns.size(); ++column) {
        const std::string& heading = figure.columns[column].heading;
        panel.series.push_back(seriesOf(figure, column, "Hot " + heading.substr(heading.find(' ') + 1)));
    }
    return {"One period of 1 kHz at 0 dBFS, by drive", {std::move(panel)}};
}

} // namespace varno
