#include "Platform/X11/X11SelectionOwner.h"

#include "Platform/X11/Latin1.h"

#include <algorithm>
#include <array>
#include <vector>

namespace varno {

namespace {

// Largest property of one request: the server's limit less the request's own fields.
std::size_t largestProperty(xcb_connection_t* connection) {
    constexpr std::size_t kUnitBytes = 4;
    constexpr std::size_t kExtendedLengthBytes = 4;
    return xcb_get_maximum_request_length(connection) * kUnitBytes - sizeof(xcb_change_property_request_t) -
           kExtendedLengthBytes;
}

// Whether one of two wrapping counters comes before the other.
bool isBefore(uint32_t one, uint32_t other) {
    return static_cast<int32_t>(one - other) < 0;
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
    // An empty part is the end.
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

X11SelectionOwner::X11SelectionOwner(X11Connection& connection, const X11Atoms& atoms)
    : mConnection(connection),
      mAtoms(atoms),
      mTransfers(connection, atoms) {
}

bool X11SelectionOwner::take(const std::string& text, X11Connection::Deadline deadline) {
    const auto now = mConnection.serverTime(mAtoms.ownTime, deadline);
    if (!now) {
        return false;
    }
    xcb_connection_t* const xcb = mConnection.xcb();
    const auto taken = xcb_set_selection_owner(xcb, mConnection.window(), mAtoms.clipboard, *now);
    const auto asked = xcb_get_selection_owner(xcb, mAtoms.clipboard);
    const XcbOwned<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(xcb, asked, nullptr)};
    if (!reply || reply->owner != mConnection.window()) {
        return false;
    }
    mText = std::make_shared<const std::string>(text);
    mSince = *now;
    mTakenBy = taken.sequence;
    return true;
}

void X11SelectionOwner::handOver(X11Connection::Deadline deadline) {
    xcb_connection_t* const xcb = mConnection.xcb();
    const auto asked = xcb_get_selection_owner(xcb, mAtoms.manager);
    const XcbOwned<xcb_get_selection_owner_reply_t> manager{
        xcb_get_selection_owner_reply(xcb, asked, nullptr)};
    if (!mText || !manager || manager->owner == XCB_WINDOW_NONE) {
        return;
    }
    const auto now = mConnection.serverTime(mAtoms.ownTime, deadline);
    if (!now) {
        return;
    }
    const std::array forms{mAtoms.utf8String, xcb_atom_t{XCB_ATOM_STRING}};
    put(mConnection.window(), mAtoms.toSave, XCB_ATOM_ATOM, forms.data(), forms.size());
    xcb_convert_selection(xcb, mConnection.window(), mAtoms.manager, mAtoms.saveTargets, mAtoms.toSave, *now);
    mConnection.waitFor(
        [this](const xcb_generic_event_t& event) {
            const auto& notice = eventAs<xcb_selection_notify_event_t>(event);
            return typeOf(event) == XCB_SELECTION_NOTIFY && notice.selection == mAtoms.manager &&
                   notice.target == mAtoms.saveTargets;
        },
        deadline);
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event) {
    mTransfers.handle(event);
    if (typeOf(event) == XCB_SELECTION_REQUEST) {
        answer(eventAs<xcb_selection_request_event_t>(event));
    }
    // The loss of an earlier ownership may be notified after the clipboard was taken again.
    if (typeOf(event) == XCB_SELECTION_CLEAR && !isBefore(event.full_sequence, mTakenBy)) {
        mText.reset();
    }
}

void X11SelectionOwner::answer(const xcb_selection_request_event_t& request) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    // Obsolete clients name no property.
    const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    const bool given = mayHave(request) && (request.target == mAtoms.multiple
                                                ? convertEach(request.requestor, request.property)
                                                : convert(request.requestor, request.target, property));
    // No property is a refusal.
    if (given) {
        notice.property = property;
    }
    // The server requires every event to have this many bytes.
    constexpr std::size_t kEventBytes = 32;
    std::array<char, kEventBytes> bytes{};
    static_assert(sizeof notice <= kEventBytes);
    std::copy_n(reinterpret_cast<const char*>(&notice), sizeof notice, bytes.begin());
    xcb_send_event(mConnection.xcb(), false, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes.data());
}

bool X11SelectionOwner::mayHave(const xcb_selection_request_event_t& request) const {
    const bool inOurTime = request.time == XCB_CURRENT_TIME || !isBefore(request.time, mSince);
    return mText && request.selection == mAtoms.clipboard && inOurTime &&
           request.requestor != mConnection.window();
}

bool X11SelectionOwner::convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property) {
    if (target == mAtoms.targets) {
        const std::array targets{
            mAtoms.targets, mAtoms.timestamp,           mAtoms.multiple, mAtoms.utf8String, mAtoms.utf8Plain,
            mAtoms.text,    xcb_atom_t{XCB_ATOM_STRING}};
        put(receiver, property, XCB_ATOM_ATOM, targets.data(), targets.size());
        return true;
    }
    if (target == mAtoms.timestamp) {
        put(receiver, property, XCB_ATOM_INTEGER, &mSince, 1);
        return true;
    }
    return convertText(receiver, target, property);
}

bool X11SelectionOwner::convertEach(xcb_window_t receiver, xcb_atom_t property) {
    constexpr uint32_t kMostPairs = 64;
    xcb_connection_t* const xcb = mConnection.xcb();
    const auto asked = xcb_get_property(xcb, false, receiver, property, XCB_ATOM_ANY, 0, 2 * kMostPairs);
    const XcbOwned<xcb_get_property_reply_t> reply{xcb_get_property_reply(xcb, asked, nullptr)};
    if (!reply || reply->format != 32 || reply->bytes_after != 0) {
        return false;
    }
    const auto* const values = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    std::vector<xcb_atom_t> pairs(values, values + reply->value_len);
    for (std::size_t index = 0; index + 1 < pairs.size(); index += 2) {
        if (pairs[index + 1] == XCB_ATOM_NONE || !convert(receiver, pairs[index], pairs[index + 1])) {
            pairs[index + 1] = XCB_ATOM_NONE;
        }
    }
    put(receiver, property, mAtoms.atomPair, pairs.data(), pairs.size());
    return true;
}

bool X11SelectionOwner::convertText(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property) {
    if (target == XCB_ATOM_STRING) {
        auto latin1 = std::make_shared<const std::string>(latin1FromUtf8(*mText));
        mTransfers.start(receiver, property, XCB_ATOM_STRING, std::move(latin1));
        return true;
    }
    if (target == mAtoms.utf8String || target == mAtoms.text || target == mAtoms.utf8Plain) {
        // TEXT leaves the encoding to the owner; the type states it.
        mTransfers.start(receiver, property, target == mAtoms.text ? mAtoms.utf8String : target, mText);
        return true;
    }
    return false;
}

void X11SelectionOwner::put(xcb_window_t receiver, xcb_atom_t property, xcb_atom_t type,
                            const uint32_t* values, std::size_t count) {
    xcb_change_property(mConnection.xcb(), XCB_PROP_MODE_REPLACE, receiver, property, type, 32,
                        static_cast<uint32_t>(count), values);
}

} // namespace varno
