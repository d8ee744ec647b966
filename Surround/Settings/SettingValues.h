/// The settings of the effect as values: all parameters that presets keep, which are all but the bypass.
#ifndef VARNO_SURROUND_SETTINGS_SETTINGVALUES_H
#define VARNO_SURROUND_SETTINGS_SETTINGVALUES_H

#include "DemoGain_PresetText.h"
#include "Host/Instance.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// Normalized values, 0 to 1, in the order of kDemoGain_PresetOrder.
using SettingValues = DemoGain_PresetText::Values;

/// How many settings there are.
inline constexpr std::size_t kSettingCount = std::tuple_size_v<SettingValues>;

/// The place of a parameter among the settings; nothing for one that is none, as the master bypass. [any]
std::optional<std::size_t> settingOf(std::string_view id);

/// The identifier of a setting's parameter. @param setting below kSettingCount [any]
const char* settingID(std::size_t setting);

/// What people call a setting: its legend, "High Pass". @param setting below kSettingCount [any]
std::string settingName(std::size_t setting);

/// The values of an instance as they are now; 0 for a parameter that the instance does not have. [main]
SettingValues settingsOf(const Instance& instance);

/// The values that an instance begins with; 0 for a parameter that it does not have. [main]
SettingValues defaultSettings(const Instance& instance);

/// The values that the effect takes for those of a preset: limited to 0 to 1, 0 for what is no number. [any]
SettingValues limitedSettings(const SettingValues& values);

/// Whether both are the same once they are written as a preset. [any]
bool areSameSettings(const SettingValues& left, const SettingValues& right);

/// Requests a value as an editor does: the automation reports a touch, the value and a release, and the value
/// is in force when this returns. A value that the instance has already is not requested.
/// @param setting below kSettingCount; of a parameter that the instance does not have, nothing happens
/// @param normalized limited to 0 to 1; 0 for what is no number
/// @throws HostError where the data model refuses it [main]
void requestSetting(Instance& instance, std::size_t setting, float normalized);

/// The same for all settings at once. [main]
void requestSettings(Instance& instance, const SettingValues& values);

} // namespace varno

#endif
