#include "LV2/UI/PluginWindow.h"

#include "Window/Scale.h"
#include "Window/WindowProperties.h"
#include "Window/XConnection.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <utility>

namespace varno {

namespace {

// Longest time that the display may take to make a requested window.
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

// The new child of `parent`, which had the children `before`. It is requested on another connection, so it
// may appear late.
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
      mEditor(mInstance, mDesktop, [this](PixelSize size) { resize(size); }) {
    if (offer.parent == XCB_WINDOW_NONE) {
        openInShell(offer, source.resources);
    } else {
        openIn(offer.parent);
    }
    resize(mEditor.size());
}

void PluginWindow::openIn(xcb_window_t parent) {
    if (!mConnection->has(parent)) {
        throw WindowError("the host offers window " + std::to_string(parent) + ", which is not there");
    }
    const auto before = mConnection->children(parent);
    openEditor(parent);
    mID = newChild(*mConnection, parent, before);
    // Hosts read from it how large the window may be.
    const PixelSize size = mEditor.size();
    setOnlySize(*mConnection, mID, {size.width, size.height});
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
    if (mEditor.open(parent).isEmpty()) {
        throw WindowError(
            "the editor has nothing to show: its pictures are expected in the bundle's resources");
    }
}

// Only the host can resize its own window.
void PluginWindow::resize(PixelSize size) {
    if (mShell) {
        mShell->resize({size.width, size.height});
    } else if (mResize != nullptr) {
        mResize->ui_resize(mResize->handle, size.width, size.height);
    }
}

bool PluginWindow::idle() {
    mPorts.apply();
    mEditor.timer();
    // Requests of the editor.
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
