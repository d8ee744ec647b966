#include "Render/RenderReport.h"

#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "CommandLine/VisibleText.h"
#include "Settings/Quality.h"
#include "Surround/Settings/NumberText.h"

#include <cstdarg>
#include <cstdio>

namespace varno {
namespace {

constexpr double kHzPerKilohertz = 1000.0;
constexpr int kLevelDecimals = 1;
constexpr int kReportIndent = 2; // of the lines about a file below its name

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
    return magnitude > 0.0 ? decimalText(decibels(magnitude), kLevelDecimals) + " dBFS" : "silent";
}

double speed(const RenderReport& report) {
    return report.elapsedS > 0.0 ? report.format.durationS() / report.elapsedS : 0.0;
}

// At another quality than the usual: "; quality 4x"
std::string qualityNote(const RenderReport& report) {
    return report.quality == 1 ? "" : "; quality " + qualityName(report.quality);
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

} // namespace

std::string reportText(const RenderReport& report) {
    std::string text = visibleLine(report.task.output) + '\n';
    if (report.isSkipped) {
        return text + paragraph("exists already: skipped", kReportIndent);
    }
    if (report.isDryRun) {
        return text + paragraph("would be written: " + formatText(report.format) + qualityNote(report),
                                kReportIndent);
    }
    text += paragraph(formatText(report.format) + qualityNote(report) +
                          formatted("; %.0f x real time", speed(report)),
                      kReportIndent);
    return text + paragraph(measuredText(report), kReportIndent);
}

std::string reportJson(const RenderReport& report) {
    if (report.isSkipped) {
        return jsonLine(
            Json::Object{{"input", report.task.input}, {"output", report.task.output}, {"skipped", true}});
    }
    Json::Object json = {{"input", report.task.input},
                         {"output", report.task.output},
                         {"variant", variantName(report.format.channels)},
                         {"channels", report.format.channels},
                         {"rate_hz", report.format.rateHz},
                         {"frames", report.format.frames},
                         {"duration_s", report.format.durationS()},
                         {"container", containerName(report.format.container)},
                         {"sample_format", sampleFormatName(report.format.sample)},
                         {"quality", qualityName(report.quality)},
                         {"latency_frames", report.latencyFrames},
                         {"dry_run", report.isDryRun},
                         {"skipped", false}};
    if (!report.isDryRun) {
        json.emplace_back("elapsed_s", report.elapsedS);
        json.emplace_back("speed_x", speed(report));
        json.emplace_back("peak_in_dbfs", levelJson(report.peakIn));
        json.emplace_back("peak_out_dbfs", levelJson(report.peakOut));
        json.emplace_back("gain_reduction_db",
                          report.gainReductionDB ? Json(*report.gainReductionDB) : Json());
        json.emplace_back("clipped_samples", report.clippedSamples);
        json.emplace_back("unusable_samples", report.unusableSamples);
    }
    json.emplace_back("warnings", jsonArray(report.warnings));
    if (report.origin) {
        const RenderOrigin& origin = *report.origin;
        json.emplace_back("made_of",
                          Json::Object{{"version", origin.version},
                                       {"settings", origin.settings},
                                       {"input", origin.input.empty() ? Json() : Json(origin.input)}});
    }
    return jsonLine(json);
}

std::string failureJson(const RenderTask& task, const std::string& error) {
    return jsonLine(Json::Object{{"input", task.input}, {"output", task.output}, {"error", error}});
}

} // namespace varno
