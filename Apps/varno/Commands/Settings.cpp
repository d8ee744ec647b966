#include "Settings.h"

#include "CommandError.h"
#include "HostError.h"
#include "SmallFile.h"

#include <span>

namespace varno {
namespace {

// Far more than any preset or state has; a file of another kind is not read further.
constexpr std::size_t kMostPresetBytes = 64 * 1024;
constexpr std::size_t kMostStateBytes = 1024 * 1024;

DemoGain_PresetText::Values readPreset(const std::string& path) {
    const auto values = DemoGain_PresetText::Parse(readSmallFile(path, kMostPresetBytes, "a preset"));
    if (!values) {
        throw WorkError(path + ": is no preset; expected a word, a version from 030001 on and " +
                        std::to_string(std::size(DemoGain_PresetText::kItems)) +
                        " values, each behind a label");
    }
    return *values;
}

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
    if (const auto path = line.value("--preset")) {
        mPreset = readPreset(*path);
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
