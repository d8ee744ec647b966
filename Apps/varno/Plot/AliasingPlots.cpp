#include "Measure/Measurements.h"
#include "Plot/Plots.h"

#include <algorithm>
#include <string>

namespace varno {
namespace {

constexpr double kTonesS = 4.0; // of each

// Columns of the figure.
constexpr std::size_t kToneColumn = 2;
constexpr std::size_t kSumColumn = 3;
constexpr std::size_t kLargestColumn = 4;

double numberIn(const std::vector<FigureCell>& row, std::size_t column) {
    return std::get<double>(row[column]);
}

std::string dbText(double level) {
    return std::to_string(static_cast<int>(level)) + " dBFS";
}

} // namespace

Plot plotAliasing(const MakeAtQuality& make, const std::vector<std::int32_t>& factors,
                  const PlotProgress& progress) {
    constexpr double kLevelDB = -12.0;
    constexpr double kDrive = 0.4;
    // Primes, or close to them: folded harmonics of round frequencies lie under harmonics.
    const AliasingGrid grid = {.levelsDB = {kLevelDB},
                               .drives = {kDrive},
                               .tonesHz = {997,   1499,  1999,  2503,  2999,  3499,  4001,  4999,
                                           5987,  6997,  8009,  8999,  9973,  10993, 12007, 13007,
                                           13999, 14983, 16007, 17011, 18013, 18979}};
    const PlotAxis tones = {.label = "Tone, Hz", .isLogarithmic = true, .least = 1000.0, .most = 20'000.0};
    PlotPanel sum{.title = "Sum of all products that are no harmonic, 16 Hz to 20 kHz",
                  .x = tones,
                  .y = {"Against the tone, dB"}};
    PlotPanel largest{.title = "The largest of them", .x = tones, .y = {"Against the tone, dB"}};
    const double share = 1.0 / static_cast<double>(grid.tonesHz.size() * factors.size());
    for (const std::int32_t factor : factors) {
        const std::string name = std::to_string(factor) + "x";
        sum.series.push_back({name});
        largest.series.push_back({name});
        const Figure figure = measureAliasing(make(factor), grid, [&] { progress(kTonesS, share); });
        for (const auto& row : figure.rows) {
            sum.series.back().points.push_back({numberIn(row, kToneColumn), numberIn(row, kSumColumn)});
            largest.series.back().points.push_back(
                {numberIn(row, kToneColumn), numberIn(row, kLargestColumn)});
        }
    }
    return {"Aliasing by quality, tones of " + dbText(kLevelDB) + ", Hot 0.4",
            {std::move(sum), std::move(largest)}};
}

Plot plotAliasingMap(const EffectMaker& effect, const std::string& quality, const PlotProgress& progress) {
    AliasingGrid grid = {.levelsDB = {}, .drives = {}, .tonesHz = aliasingTonesHz()};
    constexpr int kSoftestToneDB = -36;
    constexpr int kToneStepDB = 3;
    for (int levelDB = kSoftestToneDB; levelDB <= 0; levelDB += kToneStepDB) {
        grid.levelsDB.push_back(levelDB);
    }
    constexpr int kDrives = 20;
    for (int step = 1; step <= kDrives; ++step) {
        grid.drives.push_back(static_cast<double>(step) / kDrives);
    }
    const std::size_t cells = grid.levelsDB.size() * grid.drives.size();
    const double share = 1.0 / static_cast<double>(cells * grid.tonesHz.size());
    const Figure figure = measureAliasing(effect, grid, [&] { progress(kTonesS, share); });
    PlotMap map{.label = "Sum, worst of five tones, dB", .xs = grid.drives, .ys = grid.levelsDB};
    for (std::size_t cell = 0; cell < cells; ++cell) {
        const auto first = figure.rows.begin() + static_cast<std::ptrdiff_t>(cell * grid.tonesHz.size());
        const auto worst =
            std::max_element(first, first + static_cast<std::ptrdiff_t>(grid.tonesHz.size()),
                             [](const auto& left, const auto& right) {
                                 return numberIn(left, kSumColumn) < numberIn(right, kSumColumn);
                             });
        map.values.push_back(numberIn(*worst, kSumColumn));
    }
    // To the edges of the outer cells.
    const double halfDrive = 0.5 / kDrives;
    PlotPanel panel{.x = {.label = "Drive (Hot), place of the knob",
                          .least = grid.drives.front() - halfDrive,
                          .most = grid.drives.back() + halfDrive},
                    .y = {.label = "Level of the tone, peak dBFS",
                          .least = kSoftestToneDB - kToneStepDB / 2.0,
                          .most = kToneStepDB / 2.0},
                    .map = map};
    return {"Aliasing at " + quality + ": products that are no harmonic, against the tone",
            {std::move(panel)}};
}

} // namespace varno
