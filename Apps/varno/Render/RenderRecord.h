#ifndef VARNO_APPS_VARNO_RENDER_RENDERRECORD_H
#define VARNO_APPS_VARNO_RENDER_RENDERRECORD_H

#include "Render/RenderOptions.h"
#include "Settings/Settings.h"

#include <map>
#include <optional>
#include <string>

namespace varno {

/// What an output was made of. Equal ones make equal bytes.
struct RenderOrigin {
    std::string version;  ///< Of the program.
    std::string settings; ///< Digest of all that decides what becomes of an input.
    std::string input;    ///< Digest of the input's content; empty for one that can be read once only.

    bool operator==(const RenderOrigin&) const = default;
};

/// The digest of the settings of a command. @param instance at the settings @param bundle the module that the
/// user named; empty for the program's own @throws FileError [main]
std::string settingsDigest(const RenderOptions& options, const Settings& settings, const Instance& instance,
                           const std::string& bundle);

/// A file of reports, one on each line, of the renders that were done before and of those that are done now.
/// Lines that are no report are left alone, such as the last one of a machine that lost its power.
class RenderRecord {
public:
    /// Reads what is there. @param settings of this command, as settingsDigest() has it
    /// @throws FileError where the file cannot be read or written; UsageError where it is a pipe, a device or
    /// a folder
    RenderRecord(std::string path, std::string settings);

    /// What the output of a task would be made of now; the input is read. @throws FileError; Interrupted
    /// [any]
    RenderOrigin originOf(const RenderTask& task) const;

    /// Whether the last report about a task's output has what it would be made of now. @throws as above [any]
    bool isUpToDate(const RenderTask& task) const;

    /// Appends a report. Several processes may append to one file where the file system has locks.
    /// @throws FileError; Interrupted
    void add(const std::string& line) const;

private:
    std::string mPath;
    std::string mSettings;
    std::map<std::string, RenderOrigin> mLast; ///< By the output's name, as it was given.
};

} // namespace varno

#endif
