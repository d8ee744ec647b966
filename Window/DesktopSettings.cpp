#include "Window/DesktopSettings.h"

#include "Window/Scale.h"

#include <utility>

namespace varno {

DesktopSettings::DesktopSettings(XConnection& connection, std::optional<std::string> gdkScale)
    : mConnection(connection),
      mGdkScale(std::move(gdkScale)),
      mSelection(connection.atom("_XSETTINGS_S" + std::to_string(connection.screenNumber()))),
      mProperty(connection.atom("_XSETTINGS_SETTINGS")) {
    const auto root = connection.screen().root;
    mRootEvents = connection.events().add(root, [this](const auto& event) { handleOfRoot(event); });
    // A manager that comes is announced to those that select the structure of the root.
    connection.select(root, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    findManager();
    read();
}

void DesktopSettings::handleOfRoot(const xcb_generic_event_t& event) {
    if (eventKind(event) == XCB_PROPERTY_NOTIFY) {
        if (eventAs<xcb_property_notify_event_t>(event).atom == XCB_ATOM_RESOURCE_MANAGER) {
            read();
        }
    } else if (eventKind(event) == XCB_CLIENT_MESSAGE) {
        const auto& message = eventAs<xcb_client_message_event_t>(event);
        if (message.type == mConnection.atom("MANAGER") && message.data.data32[1] == mSelection) {
            findManager();
            read();
        }
    }
}

void DesktopSettings::findManager() {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        mConnection.get(), xcb_get_selection_owner(mConnection.get(), mSelection), nullptr));
    mManager = reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    mManagerEvents.reset();
    if (mManager == XCB_WINDOW_NONE) {
        return;
    }
    mManagerEvents = mConnection.events().add(mManager, [this](const auto& event) {
        if (eventKind(event) == XCB_DESTROY_NOTIFY) {
            findManager();
            read();
        } else if (eventKind(event) == XCB_PROPERTY_NOTIFY &&
                   eventAs<xcb_property_notify_event_t>(event).atom == mProperty) {
            read();
        }
    });
    mConnection.select(mManager, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void DesktopSettings::read() {
    const auto resources = mConnection.text(mConnection.screen().root, XCB_ATOM_RESOURCE_MANAGER);
    const auto settings = mManager == XCB_WINDOW_NONE ? std::string() : mConnection.text(mManager, mProperty);
    const double scale = desktopScale(mGdkScale, resources, settings);
    if (scale != mScale) {
        mScale = scale;
        if (mHandler) {
            mHandler(scale);
        }
    }
}

} // namespace varno
