#include "Tests/Apps/varno/Validate/Formats/FaultyEditor.h"

#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace varno::fixture {
namespace {

constexpr int kPlainWidth = 200;
constexpr int kPlainHeight = 100;

FaultyEditor* gLast = nullptr;
int gOpenings = 0;

[[noreturn]] void waitForever() {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

int scaled(int plain, double scale) {
    const int extra = isPlanted("editor-odd-scale") && scale > 1.0 ? 37 : 0;
    return static_cast<int>(std::lround(plain * scale)) + extra;
}

} // namespace

FixtureSound& fixtureSound() {
    static FixtureSound sound;
    return sound;
}

void FixtureSound::count() {
    ++buffers;
    if (isPlanted("editor-runs-alone") && openEditors > 0 &&
        std::this_thread::get_id() != editorThread.load()) {
        std::abort();
    }
}

FaultyEditor::FaultyEditor(Host host, std::uint32_t parent, double scale)
    : mHost(std::move(host)),
      mWidth(scaled(kPlainWidth, scale)),
      mHeight(scaled(kPlainHeight, scale)),
      mConnection(xcb_connect(nullptr, nullptr)),
      mWindow(xcb_generate_id(mConnection)) {
    FixtureSound& sound = fixtureSound();
    ++sound.openEditors;
    sound.editorThread = std::this_thread::get_id();
    if ((isPlanted("editor-needs-sound") && sound.isActive && sound.buffers == 0) ||
        (isPlanted("editor-needs-preparing") && !sound.isActive) ||
        (isPlanted("editor-crashes-reopened") && ++gOpenings == 26)) {
        std::abort();
    }
    gLast = this;
    const std::uint32_t events = XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                 XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, mWindow, parent, 0, 0,
                      static_cast<std::uint16_t>(mWidth), static_cast<std::uint16_t>(mHeight), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(mConnection, mWindow);
    xcb_flush(mConnection);
    leaveTraces();
    mHost.resize(width(), height());
}

FaultyEditor::~FaultyEditor() {
    if (isPlanted("editor-closed-in-gesture") && mIsPressed) {
        std::abort();
    }
    *mIsOpen = false;
    --fixtureSound().openEditors;
    gLast = nullptr;
    if (std::exchange(mIsPressed, false)) {
        mHost.touch(false);
    }
    xcb_disconnect(mConnection);
}

void FaultyEditor::leaveTraces() {
    static xcb_connection_t* const kept =
        isPlanted("editor-leaves-pixmap") ? xcb_connect(nullptr, nullptr) : nullptr;
    if (kept != nullptr) {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(kept)).data;
        xcb_create_pixmap(kept, 24, xcb_generate_id(kept), screen->root, 10, 10);
        xcb_flush(kept);
    }
    if (isPlanted("editor-leaves-thread")) {
        std::thread([] { ::pause(); }).detach();
    }
    if (isPlanted("editor-leaves-descriptor")) {
        (void)::open("/dev/null", O_RDONLY | O_CLOEXEC);
    }
    if (isPlanted("editor-leaves-memory")) {
        (void)::strdup("lost each time it is opened");
    }
    if (isPlanted("editor-leaves-pages")) {
        constexpr std::size_t kBytes = 1 << 18;
        void* const pages =
            ::mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        std::memset(pages, 1, kBytes);
    }
}

int FaultyEditor::width() const {
    return mWidth + (isPlanted("editor-wrong-size") ? 10 : 0);
}

void FaultyEditor::told(double value) {
    if (std::exchange(mTold, value) != value && isPlanted("editor-echoes")) {
        mHost.write(value);
    }
}

void FaultyEditor::idle() {
    if (isPlanted("editor-shares-pointer") && gLast != this && gLast == nullptr) {
        std::abort();
    }
    if (isPlanted("editor-uses-instance") && fixtureSound().instances == 0) {
        std::abort();
    }
    if (xcb_connection_has_error(mConnection) != 0) {
        if (isPlanted("editor-dies-with-server")) {
            std::_Exit(1);
        }
        if (isPlanted("editor-waits-for-server")) {
            waitForever();
        }
        return;
    }
    // A call of the host may close this editor.
    const auto isOpen = mIsOpen;
    while (*isOpen) {
        const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(
            xcb_poll_for_event(mConnection), &std::free);
        if (event == nullptr) {
            break;
        }
        take(*event);
    }
}

void FaultyEditor::take(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        takeButton(reinterpret_cast<const xcb_button_press_event_t&>(event),
                   (event.response_type & 0x7F) == XCB_BUTTON_PRESS);
        break;
    case XCB_MOTION_NOTIFY:
        if (mIsPressed) {
            drag(reinterpret_cast<const xcb_motion_notify_event_t&>(event).event_x);
        }
        break;
    case XCB_KEY_PRESS:
        mHadKey = true;
        if (isPlanted("editor-crashes-on-key")) {
            std::abort();
        }
        if (isPlanted("editor-waits-on-key")) {
            waitForever();
        }
        break;
    default:
        break;
    }
}

void FaultyEditor::takeButton(const xcb_button_press_event_t& event, bool isPress) {
    constexpr xcb_button_t kLeft = 1;
    if (event.detail == kLeft) {
        mIsPressed = isPress;
        if (isPress || !(isPlanted("editor-open-gesture") && mHadKey)) {
            mHost.touch(isPress);
        }
    } else if (isPress && isPlanted("editor-beyond-range")) {
        mHost.write(1.5);
    }
}

void FaultyEditor::drag(int x) {
    mHost.write(std::clamp(static_cast<double>(x) / mWidth, 0.0, 1.0));
}

} // namespace varno::fixture
