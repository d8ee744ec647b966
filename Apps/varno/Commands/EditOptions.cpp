#include "EditOptions.h"

#include "CommandError.h"
#include "DesktopScale.h"
#include "NumberOption.h"
#include "SampleRateRange.h"

namespace varno {
namespace {

constexpr int kMostChannels = 2;
constexpr double kLongestWaitS = 3600.0;

void refuseWith(const CommandLine& line, std::string_view option, bool isOther, std::string_view reason) {
    if (isOther && line.has(option)) {
        throw UsageError("option " + std::string(option) + ' ' + std::string(reason));
    }
}

} // namespace

EditOptions editOptions(const CommandLine& line) {
    EditOptions options;
    if (!line.arguments().empty()) {
        options.audio = line.arguments().front();
    }
    options.rateHz =
        numberOption(line, "--rate", kLowestSampleRateHz, kHighestSampleRateHz).value_or(options.rateHz);
    options.channels = numberOption(line, "--channels", 1, kMostChannels).value_or(options.channels);
    options.scale = numberOption(line, "--scale", kSmallestScale, kLargestScale);
    options.state = line.value("--state");
    options.saveState = line.value("--save-state");
    options.screenshot = line.value("--screenshot");
    options.afterS = numberOption(line, "--after", 0.0, kLongestWaitS).value_or(options.afterS);
    options.overwrite = line.has("--force") ? Overwrite::kReplace : Overwrite::kRefuse;
    const bool hasAudio = options.audio.has_value();
    refuseWith(line, "--rate", hasAudio, "goes without AUDIO, which has a sample rate of its own");
    refuseWith(line, "--channels", hasAudio, "goes without AUDIO, which has channels of its own");
    refuseWith(line, "--after", !options.screenshot, "needs --screenshot FILE, found none");
    refuseWith(line, "--save-state", options.screenshot.has_value(), "goes without --screenshot");
    return options;
}

} // namespace varno
