#include "Tests/Source/Platform/X11/RawClient.h"

#include <cstring>
#include <stdexcept>

namespace varno::test {

namespace {

template<typename Reply>
using Answer = std::unique_ptr<Reply, FreeAnswer>;

xcb_window_t rootOf(xcb_connection_t* connection) {
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

} // namespace

std::vector<std::uint32_t> RawProperty::numbers() const {
    std::vector<std::uint32_t> found(bytes.size() / sizeof(std::uint32_t));
    std::memcpy(found.data(), bytes.data(), found.size() * sizeof(std::uint32_t));
    return found;
}

RawClient::RawClient(const std::string& display)
    : mConnection(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(xcb()) != 0) {
        throw std::runtime_error("no display " + display);
    }
    mWindow = xcb_generate_id(xcb());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, mWindow, rootOf(xcb()), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    flush();
}

xcb_atom_t RawClient::atom(const std::string& name) const {
    const auto asked = xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Answer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb(), asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void RawClient::ownClipboard() const {
    xcb_set_selection_owner(xcb(), mWindow, atom("CLIPBOARD"), XCB_CURRENT_TIME);
    if (clipboardOwner() != mWindow) {
        throw std::runtime_error("the clipboard cannot be had");
    }
}

xcb_window_t RawClient::clipboardOwner() const {
    const auto asked = xcb_get_selection_owner(xcb(), atom("CLIPBOARD"));
    const Answer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(xcb(), asked, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::size_t RawClient::windowCount() const {
    const auto asked = xcb_query_tree(xcb(), rootOf(xcb()));
    const Answer<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(xcb(), asked, nullptr));
    return reply ? reply->children_len : 0;
}

void RawClient::request(const std::string& target, const std::string& property, xcb_timestamp_t time) const {
    const xcb_atom_t into = property.empty() ? xcb_atom_t{XCB_ATOM_NONE} : atom(property);
    xcb_convert_selection(xcb(), mWindow, atom("CLIPBOARD"), atom(target), into, time);
    flush();
}

RawProperty RawClient::takeProperty(const std::string& property) const {
    constexpr std::uint32_t kEverything = 16 * 1024 * 1024;
    const auto asked =
        xcb_get_property(xcb(), 1, mWindow, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, kEverything);
    const Answer<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb(), asked, nullptr));
    if (!reply) {
        return {};
    }
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return {reply->type, std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), length)};
}

void RawClient::setText(xcb_window_t window, xcb_atom_t property, const std::string& type,
                        const std::string& text) const {
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, property, atom(type), 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
    flush();
}

void RawClient::setNumbers(xcb_window_t window, xcb_atom_t property, const std::string& type,
                           const std::vector<std::uint32_t>& numbers) const {
    xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window, property, atom(type), 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
    flush();
}

void RawClient::answer(const xcb_selection_request_event_t& request, xcb_atom_t property) const {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    char bytes[32] = {};
    std::memcpy(bytes, &notice, sizeof notice);
    xcb_send_event(xcb(), 0, request.requestor, 0, bytes);
    flush();
}

void RawClient::listenTo(xcb_window_t window) const {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb(), window, XCB_CW_EVENT_MASK, &events);
    flush();
}

} // namespace varno::test
