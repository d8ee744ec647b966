#include "Session/WindowOptions.h"

#include "Settings/FileRoles.h"

#include <filesystem>
#include <system_error>

namespace varno {
namespace {

bool isLoadedState(const WindowOptions& options, const std::string& file) {
    std::error_code error;
    return options.state && std::filesystem::equivalent(*options.state, file, error);
}

} // namespace

WindowOptions windowOptions(const CommandLine& line, const std::string& command) {
    WindowOptions options;
    options.command = command;
    options.scale = line.number<double>("--scale");
    options.hasBar = !line.has(kNoBarOption.name);
    options.state = line.value("--state");
    options.saveState = line.value("--save-state");
    options.overwrite = line.has("--force") ? Overwrite::kReplace : Overwrite::kRefuse;
    return options;
}

void checkFiles(const WindowOptions& options, const Settings& settings,
                const std::optional<std::string>& audio) {
    FileRoles files;
    if (audio) {
        files.addInput(*audio);
    }
    for (const auto& path : settings.files()) {
        const bool isSavedAgain =
            path == options.state && options.saveState && isLoadedState(options, *options.saveState);
        if (!isSavedAgain) {
            files.addInput(path);
        }
    }
    for (const auto* output : {&options.screenshot, &options.saveState}) {
        if (*output) {
            files.addOutput(**output);
        }
    }
}

void chooseSettingsFile(SettingsKeeper& settings, const WindowOptions& options) {
    if (const auto& file = options.saveState ? options.saveState : options.state) {
        settings.setFile(*file, isLoadedState(options, *file) ? Overwrite::kReplace : options.overwrite);
    }
}

} // namespace varno
