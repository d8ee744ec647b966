#include "SettingsKeeping.h"

#include "Console.h"

#include <filesystem>
#include <system_error>

namespace varno {
namespace {

bool isLoadedState(const WindowOptions& options, const std::string& file) {
    std::error_code error;
    return options.state && std::filesystem::equivalent(*options.state, file, error);
}

void tellUnsaved(const SettingsKeeper& settings, const std::string& command) {
    if (const auto options = settings.unsavedOptions()) {
        printWarning("the settings are not saved; they come back with: varno " + command +
                     (options->empty() ? "" : ' ' + *options));
    }
}

} // namespace

void chooseSettingsFile(SettingsKeeper& settings, const WindowOptions& options) {
    if (const auto& file = options.saveState ? options.saveState : options.state) {
        settings.setFile(*file, isLoadedState(options, *file) ? Overwrite::kReplace : options.overwrite);
    }
}

void saveAndTell(SettingsKeeper& settings) {
    try {
        printErr("saved " + settings.save() + '\n');
    } catch (const std::runtime_error& error) {
        printError(error.what());
    }
}

void runAndTellUnsaved(const SettingsKeeper& settings, const std::string& command,
                       const std::function<void()>& run) {
    try {
        run();
    } catch (...) {
        tellUnsaved(settings, command);
        throw;
    }
    tellUnsaved(settings, command);
}

} // namespace varno
