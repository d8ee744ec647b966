#ifndef VARNO_APPS_VARNO_SESSION_EDITORSESSION_H
#define VARNO_APPS_VARNO_SESSION_EDITORSESSION_H

#include "AudioFile/AtomicFile.h"
#include "CommandLine/CommandLine.h"
#include "Host/Editor.h"
#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "Session/EventLoop.h"
#include "Session/SettingsKeeper.h"
#include "Session/WindowPicture.h"
#include "Settings/Settings.h"
#include "Window/EditorWindow.h"

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

inline constexpr double kUsualPictureDelayS = 0.5;

/// How an editor's window is shown and where its settings are saved.
struct WindowOptions {
    std::string command;         ///< That shows it: "edit".
    std::string subject;         ///< What the effect processes, for the window's title; empty for none.
    std::optional<double> scale; ///< Nothing: the desktop's.
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
/// @throws AudioFileError where it could not be written
void chooseSettingsFile(SettingsKeeper& settings, const WindowOptions& options);

/// The desktop around a window, for the editor in it: the window's event loop and the scale. [main]
class WindowDesktop : public Desktop {
public:
    /// @param loop outlives this object
    /// @param scale 1 is the plain size
    WindowDesktop(EventLoop& loop, double scale)
        : mLoop(loop),
          mScale(scale) {}

    double scale() const override { return mScale; }
    void watch(int descriptor, const void* owner, Wake wake) override {
        mLoop.watch(descriptor, owner, std::move(wake));
    }
    void unwatch(int descriptor, const void* owner) override { mLoop.unwatch(descriptor, owner); }
    void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) override {
        mLoop.startTimer(period, owner, std::move(wake));
    }
    void stopTimer(const void* owner) override { mLoop.stopTimer(owner); }

private:
    EventLoop& mLoop;
    double mScale;
};

/// An editor in its window, for an instance that another thread processes with. [main]
class EditorSession {
public:
    /// Opens everything but shows nothing yet. @param options, connection, instance, settings outlive this
    /// object; the instance has its settings @throws CommandError, HostError
    EditorSession(const WindowOptions& options, XConnection& connection, Instance& instance,
                  SettingsKeeper& settings);
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;

    /// For further watches and timers while the window is shown.
    EventLoop& loop() { return mLoop; }
    /// Shows the window until it is closed, the screenshot is made or the loop quits.
    /// @throws WindowError, Interrupted, WorkError where the screenshot cannot be written
    void run();

private:
    void openEditor();
    void bindKeys();
    void planScreenshot(const std::string& path);

    const WindowOptions& mOptions;
    XConnection& mConnection;
    Instance& mInstance;
    SettingsKeeper& mSettings;
    EventLoop mLoop;
    EditorWindow mWindow;
    std::optional<WindowPicture> mPicture;
    std::optional<AtomicFile> mScreenshot;
    WindowDesktop mDesktop;
    EditorView mEditor;
};

} // namespace varno

#endif
