#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "Commands.h"
#include "DemoGain_SampleRates.h"
#include "Measure/Measurements.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "Settings/Settings.h"

#include <algorithm>

namespace varno {
namespace {

const AliasingGrid& aliasingGrid() {
    static const AliasingGrid grid = {.levelsDB = {-24.0, -18.0, -12.0, -6.0, 0.0},
                                      .drives = {0.07, 0.1, 0.2, 0.3, 0.4, 0.6, 1.0},
                                      .tonesHz = aliasingTonesHz()};
    return grid;
}

// Where most happens.
const Grid& burstTimesMS() {
    static const Grid times = {0.1,   0.2,   0.5,   1.0,   2.0,   5.0,   10.0,   20.0,   50.0,   100.0,
                               200.0, 300.0, 301.0, 302.0, 305.0, 310.0, 320.0,  350.0,  400.0,  500.0,
                               600.0, 700.0, 800.0, 900.0, 1000., 1200., 1500.0, 2000.0, 2500.0, 3000.0};
    return times;
}

const Grid& detectedHz() {
    static const Grid frequencies = {20.0,   30.0,   60.0,   120.0,  240.0,   500.0,   1000.0,
                                     2000.0, 4000.0, 7000.0, 9000.0, 12000.0, 16000.0, 19000.0};
    return frequencies;
}

const Grid& harmonicDrives() {
    static const Grid drives = {0.0, 0.07, 0.1, 0.2, 0.3, 0.4, 0.6, 0.8, 1.0};
    return drives;
}

// A measurement by the name that it is asked for.
struct Measurement {
    std::string_view name;
    Figure (*measure)(const EffectMaker& effect);
};

constexpr Measurement kMeasurements[] = {
    {"curves", measureCurves},
    {"times", measureTimes},
    {"burst", [](const EffectMaker& effect) { return measureBurst(effect, burstTimesMS()); }},
    {"detector", [](const EffectMaker& effect) { return measureDetector(effect, detectedHz()); }},
    {"drive", measureDrive},
    {"harmonics", [](const EffectMaker& effect) { return measureHarmonics(effect, harmonicDrives()); }},
    {"transfer", [](const EffectMaker& effect) { return measureTransfer(effect, transferDrives()); }},
    {"aliasing", [](const EffectMaker& effect) { return measureAliasing(effect, aliasingGrid()); }}};

constexpr std::string_view kMeasureUsage[] = {"[OPTIONS] [FIGURE...]"};
constexpr std::string_view kMeasureDescription[] = {
    "Measures the effect: runs it over tones and steps that it makes, and prints what came out. Without a "
    "FIGURE all of them. The numbers of the manual are these.",
    "Settings apply to every measurement, except for those that a measurement makes itself, as its "
    "explanation says; --quality applies to curves, drive, harmonics and aliasing. Levels are peak levels of "
    "one "
    "channel in dBFS; they are not clipped at 0."};
constexpr ArgumentEntry kMeasureArguments[] = {
    {.name = "FIGURE",
     .kind = ValueKind::kChoice,
     .choices = "curves times burst detector drive harmonics transfer aliasing",
     .help = "curves: level by ratio. times: attack and release. burst: reduction over time. detector: High "
             "Pass and Band. drive: level and distortion. harmonics: each of them. transfer: output by input "
             "sample. aliasing: what is no harmonic."}};
constexpr OptionEntry kMeasureOptions[] = {
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = {.least = DemoGain_SampleRates::kLowestHz,
                 .most = DemoGain_SampleRates::kHighestHz,
                 .usual = kDefaultSampleRateHz},
     .group = "Settings",
     .help = "The sample rate in Hz."},
    kQualityOption,
    kSetOption,
    kPresetOption,
    kStateOption,
    kJsonOption,
    kModuleOption,
    kHelpOption,
};
constexpr ExampleEntry kMeasureExamples[] = {
    {"varno measure curves", "What each ratio makes of a level."},
    {"varno measure drive --set HP=on --rate 96000", "Level and harmonics over the drive at 96 kHz."},
    {"varno measure aliasing --quality 4x", "What folds at four times the sample rate."},
    {"varno measure --json > figures.json", "Everything, for a script."},
};

// A blank line stands between figures.
void print(const std::vector<Figure>& figures) {
    for (const auto& figure : figures) {
        printOut(&figure == figures.data() ? figureText(figure) : '\n' + figureText(figure));
    }
}

int runMeasure(const CommandLine& line) {
    const Settings settings(line);
    const double rateHz = line.number<int>("--rate").value_or(static_cast<int>(kDefaultSampleRateHz));
    const auto& asked = line.arguments();
    std::vector<Figure> figures;
    auto module = loadEffect(line);
    {
        const EffectMaker effect(module, settings, rateHz, requiredQuality(line, *module, rateHz));
        for (const auto& measurement : kMeasurements) {
            if (asked.empty() || std::ranges::find(asked, measurement.name) != asked.end()) {
                figures.push_back(measurement.measure(effect));
            }
        }
    }
    unloadModule(std::move(module));
    if (line.has("--json")) {
        printOut(jsonText(Json::Object{{"rate_hz", rateHz}, {"figures", jsonArray(figures, figureJson)}}));
    } else {
        print(figures);
    }
    return kExitSuccess;
}

} // namespace

CommandEntry measureCommand() {
    return {.name = "measure",
            .summary = "Measure curves, times, filters, drive and aliasing",
            .usage = kMeasureUsage,
            .description = kMeasureDescription,
            .arguments = kMeasureArguments,
            .leastArguments = 0,
            .mostArguments = kAnyNumber,
            .options = kMeasureOptions,
            .examples = kMeasureExamples,
            .run = runMeasure};
}

} // namespace varno
