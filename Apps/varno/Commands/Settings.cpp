#include "Settings.h"

#include "CommandError.h"
#include "FactoryPresets.h"
#include "Host/HostError.h"
#include "ModuleLoading.h"
#include "PresetFile.h"
#include "SmallFile.h"

#include <span>

namespace varno {
namespace {

// Far more than any state has; a file of another kind is not read further.
constexpr std::size_t kMostStateBytes = 1024 * 1024;

StoredChunk readState(const std::string& path) {
    const std::string content = readSmallFile(path, kMostStateBytes, "a saved state");
    try {
        return StoredChunk::fromBytes(std::as_bytes(std::span(content)));
    } catch (const HostError& error) {
        throw WorkError(path + ": " + error.what());
    }
}

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
        mStatePath = *path;
        mState = readState(*path);
    }
    if (const auto nameOrFile = line.value("--preset")) {
        mPreset = readPresetFile(presetPath(*nameOrFile, factoryPresets(moduleBundle(line)))).values;
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

std::string presetText(Instance& instance) {
    return DemoGain_PresetText::Write(instance.dataModel());
}

std::string stateBytes(Instance& instance) {
    const auto bytes = instance.save().toBytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace varno
