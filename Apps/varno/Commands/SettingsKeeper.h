#ifndef VARNO_APPS_VARNO_COMMANDS_SETTINGSKEEPER_H
#define VARNO_APPS_VARNO_COMMANDS_SETTINGSKEEPER_H

#include "AudioFile/AtomicFile.h"
#include "Host/Instance.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// Where the settings of an edited instance go, and whether they are there. [main]
class SettingsKeeper {
public:
    /// @param instance brought to the settings that it starts with; outlives this object, or the next
    /// follow()
    explicit SettingsKeeper(Instance& instance);
    /// Goes on with another instance that has the first one's values.
    void follow(Instance& instance) { mInstance = &instance; }

    /// Names the file that save() writes. Without one it is kStateName in the working folder, or the first of
    /// its numbered kind that nobody has used.
    /// @param overwrite whether the first save may replace a file; those after it replace their own
    /// @throws AudioFileError where the file could not be written or replaced now
    void setFile(const std::string& path, Overwrite overwrite);

    /// Writes the settings as a state. @return the file's path @throws AudioFileError
    std::string save();

    /// The options that bring the present settings back ("--set Gain=0.25 --set Hot=1"), where they have
    /// changed since the start and the last save; else nothing.
    std::optional<std::string> unsavedOptions() const;

    static constexpr const char* kStateName = "varno-s";
    static constexpr const char* kStateExtension = ".state";

private:
    std::vector<double> values() const;
    void chooseFreeFile();

    Instance* mInstance;
    std::string mPath;
    Overwrite mOverwrite = Overwrite::kRefuse;
    std::vector<double> mKept;
};

} // namespace varno

#endif
