#include "Edit/EditOptions.h"

#include "CommandLine/CommandError.h"
#include "Session/LiveBackend.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"

#include <filesystem>

namespace varno {
namespace {

void refuseWith(const CommandLine& line, std::string_view option, bool isOther, std::string_view reason) {
    if (isOther && line.has(option)) {
        throw UsageError("option " + std::string(option) + ' ' + std::string(reason));
    }
}

} // namespace

EditOptions editOptions(const CommandLine& line) {
    EditOptions options;
    options.window = windowOptions(line, "edit");
    WindowOptions& window = options.window;
    if (!line.arguments().empty()) {
        options.audio = line.arguments().front();
        window.subject = std::filesystem::path(*options.audio).filename().string();
    }
    options.rateHz = line.number<double>("--rate").value_or(options.rateHz);
    options.channels = line.number<int>("--channels").value_or(options.channels);
    options.quality = qualityOption(line).value_or(options.quality);
    options.acceptTruncated = line.has(kTruncatedOption.name);
    window.screenshot = line.value("--screenshot");
    window.afterS = line.number<double>("--after").value_or(window.afterS);
    const bool hasAudio = options.audio.has_value();
    refuseWith(line, "--rate", hasAudio, "goes without AUDIO, which has a sample rate of its own");
    refuseWith(line, "--channels", hasAudio, "goes without AUDIO, which has channels of its own");
    refuseWith(line, kTruncatedOption.name, !hasAudio, "needs AUDIO, found none");
    refuseWith(line, "--sound", !hasAudio && line.value("--sound") != kSoundOff, "needs AUDIO, found none");
    refuseWith(line, "--after", !window.screenshot, "needs --screenshot FILE, found none");
    refuseWith(line, "--save-state", window.screenshot.has_value(), "goes without --screenshot");
    if (hasAudio && !window.screenshot) {
        options.sound = line.value("--sound").value_or(std::string(kAnyBackend));
    }
    return options;
}

} // namespace varno
