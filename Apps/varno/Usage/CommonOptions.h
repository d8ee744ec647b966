#ifndef VARNO_APPS_VARNO_USAGE_COMMONOPTIONS_H
#define VARNO_APPS_VARNO_USAGE_COMMONOPTIONS_H

#include "CommandTable.h"

namespace varno {

// Options that several commands take.

inline constexpr OptionEntry kHelp = {
    .name = "--help", .shortName = "-h", .group = "General", .help = "Print this help and exit."};

inline constexpr OptionEntry kModule = {
    .name = "--module",
    .value = "BUNDLE",
    .kind = ValueKind::kDirectory,
    .group = "General",
    .help = "Use the effect of this bundle (Varno-S.aaxplugin). Default: what "
            "VARNO_MODULE names, else the bundle that came with the program."};

inline constexpr OptionEntry kSet = {
    .name = "--set",
    .value = "ID=VALUE",
    .kind = ValueKind::kSetting,
    .repeatable = true,
    .group = "Settings",
    .help = "Set a parameter: a number is its normalized value, 0 to 1; anything "
            "else is the parameter's own text. May be given more than once."};

inline constexpr OptionEntry kPreset = {
    .name = "--preset",
    .value = "NAME|FILE",
    .kind = ValueKind::kPreset,
    .group = "Settings",
    .help =
        "Apply a preset: every parameter but the master bypass. A factory preset by its name, which varno "
        "presets lists, or a file with the text that the editor copies and pastes. What has a dot or a "
        "slash is a file."};

inline constexpr OptionEntry kState = {
    .name = "--state",
    .value = "FILE",
    .kind = ValueKind::kFile,
    .group = "Settings",
    .help = "Restore a saved state, the record that a host keeps: every parameter "
            "but the master bypass."};

inline constexpr OptionEntry kScale = {
    .name = "--scale",
    .value = "FACTOR",
    .kind = ValueKind::kText,
    .group = "Window",
    .help = "Enlarge the window, 0.5 to 8. Default: GDK_SCALE, else the desktop's Xft.dpi over 96, else 1."};

inline constexpr OptionEntry kJson = {
    .name = "--json", .group = "Reports", .help = "Print the same as JSON, for scripts."};

} // namespace varno

#endif
