#include "Validate/Lv2/Lv2Window.h"

#include "Validate/Lv2/Lv2Editor.h"

#include <lv2/core/lv2.h>
#include <lv2/data-access/data-access.h>
#include <lv2/instance-access/instance-access.h>
#include <lv2/ui/ui.h>
#include <memory>
#include <vector>

namespace varno::validate {
namespace {

struct FreesWindows {
    void operator()(LilvUIs* windows) const { lilv_uis_free(windows); }
};
struct FreesWindowNode {
    void operator()(LilvNode* node) const { lilv_node_free(node); }
};
using WindowNode = std::unique_ptr<LilvNode, FreesWindowNode>;

std::string pathOf(const LilvNode* uri) {
    char* const path = lilv_file_uri_parse(lilv_node_as_uri(uri), nullptr);
    std::string text = path == nullptr ? "" : path;
    lilv_free(path);
    return text;
}

std::vector<std::string> featuresOf(LilvWorld* world, const LilvUI* window, const char* kind) {
    const WindowNode predicate(lilv_new_uri(world, kind));
    LilvNodes* const nodes = lilv_world_find_nodes(world, lilv_ui_get_uri(window), predicate.get(), nullptr);
    std::vector<std::string> names;
    LILV_FOREACH(nodes, i, nodes) {
        names.emplace_back(lilv_node_as_string(lilv_nodes_get(nodes, i)));
    }
    lilv_nodes_free(nodes);
    return names;
}

Lv2Window describe(LilvWorld* world, const LilvUI* window) {
    lilv_world_load_resource(world, lilv_ui_get_uri(window));
    Lv2Window found{.uri = lilv_node_as_uri(lilv_ui_get_uri(window)),
                    .binary = pathOf(lilv_ui_get_binary_uri(window)),
                    .bundle = pathOf(lilv_ui_get_bundle_uri(window)),
                    .obstacle = {}};
    for (const char* const kind : {LV2_CORE__requiredFeature, LV2_CORE__optionalFeature}) {
        for (const std::string& feature : featuresOf(world, window, kind)) {
            found.usesInstance =
                found.usesInstance || feature == LV2_INSTANCE_ACCESS_URI || feature == LV2_DATA_ACCESS_URI;
            if (kind == std::string(LV2_CORE__requiredFeature) && !Lv2Editor::offers(feature)) {
                found.obstacle = "the window needs the feature " + feature;
            }
        }
    }
    return found;
}

} // namespace

Lv2Window readWindow(LilvWorld* world, const LilvPlugin* plugin) {
    const std::unique_ptr<LilvUIs, FreesWindows> windows(lilv_plugin_get_uis(plugin));
    const WindowNode wanted(lilv_new_uri(world, LV2_UI__X11UI));
    std::string others;
    LILV_FOREACH(uis, i, windows.get()) {
        const LilvUI* const window = lilv_uis_get(windows.get(), i);
        if (lilv_ui_is_a(window, wanted.get())) {
            return describe(world, window);
        }
        others = "the window is not one of X11: ";
        others += lilv_node_as_uri(lilv_ui_get_uri(window));
    }
    return {.uri = {},
            .binary = {},
            .bundle = {},
            .obstacle = others.empty() ? "the plug-in has no window" : others};
}

} // namespace varno::validate
