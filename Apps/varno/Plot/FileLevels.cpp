#include "Plot/FileLevels.h"

#include "CommandLine/Interruption.h"
#include "DemoGain_Oversampling.h"
#include "Render/BlockProcessor.h"
#include "Render/MeterLevels.h"
#include "Render/SampleLevels.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace varno {
namespace {

constexpr double kBlockS = 0.005;
constexpr std::size_t kMostPoints = 1000;
constexpr double kFloorDB = -96.0;

// What is largest within a stretch of time.
struct Levels {
    double in = 0.0;
    double out = 0.0;
    double reductionDB = 0.0;

    void add(const Levels& other) {
        in = std::max(in, other.in);
        out = std::max(out, other.out);
        reductionDB = std::max(reductionDB, other.reductionDB);
    }
};

double peakOf(const AudioBlock& block) {
    SampleLevels levels;
    for (int channel = 0; channel < block.channels(); ++channel) {
        levels.add(block.samples()[channel], block.frames());
    }
    return levels.peak();
}

std::vector<Levels> levelsOf(Oversampling& effect, Instance& instance, AudioReader& reader, int blockFrames,
                             const PlotProgress& progress) {
    std::vector<Levels> levels;
    BlockProcessor processor(effect, {}, blockFrames);
    processor.setBlockListener([&](std::int64_t, std::span<const float> meters) {
        levels.back().reductionDB = reductionDB(instance, meters).value_or(0.0);
    });
    AudioBlock block(reader.format().channels, blockFrames);
    const double lengthS = reader.format().durationS();
    while (reader.read(block) > 0) {
        throwIfInterrupted();
        levels.push_back({.in = peakOf(block)});
        processor.process(block.samples(), block.frames());
        if (block.frames() < blockFrames) {
            processor.finish();
        }
        levels.back().out = peakOf(block);
        const double seconds = static_cast<double>(block.frames()) / reader.format().rateHz;
        progress(seconds, lengthS > 0.0 ? seconds / lengthS : 0.0);
    }
    return levels;
}

double levelDB(double peak) {
    return std::max(decibels(peak), kFloorDB);
}

} // namespace

Plot plotFileLevels(const std::shared_ptr<Module>& module, const Settings& settings, std::int32_t quality,
                    AudioReader& reader, const PlotProgress& progress) {
    const AudioFormat& format = reader.format();
    const double rateHz = format.rateHz;
    const int blockFrames = std::max(1, static_cast<int>(std::lround(kBlockS * rateHz)));
    const InstanceSetup setup = {
        .channels = format.channels, .sampleRateHz = rateHz, .maximumFrames = blockFrames};
    Instance instance(module, setup);
    settings.applyTo(instance);
    Oversampling effect(instance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = quality});
    const auto levels = levelsOf(effect, instance, reader, blockFrames, progress);

    PlotPanel signal{.title = "Peak level",
                     .x = {.label = "Time, s", .least = 0.0},
                     .y = {.label = "dBFS"},
                     .series = {{.name = "input", .isBehind = true}, {"output"}}};
    PlotPanel reduction{.title = "Gain reduction",
                        .x = {.label = "Time, s", .least = 0.0},
                        .y = {.label = "dB", .least = 0.0},
                        .series = {{"reduction"}}};
    const std::size_t perPoint = levels.size() / kMostPoints + 1;
    for (std::size_t start = 0; start < levels.size(); start += perPoint) {
        Levels largest;
        for (std::size_t i = start; i < std::min(start + perPoint, levels.size()); ++i) {
            largest.add(levels[i]);
        }
        const double timeS = static_cast<double>(start) * blockFrames / rateHz;
        signal.series[0].points.push_back({timeS, levelDB(largest.in)});
        signal.series[1].points.push_back({timeS, levelDB(largest.out)});
        reduction.series[0].points.push_back({timeS, largest.reductionDB});
    }
    return {std::filesystem::path(reader.name()).filename().string(),
            {std::move(signal), std::move(reduction)}};
}

} // namespace varno
