/// A program that owns the clipboard and behaves as a test defines.
#ifndef VARNO_TESTS_SOURCE_PLATFORM_X11_STRANGEOWNER_H
#define VARNO_TESTS_SOURCE_PLATFORM_X11_STRANGEOWNER_H

#include "Tests/Source/Platform/X11/RawClient.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace varno::test {

/// Runs on a thread of its own, so that the test's thread may wait for it.
class StrangeOwner {
public:
    /// What it does when it is asked for the clipboard, and when a property that it watches was deleted.
    struct Behaviour {
        std::function<void(RawClient&, const xcb_selection_request_event_t&)> asked;
        std::function<void(RawClient&, const xcb_property_notify_event_t&)> deleted =
            [](RawClient&, const xcb_property_notify_event_t&) {};
    };

    /// Owns the clipboard when this returns.
    StrangeOwner(const std::string& display, Behaviour behaviour);
    StrangeOwner(const StrangeOwner&) = delete;
    StrangeOwner& operator=(const StrangeOwner&) = delete;
    ~StrangeOwner();

private:
    void run();
    void handle(const xcb_generic_event_t& event);

    RawClient mClient;
    Behaviour mBehaviour;
    std::atomic<bool> mStop{false};
    std::thread mThread;
};

} // namespace varno::test

#endif
