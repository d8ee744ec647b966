/// A window manager on a test's own X server.
#ifndef VARNO_TESTS_SUPPORT_WINDOWMANAGER_H
#define VARNO_TESTS_SUPPORT_WINDOWMANAGER_H

#include "Tests/Support/Subprocess.h"
#include "Tests/Support/XClient.h"

#include <filesystem>

namespace varno::test {

/// Openbox as Debian configures it: it gives windows frames and places, the focus with a click, and closes
/// one with Alt-F4. It ends with this object.
class WindowManager {
public:
    /// Returns when it manages the windows of the client's server.
    /// @param display of that server @param folder for what it keeps, in the place of the user's own
    /// Throws std::runtime_error where it does not begin.
    WindowManager(const XClient& client, const std::string& display, const std::filesystem::path& folder);

private:
    Subprocess mProcess;
};

} // namespace varno::test

#endif
