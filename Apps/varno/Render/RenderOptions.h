#ifndef VARNO_APPS_VARNO_RENDER_RENDEROPTIONS_H
#define VARNO_APPS_VARNO_RENDER_RENDEROPTIONS_H

#include "AudioFile/Format.h"
#include "AudioFile/Quantizer.h"
#include "CommandLine/CommandLine.h"
#include "Files/AtomicFile.h"
#include "Render/ChannelGroups.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// One file to be rendered into another.
struct RenderTask {
    std::string input;
    std::string output;
    std::string content = {}; ///< Path of the input's content while it has no name yet; else empty.
};

inline constexpr const char* kDemoDryFile = "varno-demo-dry.wav";
inline constexpr const char* kDemoFile = "varno-demo.wav";
/// The user has not given these names, so what a link names is not the user's choice.
inline constexpr Overwrite kDemoOverwrite = Overwrite::kReplaceFile;

inline constexpr int kUsualBlockFrames = 512;
inline constexpr int kUsualJobs = 1;

/// The command line of `varno render`.
struct RenderOptions {
    std::vector<RenderTask> tasks;
    bool isDemo = false; ///< The one task is the demo, whose input is still to be made.
    int blockFrames = kUsualBlockFrames;
    int jobs = kUsualJobs;
    std::int32_t quality = 1; ///< Factor of oversampling.
    bool compensate = false;  ///< Outputs without the latency.
    bool midSide = false;     ///< The effect processes mid and side in the place of left and right.
    std::vector<ChannelGroup>
        channels; ///< What is processed of each file; none: all, of mono and stereo files.
    double tailS = 0.0;
    std::optional<SampleFormat> format; ///< Nothing: the input's.
    Dither dither = Dither::kTpdf;
    Overwrite overwrite = Overwrite::kRefuse;
    bool skipExisting = false;    ///< Tasks whose output exists are done; with a record, those that it has.
    bool acceptTruncated = false; ///< Inputs that are shorter than their headers state.
    bool dryRun = false;
    bool quiet = false;
    bool json = false;
    std::optional<std::string> automation; ///< Paths of files.
    std::optional<std::string> meters;
    std::optional<std::string> record;
    std::optional<std::string> savePreset;
    std::optional<std::string> saveState;
};

/// @throws UsageError where a value is out of range, arguments are missing or too many, or options contradict
///         each other
RenderOptions renderOptions(const CommandLine& line);

} // namespace varno

#endif
