#pragma once

#include "ClockedPlayer.h"
#include "EditOptions.h"
#include "Editor.h"
#include "EditorWindow.h"
#include "EffectLoop.h"
#include "EventLoop.h"
#include "Instance.h"
#include "SettingsKeeper.h"
#include "WindowDesktop.h"
#include "WindowPicture.h"

#include <memory>
#include <optional>

namespace varno {

/// An editor in its window, around an effect that hears a loop. [main]
class EditSession {
public:
    /// Opens everything but shows nothing yet. @param connection, instance outlive this object; the instance
    /// has its settings @throws CommandError, HostError
    EditSession(const EditOptions& options, XConnection& connection, Instance& instance, AudioLoop audio);
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    /// Shows the window until someone closes it, or until the screenshot is made. Tells on standard error of
    /// settings that are not saved then. @throws WorkError
    void run();

private:
    void openEditor();
    void setSize(WindowSize size);
    void bindKeys();
    void save();
    void tick();
    void planScreenshot(const std::string& path);
    void tellUnsaved() const;

    const EditOptions& mOptions;
    XConnection& mConnection;
    Instance& mInstance;
    SettingsKeeper mSettings;
    EventLoop mLoop;
    EditorWindow mWindow;
    std::optional<WindowPicture> mPicture;
    std::optional<AtomicFile> mScreenshot;
    WindowDesktop mDesktop;
    ACFPtr<ViewContainer> mContainer;
    EffectLoop mSound;
    ClockedPlayer mPlayer;
    std::unique_ptr<Editor> mEditor;
};

} // namespace varno
