#include "Render/FileRender.h"

#include "AudioFile/OutputFormat.h"
#include "AudioFile/Reader.h"
#include "AudioFile/Writer.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "DemoGain_MeterLaw.h"
#include "DemoGain_ParameterTable.h"
#include "Render/BlockProcessor.h"
#include "Render/CsvFiles.h"
#include "Render/SampleLevels.h"
#include "Settings/ModuleLoading.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

namespace varno {
namespace {

constexpr int kReadFrames = 32768; // decoded, processed and encoded at a time

// The points of --automate as values for the instance. Points at or after the end of the audio are left out,
// with a warning.
std::vector<AutomationStep> automationSteps(const std::string& path, const Instance& instance,
                                            const AudioFormat& format, RenderReport& report) {
    std::vector<AutomationStep> steps;
    std::size_t late = 0;
    std::vector<AutomationPoint> points = readAutomationFile(path, format.rateHz);
    // Those of equal time that depend on others last, as on the command line.
    std::stable_sort(points.begin(), points.end(), [](const auto& left, const auto& right) {
        return std::pair(left.frame, dependsOnOthers(left.parameter)) <
               std::pair(right.frame, dependsOnOthers(right.parameter));
    });
    DemoGain_ValueText::Settings settings = unitSettings(instance);
    for (const auto& point : points) {
        const std::string where = path + ", line " + std::to_string(point.line);
        const ParameterText text{point.parameter, point.value};
        const double normalized = normalizedFromText(instance, text, settings, where, kExitWorkFailed);
        if (point.parameter == cDemoGain_RatioID) {
            settings.mRatio = static_cast<float>(normalized);
        } else if (point.parameter == cDemoGain_UKID) {
            settings.mUK = static_cast<float>(normalized);
        }
        if (point.frame < format.frames) {
            steps.push_back({point.frame, point.parameter, normalized});
        } else {
            ++late;
        }
    }
    if (late > 0) {
        report.warnings.push_back(path + ": " + std::to_string(late) +
                                  " of its lines come after the end of " + report.task.output);
    }
    return steps;
}

std::vector<std::string> meterNames(const Instance& instance) {
    std::vector<std::string> names;
    for (const auto id : instance.meters().ids()) {
        names.push_back(codeText(id));
    }
    return names;
}

// Nothing for a render that is bypassed throughout. The effect describes its meters in the order of the taps.
std::optional<double> gainReductionDB(const Instance& instance, const BlockProcessor& processor) {
    if (!processor.wasActive()) {
        return std::nullopt;
    }
    std::optional<double> result;
    const auto& largest = processor.largestMeters();
    const auto& meters = instance.effect().meters;
    for (std::size_t tap = 0; tap < std::min(meters.size(), largest.size()); ++tap) {
        if (integerProperty(meters[tap].properties, AAX_eProperty_Meter_Kind) ==
            AAX_eMeterKind_GainReduction) {
            result = std::max(result.value_or(0.0), largest[tap] / -double{DemoGain::kMeterPerDB});
        }
    }
    return result;
}

// Input, then silence up to the length of the output.
class Source {
public:
    Source(AudioReader& reader, std::int64_t frames)
        : mReader(reader),
          mTailFrames(frames - reader.format().frames) {}

    bool read(AudioBlock& block) {
        if (mReader.read(block) > 0) {
            return true;
        }
        const auto frames = std::min<std::int64_t>(mTailFrames, block.capacityFrames());
        mTailFrames -= frames;
        block.setSilence(static_cast<int>(frames));
        return frames > 0;
    }

private:
    AudioReader& mReader;
    std::int64_t mTailFrames;
};

void renderFrames(FileProgress& progress, Source source, BlockProcessor& processor, AudioWriter& writer,
                  RenderReport& report) {
    AudioBlock block(report.format.channels, kReadFrames);
    SampleLevels in;
    SampleLevels out;
    while (source.read(block)) {
        throwIfInterrupted();
        in.add(block);
        processor.process(block.samples(), block.frames());
        out.add(block);
        writer.write(block, block.samples());
        progress.advance(static_cast<double>(block.frames()) / report.format.rateHz,
                         report.format.durationS());
    }
    processor.finish();
    report.peakIn = in.peak();
    report.peakOut = out.peak();
    report.unusableSamples = in.unusable();
}

void addWarnings(const AudioWriter& writer, RenderReport& report) {
    if (report.unusableSamples > 0) {
        report.warnings.push_back(
            report.task.input + ": " + std::to_string(report.unusableSamples) +
            " samples are not a number, infinite or above 1e30 in magnitude; the effect "
            "processes them as silence");
    }
    const std::string output = report.task.output + ": ";
    if (report.clippedSamples > 0) {
        report.warnings.push_back(output + std::to_string(report.clippedSamples) +
                                  " samples clipped; lower Volume, or use --format float");
    }
    const std::string reason =
        std::string(" not carried over, since ") + containerName(report.format.container) + " cannot hold it";
    for (const auto& item : writer.metadataLeftOut()) {
        report.warnings.push_back(std::string(output).append(item).append(reason));
    }
}

} // namespace

RenderReport renderFile(RenderSession& session, const RenderTask& task, OutputFiles others) {
    throwIfInterrupted();
    const auto start = std::chrono::steady_clock::now();
    const auto& options = session.options();
    FileProgress progress(session.progress(), options.tasks.size());
    AudioReader reader(task.input, {.goOn = throwIfInterrupted, .acceptTruncated = options.acceptTruncated});
    requireVariantFor(session.module(), reader);

    const auto tailFrames = std::llround(options.tailS * reader.format().rateHz);
    const std::int64_t frames = reader.format().frames + tailFrames;
    const auto [format, note] = chooseOutputFormat(reader.format(), task.output, options.format, frames);
    RenderReport report;
    report.task = task;
    report.format = format;
    report.format.frames = frames;
    report.isDryRun = options.dryRun;
    if (!reader.truncation().empty()) {
        report.warnings.push_back(reader.truncation());
    }
    if (!note.empty()) {
        report.warnings.push_back(note);
    }

    const auto instance = session.makeInstance(format.channels, format.rateHz);
    std::vector<AutomationStep> steps;
    if (options.automation) {
        steps = automationSteps(*options.automation, *instance, report.format, report);
    }
    AudioWriter writer(task.output, report.format, reader.metadata(),
                       {options.overwrite, options.dither, reader.format().sample, throwIfInterrupted});
    std::optional<MeterFile> meterFile;
    BlockProcessor processor(*instance, std::move(steps), options.blockFrames);
    if (options.meters) {
        meterFile.emplace(*options.meters, options.overwrite, format.rateHz, meterNames(*instance));
        processor.setBlockListener(
            [&](std::int64_t frame, std::span<const float> meters) { meterFile->addRow(frame, meters); });
    }
    if (options.dryRun) {
        return report;
    }

    renderFrames(progress, Source(reader, frames), processor, writer, report);
    std::vector<AtomicFile*> files = {&writer.finish()};
    if (meterFile) {
        files.push_back(&meterFile->finish());
    }
    files.insert(files.end(), others.begin(), others.end());
    throwIfInterrupted();
    commitTogether(files);
    report.clippedSamples = writer.clippedSamples();
    report.gainReductionDB = gainReductionDB(*instance, processor);
    addWarnings(writer, report);
    report.elapsedS = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return report;
}

} // namespace varno
