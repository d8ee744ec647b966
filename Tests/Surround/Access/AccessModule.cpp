// A window for screen readers in a binary that its program loads and unloads, as hosts do with plug-ins.
#include "Surround/Access/AccessBridge.h"
#include "Tests/Surround/Access/TestWindow.h"

namespace {

struct Opened {
    explicit Opened(const char* address)
        : bridge("Unloaded effect", window, {{}, address, {}}) {}

    varno::test::TestWindow window;
    varno::AccessBridge bridge;
};

} // namespace

extern "C" {

[[gnu::visibility("default")]] void* openAccessWindow(const char* sessionAddress) {
    return new Opened(sessionAddress);
}

[[gnu::visibility("default")]] bool tickAccessWindow(void* opened) {
    auto& bridge = static_cast<Opened*>(opened)->bridge;
    bridge.tick();
    return bridge.isActive();
}

[[gnu::visibility("default")]] void closeAccessWindow(void* opened) {
    delete static_cast<Opened*>(opened);
}
}
