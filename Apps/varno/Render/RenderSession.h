#ifndef VARNO_APPS_VARNO_RENDER_RENDERSESSION_H
#define VARNO_APPS_VARNO_RENDER_RENDERSESSION_H

#include "Host/Module.h"
#include "Render/ProgressBar.h"
#include "Render/RenderOptions.h"
#include "Settings/Settings.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace varno {

/// The input files of a command. They are compared by device and inode, so that no output replaces one of
/// them under another name.
class InputFiles {
public:
    /// Files that do not exist are left out; reading them reports why.
    explicit InputFiles(const std::vector<RenderTask>& tasks);

    /// @throws AudioFileError where the file at `output` is one of the inputs, through links or not. [any]
    void refuseAsOutput(const std::string& output) const;

private:
    using Identity = std::pair<std::uint64_t, std::uint64_t>; ///< Device and inode.

    std::map<Identity, std::string> mNames;
};

/// Ends an instance while no other thread calls its module.
struct InstanceEnd {
    std::mutex* moduleCalls;
    void operator()(Instance* instance) const;
};
using SessionInstance = std::unique_ptr<Instance, InstanceEnd>;

/// What all renders of one command share. [any]
class RenderSession {
public:
    RenderSession(const RenderOptions& options, const Settings& settings, std::shared_ptr<Module> module);

    const RenderOptions& options() const { return mOptions; }

    /// Every file that the command reads.
    const InputFiles& inputs() const { return mInputs; }

    /// An instance brought to the settings. @throws CommandError, HostError
    SessionInstance makeInstance(int channels, double rateHz);

    const Module& module() const { return *mModule; }

    /// Starts to draw progress where standard error is a terminal; later calls do nothing.
    /// @param totalS length of all audio in seconds
    void beginProgress(double totalS);
    /// Adds seconds of audio that are done.
    void advance(double seconds);
    void endProgress();
    /// Whether progress is shown, so that its total is needed.
    bool showsProgress() const;

private:
    const RenderOptions& mOptions;
    const Settings& mSettings;
    InputFiles mInputs;
    std::shared_ptr<Module> mModule;
    std::mutex mModuleCalls; ///< A module is called by one thread at a time.
    std::once_flag mProgressBegun;
    std::unique_ptr<ProgressBar> mProgress;
};

} // namespace varno

#endif
