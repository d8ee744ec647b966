#include "Tests/Formats/LV2/BundleLint.h"
#include "Validate/ElfFile.h"

#include <cmath>
#include <lilv/lilv.h>
#include <lv2/core/lv2.h>
#include <lv2/port-groups/port-groups.h>
#include <map>
#include <memory>
#include <set>

namespace varno::test {

namespace {

struct Free {
    void operator()(LilvWorld* world) const { lilv_world_free(world); }
    void operator()(LilvNode* node) const { lilv_node_free(node); }
    void operator()(LilvNodes* nodes) const { lilv_nodes_free(nodes); }
    void operator()(LilvInstance* instance) const { lilv_instance_free(instance); }
};
template<class T>
using Owned = std::unique_ptr<T, Free>;

constexpr const char* kType = "http://www.w3.org/1999/02/22-rdf-syntax-ns#type";
constexpr const char* kComment = "http://www.w3.org/2000/01/rdf-schema#comment";

// The plug-ins of one bundle, looked at one by one.
class Linter {
public:
    explicit Linter(const std::filesystem::path& bundle)
        : mWorld(lilv_world_new()) {
        const Owned<LilvNode> uri(lilv_new_file_uri(mWorld.get(), nullptr, (bundle.string() + "/").c_str()));
        lilv_world_load_bundle(mWorld.get(), uri.get());
        lilv_world_load_specifications(mWorld.get());
        lilv_world_load_plugin_classes(mWorld.get());
    }

    std::vector<std::string> faults() {
        const LilvPlugins* plugins = lilv_world_get_all_plugins(mWorld.get());
        if (lilv_plugins_size(plugins) == 0) {
            mFaults.emplace_back("there is no plug-in");
        }
        LILV_FOREACH(plugins, each, plugins) {
            mPlugin = lilv_plugins_get(plugins, each);
            mWhere = lilv_node_as_uri(lilv_plugin_get_uri(mPlugin));
            checkPlugin();
            checkPorts();
            checkBinary();
        }
        return mFaults;
    }

private:
    Owned<LilvNode> node(const char* uri) const { return Owned<LilvNode>(lilv_new_uri(mWorld.get(), uri)); }

    void demand(bool holds, const std::string& fault) {
        if (!holds) {
            mFaults.push_back(mWhere + ": " + fault);
        }
    }

    Owned<LilvNodes> values(const char* predicate) const {
        return Owned<LilvNodes>(lilv_plugin_get_value(mPlugin, node(predicate).get()));
    }

    // A version number; -1 where there is none.
    int number(const char* predicate) const {
        const Owned<LilvNodes> found = values(predicate);
        const LilvNode* first = lilv_nodes_get_first(found.get());
        return first != nullptr && lilv_node_is_int(first) ? lilv_node_as_int(first) : -1;
    }

    void checkPlugin() {
        demand(lilv_plugin_verify(mPlugin), "lacks what every plug-in must tell");
        demand(lilv_nodes_size(values("http://usefulinc.com/ns/doap#license").get()) == 1, "no licence");
        demand(lilv_nodes_size(values("http://usefulinc.com/ns/doap#shortdesc").get()) == 1,
               "no short description");
        demand(lilv_nodes_size(values(kComment).get()) == 1, "no comment");
        demand(Owned<LilvNode>(lilv_plugin_get_project(mPlugin)) != nullptr, "no project");
        demand(Owned<LilvNode>(lilv_plugin_get_author_name(mPlugin)) != nullptr, "no maintainer");
        const int minor = number(LV2_CORE__minorVersion);
        demand(minor > 0 && minor % 2 == 0, "its minor version tells that it is unstable");
        const int micro = number(LV2_CORE__microVersion);
        demand(micro >= 0 && micro % 2 == 0, "its micro version tells that it is unstable");
        demand(lilv_nodes_size(values(kType).get()) > 1, "its class is none in particular");
        const Owned<LilvNodes> required(lilv_plugin_get_required_features(mPlugin));
        demand(lilv_nodes_size(required.get()) == 0, "it requires a feature");
        demand(!lilv_plugin_has_feature(mPlugin, node(LV2_CORE__inPlaceBroken).get()),
               "it is broken in place");
        demand(lilv_plugin_has_latency(mPlugin), "no latency port");
    }

    void checkPorts() {
        const std::string plugin = mWhere;
        std::set<std::string> symbols;
        std::set<std::string> names;
        for (std::uint32_t index = 0; index < lilv_plugin_get_num_ports(mPlugin); ++index) {
            const LilvPort* const port = lilv_plugin_get_port_by_index(mPlugin, index);
            const std::string symbol = lilv_node_as_string(lilv_port_get_symbol(mPlugin, port));
            const Owned<LilvNode> name(lilv_port_get_name(mPlugin, port));
            mWhere = plugin;
            mWhere.append(", port ").append(symbol);
            demand(symbols.insert(symbol).second, "another port has this symbol");
            demand(names.insert(lilv_node_as_string(name.get())).second, "another port has this name");
            checkTexts(port);
            if (lilv_port_is_a(mPlugin, port, node(LV2_CORE__ControlPort).get())) {
                checkRange(port);
            }
        }
        mWhere = plugin;
    }

