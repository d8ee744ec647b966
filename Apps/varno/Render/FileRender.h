#ifndef VARNO_APPS_VARNO_RENDER_FILERENDER_H
#define VARNO_APPS_VARNO_RENDER_FILERENDER_H

#include "AudioFile/Block.h"
#include "AudioFile/Reader.h"
#include "AudioFile/Writer.h"
#include "Files/AtomicFile.h"
#include "Render/BlockProcessor.h"
#include "Render/ChannelEffect.h"
#include "Render/CsvFiles.h"
#include "Render/ProgressBar.h"
#include "Render/RenderReport.h"
#include "Render/RenderSession.h"

#include <chrono>
#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace varno {

/// Outputs that are complete but for their names.
using OutputFiles = std::span<AtomicFile* const>;

/// The render of one file into another, a part at a time. Nothing of the output appears before its end. One
/// thread, several renders at a time.
class FileRender {
public:
    /// Opens input and output and makes the instance. @throws CommandError that names the file, option or
    /// parameter; FileError; HostError
    FileRender(RenderSession& session, const RenderTask& task);
    FileRender(const FileRender&) = delete;
    FileRender& operator=(const FileRender&) = delete;
    ~FileRender();

    const AudioFormat& format() const { return mReport.format; }
    /// What a dry run reports; instead of all that follows.
    RenderReport plan();

    /// Reads the next frames, then the tail. @return false at the end @throws Interrupted; as the constructor
    bool read();
    /// The frames just read, to be processed in place by the processor or together with those of others.
    float* const* samples() { return mBlock->samples(); }
    int frames() const { return mBlock->frames(); }
    BlockProcessor& processor() { return mEffects.front().processor(); }
    /// Processes them, in the place of others that use samples() and processor(). Files with --channels are
    /// processed by this alone.
    void process();
    /// Writes them. @throws as read()
    void write();

    /// At the end: the output appears with its meters and the others, or not at all. @throws as read()
    RenderReport finish(OutputFiles others);

private:
    bool readInputOrTail();
    void makeEffects(RenderSession& session);

    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
    const RenderOptions& mOptions;
    FileProgress mProgress;
    bool mIsToPipe;
    /// Of the input before it is read: where it changes meanwhile, it is rendered again the next time.
    std::optional<RenderOrigin> mOrigin;
    AudioReader mReader;
    std::int64_t mTailFrames = 0; ///< Still to come.
    RenderReport mReport;
    std::list<ChannelEffect> mEffects;
    std::map<int, HeldSamples> mCopied; ///< The channels that no effect processes.
    std::int64_t mLatencyFrames = 0;    ///< Of the effect, still to be left out of the output.
    std::vector<AutomationStep> mSteps;
    std::optional<AudioWriter> mWriter;
    std::optional<MeterFile> mMeterFile;
    std::optional<AudioBlock> mBlock;
    bool mWasTruncated = false;
    std::int64_t mFrames = 0;
};

/// Renders one file into another, which appears together with its meters and the other files or not at all;
/// checks everything and writes nothing where the session is a dry run. Several threads at a time. [any]
/// @throws CommandError that names the file, option or parameter; HostError
RenderReport renderFile(RenderSession& session, const RenderTask& task, OutputFiles others);

} // namespace varno

#endif
