#include "Session/SettingsKeeper.h"

#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/VisibleText.h"
#include "Settings/SettingsFiles.h"
#include "Surround/Settings/NumberText.h"

#include <filesystem>
#include <system_error>

namespace varno {
namespace {

// A data model may hold its values in single precision: the shortest text of such a value ("0.6") sets it as
// exactly as all its digits do (0.6000000238418579).
std::string shortestText(double normalized) {
    const auto single = static_cast<float>(normalized);
    return single == normalized ? textFromNumber(single) : textFromNumber(normalized);
}

void reportUnsaved(const SettingsKeeper& settings, const std::string& command) {
    if (const auto options = settings.unsavedOptions()) {
        printWarning("the settings are not saved; they come back with: varno " + command +
                     (options->empty() ? "" : ' ' + *options));
    }
}

} // namespace

SettingsKeeper::SettingsKeeper(Instance& instance)
    : mInstance(&instance),
      mKept(values()) {
}

void SettingsKeeper::setFile(const std::string& path, Overwrite overwrite) {
    const AtomicFile attempt(path, overwrite);
    mPath = path;
    mOverwrite = overwrite;
}

std::string SettingsKeeper::save() {
    if (mPath.empty()) {
        chooseFreeFile();
    }
    AtomicFile file(mPath, mOverwrite, throwIfInterrupted);
    file.write(stateBytes(*mInstance));
    file.commit();
    mOverwrite = Overwrite::kReplace;
    mKept = values();
    return mPath;
}

std::optional<std::string> SettingsKeeper::unsavedOptions() const {
    const auto now = values();
    if (now == mKept) {
        return std::nullopt;
    }
    std::string options;
    for (const auto& parameter : mInstance->parameters()) {
        const double value = now[static_cast<std::size_t>(parameter.index)];
        if (value != parameter.defaultNormalized) {
            options += options.empty() ? "--set " : " --set ";
            options += parameter.id + '=' + shortestText(value);
        }
    }
    return options;
}

std::vector<double> SettingsKeeper::values() const {
    std::vector<double> values;
    for (const auto& parameter : mInstance->parameters()) {
        values.push_back(mInstance->normalized(parameter.id));
    }
    return values;
}

void SettingsKeeper::chooseFreeFile() {
    std::error_code error;
    std::string path = std::string(kStateName) + kStateExtension;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(path, error)); ++number) {
        path = std::string(kStateName) + '-' + std::to_string(number) + kStateExtension;
    }
    mPath = path;
}

std::string saveAndTell(SettingsKeeper& settings) {
    try {
        std::string message = visibleLine("saved " + settings.save());
        printErr(message + '\n');
        return message;
    } catch (const std::runtime_error& error) {
        printError(error.what());
        return visibleLine(error.what());
    }
}

void runAndReportUnsaved(const SettingsKeeper& settings, const std::string& command,
                         const std::function<void()>& run) {
    try {
        run();
    } catch (...) {
        reportUnsaved(settings, command);
        throw;
    }
    reportUnsaved(settings, command);
}

} // namespace varno
