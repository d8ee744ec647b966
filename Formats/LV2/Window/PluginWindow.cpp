#include "LV2/Window/PluginWindow.h"

#include "Window/DesktopScale.h"
#include "Window/WindowError.h"
#include "Window/WindowIcon.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <utility>

namespace varno {
namespace {

// How long the display may take to make a window that it has been asked for.
constexpr std::chrono::seconds kLongestMaking(5);
constexpr std::chrono::milliseconds kPause(1);

std::string displayName() {
    const char* const name = std::getenv("DISPLAY");
    return name == nullptr ? "" : name;
}

InstanceSetup setupFor(std::int32_t channels) {
    InstanceSetup setup;
    setup.channels = channels;
    return setup;
}

double scaleFor(const HostOffer& offer, const XConnection& connection) {
    return offer.scale
               ? *offer.scale
               : desktopScale({}, connection.text(connection.screen().root, XCB_ATOM_RESOURCE_MANAGER));
}

WindowSize pixels(const AAX_Point& size) {
    return {static_cast<int>(std::lround(size.horz)), static_cast<int>(std::lround(size.vert))};
}

// The window that has come into `parent` since it held `before`. Others ask the display for it, on another
// connection, so it may come late.
xcb_window_t newChild(const XConnection& connection, xcb_window_t parent,
                      const std::vector<xcb_window_t>& before) {
    const auto deadline = std::chrono::steady_clock::now() + kLongestMaking;
    while (std::chrono::steady_clock::now() < deadline) {
        for (const xcb_window_t child : connection.children(parent)) {
            if (std::ranges::find(before, child) == before.end()) {
                return child;
            }
        }
        connection.throwIfLost();
        std::this_thread::sleep_for(kPause);
    }
    throw WindowError("the editor shows no view in the host's window");
}

} // namespace

PluginWindow::PluginWindow(std::shared_ptr<Module> module, const WindowSource& source, const HostOffer& offer,
                           const HostCalls& calls)
    : mConnection(displayName()),
      mInstance(std::move(module), setupFor(source.channels)),
      mPorts(mInstance, calls),
      mResize(offer.resize),
      mDesktop(scaleFor(offer, *mConnection)),
      mContainer(ACFPtr<ViewContainer>::Adopt(new ViewContainer(mInstance.module().context()))) {
    mContainer->setDesktop(&mDesktop);
    mContainer->setSizeHandler([this](const AAX_Point& size) {
        resize(size);
        return static_cast<AAX_Result>(AAX_SUCCESS);
    });
    if (offer.parent == XCB_WINDOW_NONE) {
        openInShell(offer, source.resources);
    } else {
        openIn(offer.parent);
    }
    resize(mEditor->size());
}

void PluginWindow::openIn(xcb_window_t parent) {
    if (!mConnection->has(parent)) {
        throw WindowError("the host offers window " + std::to_string(parent) + ", which is not there");
    }
    const auto before = mConnection->children(parent);
    openEditor(parent);
    mID = newChild(*mConnection, parent, before);
    // Hosts read from it how large the window may be.
    setOnlySize(*mConnection, mID, pixels(mEditor->size()));
    mConnection->sync();
    mConnection.reset();
}

void PluginWindow::openInShell(const HostOffer& offer, const std::filesystem::path& resources) {
    const std::string title = offer.title.empty() ? mInstance.effect().names.front() : offer.title;
    mShell.emplace(*mConnection, EditorWindow::Kind::kManaged,
                   WindowProperties{title, windowIcon(resources)});
    mShell->setCloseHandler([this] { mIsClosed = true; });
    mID = mShell->id();
    openEditor(mID);
}

void PluginWindow::openEditor(xcb_window_t parent) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): native views go over as pointers, and X11 has numbers
    void* const view = reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent));
    mContainer->setView(AAX_eViewContainerType_X11, view);
    mEditor = mInstance.openEditor(*mContainer);
    const auto size = mEditor ? pixels(mEditor->size()) : WindowSize{};
    if (size.width < 1 || size.height < 1) {
        throw WindowError(
            "the editor has nothing to show: its pictures are expected in the bundle's resources");
    }
}

// The host's window is the host's to resize.
void PluginWindow::resize(const AAX_Point& size) {
    const auto [width, height] = pixels(size);
    if (mShell) {
        mShell->resize({width, height});
    } else if (mResize != nullptr) {
        mResize->ui_resize(mResize->handle, width, height);
    }
}

bool PluginWindow::idle() {
    mPorts.apply();
    mInstance.timer();
    mEditor->timer();
    // What the editor has asked for meanwhile.
    mInstance.idle();
    if (mShell && !mIsLost) {
        try {
            mShell->handleEvents();
        } catch (const WindowError&) {
            mIsLost = true;
        }
        if (mIsClosed) {
            mShell->hide();
        }
    }
    return !mIsClosed && !mIsLost;
}

bool PluginWindow::show() {
    if (!mShell || mIsLost) {
        return false;
    }
    mIsClosed = false;
    mShell->show();
    return true;
}

bool PluginWindow::hide() {
    if (!mShell || mIsLost) {
        return false;
    }
    mShell->hide();
    return true;
}

} // namespace varno
