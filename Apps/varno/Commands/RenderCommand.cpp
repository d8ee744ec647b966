#include "AudioFile/Reader.h"
#include "AudioFile/Writer.h"
#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "DemoLoop.h"
#include "Interruption.h"
#include "ModuleLoading.h"
#include "RenderJobs.h"

#include <algorithm>
#include <list>

namespace varno {
namespace {

// The demo's own setting, over the defaults: as loud as the dry loop, half its crest factor, and no sample
// clips.
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

void writeDemoLoop(const std::string& path) {
    const auto loop = makeDemoLoop();
    AudioBlock block(kDemoLoopChannels, static_cast<int>(kDemoLoopFrames));
    const float* channels[] = {loop[0].data(), loop[1].data()};
    block.setPlanar(channels, static_cast<int>(kDemoLoopFrames));
    AudioWriter writer(path, demoFormat(), {},
                       {Overwrite::kReplace, Dither::kNone, SampleFormat::kFloat, throwIfInterrupted});
    writer.write(block, block.samples());
    writer.commit();
}

// The settings that the render starts with, as files that appear once it has succeeded.
class SavedSettings {
public:
    SavedSettings(const RenderOptions& options, Instance& instance) {
        if (options.savePreset) {
            add(*options.savePreset, options.overwrite, presetText(instance));
        }
        if (options.saveState) {
            add(*options.saveState, options.overwrite, stateBytes(instance));
        }
    }

    void commit() {
        for (auto& file : mFiles) {
            file.commit();
        }
    }

private:
    void add(const std::string& path, Overwrite overwrite, const std::string& content) {
        mFiles.emplace_back(path, overwrite, throwIfInterrupted).write(content);
    }

    std::list<AtomicFile> mFiles;
};

// Files that cannot be opened count as nothing here; rendering them tells why.
double totalDurationS(const RenderOptions& options) {
    double total = 0.0;
    for (const auto& task : options.tasks) {
        try {
            total += AudioReader(task.input, throwIfInterrupted).format().durationS() + options.tailS;
        } catch (const AudioFileError&) {
        }
    }
    return total;
}

bool writesToStandardOutput(const RenderOptions& options) {
    const std::optional<std::string> standardOutput = "-";
    return options.tasks.front().output == standardOutput || options.meters == standardOutput ||
           options.savePreset == standardOutput || options.saveState == standardOutput;
}

void printSummary(const RenderOptions& options, const std::string& text) {
    if (writesToStandardOutput(options)) {
        printErr(text);
    } else {
        printOut(text);
    }
}

void printReport(const RenderOptions& options, const RenderReport& report) {
    if (options.quiet) {
        return;
    }
    if (options.isDemo && !options.json) {
        printSummary(options, std::string(kDemoDryFile) + "\n  the loop without the effect\n");
    }
    printSummary(options, options.json ? reportJson(report) : reportText(report));
    for (const auto& warning : report.warnings) {
        printWarning(warning);
    }
}

// @return the exit status: that of the failures, where it is not the same that of failed work
int printResults(const RenderOptions& options, const std::vector<RenderResult>& results) {
    int status = kExitSuccess;
    for (std::size_t i = 0; i < results.size(); ++i) {
        if (results[i].report) {
            printReport(options, *results[i].report);
            continue;
        }
        if (options.json && !options.quiet) {
            printSummary(options, failureJson(options.tasks[i], results[i].error));
        }
        printError(results[i].error);
        status = status == kExitSuccess ? results[i].exitStatus : std::min(status, results[i].exitStatus);
    }
    return status;
}

int renderAndPrint(RenderSession& session) {
    const auto& options = session.options();
    // Any instance will do to see whether the settings are right before anything is written.
    const auto instance = session.makeInstance(kDemoLoopChannels, kDemoLoopRateHz);
    std::optional<SavedSettings> saved;
    if (!options.dryRun) {
        saved.emplace(options, *instance);
    }
    if (options.isDemo) {
        writeDemoLoop(kDemoDryFile);
    }
    if (options.tasks.size() > 1 && session.showsProgress()) {
        session.beginProgress(totalDurationS(options));
    }
    const auto results = renderAll(session);
    session.endProgress();
    throwIfInterrupted();
    const int status = printResults(options, results);
    if (saved && status == kExitSuccess) {
        saved->commit();
    }
    return status;
}

} // namespace

int runRender(const CommandLine& line) {
    RenderOptions options = renderOptions(line);
    if (options.isDemo) {
        options.overwrite = Overwrite::kReplace;
    }
    const Settings settings(line, options.isDemo ? kDemoSettings : std::vector<ParameterText>{});
    auto module = loadModule(line);
    int status = kExitSuccess;
    {
        RenderSession session(options, settings, module);
        status = renderAndPrint(session);
    }
    unloadModule(std::move(module));
    return status;
}

} // namespace varno