    void checkTexts(const LilvPort* port) {
        const Owned<LilvNode> comment(lilv_port_get(mPlugin, port, node(kComment).get()));
        demand(comment != nullptr, "no comment");
        const Owned<LilvNode> group(lilv_port_get(mPlugin, port, node(LV2_PORT_GROUPS__group).get()));
        const bool isAudio = lilv_port_is_a(mPlugin, port, node(LV2_CORE__AudioPort).get());
        demand((group != nullptr) == isAudio,
               isAudio ? "no group" : "a group that some hosts take for a sound's");
        demand(group == nullptr ||
                   lilv_world_ask(mWorld.get(), group.get(), node(LV2_CORE__symbol).get(), nullptr),
               "its group is none");
    }

    void checkRange(const LilvPort* port) {
        LilvNode* nodes[3] = {};
        lilv_port_get_range(mPlugin, port, &nodes[0], &nodes[1], &nodes[2]);
        float numbers[3] = {NAN, NAN, NAN};
        for (int i = 0; i < 3; ++i) {
            const Owned<LilvNode> owned(nodes[i]);
            numbers[i] = owned != nullptr ? lilv_node_as_float(owned.get()) : NAN;
        }
        const auto [usual, lowest, highest] = numbers;
        demand(lowest <= usual && usual <= highest, "its default lies outside its range");
        checkScalePoints(port, lowest, highest);
    }

    void checkScalePoints(const LilvPort* port, float lowest, float highest) {
        const std::unique_ptr<LilvScalePoints, decltype(&lilv_scale_points_free)> points(
            lilv_port_get_scale_points(mPlugin, port), lilv_scale_points_free);
        std::set<std::string> labels;
        std::set<float> values;
        LILV_FOREACH(scale_points, each, points.get()) {
            const LilvScalePoint* const point = lilv_scale_points_get(points.get(), each);
            const float value = lilv_node_as_float(lilv_scale_point_get_value(point));
            demand(labels.insert(lilv_node_as_string(lilv_scale_point_get_label(point))).second,
                   "two scale points have one label");
            demand(values.insert(value).second, "two scale points have one value");
            demand(value >= lowest && value <= highest, "a scale point lies outside its range");
        }
        const bool isChoice = lilv_port_has_property(mPlugin, port, node(LV2_CORE__enumeration).get());
        demand(!isChoice || values.size() > 1, "there is nothing to choose among");
    }

    void checkBinary() {
        const Owned<LilvInstance> instance(lilv_plugin_instantiate(mPlugin, 48000.0, nullptr));
        demand(instance != nullptr, "its binary makes no plug-in");
        if (instance == nullptr) {
            return;
        }
        const Owned<LilvNodes> extensions(lilv_plugin_get_extension_data(mPlugin));
        LILV_FOREACH(nodes, each, extensions.get()) {
            const char* const uri = lilv_node_as_uri(lilv_nodes_get(extensions.get(), each));
            demand(lilv_instance_get_extension_data(instance.get(), uri) != nullptr,
                   std::string("it has no ") + uri);
        }
        demand(lilv_instance_get_extension_data(instance.get(), "urn:unknown") == nullptr,
               "it has an extension that nobody knows");
    }

    Owned<LilvWorld> mWorld;
    const LilvPlugin* mPlugin = nullptr;
    std::string mWhere;
    std::vector<std::string> mFaults;
};

bool makesProcesses(const std::string& function) {
    static const std::set<std::string> kFunctions = {
        "fork",  "vfork",  "_Fork",  "clone", "system", "popen",  "posix_spawn", "posix_spawnp",
        "execl", "execle", "execlp", "execv", "execve", "execvp", "execvpe",     "fexecve"};
    return kFunctions.contains(function.substr(0, function.find('@')));
}

} // namespace

std::vector<std::string> faultsOfBundle(const std::filesystem::path& bundle) {
    return Linter(bundle).faults();
}

std::vector<std::string> faultsOfBinary(const std::filesystem::path& binary, const std::string& symbol) {
    const validate::ElfFile file(binary.string());
    std::vector<std::string> faults;
    const std::set<std::string> exported = file.exportedSymbols();
    if (!exported.contains(symbol)) {
        faults.push_back(symbol + " is not exported");
    }
    for (const std::string& name : exported) {
        if (name != symbol) {
            faults.push_back(name + " is exported");
        }
    }
    for (const std::string& name : file.importedSymbols()) {
        if (makesProcesses(name)) {
            faults.push_back(name + " makes a process");
        }
    }
    for (const std::string& library : file.neededLibraries()) {
        if (library.starts_with("libstdc++") || library.starts_with("libc++")) {
            faults.push_back(library + " is needed");
        }
    }
    if (file.hasTextRelocations()) {
        faults.emplace_back("its code is written to");
    }
    return faults;
}

} // namespace varno::test
