#include "Session/EditorSession.h"

#include "DemoGain_Oversampling.h"
#include "Surround/Settings/EffectHost.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/OwnUserFolders.h"
#include "Tests/Support/ResidentGrowth.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"
#include "Tests/Surround/Access/AccessSession.h"

#include <filesystem>
#include <iterator>

// Windows that one process opens and closes, on a desktop with a screen reader.

namespace varno::test {
namespace {

std::ptrdiff_t threadsOfTheTest() {
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

class EditorSessionLife : public AccessFixture {
protected:
    // Opens a window, shows it until the registry has its application, and closes it.
    void openOnce(const std::shared_ptr<Module>& module) {
        Instance instance(module, {});
        Oversampling effect(instance, {.routineLatencyFrames = kDemoGain_LatencyFrames});
        SettingsKeeper keeper(instance);
        CompareSlots slots(settingsOf(instance));
        bool isBypassed = false;
        WindowOptions options;
        options.scale = 1.0;
        XConnection connection(mServer.display());
        EditorSession session(
            options, connection,
            {instance,
             slots,
             keeper,
             {[&] { return isBypassed; }, [&](bool isOn) { isBypassed = isOn; }},
             {[&] { return qualityOf(effect); }, [&](std::int32_t factor) { effect.setFactor(factor); }}});
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        bool isFound = false;
        constexpr std::chrono::milliseconds kAsked(20);
        session.loop().startTimer(kAsked, this, [&] {
            isBypassed = true; // the plate comes and goes with the window
            isFound = applications().find(rootPath()) != std::string::npos;
            if (isFound || std::chrono::steady_clock::now() > latest) {
                session.loop().quit();
            }
        });
        session.run();
        EXPECT_TRUE(isFound);
    }

    XServer mServer;
    XClient mClient{mServer.display()};
};

TEST_F(EditorSessionLife, LeavesNothingBehindHoweverOftenItIsOpened) {
    const EnvironmentVariable display("DISPLAY", mServer.display());
    const EnvironmentVariable bus("DBUS_SESSION_BUS_ADDRESS", mSession.address());
    const OwnUserFolders folders;
    const int rounds = testScale() > 1 ? 500 : 20;
    constexpr int kWarmUp = 10;
    constexpr std::ptrdiff_t kGrowth = 1 << 20; // bytes, of which caches may take some
    setEnabled(true);
    applications();
    const auto resources = countResources(mClient);
    const auto module = Module::open(VARNO_SESSION_BUNDLE, effectHostOptions());
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t threads = 0;
    std::ptrdiff_t allocated = 0;
    ResidentGrowth growth(kWarmUp, rounds);
    for (int round = 0; round < rounds; ++round) {
        openOnce(module);
        if (round == kWarmUp) {
            EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
            descriptors = openDescriptors();
            threads = threadsOfTheTest();
            allocated = allocatedBytes();
        }
        growth.after(round);
    }
    EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
    EXPECT_TRUE(reader().eventually([&] { return openDescriptors() <= descriptors; })) << openDescriptors();
    EXPECT_LE(threadsOfTheTest(), threads);
    EXPECT_TRUE(reader().eventually([&] { return isNoMore(countResources(mClient), resources); }));
    RecordProperty("rounds", rounds);
    RecordProperty("allocated_bytes", std::to_string(allocatedBytes() - allocated));
    RecordProperty("growth_bytes", std::to_string(growth.bytes()));
    if (!kIsSanitized) { // sanitizers keep what was freed
        EXPECT_LT(growth.bytes(), kGrowth);
    }
}

} // namespace
} // namespace varno::test
