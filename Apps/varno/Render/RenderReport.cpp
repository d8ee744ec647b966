#include "Render/RenderReport.h"

#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "CommandLine/VisibleText.h"
#include "Settings/Quality.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
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

std::string variantName(std::size_t channels) {
    return channels == 1 ? "mono" : "stereo";
}

std::string channelCount(std::size_t channels) {
    return formatted("%zu channel%s", channels, channels == 1 ? "" : "s");
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
std::string formatText(const RenderReport& report) {
    const AudioFormat& format = report.format;
    const auto channels = static_cast<std::size_t>(format.channels);
    const std::string kind = report.hasChosenGroups ? channelCount(channels) : variantName(channels);
    return formatted("%.3f s, %s, %g kHz, %s %s", format.durationS(), kind.c_str(),
                     format.rateHz / kHzPerKilohertz, containerName(format.container),
                     sampleFormatName(format.sample));
}

std::string measuredText(const GroupReport& group) {
    std::string text = "peak " + levelText(group.peakIn) + " in, " + levelText(group.peakOut) + " out";
    if (group.gainReductionDB) {
        text += formatted("; gain reduction %.1f dB at most", *group.gainReductionDB);
    }
    return text;
}

// "1-2 stereo"
std::string groupText(const ChannelGroup& group) {
    return channelsText(group) + ' ' + variantName(group.size());
}

// "1-2 stereo, 3 mono; the others copied"
std::string groupsText(const RenderReport& report) {
    std::string text;
    std::size_t processed = 0;
    for (const GroupReport& group : report.groups) {
        text.append(text.empty() ? "" : ", ").append(groupText(group.channels));
        processed += group.channels.size();
    }
    return text + (processed < static_cast<std::size_t>(report.format.channels) ? "; the others copied" : "");
}

Json levelJson(double magnitude) {
    return magnitude > 0.0 ? Json(decibels(magnitude)) : Json();
}

void addLevels(Json::Object& json, const GroupReport& group) {
    json.emplace_back("peak_in_dbfs", levelJson(group.peakIn));
    json.emplace_back("peak_out_dbfs", levelJson(group.peakOut));
    json.emplace_back("gain_reduction_db", group.gainReductionDB ? Json(*group.gainReductionDB) : Json());
}

Json groupJson(const GroupReport& group, bool isDryRun) {
    Json::Array channels;
    for (const int channel : group.channels) {
        channels.emplace_back(channel + 1);
    }
    Json::Object json = {{"channels", channels}, {"variant", variantName(group.channels.size())}};
    if (!isDryRun) {
        addLevels(json, group);
        json.emplace_back("unusable_samples", group.unusableSamples);
    }
    return json;
}

} // namespace

GroupReport ofAllGroups(const RenderReport& report) {
    GroupReport all;
    for (const GroupReport& group : report.groups) {
        all.channels.insert(all.channels.end(), group.channels.begin(), group.channels.end());
        all.peakIn = std::max(all.peakIn, group.peakIn);
        all.peakOut = std::max(all.peakOut, group.peakOut);
        all.unusableSamples += group.unusableSamples;
        if (group.gainReductionDB) {
            all.gainReductionDB = std::max(all.gainReductionDB.value_or(0.0), *group.gainReductionDB);
        }
    }
    return all;
}

std::string reportText(const RenderReport& report) {
    std::string text = visibleLine(report.task.output) + '\n';
    if (report.isSkipped) {
        return text + paragraph("exists already: skipped", kReportIndent);
    }
    if (report.isDryRun) {
        text += paragraph("would be written: " + formatText(report) + qualityNote(report), kReportIndent);
        return text + (report.hasChosenGroups ? paragraph(groupsText(report), kReportIndent) : "");
    }
    text +=
        paragraph(formatText(report) + qualityNote(report) + formatted("; %.0f x real time", speed(report)),
                  kReportIndent);
    const std::string clipped = formatted("; %lld clipped", static_cast<long long>(report.clippedSamples));
    if (!report.hasChosenGroups) {
        return text + paragraph(measuredText(ofAllGroups(report)) + clipped, kReportIndent);
    }
    for (const GroupReport& group : report.groups) {
        text += paragraph(groupText(group.channels) + ": " + measuredText(group), kReportIndent);
    }
    return text + paragraph(groupsText(report) + clipped, kReportIndent);
}

std::string reportJson(const RenderReport& report) {
    if (report.isSkipped) {
        return jsonLine(
            Json::Object{{"input", report.task.input}, {"output", report.task.output}, {"skipped", true}});
    }
    const GroupReport all = ofAllGroups(report);
    Json::Object json = {
        {"input", report.task.input},
        {"output", report.task.output},
        {"variant", report.hasChosenGroups ? Json() : Json(variantName(all.channels.size()))},
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
        addLevels(json, all);
        json.emplace_back("clipped_samples", report.clippedSamples);
        json.emplace_back("unusable_samples", all.unusableSamples);
    }
    if (report.hasChosenGroups) {
        Json::Array groups;
        for (const GroupReport& group : report.groups) {
            groups.push_back(groupJson(group, report.isDryRun));
        }
        json.emplace_back("groups", groups);
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
