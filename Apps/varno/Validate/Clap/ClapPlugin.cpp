// CLAP binaries.
#include "CLAP/Clap/Plugin.h"

#include "Validate/Clap/ClapHost.h"
#include "Validate/Clap/ClapInstance.h"
#include "Validate/Plugin.h"

#include <dlfcn.h>
#include <memory>
#include <utility>

namespace varno::validate {
namespace {

struct ClosesLibrary {
    void operator()(void* library) const { ::dlclose(library); }
};

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

class ClapPlugin final : public Plugin {
public:
    ClapPlugin(std::filesystem::path path, const PluginSelection& selection)
        : mPath(std::move(path)),
          mLibrary(::dlopen(std::filesystem::absolute(mPath).c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (mLibrary == nullptr) {
            throw PluginError(textOf(::dlerror()));
        }
        mEntry = static_cast<const clap_plugin_entry_t*>(::dlsym(mLibrary.get(), "clap_entry"));
        if (mEntry == nullptr || !clap_version_is_compatible(mEntry->clap_version)) {
            throw PluginError("no entry of CLAP version 1");
        }
        if (!mEntry->init(mPath.c_str())) {
            throw PluginError("the entry refuses to be initialised");
        }
        try {
            describe(selection);
        } catch (...) {
            mEntry->deinit();
            throw;
        }
    }
    ClapPlugin(const ClapPlugin&) = delete;
    ClapPlugin& operator=(const ClapPlugin&) = delete;
    ~ClapPlugin() override { mEntry->deinit(); }

    Format format() const override { return Format::kClap; }
    const std::filesystem::path& path() const override { return mPath; }
    const std::vector<PluginInfo>& plugins() const override { return mPlugins; }

    std::unique_ptr<PluginInstance> create(const PluginInfo& info, double rateHz,
                                           std::int32_t mostFrames) override {
        auto instance = makeInstance(info, rateHz, mostFrames);
        instance->prepare();
        return instance;
    }

    std::unique_ptr<PluginInstance> createUnprepared(const PluginInfo& info, double rateHz,
                                                     std::int32_t mostFrames) override {
        return makeInstance(info, rateHz, mostFrames);
    }

    std::vector<std::string> takeComplaints() override { return std::exchange(mComplaints, {}); }

private:
    std::unique_ptr<ClapInstance> makeInstance(const PluginInfo& info, double rateHz,
                                               std::int32_t mostFrames) {
        auto host = std::make_unique<ClapHost>(mComplaints);
        OwnedClap plugin = make(*host, info.id);
        return std::make_unique<ClapInstance>(std::move(host), std::move(plugin), rateHz, mostFrames);
    }

    OwnedClap make(const ClapHost& host, const std::string& id) const {
        OwnedClap plugin(mFactory->create_plugin(mFactory, &host.table(), id.c_str()));
        if (plugin == nullptr) {
            throw PluginError("the factory makes no " + id);
        }
        if (!plugin->init(plugin.get())) {
            throw PluginError("init() of " + id + " failed");
        }
        return plugin;
    }

    // The numbers of channels are known to an instance alone.
    void describe(const PluginSelection& selection) {
        mFactory = static_cast<const clap_plugin_factory_t*>(mEntry->get_factory(CLAP_PLUGIN_FACTORY_ID));
        if (mFactory == nullptr) {
            throw PluginError("the entry has no factory of plug-ins");
        }
        const std::uint32_t count = mFactory->get_plugin_count(mFactory);
        std::vector<std::string> ids;
        for (std::uint32_t index = 0; index < count; ++index) {
            const clap_plugin_descriptor_t* const descriptor =
                mFactory->get_plugin_descriptor(mFactory, index);
            if (descriptor == nullptr) {
                throw PluginError("the factory has no descriptor " + std::to_string(index));
            }
            PluginInfo info{.id = textOf(descriptor->id), .name = textOf(descriptor->name)};
            ids.push_back(info.id);
            if (!selection.has(info.id)) {
                continue;
            }
            const ClapHost host(mComplaints);
            const OwnedClap plugin = make(host, info.id);
            info.inputs = readClapPorts(plugin.get(), true).allChannels();
            info.outputs = readClapPorts(plugin.get(), false).allChannels();
            info.obstacle = info.inputs == 0 ? kNoInputs : "";
            mPlugins.push_back(info);
        }
        selection.requireAmong(ids);
    }

    std::filesystem::path mPath;
    std::unique_ptr<void, ClosesLibrary> mLibrary;
    const clap_plugin_entry_t* mEntry = nullptr;
    const clap_plugin_factory_t* mFactory = nullptr;
    std::vector<PluginInfo> mPlugins;
    std::vector<std::string> mComplaints;
};

} // namespace

std::unique_ptr<Plugin> openClapPlugin(const std::filesystem::path& path, const PluginSelection& selection) {
    return std::make_unique<ClapPlugin>(path, selection);
}

} // namespace varno::validate
