// The binary with the bridge is unloaded while the bus goes on.
#include "Tests/Support/Eventually.h"
#include "Tests/Surround/Access/AccessSession.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace varno::test {
namespace {

class AccessUnloadTest : public AccessFixture {
protected:
    // The module while it is loaded.
    struct Module {
        Module()
            : handle(dlopen(VARNO_ACCESS_MODULE, RTLD_NOW | RTLD_LOCAL)) {}
        Module(const Module&) = delete;
        Module& operator=(const Module&) = delete;
        ~Module() { dlclose(handle); }

        template<class Function>
        Function* function(const char* name) const {
            return reinterpret_cast<Function*>(dlsym(handle, name));
        }

        void* handle;
    };

    static bool isLoaded() {
        void* const handle = dlopen(VARNO_ACCESS_MODULE, RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

    // Opens a window for so many ticks; below 0: until it is on the accessibility bus.
    void openWindow(int ticks) {
        const Module module;
        ASSERT_NE(module.handle, nullptr) << dlerror();
        auto* const tick = module.function<bool(void*)>("tickAccessWindow");
        void* const window =
            module.function<void*(const char*)>("openAccessWindow")(mSession.address().c_str());
        for (int i = 0; i < ticks; ++i) {
            tick(window);
        }
        if (ticks < 0) {
            EXPECT_TRUE(eventually([&] { return tick(window); }));
        }
        module.function<void(void*)>("closeAccessWindow")(window);
    }
};

TEST_F(AccessUnloadTest, NothingOfItIsCalledAfterwards) {
    setEnabled(true);
    reader();
    for (int i = 0; i < 60; ++i) {
        openWindow(i % 3 == 0 ? -1 : i * 10);
        ASSERT_FALSE(isLoaded()) << i;
        // Whatever was on its way arrives now, at a thread of GLib's.
        if (i % 10 == 0) {
            EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
        }
    }
}

} // namespace
} // namespace varno::test
