/// The window of the fixtures of all formats: one slider on X11, sound or with the fault that the environment
/// names.
#ifndef VARNO_TESTS_APPS_VARNO_VALIDATE_FORMATS_FAULTYEDITOR_H
#define VARNO_TESTS_APPS_VARNO_VALIDATE_FORMATS_FAULTYEDITOR_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <xcb/xcb.h>

namespace varno::fixture {

/// What the sound of the fixtures tells their windows, all instances together.
struct FixtureSound {
    std::atomic<int> instances{0};
    std::atomic<bool> isActive{false};
    std::atomic<int> buffers{0};
    std::atomic<int> openEditors{0};
    std::atomic<std::thread::id> editorThread;

    /// To be called at each buffer.
    void count();
};
FixtureSound& fixtureSound();

/// A window in the host's. Its left button drags the value from 0 to 1.
class FaultyEditor {
public:
    /// What it has its host do.
    struct Host {
        std::function<void(int width, int height)> resize;
        std::function<void(bool isTouched)> touch;
        std::function<void(double value)> write;
    };

    FaultyEditor(Host host, std::uint32_t parent, double scale);
    FaultyEditor(const FaultyEditor&) = delete;
    FaultyEditor& operator=(const FaultyEditor&) = delete;
    ~FaultyEditor();

    /// Takes what has arrived.
    void idle();
    /// A value of the host's.
    void told(double value);
    // As it states them, in pixels.
    int width() const;
    int height() const { return mHeight; }

private:
    void take(const xcb_generic_event_t& event);
    void takeButton(const xcb_button_press_event_t& event, bool isPress);
    void leaveTraces();
    void drag(int x);

    Host mHost;
    int mWidth;
    int mHeight;
    xcb_connection_t* mConnection;
    xcb_window_t mWindow;
    bool mIsPressed = false;
    bool mHadKey = false;
    std::shared_ptr<bool> mIsOpen = std::make_shared<bool>(true);
    std::optional<double> mTold;
};

} // namespace varno::fixture

#endif
