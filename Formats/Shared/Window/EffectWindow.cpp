#include "Shared/Window/EffectWindow.h"

#include "Window/Scale.h"
#include "Window/WindowProperties.h"

#include <cstdlib>

namespace varno {

namespace {

// As the build copies them beside the pictures.
std::filesystem::path presetsIn(const std::filesystem::path& resources) {
    return resources.empty() ? std::filesystem::path() : resources / "presets";
}

void requireParent(const XConnection& connection, xcb_window_t parent) {
    if (!connection.has(parent)) {
        throw WindowError("the host offers window " + std::to_string(parent) + ", which is not there");
    }
}

} // namespace

std::string environmentDisplay() {
    const char* const name = std::getenv("DISPLAY");
    return name == nullptr ? "" : name;
}

double windowScale(std::optional<double> hostScale, const XConnection& connection) {
    return hostScale && isScale(*hostScale)
               ? *hostScale
               : desktopScale({}, connection.text(connection.screen().root, XCB_ATOM_RESOURCE_MANAGER));
}

EffectWindow::EffectWindow(XConnection& connection, Desktop& desktop, Instance& instance,
                           EffectWindowOwner& owner, const Setup& setup)
    : mConnection(connection),
      mInstance(instance),
      mOwner(owner),
      mSlots(settingsOf(instance)) {
    const xcb_window_t parent = setup.parent == XCB_WINDOW_NONE ? openShell(setup) : setup.parent;
    requireParent(mConnection, parent);
    mSurround.emplace(mConnection, parent, mInstance, mSlots, desktop, static_cast<SurroundOwner&>(*this),
                      SurroundSetup{.factoryPresets = presetsIn(setup.resources)});
    if (mSurround->open().isEmpty()) {
        throw WindowError(
            "the editor has nothing to show: its pictures are expected in the bundle's resources");
    }
    if (mShell) {
        mShell->setFocusWindow(mSurround->focusWindow());
    }
    mConnection.sync();
}

xcb_window_t EffectWindow::openShell(const Setup& setup) {
    const std::string title = setup.title.empty() ? mInstance.effect().names.front() : setup.title;
    mShell.emplace(mConnection, EditorWindow::Kind::kManaged,
                   WindowProperties{title, windowIcon(setup.resources)});
    mShell->setCloseHandler([this] { mIsClosed = true; });
    return mShell->id();
}

// Only the host can resize its own window.
void EffectWindow::resize(PixelSize size) {
    if (mShell) {
        mShell->resize({size.width, size.height});
    } else {
        mOwner.resized(mSurround->id(), size);
    }
}

bool EffectWindow::idle() {
    mSurround->timer();
    handleEvents();
    return !mIsClosed && !mIsLost;
}

void EffectWindow::handleEvents() {
    if (mIsLost) {
        return;
    }
    try {
        mShell ? mShell->handleEvents() : mConnection.handleEvents();
    } catch (const WindowError&) {
        mIsLost = true;
    }
    if (mShell && mIsClosed) {
        mShell->hide();
    }
}

bool EffectWindow::show() {
    if (!mShell || mIsLost) {
        return false;
    }
    mIsClosed = false;
    mShell->show();
    return true;
}

bool EffectWindow::hide() {
    if (!mShell || mIsLost) {
        return false;
    }
    mShell->hide();
    return true;
}

} // namespace varno
