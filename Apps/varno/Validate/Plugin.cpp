#include "Validate/Plugin.h"

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

std::optional<Format> formatOf(const std::filesystem::path& path) {
    const auto name = path.has_filename() ? path : path.parent_path();
    for (const auto& [ending, format] : kEndings) {
        if (name.extension() == ending) {
            return format;
        }
    }
    return std::nullopt;
}

std::unique_ptr<Plugin> openPlugin(const std::filesystem::path& path) {
    switch (formatOf(path).value_or(Format{})) {
    case Format::kModule:
        return openModulePlugin(path);
    case Format::kLv2:
        return openLv2Plugin(path);
    case Format::kClap:
        return openClapPlugin(path);
    }
    throw PluginError(path.string() + ": no plug-in of a known format");
}

} // namespace varno::validate
