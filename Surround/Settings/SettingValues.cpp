#include "Surround/Settings/SettingValues.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

// What the text of settings distinguishes.
constexpr float kKeptStep = 1e-10F;
static_assert(DemoGain_PresetText::kDecimals == 10);

const SDemoGain_Parameter& rowOf(std::size_t setting) {
    return *kDemoGain_PresetOrder.at(setting);
}

float limited(float value) {
    return value > 0.0F ? std::min(value, 1.0F) : 0.0F;
}

// Of a parameter that the instance does not have, nothing.
const ParameterInfo* parameterOf(const Instance& instance, std::size_t setting) {
    return instance.parameter(settingID(setting));
}

void requestChanged(Instance& instance, std::size_t setting, float normalized) {
    const float value = limited(normalized);
    const ParameterInfo* const parameter = parameterOf(instance, setting);
    if (parameter != nullptr && static_cast<float>(instance.normalized(parameter->id)) != value) {
        instance.requestNormalized(parameter->id, double{value});
    }
}

} // namespace

std::optional<std::size_t> settingOf(std::string_view id) {
    const auto found = std::ranges::find_if(
        kDemoGain_PresetOrder, [&](const SDemoGain_Parameter* row) { return id == row->mIdentifier; });
    if (found == kDemoGain_PresetOrder.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - kDemoGain_PresetOrder.begin());
}

const char* settingID(std::size_t setting) {
    return rowOf(setting).mIdentifier;
}

std::string settingName(std::size_t setting) {
    std::string name;
    for (const char* const line : rowOf(setting).mLegend) {
        if (line != nullptr) {
            name += name.empty() ? "" : " ";
            name += line;
        }
    }
    return name;
}

SettingValues settingsOf(const Instance& instance) {
    SettingValues values{};
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        if (const ParameterInfo* const parameter = parameterOf(instance, i)) {
            values[i] = static_cast<float>(instance.normalized(parameter->id));
        }
    }
    return values;
}

SettingValues defaultSettings(const Instance& instance) {
    SettingValues values{};
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        if (const ParameterInfo* const parameter = parameterOf(instance, i)) {
            values[i] = static_cast<float>(parameter->defaultNormalized);
        }
    }
    return values;
}

SettingValues limitedSettings(const SettingValues& values) {
    SettingValues result{};
    std::ranges::transform(values, result.begin(), limited);
    return result;
}

bool areSameSettings(const SettingValues& left, const SettingValues& right) {
    return std::ranges::equal(left, right, [](float a, float b) { return std::fabs(a - b) < kKeptStep; });
}

void requestSetting(Instance& instance, std::size_t setting, float normalized) {
    instance.idle();
    requestChanged(instance, setting, normalized);
    instance.idle();
}

void requestSettings(Instance& instance, const SettingValues& values) {
    instance.idle();
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        requestChanged(instance, i, values[i]);
    }
    instance.idle();
}

} // namespace varno
