#ifndef VARNO_APPS_VARNO_SESSION_SETTINGSKEEPER_H
#define VARNO_APPS_VARNO_SESSION_SETTINGSKEEPER_H

#include "Files/AtomicFile.h"
#include "Host/Instance.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// The file that the settings of an instance are saved to, and whether they have changed since. [main]
class SettingsKeeper {
public:
    /// @param instance brought to the settings that it starts with; outlives this object, or the next
    /// follow()
    explicit SettingsKeeper(Instance& instance);
    /// Continues with another instance, which has the first one's values.
    void follow(Instance& instance) { mInstance = &instance; }

    /// Names the file that save() writes. Without one it is kStateName in the working folder, or the first of
    /// its numbered kind that does not exist.
    /// @param overwrite whether the first save may replace a file; those after it replace their own
    /// @throws FileError where the file could not be written or replaced now
    void setFile(const std::string& path, Overwrite overwrite);

    /// Writes the settings as a state. @return the file's path @throws FileError
    std::string save();

    /// The options that restore the present settings ("--set Gain=0.25 --set Hot=1"), where they have
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

/// Saves and prints on standard error the file, or why that failed; a failure changes nothing.
/// @return what was printed, without its line end
std::string saveAndTell(SettingsKeeper& settings);

/// Runs a session and then warns of settings that are not saved, with the command line that restores them,
/// also where the session ends by an exception. @param command that runs it: "edit"
void runAndReportUnsaved(const SettingsKeeper& settings, const std::string& command,
                         const std::function<void()>& run);

} // namespace varno

#endif
