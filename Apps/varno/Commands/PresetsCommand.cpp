#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "FactoryPresets.h"
#include "ModuleLoading.h"
#include "PresetReport.h"

#include <filesystem>

namespace varno {
namespace {

std::string names(const std::vector<FactoryPreset>& presets) {
    std::string text;
    for (const auto& preset : presets) {
        text += preset.name + '\n';
    }
    return text;
}

std::string list(const CommandLine& line, const std::vector<FactoryPreset>& presets) {
    if (line.has("--names")) {
        return names(presets);
    }
    std::vector<NamedPreset> read;
    for (const auto& preset : presets) {
        read.push_back({preset.name, readPresetFile(preset.path)});
    }
    return line.has("--json") ? presetsJson(read) : presetsText(read);
}

void showOne(const CommandLine& line, const std::string& path) {
    const NamedPreset preset{std::filesystem::path(path).stem().string(), readPresetFile(path)};
    auto module = loadModule(line);
    {
        Instance instance(module, InstanceSetup{});
        DemoGain_PresetText::Apply(preset.file.values, instance.dataModel());
        instance.idle();
        printOut(line.has("--json") ? presetReportJson(preset, instance)
                                    : presetReportText(preset, instance));
    }
    unloadModule(std::move(module));
}

} // namespace

int runPresets(const CommandLine& line) {
    const auto presets = factoryPresets(moduleBundle(line));
    if (line.arguments().empty()) {
        printOut(list(line, presets));
    } else {
        showOne(line, presetPath(line.arguments().front(), presets));
    }
    return kExitSuccess;
}

} // namespace varno
