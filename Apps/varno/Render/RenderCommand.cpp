#include "Commands.h"

#include "AudioFile/Writer.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/LibraryMessages.h"
#include "Render/BatchRender.h"
#include "Render/DemoLoop.h"
#include "Settings/FileRoles.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "Settings/SettingsFiles.h"

#include <algorithm>
#include <exception>
#include <list>
#include <sys/stat.h>
#include <unistd.h>

namespace varno {
namespace {

constexpr std::string_view kRenderUsage[] = {
    "[OPTIONS] INPUT OUTPUT",
    "[OPTIONS] --out-dir DIR INPUT...",
    "[OPTIONS]",
};

// NOLINTBEGIN(bugprone-suspicious-missing-comma): a paragraph goes over several lines
constexpr std::string_view kRenderDescription[] = {
    "Renders INPUT through the effect into OUTPUT: a mono file through the mono variant, a stereo file "
    "through the stereo one, at sample rates from 16 to 384 kHz. OUTPUT has exactly the input's frames (and "
    "those of --tail), its sample rate, and its sample format unless --format or the extension of OUTPUT "
    "selects another. Files of more channels need --channels. The processed signal comes one sample later "
    "than the dry one, or more with --quality; "
    "--compensate removes this.",
    "Texts, pictures, cue sheets, markers and other data of INPUT are carried over as far as OUTPUT's "
    "container holds them, 64 MiB at most. A warning names what is not.",
    "With --out-dir every INPUT is rendered to a file of the same name in DIR, several side by side with "
    "--jobs, and reported as it ends. One that fails does not stop the others.",
    "Without INPUT and OUTPUT a demo is made: varno-demo-dry.wav, a loop of drums and bass (8 s, stereo, "
    "48 kHz), and varno-demo.wav, the same through the effect at a setting that is easy to hear. Both "
    "replace files of these names, but no links.",
    "Settings are applied in this order, and the later wins: the defaults (for the demo, its own setting), "
    "--state, --preset, --set in the order given, and --automate at its times.",
    "The same input and settings give the same bytes on every run and with every --block. A render that "
    "fails or is interrupted leaves no output, except in a pipe, and the input is never touched.",
    "A pipe or a device as OUTPUT, also as standard output, receives a WAV file while it is rendered. A pipe "
    "as INPUT is then rendered while it is written, if it is WAV, W64, RF64, AIFF, CAF or AU without "
    "compression: the delay is --block frames and the effect's one. Where the input does not state its "
    "length, the sizes in the output's header are all ones. Everything else is first kept in a temporary "
    "file (in TMPDIR): other inputs from pipes, pipes rendered into files, and WAV of more than 4 GB for a "
    "pipe.",
};
// NOLINTEND(bugprone-suspicious-missing-comma)

constexpr ArgumentEntry kRenderArguments[] = {
    {.name = "INPUT",
     .kind = ValueKind::kFile,
     .help = "Audio file: WAV, W64, RF64, AIFF, CAF, FLAC, Ogg and more; \"-\" is standard input."},
    {.name = "OUTPUT",
     .kind = ValueKind::kFile,
     .help = "File to write; its extension selects the container. \"-\" is standard output, a WAV file; the "
             "summary then goes to standard error."},
};

constexpr OptionEntry kRenderOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    kQualityOption,
    {.name = "--automate",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Move parameters during the render, each at the exact sample: CSV lines "
             "time_s,parameter,value with values as --set takes them."},
    {.name = "--save-preset",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Write the settings that the render starts with as a preset."},
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Write the settings that the render starts with as a state."},
    kTruncatedOption,
    {.name = "--out-dir",
     .value = "DIR",
     .kind = ValueKind::kDirectory,
     .group = "Output",
     .help = "Render every INPUT to a file of the same name in this folder."},
    {.name = "--container",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "wav rf64 w64 aiff caf au flac ogg opus",
     .group = "Output",
     .help = "With --out-dir: the container of all outputs, which is also their extension: wav, rf64, w64, "
             "aiff, caf, au, flac, ogg or opus. Default: what the name of each INPUT selects."},
    {.name = "--format",
     .value = "FORMAT",
     .kind = ValueKind::kChoice,
     .choices = "pcm16 pcm24 pcm32 float double",
     .group = "Output",
     .help = "Sample format: pcm16, pcm24, pcm32, float or double. Default: the input's."},
    {.name = "--dither",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "tpdf none",
     .group = "Output",
     .help = "What to add where the output has fewer bits than the input: tpdf (the default) or none."},
    {.name = "--tail",
     .value = "SECONDS",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 0, .most = 3600, .usual = 0},
     .group = "Output",
     .help = "Go on for this long after the end of the input, with silence going in."},
    {.name = "--compensate",
     .group = "Output",
     .help = "Remove the latency: OUTPUT begins with what becomes of INPUT's first frame."},
    {.name = "--force", .shortName = "-f", .group = "Output", .help = "Replace outputs that exist."},
    {.name = "--skip-existing",
     .excludes = "--force",
     .group = "Output",
     .help = "Leave out what has been rendered: inputs whose OUTPUT exists. Outputs appear whole or not at "
             "all, so that a command that was interrupted can be given again. Other settings than before "
             "are noticed with --record alone."},
    {.name = "--record",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Output",
     .help =
         "Append the summary of each output to this file, as a line of JSON with what the output was made "
         "of: version, settings, content of the input. --skip-existing then leaves out only what would "
         "be made of the same, and renders all else again."},
    {.name = "--dry-run",
     .shortName = "-n",
     .group = "Output",
     .help = "Check everything and report what would be written, but render and write nothing."},
    {.name = "--meters",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Reports",
     .help = "Write the four meters as CSV, one line per block: its start in seconds and the highest value "
             "of each meter in it."},
    {.name = "--json",
     .group = "Reports",
     .help = "Print the summary as JSON, one object per input, each on a line."},
    {.name = "--quiet",
     .shortName = "-q",
     .group = "Reports",
     .help = "Print errors only: no progress, no summary, no warnings."},
    {.name = "--block",
     .value = "FRAMES",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 1, .most = 16384, .usual = kUsualBlockFrames},
     .group = "Processing",
     .help = "Most frames that the effect receives at a time."},
    {.name = "--jobs",
     .shortName = "-j",
     .value = "N",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 1, .most = 256, .usual = kUsualJobs},
     .group = "Processing",
     .help = "Inputs rendered at the same time."},
    {.name = "--channels",
     .value = "GROUPS",
     .kind = ValueKind::kText,
     .group = "Processing",
     .help = "Process groups of channels, each with an effect of its own: 1-2,3,4 is channels 1 and 2 as "
             "stereo, 3 "
             "and 4 as mono. For files of any number of channels. The others are copied, as late as the "
             "processed ones."},
    {.name = "--mid-side",
     .group = "Processing",
     .help =
         "Process the middle and the sides of stereo files: half the sum of the channels as left, half "
         "their difference as right, and back after the effect. With LinkSw off, each has a gain reduction "
         "of its own."},
    kModuleOption,
    kHelpOption,
};

