// The window's binary in a process that loads and unloads it, as hosts do that show one window after another.
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <lv2/ui/ui.h>
#include <string>

namespace varno::test {
namespace {

// Loads the binary, shows its window for some turns, and has it unloaded.
void showWindow() {
    constexpr int kTurns = 5;
    void* const binary = dlopen(VARNO_WINDOW_BINARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(binary, nullptr) << dlerror();
    const auto describe =
        reinterpret_cast<const LV2UI_Descriptor* (*)(std::uint32_t)>(dlsym(binary, "lv2ui_descriptor"));
    ASSERT_NE(describe, nullptr);
    const LV2UI_Descriptor& window = *describe(0);
    const auto& idle =
        *static_cast<const LV2UI_Idle_Interface*>(window.extension_data(LV2_UI__idleInterface));
    const auto& show =
        *static_cast<const LV2UI_Show_Interface*>(window.extension_data(LV2_UI__showInterface));
    LV2UI_Handle handle = window.instantiate(&window, "urn:morvak:varno-s#stereo", VARNO_WINDOW_BUNDLE "/",
                                             nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(show.show(handle), 0);
    for (int turn = 0; turn < kTurns; ++turn) {
        EXPECT_EQ(idle.idle(handle), 0);
    }
    window.cleanup(handle);
    EXPECT_EQ(dlclose(binary), 0);
}

// It stays: libraries of fonts that are loaded anew with it lose memory each time.
TEST(WindowLoad, staysLoadedAndLeavesLittleBehindHoweverOftenItIsOpened) {
    constexpr int kRounds = 20;
    constexpr int kWarmUp = 5;
    constexpr std::ptrdiff_t kGrowth = 1'000; // bytes a round
    const XServer server;
    setenv("DISPLAY", server.display().c_str(), 1);
    std::ptrdiff_t allocated = 0;
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_NO_FATAL_FAILURE(showWindow());
        void* const kept = dlopen(VARNO_WINDOW_BINARY, RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(kept, nullptr) << "it is unloaded";
        dlclose(kept);
        allocated = round + 1 == kWarmUp ? allocatedBytes() : allocated;
    }
    const std::ptrdiff_t growth = (allocatedBytes() - allocated) / (kRounds - kWarmUp);
    RecordProperty("growth_bytes", std::to_string(growth));
    if (!kIsSanitized) {
        EXPECT_LT(growth, kGrowth);
    }
}

} // namespace
} // namespace varno::test
