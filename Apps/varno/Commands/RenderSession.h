#ifndef VARNO_APPS_VARNO_COMMANDS_RENDERSESSION_H
#define VARNO_APPS_VARNO_COMMANDS_RENDERSESSION_H

#include "Host/Module.h"
#include "InputFiles.h"
#include "ProgressBar.h"
#include "RenderOptions.h"
#include "Settings.h"

#include <memory>
#include <mutex>

namespace varno {

/// Ends an instance while no other thread calls its module.
struct InstanceEnd {
    std::mutex* moduleCalls;
    void operator()(Instance* instance) const;
};
using SessionInstance = std::unique_ptr<Instance, InstanceEnd>;

/// What all renders of one command share. Every method from any thread.
class RenderSession {
public:
    RenderSession(const RenderOptions& options, const Settings& settings, std::shared_ptr<Module> module);

    const RenderOptions& options() const { return mOptions; }

    /// Every file that the command reads.
    const InputFiles& inputs() const { return mInputs; }

    /// An instance brought to the settings. @throws CommandError, HostError
    SessionInstance makeInstance(int channels, double rateHz);

    const Module& module() const { return *mModule; }

    /// Draws progress from here on, over audio of that many seconds in all, where standard error is a
    /// terminal. Only the first call counts.
    void beginProgress(double totalS);
    /// That many seconds of audio more are done.
    void advance(double seconds);
    void endProgress();
    /// Whether progress is shown, so that its total is worth finding out.
    bool showsProgress() const;

private:
    const RenderOptions& mOptions;
    const Settings& mSettings;
    InputFiles mInputs;
    std::shared_ptr<Module> mModule;
    std::mutex mModuleCalls; // a module is called by one thread at a time
    std::once_flag mProgressBegun;
    std::unique_ptr<ProgressBar> mProgress;
};

} // namespace varno

#endif
