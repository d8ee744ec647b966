/// A module in use by this host.
#ifndef VARNO_HOST_MODULE_H
#define VARNO_HOST_MODULE_H

#include "Host/HostContext.h"
#include "Host/HostOptions.h"
#include "Host/HostReference.h"
#include "Host/ModuleDescription.h"
#include "Host/ModuleEntryPoints.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>

namespace varno {

class ModuleBinary;
class ModuleHost;

/// Started, described, and shut down at its end. Everything made from a module holds it, so it ends after the
/// last instance. A description that contradicts itself is reported, and used as far as it goes. Routines for
/// the adding and removing of instances and for the background are not called. Calls on one module come from
/// one thread at a time. [main]
class Module {
public:
    /// Opens a bundle folder such as `Varno-S.aaxplugin`. Throws HostError when it cannot be found, loaded,
    /// started or described.
    static std::shared_ptr<Module> open(const std::filesystem::path& bundle, HostOptions options = {});
    /// Takes a module that is linked in. Throws HostError when it cannot be started or described.
    static std::shared_ptr<Module> linked(const ModuleEntryPoints& entryPoints, HostOptions options = {});

    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    /// Shuts the module down and unloads it, after checking that it may be. A module with live objects left
    /// is shut down but stays in memory.
    ~Module();

    /// What the module told.
    const ModuleDescription& description() const { return mDescription; }
    /// Where violations go; outlives the module.
    const std::shared_ptr<ContractMonitor>& monitor() const { return mContext->monitor; }
    /// What this host offers to the module.
    const HostOptions& options() const { return mContext->options; }
    /// What all objects made for this module share.
    const std::shared_ptr<HostContext>& context() const { return mContext; }
    /// The module's table of functions.
    const ModuleEntryPoints& entryPoints() const { return mEntryPoints; }
    /// The number of the module's live objects, as it tells. [any]
    std::int32_t liveObjects() const;
    /// The file of a resource; empty when the module has no resource folder.
    std::filesystem::path resourcePath(const std::string& fileName) const;

    /// Counts an instance as long as it lives; with the last one the module's live objects must be gone.
    class InstanceTicket {
    public:
        explicit InstanceTicket(std::shared_ptr<Module> module);
        InstanceTicket(const InstanceTicket&) = delete;
        InstanceTicket& operator=(const InstanceTicket&) = delete;
        ~InstanceTicket();

        const Module& module() const { return *mModule; }

    private:
        std::shared_ptr<Module> mModule;
    };

private:
    Module(std::unique_ptr<ModuleBinary> binary, const ModuleEntryPoints& entryPoints, HostOptions options,
           std::filesystem::path resources, std::string name);

    void requireSuccess(ACFRESULT result, const char* entryPoint) const;
    void requireNoLiveObjects(const char* when) const;
    void describe();

    std::unique_ptr<ModuleBinary> mBinary; ///< Null for a linked-in module.
    ModuleEntryPoints mEntryPoints;
    std::string mName; ///< For messages.
    std::shared_ptr<HostContext> mContext;
    HostReference<ModuleHost> mHost;
    ModuleDescription mDescription;
    std::atomic<std::int32_t> mInstances{0};
};

} // namespace varno

#endif
