#include "Platform/X11/X11Connection.h"

#include <algorithm>
#include <poll.h>
#include <string>
#include <utility>
#include <vector>

namespace varno {

namespace {

// Returns when the descriptor is readable, and at the deadline at the latest.
void awaitInput(int descriptor, X11Connection::Deadline deadline) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd wait{descriptor, POLLIN, 0};
    poll(&wait, 1, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0)));
}

} // namespace

X11Connection::X11Connection(const std::string& display)
    : mConnection(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)) {
    if (lost()) {
        return;
    }
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data->root;
    mWindow = xcb_generate_id(xcb());
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, mWindow, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

void X11Connection::pump() {
    while (const XcbOwned<Event> event{xcb_poll_for_event(xcb())}) {
        mHandler(*event);
    }
    xcb_flush(xcb());
}

XcbOwned<X11Connection::Event> X11Connection::waitFor(const std::function<bool(const Event&)>& wanted,
                                                      Deadline deadline) {
    for (;;) {
        while (XcbOwned<Event> event{xcb_poll_for_event(xcb())}) {
            if (wanted(*event)) {
                return event;
            }
            mHandler(*event);
        }
        xcb_flush(xcb());
        if (lost() || std::chrono::steady_clock::now() >= deadline) {
            return nullptr;
        }
        awaitInput(descriptor(), deadline);
    }
}

std::optional<xcb_timestamp_t> X11Connection::serverTime(xcb_atom_t property, Deadline deadline) {
    // Every change of a property is notified with the time; this one leaves the property as it is.
    xcb_change_property(xcb(), XCB_PROP_MODE_APPEND, mWindow, property, XCB_ATOM_INTEGER, 32, 0, nullptr);
    const auto announced = waitFor(
        [this, property](const Event& event) {
            const auto& change = eventAs<xcb_property_notify_event_t>(event);
            return typeOf(event) == XCB_PROPERTY_NOTIFY && change.window == mWindow &&
                   change.atom == property;
        },
        deadline);
    if (!announced) {
        return std::nullopt;
    }
    return eventAs<xcb_property_notify_event_t>(*announced).time;
}

uint8_t typeOf(const xcb_generic_event_t& event) {
    constexpr uint8_t kSentByClient = 0x80;
    return event.response_type & static_cast<uint8_t>(~kSentByClient);
}

X11Atoms internAtoms(xcb_connection_t* connection) {
    X11Atoms atoms{};
    std::vector<std::pair<std::string, xcb_atom_t*>> names{
        {"CLIPBOARD", &atoms.clipboard},
        {"CLIPBOARD_MANAGER", &atoms.manager},
        {"TARGETS", &atoms.targets},
        {"TIMESTAMP", &atoms.timestamp},
        {"MULTIPLE", &atoms.multiple},
        {"UTF8_STRING", &atoms.utf8String},
        {"TEXT", &atoms.text},
        {"text/plain;charset=utf-8", &atoms.utf8Plain},
        {"SAVE_TARGETS", &atoms.saveTargets},
        {"ATOM_PAIR", &atoms.atomPair},
        {"INCR", &atoms.incremental},
        {"VARNO_TO_SAVE", &atoms.toSave},
        {"VARNO_TIME", &atoms.ownTime},
    };
    for (std::size_t index = 0; index < atoms.transfers.size(); ++index) {
        names.emplace_back("VARNO_TRANSFER_" + std::to_string(index), &atoms.transfers[index]);
    }
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const auto& [name, atom] : names) {
        const auto length = static_cast<uint16_t>(name.size());
        cookies.push_back(xcb_intern_atom(connection, false, length, name.c_str()));
    }
    for (std::size_t index = 0; index < names.size(); ++index) {
        const XcbOwned<xcb_intern_atom_reply_t> reply{
            xcb_intern_atom_reply(connection, cookies[index], nullptr)};
        *names[index].second = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    return atoms;
}

} // namespace varno
