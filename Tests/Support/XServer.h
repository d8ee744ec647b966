/// An X server without a screen for tests, what it holds for its clients and which errors it sends them.
#ifndef VARNO_TESTS_SUPPORT_XSERVER_H
#define VARNO_TESTS_SUPPORT_XSERVER_H

#include "Tests/Support/Subprocess.h"
#include "Tests/Support/XClient.h"

#include <map>
#include <optional>
#include <string>
#include <vector>
#include <xcb/record.h>

namespace varno::test {

class XServer {
public:
    /// Pixels.
    struct Screen {
        int width = 1280;
        int height = 900;
    };

    /// Starts Xvfb with one screen of 24 bits depth on a display that is free, and returns when it takes
    /// connections. Throws std::runtime_error where it does not start.
    XServer()
        : XServer(Screen{}) {}
    /// @param more words of Xvfb's own command line
    explicit XServer(Screen screen, const std::vector<std::string>& more = {});

    /// The display's name, as DISPLAY holds it.
    const std::string& display() const { return mDisplay; }

    /// Ends the server before the object's end, as when a session is lost: every connection breaks.
    void stop() { mProcess.reset(); }

private:
    std::optional<Subprocess> mProcess;
    std::string mDisplay;
};

/// Records from its construction on the errors that the server sends to any client, also those that a client
/// ignores.
class XErrors {
public:
    explicit XErrors(const std::string& display);
    XErrors(const XErrors&) = delete;
    XErrors& operator=(const XErrors&) = delete;

    /// Ends recording and returns each error so far as text: its code and the request that caused it.
    std::vector<std::string> finish();

private:
    XClient mControl;
    XClient mData;
    xcb_record_context_t mContext;
    xcb_record_enable_context_cookie_t mReplies{};
};

/// Counts over all clients, by the server's name of the kind: windows, pixmaps, cursors and so on; the number
/// of clients is counted as "CLIENT".
std::map<std::string, std::uint32_t> countResources(const XClient& client);

/// Whether `now` counts no more of any kind than `before`. The server notices that a client has
/// disconnected some time later, so an earlier count may be the higher one.
bool isNoMore(const std::map<std::string, std::uint32_t>& now,
              const std::map<std::string, std::uint32_t>& before);

} // namespace varno::test

#endif
