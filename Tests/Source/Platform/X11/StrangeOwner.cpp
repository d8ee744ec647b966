#include "Tests/Source/Platform/X11/StrangeOwner.h"

#include <poll.h>
#include <utility>

namespace varno::test {

StrangeOwner::StrangeOwner(const std::string& display, Behaviour behaviour)
    : mClient(display),
      mBehaviour(std::move(behaviour)) {
    mClient.ownClipboard();
    mThread = std::thread([this] { run(); });
}

StrangeOwner::~StrangeOwner() {
    mStop = true;
    mThread.join();
}

void StrangeOwner::run() {
    constexpr int kLookUpMs = 2;
    while (!mStop && mClient.connected()) {
        while (const RawEvent event = mClient.nextEvent()) {
            handle(*event);
            if (!mClient.connected()) {
                return;
            }
        }
        pollfd wait{xcb_get_file_descriptor(mClient.xcb()), POLLIN, 0};
        poll(&wait, 1, kLookUpMs);
    }
}

void StrangeOwner::handle(const xcb_generic_event_t& event) {
    if (typeOfRaw(event) == XCB_SELECTION_REQUEST) {
        mBehaviour.asked(mClient, reinterpret_cast<const xcb_selection_request_event_t&>(event));
    }
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (typeOfRaw(event) == XCB_PROPERTY_NOTIFY && change.state == XCB_PROPERTY_DELETE) {
        mBehaviour.deleted(mClient, change);
    }
}

} // namespace varno::test
