#include "Settings/Settings.h"

#include "CommandLine/CommandError.h"
#include "Host/HostError.h"
#include "Settings/FactoryPresets.h"
#include "Settings/ModuleLoading.h"
#include "Settings/SettingsFiles.h"
#include "Surround/Settings/NumberText.h"

#include <cmath>

namespace varno {
namespace {

void set(Instance& instance, const ParameterText& text) {
    const std::string where = "--set " + text.id + '=' + text.value;
    instance.setNormalized(
        text.id, normalizedFromText(instance, text, unitSettings(instance), where, kExitWrongUsage));
}

void set(Instance& instance, std::vector<ParameterText> texts) {
    sortForSetting(texts);
    for (const auto& text : texts) {
        set(instance, text);
    }
}

// A line for each value that the effect limits.
std::vector<std::string> limitedValues(const std::string& path, const DemoGain_PresetText::Values& values) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const float value = values[i];
        if (value >= 0.0F && value <= 1.0F) {
            continue;
        }
        const std::string found = std::isnan(value) ? "no number" : textFromNumber(value);
        std::string& line = lines.emplace_back(path);
        line.append(": ").append(DemoGain_PresetText::kItems[i].mParameterID).append(" is ").append(found);
        line.append(", expected 0 to 1; ").append(value > 1.0F ? "1" : "0").append(" is used");
    }
    return lines;
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
        mWarnings = limitedValues(path, *mPreset);
    }
}

void Settings::applyTo(Instance& instance) const {
    set(instance, mBase);
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
    set(instance, mSets);
}

} // namespace varno
