#include "CLAP/Window/ClapWindow.h"

#include "CLAP/BinaryFolder.h"
#include "CLAP/Window/HostMenu.h"
#include "Window/Scale.h"
#include "Window/WindowProperties.h"

namespace varno {

void ShelterWindow::moveInto(xcb_window_t parent) {
    xcb_reparent_window(connection().get(), id(), parent, 0, 0);
}

ClapWindow::ClapWindow(ClapPlugin& plugin, bool isFloating)
    : mPlugin(plugin),
      mConnection(environmentDisplay()),
      mValues(plugin.settings(), plugin.parameters(), plugin.values(), plugin.host()),
      mDesktop(plugin.host(), windowScale({}, mConnection)),
      mHostGui(plugin.host().extension<clap_host_gui_t>(CLAP_EXT_GUI)) {
    if (!isFloating) {
        mShelter.emplace(mConnection);
    }
    mPlugin.takeHostValues();
    mWindow.emplace(mConnection, mDesktop, plugin.settings(), static_cast<EffectWindowOwner&>(*this),
                    EffectWindow::Setup{.parent = mShelter ? mShelter->id() : xcb_window_t{XCB_WINDOW_NONE},
                                        .resources = binaryResources()});
    mDesktop.watch(mConnection.descriptor(), this, [this] { turn(); });
    mClock.emplace(plugin.host());
}

void ClapWindow::resized(xcb_window_t /*window*/, PixelSize size) {
    mShelter->setSize(size);
    mConnection.flush();
    if (mIsInHost && !mIsResizing && mHostGui != nullptr && mHostGui->request_resize != nullptr) {
        mHostGui->request_resize(&mPlugin.host().table(), static_cast<std::uint32_t>(size.width),
                                 static_cast<std::uint32_t>(size.height));
    }
}

std::vector<HostMenuItem> ClapWindow::menuItems(const std::string& id) {
    const auto parameter = mPlugin.parameters().indexOf(std::string_view(id));
    return parameter ? hostMenuOf(mPlugin.host(), mPlugin.parameters()[*parameter].id)
                     : std::vector<HostMenuItem>();
}

const HostIndication* ClapWindow::indication(const FocusItem& item) {
    if (item.control != nullptr) {
        const auto parameter = mPlugin.parameters().indexOf(std::string_view(item.control->mID));
        return parameter ? mPlugin.indication(mPlugin.parameters()[*parameter].id) : nullptr;
    }
    if (item.button->button == BarLayout::Button::kBypass) {
        return mPlugin.indication(kBypassId);
    }
    return item.button->button == BarLayout::Button::kQuality ? mPlugin.indication(kQualityId) : nullptr;
}

bool ClapWindow::setScale(double scale) {
    if (!isScale(scale)) {
        return false;
    }
    mDesktop.setScale(scale);
    mWindow->surround().desktopScaled();
    mConnection.sync();
    return true;
}

bool ClapWindow::setSize(PixelSize size) {
    mIsResizing = true;
    mWindow->surround().resizeWithin(size);
    mIsResizing = false;
    mConnection.sync();
    return this->size() == size;
}

bool ClapWindow::setParent(xcb_window_t parent) {
    if (!mShelter || !mConnection.has(parent)) {
        return false;
    }
    mShelter->moveInto(parent);
    mConnection.sync();
    mIsInHost = true;
    return true;
}

bool ClapWindow::setTransient(xcb_window_t other) {
    if (!isFloating() || !mConnection.has(other)) {
        return false;
    }
    setTransientFor(mConnection, mWindow->id(), other);
    mConnection.flush();
    return true;
}

void ClapWindow::setTitle(const std::string& title) {
    if (isFloating()) {
        setWindowTitle(mConnection, mWindow->id(), title);
        mConnection.flush();
    }
}

bool ClapWindow::show() {
    mIsOpen = true;
    if (mShelter) {
        mShelter->show();
    }
    const bool isShown = mShelter ? mIsInHost : mWindow->show();
    mConnection.flush();
    return isShown;
}

bool ClapWindow::hide() {
    if (mShelter) {
        mShelter->hide();
    }
    const bool isHidden = mShelter || mWindow->hide();
    mConnection.flush();
    return isHidden;
}

void ClapWindow::turn() {
    mPlugin.takeHostValues();
    mPlugin.showMeters();
    if (!mWindow->idle() && mIsOpen) {
        mIsOpen = false;
        if (mHostGui != nullptr && mHostGui->closed != nullptr) {
            mHostGui->closed(&mPlugin.host().table(), mWindow->isLost());
        }
    }
}

} // namespace varno
