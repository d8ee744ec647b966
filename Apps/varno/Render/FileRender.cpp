#include "Render/FileRender.h"

#include "AudioFile/OutputFormat.h"
#include "AudioFile/Reader.h"
#include "AudioFile/Writer.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "DemoGain_ParameterTable.h"
#include "Render/BlockProcessor.h"
#include "Render/CsvFiles.h"
#include "Render/MetadataText.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

namespace varno {
namespace {

constexpr int kReadFrames = 32768; // at a time, of files that are complete

// Also the rate, which is the same for all channels.
void requireChannels(const Module& module, const AudioReader& reader, const RenderOptions& options) {
    const int channels = reader.format().channels;
    const std::string has =
        reader.name() + ": has " + std::to_string(channels) + (channels == 1 ? " channel; " : " channels; ");
    if (options.channels.empty()) {
        requireVariantFor(module, reader, "; option --channels processes groups of them");
        if (options.midSide && channels == 1) {
            throw WorkError(has + "option --mid-side needs 2 (stereo)");
        }
        return;
    }
    requireRateFor(module, reader);
    for (const ChannelGroup& group : options.channels) {
        if (const int most = std::ranges::max(group); most >= channels) {
            throw WorkError(has + "option --channels names " + std::to_string(most + 1));
        }
    }
}

// The points of --automate as values for the instance.
std::vector<AutomationStep> automationSteps(const std::string& path, const Instance& instance,
                                            double rateHz) {
    std::vector<AutomationStep> steps;
    std::vector<AutomationPoint> points = readAutomationFile(path, rateHz);
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
        steps.push_back({point.frame, point.parameter, normalized});
    }
    return steps;
}

// Once the length of the output is known.
void warnOfLateSteps(const std::vector<AutomationStep>& steps, const std::string& path,
                     RenderReport& report) {
    const auto late = std::ranges::count_if(
        steps, [&](const AutomationStep& step) { return step.frame >= report.format.frames; });
    if (late > 0) {
        report.warnings.push_back(path + ": " + std::to_string(late) +
                                  " of its lines come after the end of " + report.task.output);
    }
}

std::vector<std::string> meterNames(const Instance& instance) {
    std::vector<std::string> names;
    for (const auto id : instance.meters().ids()) {
        names.push_back(codeText(id));
    }
    return names;
}

// Of what lies behind the samples of a pipe there is nothing to be done: the output has left.
void addWarningOfRest(AudioReader& reader, RenderReport& report) {
    constexpr std::int64_t kPaddingBytes = 1;
    const std::int64_t bytes = reader.skipRest();
    if (bytes > kPaddingBytes) {
        report.warnings.push_back(report.task.input + ": " + std::to_string(bytes) +
                                  " bytes after its samples are not carried over, since " +
                                  report.task.output + " is a pipe");
    }
}

void addSampleWarnings(RenderReport& report) {
    if (const std::int64_t unusable = ofAllGroups(report).unusableSamples; unusable > 0) {
        report.warnings.push_back(
            report.task.input + ": " + std::to_string(unusable) +
            " samples are not a number, infinite or above 1e30 in magnitude; the effect "
            "processes them as silence");
    }
    if (report.clippedSamples > 0) {
        report.warnings.push_back(report.task.output + ": " + std::to_string(report.clippedSamples) +
                                  " samples clipped; lower Volume, or use --format float");
    }
}

// What the render is to write. The number of frames may still be unknown.
RenderReport plannedReport(const RenderOptions& options, const RenderTask& task, const AudioReader& reader,
                           std::int64_t tailFrames) {
    const AudioFormat& input = reader.format();
    const std::int64_t frames = input.frames == kUnknownFrames ? kUnknownFrames : input.frames + tailFrames;
    const auto [format, note] = chooseOutputFormat(input, task.output, options.format, frames);
    RenderReport report;
    report.task = task;
    report.format = format;
    report.quality = options.quality;
    report.isDryRun = options.dryRun;
    report.hasChosenGroups = !options.channels.empty();
    for (const std::string& warning : {reader.truncation(), note}) {
        if (!warning.empty()) {
            report.warnings.push_back(warning);
        }
    }
    return report;
}

void commitOutputs(AudioWriter& writer, std::optional<MeterFile>& meterFile, OutputFiles others) {
    std::vector<AtomicFile*> files = {&writer.finish()};
    if (meterFile) {
        files.push_back(&meterFile->finish());
    }
    files.insert(files.end(), others.begin(), others.end());
    throwIfInterrupted();
    commitTogether(files);
}

} // namespace

