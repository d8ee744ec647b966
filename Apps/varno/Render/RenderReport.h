#ifndef VARNO_APPS_VARNO_RENDER_RENDERREPORT_H
#define VARNO_APPS_VARNO_RENDER_RENDERREPORT_H

#include "AudioFile/Format.h"
#include "Render/ChannelGroups.h"
#include "Render/RenderOptions.h"
#include "Render/RenderRecord.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What became of one group of a file's channels.
struct GroupReport {
    ChannelGroup channels;
    double peakIn = 0.0;  ///< Magnitude of usable samples, full scale 1.
    double peakOut = 0.0; ///< Before the output is limited to full scale.
    /// The largest; nothing where the effect has no such meter or is bypassed throughout.
    std::optional<double> gainReductionDB;
    std::int64_t unusableSamples = 0; ///< Of the input: not a number, infinite or above 1e30.
};

/// The result of rendering one file.
struct RenderReport {
    RenderTask task;
    AudioFormat format;             ///< Of the output.
    std::int32_t quality = 1;       ///< Factor of oversampling.
    std::int64_t latencyFrames = 0; ///< Of the output against the input.
    bool isDryRun = false;
    bool isSkipped = false; ///< The output existed; all that follows is as it was made.
    double elapsedS = 0.0;  ///< From opening the input to completing the output.
    /// What was processed: all channels as one group, or the groups of --channels.
    std::vector<GroupReport> groups;
    bool hasChosenGroups = false; ///< By --channels; other channels are copied.
    std::int64_t clippedSamples = 0;
    std::vector<std::string> warnings;  ///< One line each.
    std::optional<RenderOrigin> origin; ///< Where a record is kept.
};

/// The largest levels and the number of unusable samples of all groups together.
GroupReport ofAllGroups(const RenderReport& report);

/// The summary for people, lines of at most 80 columns unless a name is longer.
std::string reportText(const RenderReport& report);

/// The summary for scripts: one JSON object on a line. A level of silence is null.
std::string reportJson(const RenderReport& report);

/// The report for scripts about a file that failed: one JSON object on a line.
std::string failureJson(const RenderTask& task, const std::string& error);

} // namespace varno

#endif
