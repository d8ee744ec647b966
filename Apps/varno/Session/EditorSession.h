#ifndef VARNO_APPS_VARNO_SESSION_EDITORSESSION_H
#define VARNO_APPS_VARNO_SESSION_EDITORSESSION_H

#include "Files/AtomicFile.h"
#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "Session/EventLoop.h"
#include "Session/SettingsKeeper.h"
#include "Session/WindowOptions.h"
#include "Session/WindowPicture.h"
#include "Surround/Surround.h"
#include "Window/DesktopSettings.h"
#include "Window/EditorWindow.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace varno {

/// The desktop around a window, for the editor in it: the window's event loop and the scale. [main]
class WindowDesktop : public Desktop {
public:
    /// @param loop outlives this object
    /// @param scale 1 is the plain size
    WindowDesktop(EventLoop& loop, double scale)
        : mLoop(loop),
          mScale(scale) {}

    void setScale(double scale) { mScale = scale; }
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

/// The bypass of what a window's effect is part of.
struct BypassSwitch {
    std::function<bool()> isOn;
    std::function<void(bool)> set;
};

/// The quality of the sound; see BarOwner.
struct QualitySwitch {
    std::function<Quality()> present;
    std::function<void(std::int32_t factor)> choose;
};

/// What a window is opened for; everything outlives it.
struct EditorSubject {
    Instance& instance; ///< Has its settings.
    CompareSlots& slots;
    SettingsKeeper& settings;
    BypassSwitch bypass;
    QualitySwitch quality;
};

/// An editor in its window, for an instance that another thread processes with. [main]
class EditorSession : private SurroundOwner {
public:
    /// Opens everything but shows nothing yet. @param options, connection outlive this object
    /// @throws CommandError, HostError
    EditorSession(const WindowOptions& options, XConnection& connection, const EditorSubject& subject);
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;
    ~EditorSession() override = default;

    /// For further watches and timers while the window is shown.
    EventLoop& loop() { return mLoop; }
    /// Whether the window has the bar, which shows messages.
    bool hasBar() const { return mSurround.hasBar(); }
    /// Shows a message in the bar, until the next.
    void showMessage(const std::string& message) { mSurround.showMessage(message); }
    /// Shows the window until it is closed, the screenshot is made or the loop quits.
    /// @throws WindowError, Interrupted, WorkError where the screenshot cannot be written
    void run();

private:
    void resize(PixelSize size) override { mWindow.resize({size.width, size.height}); }
    bool isBypassed() const override { return mSubject.bypass.isOn(); }
    void setBypassed(bool isBypassed) override { mSubject.bypass.set(isBypassed); }
    Quality quality() const override { return mSubject.quality.present(); }
    void setQuality(std::int32_t factor) override { mSubject.quality.choose(factor); }
    void save() override;
    void escape();

    void openEditor();
    void bindKeys();
    void planScreenshot(const std::string& path);

    const WindowOptions& mOptions;
    XConnection& mConnection;
    EditorSubject mSubject;
    EventLoop mLoop;
    DesktopSettings mSystem;
    EditorWindow mWindow;
    std::optional<WindowPicture> mPicture;
    std::optional<AtomicFile> mScreenshot;
    WindowDesktop mDesktop;
    Surround mSurround;
    std::optional<std::chrono::steady_clock::time_point> mAskedAt; ///< Whether to close without saving.
};

} // namespace varno

#endif
