#include "Platform/X11/X11Transfers.h"

#include <algorithm>

namespace varno {

namespace {

// What the server takes at once besides the request's own fields.
std::size_t largestProperty(xcb_connection_t* connection) {
    constexpr std::size_t kUnitBytes = 4;
    constexpr std::size_t kExtendedLengthBytes = 4;
    return xcb_get_maximum_request_length(connection) * kUnitBytes - sizeof(xcb_change_property_request_t) -
           kExtendedLengthBytes;
}

} // namespace

X11Transfers::X11Transfers(X11Connection& connection, const X11Atoms& atoms)
    : mConnection(connection),
      mAtoms(atoms),
      mPartBytes(std::min(kLargestPartBytes, largestProperty(connection.xcb()))) {
}

void X11Transfers::start(xcb_window_t receiver, xcb_atom_t property, xcb_atom_t type,
                         std::shared_ptr<const std::string> text) {
    std::erase_if(mTransfers,
                  [&](const Transfer& old) { return old.receiver == receiver && old.property == property; });
    Transfer transfer{receiver, property, type, std::move(text), 0};
    const std::size_t size = transfer.text->size();
    if (size <= mPartBytes) {
        put(transfer, size);
        return;
    }
    listenTo(receiver, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto atLeast = static_cast<uint32_t>(size);
    xcb_change_property(mConnection.xcb(), XCB_PROP_MODE_REPLACE, receiver, property, mAtoms.incremental, 32,
                        1, &atLeast);
    mTransfers.push_back(std::move(transfer));
}

void X11Transfers::handle(const xcb_generic_event_t& event) {
    switch (typeOf(event)) {
    case 0: {
        const auto& error = eventAs<xcb_generic_error_t>(event);
        if (error.error_code == XCB_WINDOW) {
            forget(error.resource_id);
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        forget(eventAs<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = eventAs<xcb_property_notify_event_t>(event);
        if (change.state == XCB_PROPERTY_DELETE) {
            partTaken(change.window, change.atom);
        }
        break;
    }
    default:
        break;
    }
}

void X11Transfers::put(const Transfer& transfer, std::size_t bytes) {
    xcb_change_property(mConnection.xcb(), XCB_PROP_MODE_REPLACE, transfer.receiver, transfer.property,
                        transfer.type, 8, static_cast<uint32_t>(bytes),
                        transfer.text->data() + transfer.sent);
}

void X11Transfers::partTaken(xcb_window_t receiver, xcb_atom_t property) {
    const auto found = std::find_if(mTransfers.begin(), mTransfers.end(), [&](const Transfer& transfer) {
        return transfer.receiver == receiver && transfer.property == property;
    });
    if (found == mTransfers.end()) {
        return;
    }
    const std::size_t bytes = std::min(mPartBytes, found->text->size() - found->sent);
    put(*found, bytes);
    found->sent += bytes;
    // A part without bytes is the end.
    if (bytes == 0) {
        mTransfers.erase(found);
        if (std::none_of(mTransfers.begin(), mTransfers.end(),
                         [&](const Transfer& transfer) { return transfer.receiver == receiver; })) {
            listenTo(receiver, XCB_EVENT_MASK_NO_EVENT);
        }
    }
}

void X11Transfers::forget(xcb_window_t receiver) {
    std::erase_if(mTransfers, [receiver](const Transfer& transfer) { return transfer.receiver == receiver; });
}

void X11Transfers::listenTo(xcb_window_t receiver, uint32_t events) {
    xcb_change_window_attributes(mConnection.xcb(), receiver, XCB_CW_EVENT_MASK, &events);
}

} // namespace varno
