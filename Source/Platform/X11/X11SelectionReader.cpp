#include "Platform/X11/X11SelectionReader.h"

#include "Platform/X11/Latin1.h"

namespace varno {

namespace {

constexpr uint8_t kTextBits = 8;

// A refusal names no property; some programs leave the time out as well.
bool isAnswer(const xcb_selection_notify_event_t& notice, xcb_atom_t target, xcb_atom_t property,
              xcb_timestamp_t asked) {
    const bool refusal =
        notice.property == XCB_ATOM_NONE && (notice.time == asked || notice.time == XCB_CURRENT_TIME);
    return notice.target == target && (notice.property == property || refusal);
}

} // namespace

X11SelectionReader::X11SelectionReader(X11Connection& connection, const X11Atoms& atoms)
    : mConnection(connection),
      mAtoms(atoms) {
}

std::optional<std::string> X11SelectionReader::read(X11Connection::Deadline deadline) {
    for (const xcb_atom_t target : {mAtoms.utf8String, xcb_atom_t{XCB_ATOM_STRING}}) {
        if (auto text = readAs(target, deadline)) {
            return text;
        }
        if (mConnection.lost() || std::chrono::steady_clock::now() >= deadline) {
            break;
        }
    }
    return std::nullopt;
}

void X11SelectionReader::handle(const xcb_generic_event_t& event) const {
    const xcb_atom_t property = eventAs<xcb_selection_notify_event_t>(event).property;
    if (typeOf(event) == XCB_SELECTION_NOTIFY && property != XCB_ATOM_NONE && property != mAwaited) {
        xcb_delete_property(mConnection.xcb(), mConnection.window(), property);
    }
}

std::optional<std::string> X11SelectionReader::readAs(xcb_atom_t target, X11Connection::Deadline deadline) {
    mTurn = (mTurn + 1) % mAtoms.transfers.size();
    mAwaited = mAtoms.transfers[mTurn];
    std::optional<Value> value;
    if (request(target, mAwaited, deadline)) {
        value = takeProperty(mAwaited, kLargestTextBytes);
    }
    if (value && value->type == mAtoms.incremental) {
        value = collectParts(mAwaited, deadline);
    }
    mAwaited = XCB_ATOM_NONE;
    return decode(std::move(value));
}

bool X11SelectionReader::request(xcb_atom_t target, xcb_atom_t property, X11Connection::Deadline deadline) {
    const auto now = mConnection.serverTime(mAtoms.ownTime, deadline);
    if (!now) {
        return false;
    }
    xcb_delete_property(mConnection.xcb(), mConnection.window(), property);
    xcb_convert_selection(mConnection.xcb(), mConnection.window(), mAtoms.clipboard, target, property, *now);
    const auto answer = mConnection.waitFor(
        [&](const xcb_generic_event_t& event) {
            return typeOf(event) == XCB_SELECTION_NOTIFY &&
                   isAnswer(eventAs<xcb_selection_notify_event_t>(event), target, property, *now);
        },
        deadline);
    return answer && eventAs<xcb_selection_notify_event_t>(*answer).property == property;
}

std::optional<X11SelectionReader::Value> X11SelectionReader::takeProperty(xcb_atom_t property,
                                                                          std::size_t mostBytes) {
    constexpr std::size_t kUnitBytes = 4;
    const auto units = static_cast<uint32_t>(mostBytes / kUnitBytes + 1);
    xcb_connection_t* const xcb = mConnection.xcb();
    const auto asked =
        xcb_get_property(xcb, true, mConnection.window(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, units);
    const XcbOwned<xcb_get_property_reply_t> reply{xcb_get_property_reply(xcb, asked, nullptr)};
    if (!reply) {
        return std::nullopt;
    }
    const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    if (bytes > mostBytes || reply->bytes_after > 0) {
        // A property that was not read completely still exists.
        xcb_delete_property(xcb, mConnection.window(), property);
        return std::nullopt;
    }
    return Value{reply->type, reply->format,
                 std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), bytes)};
}

std::optional<X11SelectionReader::Value> X11SelectionReader::collectParts(xcb_atom_t property,
                                                                          X11Connection::Deadline deadline) {
    Value whole{XCB_ATOM_NONE, kTextBits, {}};
    for (;;) {
        const auto announced = mConnection.waitFor(
            [&](const xcb_generic_event_t& event) {
                const auto& change = eventAs<xcb_property_notify_event_t>(event);
                return typeOf(event) == XCB_PROPERTY_NOTIFY && change.window == mConnection.window() &&
                       change.atom == property && change.state == XCB_PROPERTY_NEW_VALUE;
            },
            deadline);
        const auto part =
            announced ? takeProperty(property, kLargestTextBytes - whole.bytes.size()) : std::nullopt;
        if (!part) {
            return std::nullopt;
        }
        if (whole.type == XCB_ATOM_NONE) {
            whole.type = part->type;
        }
        if (part->bytes.empty()) {
            return whole;
        }
        if (part->type != whole.type || part->bitsPerItem != kTextBits) {
            return std::nullopt;
        }
        whole.bytes += part->bytes;
    }
}

std::optional<std::string> X11SelectionReader::decode(std::optional<Value> value) const {
    if (!value || value->bitsPerItem != kTextBits) {
        return std::nullopt;
    }
    if (value->type == XCB_ATOM_STRING) {
        return utf8FromLatin1(value->bytes);
    }
    if (value->type == mAtoms.utf8String) {
        return std::move(value->bytes);
    }
    return std::nullopt;
}

} // namespace varno
