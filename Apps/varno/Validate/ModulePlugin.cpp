// Modules of this architecture, over the reference host.
#include "Host/HostError.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "Validate/Module/ModuleAttempts.h"
#include "Validate/Module/ModuleEditor.h"
#include "Validate/Plugin.h"

#include <thread>
#include <utility>

namespace varno::validate {
namespace {

PluginError pluginErrorOf(const HostError& error) {
    return PluginError(error.what());
}

class ModuleInstance final : public PluginInstance {
public:
    ModuleInstance(std::shared_ptr<Module> module, const InstanceSetup& setup)
        : mInstance(std::move(module), setup) {
        for (const ParameterInfo& info : mInstance.parameters()) {
            mParameters.push_back({.id = info.id,
                                   .name = info.name,
                                   .defaultValue = info.defaultNormalized,
                                   .steps = info.type == AAX_eParameterType_Discrete ? info.steps : 0,
                                   .isBypass = info.isMasterBypass,
                                   .isAutomatable = info.isAutomatable});
        }
    }

    // A host of this architecture ends the editor before its data model.
    ~ModuleInstance() override {
        if (mLink.editor() != nullptr) {
            mLink.editor()->close();
        }
    }
    ModuleInstance(const ModuleInstance&) = delete;
    ModuleInstance& operator=(const ModuleInstance&) = delete;

    Capabilities capabilities() const override {
        const bool hasEditor = mInstance.effect().procedure(kAAX_ProcPtrID_Create_EffectGUI) != nullptr;
        return {.hasValueTexts = true,
                .readsTexts = true,
                .hasState = true,
                .hasReset = true,
                .hasLatency = true,
                .editorObstacle = hasEditor ? "" : "the effect has no editor",
                .closesWithinCalls = true};
    }
    const std::vector<Parameter>& parameters() const override { return mParameters; }

    // While an editor is open, another thread than the window's gives values to the buffer alone.
    void set(std::size_t index, double value) override {
        if (mLink.editor() != nullptr && std::this_thread::get_id() != mMainThread) {
            const BufferValue now{index, value};
            mInstance.setBeforeBuffer({&now, 1});
            mLink.showLater(index, value);
        } else {
            mInstance.setNormalized(mParameters.at(index).id, value);
        }
    }
    double get(std::size_t index) override { return mInstance.normalized(mParameters.at(index).id); }
    std::optional<std::string> text(std::size_t index, double value) override {
        try {
            return mInstance.textOf(mParameters.at(index).id, value);
        } catch (const HostError&) {
            return std::nullopt;
        }
    }
    std::optional<double> value(std::size_t index, const std::string& text) override {
        return mInstance.fromText(mParameters.at(index).id, text);
    }

    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        mInstance.process(inputs, outputs, frames);
    }

    std::optional<std::vector<std::byte>> saveState() override {
        try {
            return mInstance.save().toBytes();
        } catch (const HostError&) {
            return std::nullopt;
        }
    }
    bool restoreState(std::span<const std::byte> state) override {
        try {
            mInstance.restore(StoredChunk::fromBytes(state));
            return true;
        } catch (const HostError&) {
            return false;
        }
    }
    void reset() override { mInstance.reset(); }
    std::int32_t latencyFrames() override { return mInstance.latencyFrames(); }
    std::vector<Attempt> attempts(AttemptKind kind) override {
        return kind == AttemptKind::kUnknownIdentifiers ? unknownIdentifiers(mInstance)
               : kind == AttemptKind::kForeignStates    ? foreignChunks(mInstance)
                                                        : callsFromWithin(mInstance);
    }

    std::unique_ptr<PluginEditor> openEditor(const EditorSetup& setup) override {
        try {
            return std::make_unique<ModuleEditor>(mInstance, mParameters, mLink, setup);
        } catch (const HostError& error) {
            throw pluginErrorOf(error);
        }
    }

private:
    Instance mInstance;
    std::vector<Parameter> mParameters;
    EditorLink mLink;
    std::thread::id mMainThread = std::this_thread::get_id();
};

class ModulePlugin final : public Plugin {
public:
    ModulePlugin(std::filesystem::path path, const PluginSelection& selection)
        : mPath(std::move(path)),
          mModule(Module::open(mPath)) {
        std::vector<std::string> ids;
        for (const EffectDescription& effect : mModule->description().effects) {
            ids.push_back(effect.id);
            for (const VariantDescription& variant : effect.variants) {
                if (!variant.natives.empty() && selection.has(effect.id)) {
                    mPlugins.push_back({.id = effect.id,
                                        .name = effect.names.empty() ? std::string() : effect.names.front(),
                                        .inputs = variant.inputChannels(),
                                        .outputs = variant.outputChannels()});
                }
            }
        }
        selection.requireAmong(ids);
    }

    Format format() const override { return Format::kModule; }
    const std::filesystem::path& path() const override { return mPath; }
    const std::vector<PluginInfo>& plugins() const override { return mPlugins; }

    std::unique_ptr<PluginInstance> create(const PluginInfo& info, double rateHz,
                                           std::int32_t mostFrames) override {
        try {
            return std::make_unique<ModuleInstance>(mModule, InstanceSetup{.channels = info.inputs,
                                                                           .sampleRateHz = rateHz,
                                                                           .maximumFrames = mostFrames,
                                                                           .effectID = info.id});
        } catch (const HostError& error) {
            throw pluginErrorOf(error);
        }
    }

    // An instance is prepared as it is made.
    std::unique_ptr<PluginInstance> createUnprepared(const PluginInfo& /*info*/, double /*rateHz*/,
                                                     std::int32_t /*mostFrames*/) override {
        return nullptr;
    }

    std::vector<std::string> takeComplaints() override {
        std::vector<std::string> complaints;
        for (const Violation& violation : mModule->monitor()->takeViolations()) {
            complaints.push_back(std::string(contractName(violation.contract)) + ": " + violation.text);
        }
        return complaints;
    }

private:
    std::filesystem::path mPath;
    std::shared_ptr<Module> mModule;
    std::vector<PluginInfo> mPlugins;
};

} // namespace

std::unique_ptr<Plugin> openModulePlugin(const std::filesystem::path& path,
                                         const PluginSelection& selection) {
    try {
        return std::make_unique<ModulePlugin>(path, selection);
    } catch (const HostError& error) {
        throw pluginErrorOf(error);
    }
}

} // namespace varno::validate