FileRender::FileRender(RenderSession& session, const RenderTask& task)
    : mOptions(session.options()),
      mProgress(session.progress(), mOptions.tasks.size()),
      // A pipe receives the audio as it is made, and a pipe as input is read as it is written then.
      mIsToPipe(!mOptions.dryRun && isPipeOutput(task.output)),
      mOrigin(session.record() == nullptr ? std::nullopt : std::optional(session.record()->originOf(task))),
      mReader(task.content.empty() ? task.input : task.content, {.goOn = throwIfInterrupted,
                                                                 .acceptTruncated = mOptions.acceptTruncated,
                                                                 .whileWritten = mIsToPipe}) {
    requireChannels(session.module(), mReader, mOptions);
    if (const auto refusal = qualityRefusal(mOptions.quality, session.module().options().sampleRates,
                                            mReader.format().rateHz)) {
        throw WorkError(mReader.name() + ": " + *refusal);
    }
    mTailFrames = std::llround(mOptions.tailS * mReader.format().rateHz);
    mReport = plannedReport(mOptions, task, mReader, mTailFrames);
    mReport.origin = std::move(mOrigin);
    const double rateHz = mReport.format.rateHz;
    makeEffects(session);
    const Instance& instance = mEffects.front().instance();
    mReport.latencyFrames = mEffects.front().latencyFrames();
    if (mOptions.compensate) {
        mLatencyFrames = std::exchange(mReport.latencyFrames, 0);
        mTailFrames += mLatencyFrames;
    }
    if (mOptions.automation) {
        mSteps = automationSteps(*mOptions.automation, instance, rateHz);
    }
    mWriter.emplace(task.output, mReport.format, mReader.metadata(),
                    AudioWriter::Options{mOptions.isDemo ? kDemoOverwrite : mOptions.overwrite,
                                         mOptions.dither, mReader.format().sample, throwIfInterrupted,
                                         mIsToPipe ? Delivery::kAsWritten : Delivery::kWhole});
    const auto lost = metadataWarnings(mWriter->metadataLeftOut(), task, mReport.format.container);
    mReport.warnings.insert(mReport.warnings.end(), lost.begin(), lost.end());
    for (ChannelEffect& effect : mEffects) {
        effect.start(mSteps);
    }
    if (mOptions.meters) {
        mMeterFile.emplace(*mOptions.meters, mOptions.overwrite, rateHz, meterNames(instance));
        processor().setBlockListener(
            [this](std::int64_t frame, std::span<const float> meters) { mMeterFile->addRow(frame, meters); });
    }
    if (!mOptions.dryRun) {
        mBlock.emplace(mReport.format.channels,
                       mReader.isWhileWritten() ? mOptions.blockFrames : kReadFrames);
    }
    mWasTruncated = !mReader.truncation().empty();
}

FileRender::~FileRender() = default;

void FileRender::makeEffects(RenderSession& session) {
    const AudioFormat& format = mReport.format;
    std::vector<ChannelGroup> groups = mOptions.channels;
    if (groups.empty()) {
        groups.push_back(allChannels(format.channels));
    }
    for (const ChannelGroup& group : groups) {
        mEffects.emplace_back(session, group, format.rateHz);
        mReport.groups.emplace_back().channels = group;
    }
    for (const int channel : channelsOfNoGroup(groups, format.channels)) {
        mCopied.emplace(channel, mEffects.front().latencyFrames());
    }
}

bool FileRender::read() {
    if (!readInputOrTail()) {
        return false;
    }
    throwIfInterrupted();
    for (ChannelEffect& effect : mEffects) {
        effect.prepare(*mBlock);
    }
    return true;
}

void FileRender::process() {
    for (ChannelEffect& effect : mEffects) {
        effect.process(*mBlock);
    }
}

// Input, then silence.
bool FileRender::readInputOrTail() {
    if (mReader.read(*mBlock) > 0) {
        return true;
    }
    const auto frames = std::min<std::int64_t>(mTailFrames, mBlock->capacityFrames());
    mTailFrames -= frames;
    mBlock->setSilence(static_cast<int>(frames));
    return frames > 0;
}

void FileRender::write() {
    for (ChannelEffect& effect : mEffects) {
        effect.restore(*mBlock);
    }
    for (auto& [channel, held] : mCopied) {
        mBlock->delay(channel, held);
    }
    const auto early = static_cast<int>(std::min<std::int64_t>(mLatencyFrames, mBlock->frames()));
    mLatencyFrames -= early;
    mBlock->removeFirst(early);
    for (ChannelEffect& effect : mEffects) {
        effect.measure(*mBlock);
    }
    mWriter->write(*mBlock, mBlock->samples());
    mFrames += mBlock->frames();
    mProgress.advance(static_cast<double>(mBlock->frames()) / mReport.format.rateHz,
                      mReport.format.durationS());
}

RenderReport FileRender::plan() {
    warnOfLateSteps(mSteps, mOptions.automation.value_or(""), mReport);
    return mReport;
}

RenderReport FileRender::finish(OutputFiles others) {
    for (ChannelEffect& effect : mEffects) {
        effect.processor().finish();
    }
    mReport.format.frames = mFrames;
    warnOfLateSteps(mSteps, mOptions.automation.value_or(""), mReport);
    if (!mWasTruncated && !mReader.truncation().empty()) {
        mReport.warnings.push_back(mReader.truncation());
    }
    std::ranges::transform(mEffects, mReport.groups.begin(), &ChannelEffect::report);
    commitOutputs(*mWriter, mMeterFile, others);
    mReport.clippedSamples = mWriter->clippedSamples();
    addWarningOfRest(mReader, mReport);
    addSampleWarnings(mReport);
    mReport.elapsedS = std::chrono::duration<double>(std::chrono::steady_clock::now() - mStart).count();
    return std::move(mReport); // copying could fail now that the output is there
}

RenderReport renderFile(RenderSession& session, const RenderTask& task, OutputFiles others) {
    throwIfInterrupted();
    FileRender render(session, task);
    if (session.options().dryRun) {
        return render.plan();
    }
    while (render.read()) {
        render.process();
        render.write();
    }
    return render.finish(others);
}

} // namespace varno
