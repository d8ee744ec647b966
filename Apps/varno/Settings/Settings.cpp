#include "Settings/Settings.h"

#include "CommandLine/CommandError.h"
#include "Host/HostError.h"
#include "Settings/FactoryPresets.h"
#include "Settings/ModuleLoading.h"
#include "Settings/SettingsFiles.h"

namespace varno {
namespace {

void set(Instance& instance, const ParameterText& text) {
    const std::string where = "--set " + text.id + '=' + text.value;
    instance.setNormalized(text.id, normalizedFromText(instance, text, where, kExitWrongUsage));
}

} // namespace

Settings::Settings(const CommandLine& line, std::vector<ParameterText> base)
    : mBase(std::move(base)) {
    for (const auto& text : line.values("--set")) {
        mSets.push_back(parameterTextFromOption(text));
    }
    if (const auto path = line.value("--state")) {
        mFiles.push_back(*path);
        mStatePath = *path;
        mState = readState(*path);
    }
    if (const auto nameOrFile = line.value("--preset")) {
        const std::string path = presetPath(*nameOrFile, factoryPresets(moduleBundle(line)));
        mFiles.push_back(path);
        mPreset = readPresetFile(path).values;
    }
}

void Settings::applyTo(Instance& instance) const {
    for (const auto& text : mBase) {
        set(instance, text);
    }
    if (mState) {
        try {
            instance.restore(*mState);
        } catch (const HostError& error) {
            throw WorkError(mStatePath + ": " + error.what());
        }
    }
    if (mPreset) {
        DemoGain_PresetText::Apply(*mPreset, instance.dataModel());
        instance.idle();
    }
    for (const auto& text : mSets) {
        set(instance, text);
    }
}

} // namespace varno
