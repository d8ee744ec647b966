#include "RenderReport.h"

#include "TextLayout.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace varno {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kDecibelsPerDecade = 20.0;
constexpr double kHzPerKilohertz = 1000.0;
constexpr int kIndent = 2; // of what is said about a file below its name

__attribute__((format(printf, 1, 2))) std::string formatted(const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

std::string variantName(int channels) {
    return channels == 1 ? "mono" : "stereo";
}

std::string levelText(double magnitude) {
    return magnitude > 0.0 ? formatted("%.1f dBFS", decibels(magnitude)) : "silent";
}

double speed(const RenderReport& report) {
    return report.elapsedS > 0.0 ? report.format.durationS() / report.elapsedS : 0.0;
}

// What the file is: "8.000 s, stereo, 48 kHz, WAV pcm24"
std::string formatText(const AudioFormat& format) {
    return formatted("%.3f s, %s, %g kHz, %s %s", format.durationS(), variantName(format.channels).c_str(),
                     format.rateHz / kHzPerKilohertz, containerName(format.container),
                     sampleFormatName(format.sample));
}

std::string measuredText(const RenderReport& report) {
    std::string text = "peak " + levelText(report.peakIn) + " in, " + levelText(report.peakOut) + " out";
    if (report.gainReductionDB) {
        text += formatted("; gain reduction %.1f dB at most", *report.gainReductionDB);
    }
    return text + formatted("; %lld clipped", static_cast<long long>(report.clippedSamples));
}

Json levelJson(double magnitude) {
    return magnitude > 0.0 ? Json(decibels(magnitude)) : Json();
}

// Names of files need not be UTF-8; what is not is replaced.
std::string lineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace

double decibels(double magnitude) {
    return kDecibelsPerDecade * std::log10(magnitude);
}

std::string reportText(const RenderReport& report) {
    std::string text = report.task.output + '\n';
    if (report.isDryRun) {
        return text + paragraph("would be written: " + formatText(report.format), kIndent);
    }
    text += paragraph(formatText(report.format) + formatted("; %.0f x real time", speed(report)), kIndent);
    return text + paragraph(measuredText(report), kIndent);
}

std::string reportJson(const RenderReport& report) {
    Json json = {{"input", report.task.input},
                 {"output", report.task.output},
                 {"variant", variantName(report.format.channels)},
                 {"channels", report.format.channels},
                 {"rate_hz", report.format.rateHz},
                 {"frames", report.format.frames},
                 {"duration_s", report.format.durationS()},
                 {"container", containerName(report.format.container)},
                 {"sample_format", sampleFormatName(report.format.sample)},
                 {"dry_run", report.isDryRun}};
    if (!report.isDryRun) {
        json["elapsed_s"] = report.elapsedS;
        json["speed_x"] = speed(report);
        json["peak_in_dbfs"] = levelJson(report.peakIn);
        json["peak_out_dbfs"] = levelJson(report.peakOut);
        json["gain_reduction_db"] = report.gainReductionDB ? Json(*report.gainReductionDB) : Json();
        json["clipped_samples"] = report.clippedSamples;
    }
    json["warnings"] = report.warnings;
    return lineOf(json);
}

std::string failureJson(const RenderTask& task, const std::string& error) {
    return lineOf({{"input", task.input}, {"output", task.output}, {"error", error}});
}

} // namespace varno
