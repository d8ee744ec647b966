#ifndef VARNO_APPS_VARNO_RENDER_RENDERSESSION_H
#define VARNO_APPS_VARNO_RENDER_RENDERSESSION_H

#include "Host/Module.h"
#include "Render/ProgressBar.h"
#include "Render/RenderOptions.h"
#include "Settings/Settings.h"

#include <memory>
#include <mutex>

namespace varno {

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

    /// An instance brought to the settings. @throws CommandError, HostError
    SessionInstance makeInstance(int channels, double rateHz);

    const Module& module() const { return *mModule; }

    /// Drawn where standard error is a terminal.
    ProgressBar& progress() { return mProgress; }

private:
    const RenderOptions& mOptions;
    const Settings& mSettings;
    std::shared_ptr<Module> mModule;
    std::mutex mModuleCalls; ///< A module is called by one thread at a time.
    ProgressBar mProgress;
};

} // namespace varno

#endif
