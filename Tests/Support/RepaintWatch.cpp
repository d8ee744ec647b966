#include "RepaintWatch.h"

#include <stdexcept>

namespace varno::test {

RepaintWatch::RepaintWatch(const XClient& client, xcb_window_t window)
    : mClient(client),
      mDamage(xcb_generate_id(client.connection())) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(client.connection(), &xcb_damage_id);
    const XReply<xcb_damage_query_version_reply_t> version(xcb_damage_query_version_reply(
        client.connection(),
        xcb_damage_query_version(client.connection(), XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION),
        nullptr));
    if (extension == nullptr || version == nullptr) {
        throw std::runtime_error("the X server does not tell what is drawn");
    }
    mNotify = static_cast<uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    xcb_damage_create(client.connection(), mDamage, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    take(); // to begin with, the server tells the whole window
}

RepaintWatch::~RepaintWatch() {
    xcb_damage_destroy(mClient.connection(), mDamage);
    mClient.synchronise();
}

std::vector<Area> RepaintWatch::take() {
    mClient.synchronise();
    std::vector<Area> areas;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(mClient.connection())}) {
        constexpr uint8_t kTypeBits = 0x7F;
        if ((event->response_type & kTypeBits) != mNotify) {
            continue;
        }
        const auto& notify = reinterpret_cast<const xcb_damage_notify_event_t&>(*event);
        if (notify.damage == mDamage) {
            areas.push_back({notify.area.x, notify.area.y, notify.area.width, notify.area.height});
        }
    }
    return areas;
}

} // namespace varno::test
