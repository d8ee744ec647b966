#ifndef VARNO_APPS_VARNO_RENDER_RENDERSESSION_H
#define VARNO_APPS_VARNO_RENDER_RENDERSESSION_H

#include "Host/Module.h"
#include "Host/Oversampling/Oversampling.h"
#include "Render/ProgressBar.h"
#include "Render/RenderOptions.h"
#include "Render/RenderRecord.h"
#include "Settings/Settings.h"

#include <memory>
#include <mutex>

namespace varno {

/// An instance, and what processes it at the quality of the command.
struct SessionInstance {
    SessionInstance(const std::shared_ptr<Module>& module, const InstanceSetup& setup, std::int32_t quality);

    Instance instance;
    Oversampling effect;
};

/// Ends an instance while no other thread calls its module.
struct InstanceEnd {
    std::mutex* moduleCalls;
    void operator()(SessionInstance* instance) const;
};
using SessionEffect = std::unique_ptr<SessionInstance, InstanceEnd>;

/// What all renders of one command share. [any]
class RenderSession {
public:
    RenderSession(const RenderOptions& options, const Settings& settings, std::shared_ptr<Module> module);

    const RenderOptions& options() const { return mOptions; }

    /// An instance brought to the settings. @throws CommandError, HostError
    SessionEffect makeEffect(int channels, double rateHz);

    const Module& module() const { return *mModule; }

    /// The record of the command's renders; null where none is kept. Set before the first render, and
    /// borrowed.
    const RenderRecord* record() const { return mRecord; }
    void setRecord(const RenderRecord& record) { mRecord = &record; }

    /// Drawn where standard error is a terminal.
    ProgressBar& progress() { return mProgress; }

private:
    const RenderOptions& mOptions;
    const Settings& mSettings;
    std::shared_ptr<Module> mModule;
    std::mutex mModuleCalls; ///< A module is called by one thread at a time.
    const RenderRecord* mRecord = nullptr;
    ProgressBar mProgress;
};

} // namespace varno

#endif
