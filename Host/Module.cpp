#include "Host/Module.h"

#include "ACF/ACFPtr.h"
#include "Host/BinaryFile.h"
#include "Host/HostError.h"
#include "Host/ModuleHost.h"

#include <optional>
#include <string>

namespace varno {

namespace {

namespace fs = std::filesystem;

// The folder itself, however many slashes end its path.
fs::path withoutTrailingSlash(const fs::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

std::shared_ptr<HostContext> makeContext(HostOptions options, std::filesystem::path resources) {
    auto context = std::make_shared<HostContext>();
    context->monitor = options.monitor ? options.monitor : std::make_shared<ContractMonitor>();
    context->options = std::move(options);
    context->resources = std::move(resources);
    return context;
}

bool isComplete(const ModuleEntryPoints& table) {
    return table.registerPlugin != nullptr && table.registerComponent != nullptr &&
           table.getClassFactory != nullptr && table.canUnloadNow != nullptr && table.startup != nullptr &&
           table.shutdown != nullptr && table.getSDKVersion != nullptr;
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
    mBinary = mBundle / "Contents" / binaryFolder() / mBundle.stem();
    mBinary += binarySuffix();
    if (!fs::is_regular_file(mBinary, ignored)) {
        throw HostError(subject + "no binary for this machine, expected " + quoted(mBinary.string()));
    }
    if (const auto defect = binaryDefect(mBinary)) {
        throw HostError(subject + "cannot load " + quoted(mBinary.string()) + ": " + *defect);
    }
    std::string refusal;
    mHandle.reset(loadBinary(mBinary, refusal));
    if (mHandle == nullptr) {
        throw HostError(subject + "cannot load its binary: " + refusal);
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
    void* symbol = binarySymbol(mHandle.get(), name);
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
    unloadBinary(handle);
}

std::shared_ptr<Module> Module::open(const std::filesystem::path& bundle, HostOptions options) {
    auto binary = std::make_unique<ModuleBinary>(bundle);
    const ModuleEntryPoints entryPoints = binary->entryPoints();
    const std::filesystem::path resources = binary->resources();
    const std::string name = "module " + quoted(binary->bundle().string());
    return std::shared_ptr<Module>(
        new Module(std::move(binary), entryPoints, std::move(options), resources, name));
}

std::shared_ptr<Module> Module::linked(const ModuleEntryPoints& entryPoints, HostOptions options) {
    const std::filesystem::path resources = options.resources;
    return std::shared_ptr<Module>(
        new Module(nullptr, entryPoints, std::move(options), resources, "the linked-in module"));
}

Module::Module(std::unique_ptr<ModuleBinary> binary, const ModuleEntryPoints& entryPoints,
               HostOptions options, std::filesystem::path resources, std::string name)
    : mBinary(std::move(binary)),
      mEntryPoints(entryPoints),
      mName(std::move(name)),
      mContext(makeContext(std::move(options), std::move(resources))),
      mHost(new ModuleHost(mContext), "module host") {
    if (!isComplete(mEntryPoints)) {
        throw HostError(mName + ": an entry point is missing, expected seven");
    }
    requireSuccess(mEntryPoints.getSDKVersion(&mDescription.sdkVersion), "ACFGetSDKVersion");
    requireSuccess(mEntryPoints.startup(mHost.get()), "ACFStartup");
    try {
        describe();
    } catch (...) {
        mEntryPoints.shutdown(mHost.get());
        throw;
    }
}

void Module::requireSuccess(ACFRESULT result, const char* entryPoint) const {
    if (result != ACF_OK) {
        throw HostError(mName + ": " + entryPoint + " answered " + std::to_string(result) + ", expected 0");
    }
}

void Module::describe() {
    IACFPluginDefinition* definition = nullptr;
    const ACFRESULT registered = mEntryPoints.registerPlugin(mHost.get(), &definition);
    const auto owned = ACFPtr<IACFPluginDefinition>::Adopt(definition);
    requireSuccess(registered, "ACFRegisterPlugin");
    if (!owned) {
        throw HostError(mName + ": ACFRegisterPlugin handed out no definition");
    }
    IACFComponentDefinition* component = nullptr;
    requireSuccess(mEntryPoints.registerComponent(mHost.get(), 0, &component), "ACFRegisterComponent");
    // Separate components, should a module have any, are nothing that this host can use.
    ACFPtr<IACFComponentDefinition>::Adopt(component).Reset();

    const std::uint64_t sdkVersion = mDescription.sdkVersion;
    mDescription = mHost->takeDescription();
    mDescription.sdkVersion = sdkVersion;
    for (const std::string& problem : descriptionProblems(mDescription)) {
        monitor()->report(Contract::kDescription, problem);
    }
}

Module::~Module() {
    requireNoLiveObjects("at its end");
    if (liveObjects() != 0 && mBinary != nullptr) {
        mBinary->keepLoaded();
    }
    mEntryPoints.shutdown(mHost.get());
    mHost.reset();
    if (mContext->ledger.total() != 0) {
        monitor()->report(Contract::kReferences,
                          "host objects alive at the end of the module: " + mContext->ledger.text());
    }
}

void Module::requireNoLiveObjects(const char* when) const {
    const std::int32_t alive = liveObjects();
    if (alive != 0) {
        monitor()->report(Contract::kLiveObjects,
                          mName + " has " + std::to_string(alive) + " live objects " + when + ", expected 0");
    }
}

std::int32_t Module::liveObjects() const {
    return mEntryPoints.canUnloadNow(mHost.get());
}

std::filesystem::path Module::resourcePath(const std::string& fileName) const {
    return mContext->resources.empty() ? std::filesystem::path() : mContext->resources / fileName;
}

Module::InstanceTicket::InstanceTicket(std::shared_ptr<Module> module)
    : mModule(std::move(module)) {
    ++mModule->mInstances;
}

Module::InstanceTicket::~InstanceTicket() {
    if (--mModule->mInstances == 0) {
        mModule->requireNoLiveObjects("after its last instance");
    }
}

} // namespace varno
