// LV2 bundles, described by lilv.
#include "Validate/Lv2/HostSide.h"
#include "Validate/Lv2/Lv2Instance.h"
#include "Validate/Lv2/Ports.h"
#include "Validate/Plugin.h"

#include <algorithm>
#include <deque>
#include <lilv/lilv.h>
#include <lv2/core/lv2.h>
#include <memory>
#include <utility>

namespace varno::validate {
namespace {

struct FreesLilv {
    void operator()(LilvNode* node) const { lilv_node_free(node); }
    void operator()(LilvWorld* world) const { lilv_world_free(world); }
};
using LilvText = std::unique_ptr<LilvNode, FreesLilv>;

constexpr double kDescribedRateHz = 48000.0;

class Lv2Plugin final : public Plugin {
public:
    // Only this bundle is read, whatever else is installed.
    Lv2Plugin(std::filesystem::path path, const PluginSelection& selection)
        : mPath(std::move(path)),
          mWorld(lilv_world_new()) {
        const std::string folder = (std::filesystem::absolute(mPath) / "").string();
        const LilvText bundle(lilv_new_file_uri(mWorld.get(), nullptr, folder.c_str()));
        lilv_world_load_bundle(mWorld.get(), bundle.get());
        const LilvPlugins* const plugins = lilv_world_get_all_plugins(mWorld.get());
        std::vector<std::string> ids;
        LILV_FOREACH(plugins, i, plugins) {
            const LilvPlugin* const plugin = lilv_plugins_get(plugins, i);
            ids.emplace_back(lilv_node_as_uri(lilv_plugin_get_uri(plugin)));
            if (selection.has(ids.back())) {
                add(plugin);
            }
        }
        selection.requireAmong(ids);
    }

    Format format() const override { return Format::kLv2; }
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

    std::vector<std::string> takeComplaints() override { return mComplaints.take(); }

private:
    std::unique_ptr<Lv2Instance> makeInstance(const PluginInfo& info, double rateHz,
                                              std::int32_t mostFrames) {
        const auto found = std::ranges::find(mPlugins, info.id, &PluginInfo::id);
        const auto place = static_cast<std::size_t>(found - mPlugins.begin());
        const LilvPlugin* const plugin = mHandles.at(place);
        PortList ports = readPorts(mWorld.get(), plugin, rateHz);
        if (!ports.obstacle.empty()) {
            throw PluginError(ports.obstacle);
        }
        const LilvText broken(lilv_new_uri(mWorld.get(), LV2_CORE__inPlaceBroken));
        return std::make_unique<Lv2Instance>(
            Lv2Instance::Source{.plugin = plugin,
                                .numbers = mNumbers,
                                .window = mWindows.at(place),
                                .complaints = mComplaints,
                                .runsInPlace = !lilv_plugin_has_feature(plugin, broken.get())},
            std::move(ports), rateHz, mostFrames);
    }

    void add(const LilvPlugin* plugin) {
        const PortList ports = readPorts(mWorld.get(), plugin, kDescribedRateHz);
        const LilvText name(lilv_plugin_get_name(plugin));
        const int inputs = ports.count(PortKind::kAudio, true);
        mHandles.push_back(plugin);
        mWindows.push_back(readWindow(mWorld.get(), plugin));
        mPlugins.push_back(
            {.id = lilv_node_as_uri(lilv_plugin_get_uri(plugin)),
             .name = name == nullptr ? "" : lilv_node_as_string(name.get()),
             .inputs = inputs,
             .outputs = ports.count(PortKind::kAudio, false),
             .obstacle = ports.obstacle.empty() && inputs == 0 ? std::string(kNoInputs) : ports.obstacle});
    }

    std::filesystem::path mPath;
    UriNumbers mNumbers;
    std::unique_ptr<LilvWorld, FreesLilv> mWorld;
    Complaints mComplaints;
    std::vector<const LilvPlugin*> mHandles;
    std::deque<Lv2Window> mWindows; ///< Of each; instances refer to them.
    std::vector<PluginInfo> mPlugins;
};

} // namespace

std::unique_ptr<Plugin> openLv2Plugin(const std::filesystem::path& path, const PluginSelection& selection) {
    return std::make_unique<Lv2Plugin>(path, selection);
}

} // namespace varno::validate
