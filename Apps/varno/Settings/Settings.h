#ifndef VARNO_APPS_VARNO_SETTINGS_SETTINGS_H
#define VARNO_APPS_VARNO_SETTINGS_SETTINGS_H

#include "CommandLine/CommandLine.h"
#include "DemoGain_PresetText.h"
#include "Host/Instance.h"
#include "Settings/ParameterValue.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

// The options that Settings reads.

inline constexpr OptionEntry kSetOption = {
    .name = "--set",
    .value = "ID=VALUE",
    .kind = ValueKind::kSetting,
    .group = "Settings",
    .help = "Set a parameter: a number is its normalized value, 0 to 1; a number with a unit its true value, "
            "for instance Gain=-3dB, Atk='2.4 ms' or Mix=40%; '#5' is curve 5 of Ratio; switches take on and "
            "off. May be given more than once; times mean the curve and UK of the same call."};

inline constexpr OptionEntry kPresetOption = {
    .name = "--preset",
    .value = "NAME|FILE",
    .kind = ValueKind::kPreset,
    .group = "Settings",
    .help =
        "Apply a preset: every parameter but the master bypass. A factory preset by its name, which varno "
        "presets lists, or a file with the text that the editor copies and pastes. What has a dot or a "
        "slash is a file."};

inline constexpr OptionEntry kStateOption = {
    .name = "--state",
    .value = "FILE",
    .kind = ValueKind::kFile,
    .group = "Settings",
    .help = "Restore a saved state, the record that a host keeps: every parameter "
            "but the master bypass."};

/// The settings of a command line; the files that it names have been read.
class Settings {
public:
    /// Reads --state, --preset and --set.
    /// @param base set before all of them
    /// @throws UsageError for a malformed --set or an unknown preset; WorkError for a file that cannot be
    ///         read or is damaged
    explicit Settings(const CommandLine& line, std::vector<ParameterText> base = {});

    /// The files that were read.
    const std::vector<std::string>& files() const { return mFiles; }

    /// What --set gave, in that order.
    const std::vector<ParameterText>& sets() const { return mSets; }

    /// What is unusual about the files, one line each.
    const std::vector<std::string>& warnings() const { return mWarnings; }

    /// Brings an instance to the settings: base, --state, --preset, --set, the later over the earlier.
    /// @throws UsageError for an unknown parameter or a value that it does not take; WorkError where the
    ///         instance refuses the state or a value of it does not arrive
    void applyTo(Instance& instance) const;

private:
    std::vector<ParameterText> mBase;
    std::vector<std::string> mFiles;
    std::vector<std::string> mWarnings;
    std::string mStatePath;
    std::optional<StoredChunk> mState;
    std::optional<DemoGain_PresetText::Values> mPreset;
    std::vector<ParameterText> mSets;
};

} // namespace varno

#endif