constexpr ExampleEntry kRenderExamples[] = {
    {"varno render", "Make the demo: varno-demo-dry.wav and varno-demo.wav."},
    {"varno render --set Hot=40% --set 'Ratio=#8' drums.wav drums-hot.wav",
     "More drive, and the curve with the fastest attack."},
    {"varno render --preset drum-bus --out-dir wet --jobs 4 stems/*.wav",
     "A folder of stems, four at a time."},
    {"varno render --channels 1-2,3,5-6 film.wav film-hot.wav",
     "Of a 5.1 file the pairs in front and behind and the centre; channel 4 is copied."},
    {"varno render --out-dir wet --container flac --skip-existing stems/*.wav",
     "To FLAC; only what is missing in the folder."},
    {"varno render --out-dir wet --skip-existing --record wet.jsonl stems/*.wav",
     "Only what has changed since the last time: stems, settings, program."},
    {"flac -dc song.flac | varno render --format pcm24 - - | flac - -o wet.flac", "In a pipe."},
    {"arecord -f cd | varno render --block 128 - - | aplay", "Live, until Ctrl-C."},
};

// The demo's settings, over the defaults: as loud as the dry loop, half its crest factor, no sample clips.
const std::vector<ParameterText> kDemoSettings = {
    {"Gain", "0.6"}, {"Rls", "0.3"}, {"Hot", "0.5"}, {"HSw", "1"}, {"Volume", "0.775"}};

