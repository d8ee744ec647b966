#ifndef VARNO_APPS_VARNO_COMMANDS_EDITSESSION_H
#define VARNO_APPS_VARNO_COMMANDS_EDITSESSION_H

#include "EventLoop.h"
#include "Host/Editor.h"
#include "Host/Instance.h"
#include "SettingsKeeper.h"
#include "Window/EditorWindow.h"
#include "WindowDesktop.h"
#include "WindowOptions.h"
#include "WindowPicture.h"

#include <optional>

namespace varno {

/// An editor in its window, around an effect that others process with. [main]
class EditSession {
public:
    /// Opens everything but shows nothing yet. @param options, connection, instance, settings outlive this
    /// object; the instance has its settings @throws CommandError, HostError
    EditSession(const WindowOptions& options, XConnection& connection, Instance& instance,
                SettingsKeeper& settings);
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    /// For what else is to be done while the window is there.
    EventLoop& loop() { return mLoop; }
    /// Shows the window until someone closes it, until the screenshot is made, or until the loop quits.
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
