// The bundle's editor in a process that loads and unloads the bundle.
#include "Host/Editor.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "Host/ViewContainer.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>

using namespace varno;
using namespace varno::test;

namespace {

bool isLoaded() {
    void* const handle = dlopen(VARNO_MODULE_BINARY, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

// Opens the editor of a module that is loaded for that alone, until it shows its artwork, and closes it.
void showEditor(const XClient& client) {
    constexpr Area kArea{20, 20, 800, 600};
    constexpr std::size_t kManyColours = 100;
    const xcb_window_t window = client.makeWindow(kArea);
    {
        const auto module = Module::open(VARNO_BUNDLE);
        Instance instance(module, {});
        const auto container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(module->context()));
        container->setView(AAX_eViewContainerType_X11, std::bit_cast<void*>(std::uintptr_t{window}));
        const auto editor = instance.openEditor(*container);
        ASSERT_NE(editor, nullptr);
        const Area view{0, 0, static_cast<int>(editor->size().horz), static_cast<int>(editor->size().vert)};
        ASSERT_GT(view.width, 0);
        EXPECT_TRUE(eventually([&] {
            editor->timer();
            return Picture::ofWindow(client, window, view).countColours() > kManyColours;
        }));
    }
    client.destroyWindow(window);
}

TEST(ModuleEditor, goesWithTheModuleHoweverOftenItIsLoaded) {
    constexpr int kRounds = 15;
    constexpr int kWarmUp = 5;
    constexpr std::ptrdiff_t kGrowth = 20'000; // bytes a round; libraries that stay loaded keep some
    std::ptrdiff_t allocated = 0;
    const XServer server;
    ::setenv("DISPLAY", server.display().c_str(), 1);
    const XClient client(server.display());
    for (int round = 0; round < kRounds; ++round) {
        ASSERT_NO_FATAL_FAILURE(showEditor(client)) << "round " << round;
        ASSERT_FALSE(isLoaded()) << "round " << round;
        allocated = round + 1 == kWarmUp ? allocatedBytes() : allocated;
    }
    const std::ptrdiff_t growth = (allocatedBytes() - allocated) / (kRounds - kWarmUp);
    RecordProperty("growth_bytes", std::to_string(growth));
    if (!kIsSanitized) {
        EXPECT_LT(growth, kGrowth);
    }
}

} // namespace
