#include "Play/PlayOptions.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "Settings/Quality.h"

namespace varno {
namespace {

constexpr std::size_t kLongestName = 63; // bytes that every JACK server accepts

// JACK puts a colon between the names of client and port.
std::string nameOption(const CommandLine& line, const std::string& usual) {
    std::string name = line.value("--name").value_or(usual);
    if (name.empty() || name.size() > kLongestName || name.find(':') != std::string::npos) {
        throw UsageError("option --name: expected 1 to " + std::to_string(kLongestName) +
                         " bytes without a colon, found " + inQuotes(name));
    }
    return name;
}

std::optional<bool> editorOption(const CommandLine& line) {
    if (line.has("--edit")) {
        return true;
    }
    return line.has("--no-edit") ? std::optional(false) : std::nullopt;
}

StatisticsForm statisticsOption(const CommandLine& line) {
    if (line.has("--json")) {
        return StatisticsForm::kJson;
    }
    return line.has("--statistics") ? StatisticsForm::kText : StatisticsForm::kNone;
}

} // namespace

PlayOptions playOptions(const CommandLine& line) {
    PlayOptions options;
    options.backend = line.value("--backend").value_or(std::string(kAnyBackend));
    LiveRequest& request = options.request;
    request.name = nameOption(line, request.name);
    request.inputs = request.outputs = line.has("--mono") ? 1 : 2;
    request.shallConnect = !line.has("--no-connect");
    request.rateHz = line.number<double>("--rate").value_or(request.rateHz);
    request.blockFrames = line.number<int>("--period").value_or(request.blockFrames);
    options.quality = qualityOption(line).value_or(options.quality);
    options.editor = editorOption(line);
    options.isQuiet = line.has("--quiet");
    options.statistics = statisticsOption(line);
    options.window = windowOptions(line, "play");
    options.window.subject = "live";
    return options;
}

} // namespace varno
