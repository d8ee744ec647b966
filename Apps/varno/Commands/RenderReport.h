#ifndef VARNO_APPS_VARNO_COMMANDS_RENDERREPORT_H
#define VARNO_APPS_VARNO_COMMANDS_RENDERREPORT_H

#include "AudioFile/Format.h"
#include "RenderOptions.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What came of one file.
struct RenderReport {
    RenderTask task;
    AudioFormat format; // of the output
    bool isDryRun = false;
    double elapsedS = 0.0;                 // from opening the input to completing the output
    double peakIn = 0.0;                   // magnitude, full scale 1
    double peakOut = 0.0;                  // before the output is limited to full scale
    std::optional<double> gainReductionDB; // the largest; nothing where the effect has no such meter
    std::int64_t clippedSamples = 0;
    std::vector<std::string> warnings; // one line each
};

/// The summary for people, lines of at most 80 columns unless a name is longer.
std::string reportText(const RenderReport& report);

/// The summary for scripts: one JSON object on a line. A level of silence is null.
std::string reportJson(const RenderReport& report);

/// What scripts are told of a file that failed: one JSON object on a line.
std::string failureJson(const RenderTask& task, const std::string& error);

/// Level of a magnitude in dBFS; -infinity for 0.
double decibels(double magnitude);

} // namespace varno

#endif
