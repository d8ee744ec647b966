#include "Settings/FactoryPresets.h"

#include "CommandLine/CommandError.h"

namespace varno {

std::filesystem::path factoryPresetFolder(const std::filesystem::path& bundle) {
    return bundle / "Contents" / "Resources" / "presets";
}

std::vector<FactoryPreset> factoryPresets(const std::filesystem::path& bundle) {
    return factoryPresetsIn(factoryPresetFolder(bundle));
}

std::string presetPath(const std::string& nameOrFile, const std::vector<FactoryPreset>& presets) {
    if (const auto path = presetFile(nameOrFile, presets)) {
        return *path;
    }
    throw UsageError(unknownPreset(nameOrFile, presets, "varno presets lists"));
}

} // namespace varno
