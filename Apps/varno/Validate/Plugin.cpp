#include "Validate/Plugin.h"

#include <algorithm>
#include <utility>

namespace varno::validate {
namespace {

constexpr std::pair<std::string_view, Format> kEndings[] = {
    {".aaxplugin", Format::kModule}, {".lv2", Format::kLv2}, {".clap", Format::kClap}};

} // namespace

std::string_view formatName(Format format) {
    switch (format) {
    case Format::kModule:
        return "module";
    case Format::kLv2:
        return "lv2";
    case Format::kClap:
        return "clap";
    }
    return {};
}

std::string obstaclesOf(const Plugin& plugin) {
    constexpr std::size_t kMostNamed = 3;
    std::string text;
    const auto& plugins = plugin.plugins();
    for (std::size_t i = 0; i < std::min(plugins.size(), kMostNamed); ++i) {
        const std::string obstacle =
            plugins[i].obstacle.empty() ? "it has no audio outputs" : plugins[i].obstacle;
        text += (i == 0 ? "" : "; ") + plugins[i].id + ": " + obstacle;
    }
    if (plugins.size() > kMostNamed) {
        text += "; and " + std::to_string(plugins.size() - kMostNamed) + " more plug-ins that cannot be used";
    }
    return text.empty() ? "the bundle has no plug-in" : text;
}

std::optional<Format> formatOf(const std::filesystem::path& path) {
    const auto name = path.has_filename() ? path : path.parent_path();
    for (const auto& [ending, format] : kEndings) {
        if (name.extension() == ending) {
            return format;
        }
    }
    return std::nullopt;
}

bool PluginSelection::has(const std::string& id) const {
    return mIds.empty() || std::ranges::find(mIds, id) != mIds.end();
}

void PluginSelection::requireAmong(const std::vector<std::string>& bundle) const {
    constexpr std::size_t kMostNamed = 10;
    for (const std::string& id : mIds) {
        if (std::ranges::find(bundle, id) == bundle.end()) {
            std::string names;
            for (std::size_t i = 0; i < std::min(bundle.size(), kMostNamed); ++i) {
                names += (i == 0 ? "" : ", ") + bundle[i];
            }
            if (bundle.size() > kMostNamed) {
                names += " and " + std::to_string(bundle.size() - kMostNamed) + " more";
            }
            throw UnknownPlugin(std::string("no plug-in \"").append(id).append("\", expected one of ") +
                                names);
        }
    }
}

std::unique_ptr<Plugin> openPlugin(const std::filesystem::path& path, const PluginSelection& selection) {
    switch (formatOf(path).value_or(Format{})) {
    case Format::kModule:
        return openModulePlugin(path, selection);
    case Format::kLv2:
        return openLv2Plugin(path, selection);
    case Format::kClap:
        return openClapPlugin(path, selection);
    }
    throw PluginError(path.string() + ": no plug-in of a known format");
}

} // namespace varno::validate
