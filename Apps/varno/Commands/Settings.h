#ifndef VARNO_APPS_VARNO_COMMANDS_SETTINGS_H
#define VARNO_APPS_VARNO_COMMANDS_SETTINGS_H

#include "CommandLine.h"
#include "DemoGain_PresetText.h"
#include "Host/Instance.h"
#include "ParameterValue.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// The settings that a command line asks for, with the files they come from already read.
class Settings {
public:
    /// Reads what --state, --preset and --set say.
    /// @param base set before all of them
    /// @throws UsageError for a malformed --set or an unknown preset; WorkError for a file that cannot be
    /// read
    ///         or is damaged
    explicit Settings(const CommandLine& line, std::vector<ParameterText> base = {});

    /// Brings an instance to the settings: base, --state, --preset, --set, the later over the earlier.
    /// @throws UsageError for an unknown parameter or a value that it does not take; WorkError where the
    ///         instance refuses the state or a value of it does not arrive
    void applyTo(Instance& instance) const;

private:
    std::vector<ParameterText> mBase;
    std::string mStatePath;
    std::optional<StoredChunk> mState;
    std::optional<DemoGain_PresetText::Values> mPreset;
    std::vector<ParameterText> mSets;
};

/// The settings of an instance as the text of a preset file.
std::string presetText(Instance& instance);

/// The settings of an instance as the bytes of a state file.
std::string stateBytes(Instance& instance);

} // namespace varno

#endif
