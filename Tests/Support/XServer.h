/// An X server without a screen, for tests of whatever draws or shares the clipboard.
#ifndef VARNO_TESTS_SUPPORT_XSERVER_H
#define VARNO_TESTS_SUPPORT_XSERVER_H

#include "Tests/Support/ChildProcess.h"

#include <optional>
#include <string>
#include <vector>

namespace varno::test {

class XServer {
public:
    /// Pixels.
    struct Screen {
        int width = 1280;
        int height = 900;
    };

    /// Starts Xvfb with one screen of 24 bits depth on a display that is free, and returns when it takes
    /// connections. Throws std::runtime_error where it does not come up.
    XServer()
        : XServer(Screen{}) {}
    /// @param more words of Xvfb's own command line
    explicit XServer(Screen screen, const std::vector<std::string>& more = {});

    /// The display's name, as DISPLAY holds it.
    const std::string& display() const { return mDisplay; }

    /// Ends the server before the object goes, as when a session breaks down: every connection is lost.
    void stop() { mProcess.reset(); }

private:
    std::optional<ChildProcess> mProcess;
    std::string mDisplay;
};

} // namespace varno::test

#endif
