#include "Render/RenderOptions.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"

#include <algorithm>
#include <filesystem>

namespace varno {
namespace {

// INPUT OUTPUT
RenderTask pairTask(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1) {
        throw UsageError("render needs OUTPUT beside INPUT " + inQuotes(arguments[0]) + ", or --out-dir DIR");
    }
    if (arguments.size() > 2) {
        throw UsageError("unexpected argument " + inQuotes(arguments[2]) +
                         " of render; expected INPUT OUTPUT, or --out-dir DIR for several inputs");
    }
    return {arguments[0], arguments[1]};
}

// --out-dir DIR INPUT...
// @param container extension of the outputs without its point; nothing: that of each input
std::vector<RenderTask> folderTasks(const std::string& folder, const std::vector<std::string>& inputs,
                                    const std::optional<std::string>& container) {
    if (inputs.empty()) {
        throw UsageError("option --out-dir needs INPUT, found none");
    }
    std::vector<RenderTask> tasks;
    for (const auto& input : inputs) {
        auto name = std::filesystem::path(input).filename();
        if (input == "-" || name.empty()) {
            throw UsageError("option --out-dir needs inputs with a file name, found " + inQuotes(input));
        }
        if (container) {
            name.replace_extension(*container);
        }
        tasks.push_back({input, (std::filesystem::path(folder) / name).string()});
    }
    return tasks;
}

void checkTogether(const RenderOptions& options) {
    if (options.meters && options.tasks.size() > 1) {
        throw UsageError("option --meters takes one INPUT, found " + std::to_string(options.tasks.size()));
    }
    if (options.meters && options.channels.size() > 1) {
        throw UsageError("option --meters takes one group of --channels, found " +
                         std::to_string(options.channels.size()));
    }
    if (options.midSide && !options.channels.empty() &&
        std::ranges::none_of(options.channels, [](const ChannelGroup& group) { return group.size() > 1; })) {
        throw UsageError("option --mid-side needs a pair such as 1-2 in --channels, found " +
                         inQuotes(channelGroupsText(options.channels)));
    }
    if (options.isDemo && (options.dryRun || options.skipExisting || options.record)) {
        throw UsageError(std::string("option ") +
                         (options.dryRun         ? "--dry-run"
                          : options.skipExisting ? "--skip-existing"
                                                 : "--record") +
                         " needs INPUT and OUTPUT, found none");
    }
}

} // namespace

RenderOptions renderOptions(const CommandLine& line) {
    RenderOptions options;
    options.isDemo = line.arguments().empty() && !line.has("--out-dir");
    if (const auto folder = line.value("--out-dir")) {
        options.tasks = folderTasks(*folder, line.arguments(), line.value("--container"));
    } else if (options.isDemo) {
        options.tasks = {{kDemoDryFile, kDemoFile}};
    } else {
        options.tasks = {pairTask(line.arguments())};
    }
    options.blockFrames = line.number<int>("--block").value_or(options.blockFrames);
    options.jobs = line.number<int>("--jobs").value_or(options.jobs);
    options.quality = qualityOption(line).value_or(options.quality);
    options.compensate = line.has("--compensate");
    options.midSide = line.has("--mid-side");
    if (const auto channels = line.value("--channels")) {
        options.channels = channelGroups(*channels);
    }
    options.tailS = line.number<double>("--tail").value_or(options.tailS);
    if (line.has("--container") && !line.has("--out-dir")) {
        throw UsageError("option --container needs --out-dir; the extension of OUTPUT selects its container");
    }
    if (const auto format = line.value("--format")) {
        options.format = sampleFormatFromName(*format);
    }
    if (const auto dither = line.value("--dither")) {
        options.dither = ditherFromName(*dither).value();
    }
    options.overwrite = line.has("--force") ? Overwrite::kReplace : Overwrite::kRefuse;
    options.skipExisting = line.has("--skip-existing");
    options.acceptTruncated = line.has(kTruncatedOption.name);
    options.dryRun = line.has("--dry-run");
    options.quiet = line.has("--quiet");
    options.json = line.has("--json");
    options.automation = line.value("--automate");
    options.meters = line.value("--meters");
    options.record = line.value("--record");
    if (options.record && options.skipExisting) {
        options.overwrite = Overwrite::kReplace; // outputs that are no longer what would be made
    }
    options.savePreset = line.value("--save-preset");
    options.saveState = line.value("--save-state");
    checkTogether(options);
    return options;
}

} // namespace varno
