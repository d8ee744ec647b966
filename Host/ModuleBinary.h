/// A module's bundle on disk.
#ifndef VARNO_HOST_MODULEBINARY_H
#define VARNO_HOST_MODULEBINARY_H

#include "Host/ModuleEntryPoints.h"

#include <filesystem>
#include <memory>

namespace varno {

/// The loaded binary of a bundle folder `Name.aaxplugin`: `Contents/x86_64-linux/Name.so` on Linux (by the
/// machine that this program was built for), `Contents/MacOS/Name` on macOS. Unloaded when destroyed. [main]
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
    /// Leaves the binary in memory for good, for a module that is still in use.
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

} // namespace varno

#endif
