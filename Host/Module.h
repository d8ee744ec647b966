/// A module in use by this host: its entry points, its binary and its description.
#ifndef VARNO_HOST_MODULE_H
#define VARNO_HOST_MODULE_H

#include "AAX_Exports.h"
#include "ACF/IACFComponentDefinition.h"
#include "ACF/IACFPluginDefinition.h"
#include "Host/HostObject.h"
#include "Host/HostOptions.h"
#include "Host/ModuleDescription.h"

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace varno {

/// Table of a module's exports. Every member must be set; the functions must stay callable as long as the
/// module is in use. `host` is borrowed for the call unless the module adds a reference.
struct ModuleEntryPoints {
    /// Describes the module to the collection that `host` answers to; *out is an owned reference. [main]
    ACFRESULT (*registerPlugin)(IACFUnknown* host, IACFPluginDefinition** out);
    /// Registers the separate component `index`, if there is one; *out is an owned reference or null. [main]
    ACFRESULT (*registerComponent)(IACFUnknown* host, std::uint32_t index, IACFComponentDefinition** out);
    /// Hands out a class factory; *out is an owned reference or null. [main]
    ACFRESULT (*getClassFactory)(IACFUnknown* host, const acfUID& classID, const acfUID& iid, void** out);
    /// The number of the module's live objects; 0 when it may be unloaded. [any]
    ACFRESULT (*canUnloadNow)(IACFUnknown* host);
    /// First call of all but getSDKVersion: gives the module the host's services. [main]
    ACFRESULT (*startup)(IACFUnknown* host);
    /// Last call of all: takes the host's services back. [main]
    ACFRESULT (*shutdown)(IACFUnknown* host);
    /// Returns the version of the interfaces that the module was built for. [any]
    ACFRESULT (*getSDKVersion)(std::uint64_t* out);
};

/// The table of the module that this program is linked with; a program that calls it must link one. [any]
inline ModuleEntryPoints linkedEntryPoints() {
    return {ACFRegisterPlugin, ACFRegisterComponent, ACFGetClassFactory, ACFCanUnloadNow,
            ACFStartup,        ACFShutdown,          ACFGetSDKVersion};
}

/// The loaded binary of a bundle folder `Name.aaxplugin`: `Contents/x86_64-linux/Name.so` on Linux (by the
/// machine that this program was built for), `Contents/MacOS/Name` on macOS,
/// `Contents/x86_64-windows/Name.dll` on Windows. Unloaded when destroyed. [main]
class ModuleBinary {
public:
    /// Loads the bundle's binary. Throws HostError, naming the path, what was found and what was expected,
    /// for a missing or unsuitable bundle, a missing or damaged binary or a missing entry point.
    explicit ModuleBinary(const std::filesystem::path& bundle);

    /// The bundle as it was given.
    const std::filesystem::path& bundle() const { return mBundle; }
    /// The folder of its resources, whether it is there or not.
    std::filesystem::path resources() const;
    /// The table of its exports, valid while the binary is loaded.
    const ModuleEntryPoints& entryPoints() const { return mEntryPoints; }
    /// Leaves the binary in memory until the program ends, for a module that is still in use.
    void keepLoaded() { (void)mHandle.release(); }

private:
    struct Unload {
        void operator()(void* handle) const;
    };

    template<class Function>
    void resolve(Function& function, const char* name);

    std::filesystem::path mBundle;
    std::filesystem::path mBinary;
    std::unique_ptr<void, Unload> mHandle;
    ModuleEntryPoints mEntryPoints{};
};

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

    /// The module's description.
    const ModuleDescription& description() const { return mDescription; }
    /// Receives violations; outlives the module.
    const std::shared_ptr<ContractMonitor>& monitor() const { return mContext->monitor; }
    /// What this host offers to the module.
    const HostOptions& options() const { return mContext->options; }
    /// What all objects made for this module share.
    const std::shared_ptr<HostContext>& context() const { return mContext; }
    /// The module's table of functions.
    const ModuleEntryPoints& entryPoints() const { return mEntryPoints; }
    /// The number of live objects that the module reports. [any]
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
        const std::shared_ptr<Module>& sharedModule() const { return mModule; }

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
