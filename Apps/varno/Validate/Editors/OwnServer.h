/// An X server for the editors of one check.
#ifndef VARNO_APPS_VARNO_VALIDATE_EDITORS_OWNSERVER_H
#define VARNO_APPS_VARNO_VALIDATE_EDITORS_OWNSERVER_H

#include <string>
#include <sys/types.h>

namespace varno::validate {

/// Xvfb on a display that is free, with a screen that nobody sees. It ends with this object, and with this
/// process where that ends otherwise, and takes its files along. [main]
class OwnServer {
public:
    /// Returns when it takes connections, or has not started.
    OwnServer();
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;
    ~OwnServer() { stop(); }

    /// As DISPLAY has it (":7"); empty where no server has started.
    const std::string& display() const { return mDisplay; }
    /// Ends it, as when a session is lost: every connection breaks.
    void stop();

private:
    pid_t mProcess = -1;
    std::string mDisplay;
};

} // namespace varno::validate

#endif
