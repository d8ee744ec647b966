#include "Host/ModuleBinary.h"

#include "Host/BinaryCheck.h"
#include "Host/HostError.h"

#include <dlfcn.h>

namespace varno {

namespace {

namespace fs = std::filesystem;

#if defined(__APPLE__)
constexpr const char* kBinaryFolder = "MacOS";
constexpr const char* kBinarySuffix = "";
#elif defined(__x86_64__)
constexpr const char* kBinaryFolder = "x86_64-linux";
constexpr const char* kBinarySuffix = ".so";
#elif defined(__aarch64__)
constexpr const char* kBinaryFolder = "aarch64-linux";
constexpr const char* kBinarySuffix = ".so";
#else
#error "name the bundle's folder for this machine here"
#endif

// The folder itself, however many slashes end its path.
fs::path withoutTrailingSlash(const fs::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

} // namespace

ModuleBinary::ModuleBinary(const fs::path& bundle)
    : mBundle(withoutTrailingSlash(bundle)) {
    std::error_code ignored;
    const std::string subject = "module " + quoted(mBundle.string()) + ": ";
    if (!fs::exists(mBundle, ignored)) {
        throw HostError(subject + "not found, expected a bundle folder (Name.aaxplugin)");
    }
    if (!fs::is_directory(mBundle, ignored)) {
        throw HostError(subject + "found a file, expected a bundle folder (Name.aaxplugin)");
    }
    mBinary = mBundle / "Contents" / kBinaryFolder / (mBundle.stem().string() + kBinarySuffix);
    if (!fs::is_regular_file(mBinary, ignored)) {
        throw HostError(subject + "no binary for this machine, expected " + quoted(mBinary.string()));
    }
    if (const auto defect = binaryDefect(mBinary)) {
        throw HostError(subject + "cannot load " + quoted(mBinary.string()) + ": " + *defect);
    }
    // An absolute path, so that the loader's search path plays no part.
    mHandle.reset(dlopen(fs::absolute(mBinary).c_str(), RTLD_NOW | RTLD_LOCAL));
    if (mHandle == nullptr) {
        throw HostError(subject + "cannot load its binary: " + dlerror());
    }
    resolve(mEntryPoints.registerPlugin, "ACFRegisterPlugin");
    resolve(mEntryPoints.registerComponent, "ACFRegisterComponent");
    resolve(mEntryPoints.getClassFactory, "ACFGetClassFactory");
    resolve(mEntryPoints.canUnloadNow, "ACFCanUnloadNow");
    resolve(mEntryPoints.startup, "ACFStartup");
    resolve(mEntryPoints.shutdown, "ACFShutdown");
    resolve(mEntryPoints.getSDKVersion, "ACFGetSDKVersion");
}

template<class Function>
void ModuleBinary::resolve(Function& function, const char* name) {
    void* symbol = dlsym(mHandle.get(), name);
    if (symbol == nullptr) {
        throw HostError("module " + quoted(mBundle.string()) + ": " + quoted(mBinary.string()) +
                        " has no entry point " + name);
    }
    function = reinterpret_cast<Function>(symbol);
}

fs::path ModuleBinary::resources() const {
    return mBundle / "Contents" / "Resources";
}

void ModuleBinary::Unload::operator()(void* handle) const {
    dlclose(handle);
}

} // namespace varno
