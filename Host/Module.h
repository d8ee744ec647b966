/// A module in use by this host.
#ifndef MODULE_H
#define MODULE_H

#include "HostOptions.h"
#include "ModuleDescription.h"
#include "ModuleEntryPoints.h"

#include <filesystem>
#include <memory>

namespace varno {

struct HostContext;
class ModuleBinary;
class ModuleHost;

/// Started, described, and shut down at its end. Everything made from a module holds it, so it ends after the
/// last instance. Calls on one module come from one thread at a time. [main]
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
    std::shared_ptr<ContractMonitor> monitor() const;
    /// What this host offers to the module.
    const HostOptions& options() const;
    /// The number of the module's live objects, as it tells. [any]
    int32_t liveObjects() const;
    /// The file of a resource; empty when the module has no resource folder.
    std::filesystem::path resourcePath(const std::string& fileName) const;
    /// The module's table of functions.
    const ModuleEntryPoints& entryPoints() const { return mEntryPoints; }
    /// What the objects made for this module share.
    const std::shared_ptr<HostContext>& context() const { return mContext; }

private:
    Module(std::unique_ptr<ModuleBinary> binary, const ModuleEntryPoints& entryPoints, HostOptions options);

    void start();
    void describe();
    void end() noexcept;

    std::unique_ptr<ModuleBinary> mBinary; ///< Null for a linked-in module.
    ModuleEntryPoints mEntryPoints;
    std::shared_ptr<HostContext> mContext;
    ModuleHost* mHost = nullptr; ///< One reference owned.
    ModuleDescription mDescription;
};

} // namespace varno

#endif
