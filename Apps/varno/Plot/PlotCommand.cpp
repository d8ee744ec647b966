#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/LibraryMessages.h"
#include "Commands.h"
#include "DemoGain_SampleRates.h"
#include "Files/AtomicFile.h"
#include "Plot/FileLevels.h"
#include "Plot/Gnuplot.h"
#include "Plot/Plots.h"
#include "Render/ProgressBar.h"
#include "Settings/FileRoles.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "Settings/Settings.h"

#include <algorithm>

namespace varno {
namespace {

constexpr std::string_view kPlotUsage[] = {"[OPTIONS] KIND OUT", "[OPTIONS] levels INPUT OUT"};
constexpr std::string_view kPlotDescription[] = {
    "Measures the effect and draws the figure: curves (output level by input level), burst (attack and "
    "release), detector (High Pass and Band), harmonics (over the drive), transfer (output by input sample), "
    "aliasing (by quality), map (aliasing over level and drive), and levels, which is of an audio file: its "
    "input, output and reduction over time.",
    "Settings apply to every kind, except for those that a kind varies itself, as its legend says. --quality "
    "applies to all but burst, detector and transfer; aliasing shows every quality. varno measure prints the "
    "same measurements as tables. gnuplot draws, which is a program of its own."};
constexpr ArgumentEntry kPlotArguments[] = {
    {.name = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "curves burst detector harmonics transfer aliasing map levels",
     .help = "What is drawn: curves, burst, detector, harmonics, transfer, aliasing, map or levels."},
    {.name = "INPUT", .kind = ValueKind::kFile, .help = "An audio file, for levels only."},
    {.name = "OUT",
     .kind = ValueKind::kFile,
     .help = "The picture. The end of its name selects the format: .svg or .png."}};
constexpr OptionEntry kPlotOptions[] = {
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = {.least = DemoGain_SampleRates::kLowestHz,
                 .most = DemoGain_SampleRates::kHighestHz,
                 .usual = kDefaultSampleRateHz},
     .group = "Settings",
     .help = "The sample rate in Hz; that of INPUT for levels."},
    kQualityOption,
    kSetOption,
    kPresetOption,
    kStateOption,
    kTruncatedOption,
    {.name = "--force", .shortName = "-f", .group = "Output", .help = "Replace OUT where it exists."},
    {.name = "--json", .group = "Reports", .help = "Print the numbers of the picture as JSON, for scripts."},
    kModuleOption,
    kHelpOption,
};
constexpr ExampleEntry kPlotExamples[] = {
    {"varno plot curves curves.svg", "The eight ratios."},
    {"varno plot harmonics --set Mix=0.5 harmonics.png", "What the drive adds, half mixed in."},
    {"varno plot map --quality 4x map.png", "Where four times the sample rate still folds."},
    {"varno plot levels --preset drum-bus drums.wav levels.svg",
     "What a preset does to a recording over time."},
};

struct PlotTask {
    std::string kind;
    std::string input; // empty for all but levels
    std::string output;
    PictureFormat format;
};

PictureFormat formatOf(const std::string& output) {
    if (output.ends_with(".svg")) {
        return PictureFormat::kSvg;
    }
    if (output.ends_with(".png")) {
        return PictureFormat::kPng;
    }
    throw UsageError(output + ": expected a name that ends with .svg or .png");
}

PlotTask plotTask(const CommandLine& line) {
    const auto& arguments = line.arguments();
    constexpr std::size_t kWithInput = 3;
    const bool isOfFile = arguments.front() == "levels";
    if ((arguments.size() == kWithInput) != isOfFile) {
        throw UsageError(isOfFile ? "levels: expected INPUT and OUT, found one file"
                                  : arguments.front() + ": expected one file, OUT; found two");
    }
    if (isOfFile && line.has("--rate")) {
        throw UsageError("option --rate: levels has the sample rate of its input");
    }
    return {arguments.front(), isOfFile ? arguments[1] : "", arguments.back(), formatOf(arguments.back())};
}

// Every quality that fits the sample rate.
std::vector<std::int32_t> factorsAt(const Module& module, double rateHz) {
    std::vector<std::int32_t> factors;
    for (const std::int32_t factor : {1, 2, 4, 8}) {
        if (!qualityRefusal(factor, module.options().sampleRates, rateHz)) {
            factors.push_back(factor);
        }
    }
    return factors;
}

Plot plotOfEffect(const CommandLine& line, const std::string& kind, const std::shared_ptr<Module>& module,
                  const Settings& settings, const PlotProgress& progress) {
    const double rateHz = line.number<int>("--rate").value_or(static_cast<int>(kDefaultSampleRateHz));
    const std::int32_t quality = requiredQuality(line, *module, rateHz);
    const auto make = [&](std::int32_t factor) { return EffectMaker(module, settings, rateHz, factor); };
    const EffectMaker effect = make(quality);
    if (kind == "aliasing") {
        return plotAliasing(make, factorsAt(*module, rateHz), progress);
    }
    if (kind == "map") {
        return plotAliasingMap(effect, std::to_string(quality) + "x", progress);
    }
    return kind == "curves"      ? plotCurves(effect)
           : kind == "burst"     ? plotBurst(effect)
           : kind == "detector"  ? plotDetector(effect)
           : kind == "harmonics" ? plotHarmonics(effect)
                                 : plotTransfer(effect);
}

Plot plotOfFile(const CommandLine& line, const std::string& input, const std::shared_ptr<Module>& module,
                const Settings& settings, const PlotProgress& progress) {
    AudioReader reader(input, {.goOn = throwIfInterrupted, .acceptTruncated = line.has("--truncated")});
    requireVariantFor(*module, reader);
    const std::int32_t quality = requiredQuality(line, *module, reader.format().rateHz);
    Plot plot = plotFileLevels(module, settings, quality, reader, progress);
    if (!reader.truncation().empty()) {
        printWarning(reader.truncation());
    }
    return plot;
}

int runPlot(const CommandLine& line) {
    const PlotTask task = plotTask(line);
    const Settings settings(line);
    FileRoles roles;
    for (const std::string& file : settings.files()) {
        roles.addInput(file);
    }
    if (!task.input.empty()) {
        roles.addInput(task.input);
    }
    roles.addOutput(task.output);
    // Whether it can be written shows before anything is measured.
    AtomicFile file(task.output, line.has("--force") ? Overwrite::kReplace : Overwrite::kRefuse,
                    throwIfInterrupted);
    printWarnings(settings.warnings());
    auto module = loadEffect(line);
    ProgressBar bar(drawOnTerminal, isTerminal(standardError()),
                    [] { return terminalColumns(standardError()); });
    const PlotProgress progress = [&](double seconds, double share) { bar.advance(seconds, share); };
    const Plot plot = task.input.empty() ? plotOfEffect(line, task.kind, module, settings, progress)
                                         : plotOfFile(line, task.input, module, settings, progress);
    bar.finish();
    unloadModule(std::move(module));
    file.write(drawPlot(plot, task.format));
    file.commit();
    if (line.has("--json")) {
        printOut(jsonText(plotJson(plot)));
    }
    return kExitSuccess;
}

} // namespace

CommandEntry plotCommand() {
    return {.name = "plot",
            .summary = "Draw what is measured, or the levels of a file",
            .usage = kPlotUsage,
            .description = kPlotDescription,
            .arguments = kPlotArguments,
            .leastArguments = 2,
            .mostArguments = 3,
            .options = kPlotOptions,
            .examples = kPlotExamples,
            .run = runPlot};
}

} // namespace varno
