#ifndef VARNO_APPS_VARNO_SESSION_WINDOWOPTIONS_H
#define VARNO_APPS_VARNO_SESSION_WINDOWOPTIONS_H

#include "CommandLine/CommandLine.h"
#include "Files/AtomicFile.h"
#include "Session/SettingsKeeper.h"
#include "Settings/Settings.h"
#include "Window/Scale.h"

#include <optional>
#include <string>

namespace varno {

inline constexpr OptionEntry kScaleOption = {
    .name = "--scale",
    .value = "FACTOR",
    .kind = ValueKind::kNumber,
    .numbers = {.least = kSmallestScale, .most = kLargestScale},
    .group = "Window",
    .help = "Enlarge the window. Default: GDK_SCALE, else the desktop's Xft.dpi over 96, else 1."};

inline constexpr OptionEntry kNoBarOption = {
    .name = "--no-bar", .group = "Window", .help = "Leave out the bar above the editor."};

inline constexpr double kUsualPictureDelayS = 0.5;

/// How an editor's window is shown and where its settings are saved.
struct WindowOptions {
    std::string command;         ///< That shows it: "edit".
    std::string subject;         ///< What the effect processes, for the window's title; empty for none.
    std::optional<double> scale; ///< Nothing: the desktop's.
    bool hasBar = true;          ///< Above the editor.
    std::optional<std::string> state;
    std::optional<std::string> saveState; ///< Paths.
    std::optional<std::string> screenshot;
    double afterS = kUsualPictureDelayS; ///< Until the screenshot.
    Overwrite overwrite = Overwrite::kRefuse;
};

/// Those of any command with a window: all but subject and screenshot. @param command its name
/// @throws UsageError where a value is out of range
WindowOptions windowOptions(const CommandLine& line, const std::string& command);

/// Checks that no file to be written is one that is read. --save-state may name the state that is loaded.
/// @param audio path of the input; nothing: there is none
/// @throws UsageError
void checkFiles(const WindowOptions& options, const Settings& settings,
                const std::optional<std::string>& audio = {});

/// Names the file of --save-state, else that of --state; the loaded one may be replaced.
/// @throws FileError where it could not be written
void chooseSettingsFile(SettingsKeeper& settings, const WindowOptions& options);

} // namespace varno

#endif