AudioFormat demoFormat() {
    AudioFormat format;
    format.container = Container::kWav;
    format.sample = SampleFormat::kPcm24;
    format.rateHz = kDemoLoopRateHz;
    format.channels = kDemoLoopChannels;
    format.frames = kDemoLoopFrames;
    return format;
}

// The loop as a file that appears with the render.
class DemoFile {
public:
    DemoFile()
        : mWriter(kDemoDryFile, demoFormat(), {},
                  {kDemoOverwrite, Dither::kNone, SampleFormat::kFloat, throwIfInterrupted}) {
        const auto loop = makeDemoLoop();
        AudioBlock block(kDemoLoopChannels, static_cast<int>(kDemoLoopFrames));
        const float* channels[] = {loop[0].data(), loop[1].data()};
        block.setPlanar(channels, static_cast<int>(kDemoLoopFrames));
        mWriter.write(block, block.samples());
        mFile = &mWriter.finish();
    }

    AtomicFile& file() { return *mFile; }

private:
    AudioWriter mWriter;
    AtomicFile* mFile;
};

// The settings that the render starts with, as files that appear once it has succeeded.
class SavedSettings {
public:
    SavedSettings(const RenderOptions& options, Instance& instance) {
        if (options.savePreset) {
            add(options, *options.savePreset, presetText(instance));
        }
        if (options.saveState) {
            add(options, *options.saveState, stateBytes(instance));
        }
    }

    std::vector<AtomicFile*> files() {
        std::vector<AtomicFile*> files;
        for (auto& file : mFiles) {
            files.push_back(&file);
        }
        return files;
    }

private:
    void add(const RenderOptions& options, const std::string& path, const std::string& content) {
        if (!(options.skipExisting && !options.record && isMade(path))) {
            mFiles.emplace_back(path, options.overwrite, throwIfInterrupted).write(content);
        }
    }

    std::list<AtomicFile> mFiles;
};

// Also under another name, such as /dev/stdout. Where both are one device, such as /dev/null, it does not
// matter.
bool isStandardOutput(const std::optional<std::string>& path) {
    if (!path || *path == "-") {
        return path.has_value();
    }
    struct stat named {};
    struct stat standard {};
    return ::stat(path->c_str(), &named) == 0 && ::fstat(STDOUT_FILENO, &standard) == 0 &&
           !S_ISCHR(named.st_mode) && named.st_dev == standard.st_dev && named.st_ino == standard.st_ino;
}

bool writesToStandardOutput(const RenderOptions& options) {
    return isStandardOutput(options.tasks.front().output) || isStandardOutput(options.meters) ||
           isStandardOutput(options.savePreset) || isStandardOutput(options.saveState);
}

// Prints what the renders end with, each as it ends. A summary that cannot be printed is an error of its own,
// after which no other is tried; the outputs stay.
class ResultPrinter {
public:
    ResultPrinter(const RenderOptions& options, const RenderRecord* record)
        : mOptions(options),
          mRecord(record),
          mToStandardError(writesToStandardOutput(options)) {}

    // Where there is no memory for the text, the exit status reports it alone.
    void print(const RenderTask& task, const RenderResult& result) noexcept {
        try {
            printResult(task, result);
        } catch (const std::exception&) {
            addFailure(kExitWorkFailed);
        }
    }

    void fail(const std::string& error, int exitStatus) noexcept {
        printError(error);
        addFailure(exitStatus);
    }

    // Where failures differ, that of failed work.
    int exitStatus() const { return mStatus; }

private:
    void addFailure(int exitStatus) noexcept {
        mStatus = mStatus == kExitSuccess ? exitStatus : std::min(mStatus, exitStatus);
    }

    void printResult(const RenderTask& task, const RenderResult& result) {
        if (result.report) {
            keep(*result.report);
            printReport(*result.report);
            return;
        }
        fail(result.error, result.exitStatus);
        if (mOptions.json) {
            printSummary(failureJson(task, result.error));
        }
    }

    void printReport(const RenderReport& report) {
        if (mOptions.isDemo && !mOptions.json) {
            printSummary(std::string(kDemoDryFile) + "\n  the loop without the effect\n");
        }
        printSummary(mOptions.json ? reportJson(report) : reportText(report));
        if (!mOptions.quiet) {
            printWarnings(report.warnings);
        }
    }

    void printSummary(const std::string& text) {
        if (mOptions.quiet || mIsCutOff) {
            return;
        }
        if (mToStandardError) {
            printErr(text);
            return;
        }
        try {
            printOut(text);
        } catch (const FileError& error) {
            mIsCutOff = true;
            fail(error.what(), kExitWorkFailed);
        }
    }

    // Afterwards the output counts as rendered, so nothing of it may be missing.
    void keep(const RenderReport& report) {
        if (mRecord == nullptr || report.isDryRun || report.isSkipped) {
            return;
        }
        try {
            mRecord->add(reportJson(report));
        } catch (const FileError& error) {
            fail(error.what(), kExitWorkFailed);
        }
    }

    const RenderOptions& mOptions;
    const RenderRecord* mRecord;
    bool mToStandardError;
    bool mIsCutOff = false;
    int mStatus = kExitSuccess;
};

// The settings of several renders follow where all of them have succeeded.
void commitSettings(SavedSettings& saved, ResultPrinter& printer) {
    try {
        commitTogether(saved.files());
    } catch (const FileError& error) {
        printer.fail(error.what(), kExitWorkFailed);
    }
}

int renderAndPrint(RenderSession& session, RenderOptions& options, const Settings& settings,
                   const std::string& bundle) {
    // An instance of any format checks the settings before anything is written.
    const auto effect = session.makeEffect(kDemoLoopChannels, kDemoLoopRateHz);
    std::optional<RenderRecord> record;
    if (options.record) {
        record.emplace(*options.record, settingsDigest(options, settings, effect->instance, bundle));
        session.setRecord(*record);
    }
    SavedSettings saved(options, effect->instance);
    std::vector<AtomicFile*> others = saved.files();
    std::optional<DemoFile> dry;
    if (options.isDemo) {
        others.push_back(&dry.emplace().file());
        options.tasks.front().content = dry->file().pathBeforeCommit();
    }
    ResultPrinter printer(options, session.record());
    bool allSucceeded = true;
    renderAll(session, others, [&](const RenderTask& task, const RenderResult& result) {
        allSucceeded = allSucceeded && result.report.has_value();
        printer.print(task, result);
    });
    if (options.tasks.size() > 1 && !options.dryRun && allSucceeded) {
        commitSettings(saved, printer);
    }
    return printer.exitStatus();
}

// Before anything is written: an output under another name of an input would destroy what is read.
void checkRenderFiles(const RenderOptions& options, const Settings& settings) {
    FileRoles files;
    for (const auto& path : settings.files()) {
        files.addInput(path);
    }
    if (options.automation) {
        files.addInput(*options.automation);
    }
    for (const auto& task : options.tasks) {
        if (!options.isDemo) {
            files.addInput(task.input);
        }
    }
    if (options.isDemo) {
        files.addOutput(kDemoDryFile);
    }
    for (const auto& task : options.tasks) {
        files.addOutput(task.output);
    }
    for (const auto* output : {&options.meters, &options.record, &options.savePreset, &options.saveState}) {
        if (*output) {
            files.addOutput(**output);
        }
    }
}

int runRender(const CommandLine& line) {
    RenderOptions options = renderOptions(line);
    const Settings settings(line, options.isDemo ? kDemoSettings : std::vector<ParameterText>{});
    checkRenderFiles(options, settings);
    if (!options.quiet) {
        printWarnings(settings.warnings());
    }
    const LibrariesSilenced duringTheWork;
    auto module = loadEffect(line);
    int status = kExitSuccess;
    {
        RenderSession session(options, settings, module);
        status = renderAndPrint(session, options, settings, namedModule(line).value_or("").string());
    }
    unloadModule(std::move(module));
    return status;
}

} // namespace

CommandEntry renderCommand() {
    return {.name = "render",
            .summary = "Render audio files through the effect",
            .usage = kRenderUsage,
            .description = kRenderDescription,
            .arguments = kRenderArguments,
            .leastArguments = 0,
            .mostArguments = kAnyNumber,
            .options = kRenderOptions,
            .examples = kRenderExamples,
            .run = runRender};
}

} // namespace varno
