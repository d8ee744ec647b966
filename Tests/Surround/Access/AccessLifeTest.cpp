// When the bridge is there, and what it leaves behind.
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Surround/Access/AccessSession.h"

#include <csignal>
#include <poll.h>

namespace varno::test {
namespace {

class AccessLifeTest : public AccessFixture {
protected:
    // Ticks for a while in which everything that can happen does.
    void settle() {
        desktop().call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer", "Ping");
        for (int i = 0; i < 20; ++i) {
            mBridge->tick();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    std::string namesOnTheDesktop() {
        return desktop()
            .call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames")
            .text();
    }
};

TEST_F(AccessLifeTest, WithoutABusNothingHappens) {
    for (const AccessAddresses& addresses :
         {AccessAddresses{}, AccessAddresses{{}, "unix:path=/nonexistent/bus", {}},
          AccessAddresses{"unix:path=/nonexistent/bus", {}, {}},
          AccessAddresses{{}, {}, "unix:path=/nonexistent/bus"}}) {
        mBridge.emplace("Test effect", mWindow, addresses);
        for (int i = 0; i < 20; ++i) {
            mBridge->tick();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_FALSE(mBridge->isActive());
    }
    EXPECT_EQ(mWindow.descriptions, 0) << "work for nobody";
}

TEST_F(AccessLifeTest, WhereNobodyUsesAccessibilityNothingIsStarted) {
    makeBridge();
    settle();
    EXPECT_FALSE(mBridge->isActive());
    EXPECT_EQ(namesOnTheDesktop().find("org.a11y.Bus"), std::string::npos);
    EXPECT_EQ(mWindow.descriptions, 0);
}

TEST_F(AccessLifeTest, FollowsTheSwitch) {
    makeBridge();
    reader(); // the accessibility bus is there, but switched off
    settle();
    EXPECT_FALSE(mBridge->isActive());
    setEnabled(true);
    EXPECT_TRUE(reader().eventually([&] { return mBridge->isActive(); }));
    mName = applicationName();
    EXPECT_EQ(get(rootPath(), "org.a11y.atspi.Accessible", "Name"), "(<'Test effect'>,)");
    setEnabled(false);
    EXPECT_TRUE(reader().eventually([&] { return !mBridge->isActive(); }));
    EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
    const int before = mWindow.descriptions;
    settle();
    EXPECT_EQ(mWindow.descriptions, before);
    setEnabled(true);
    EXPECT_NE(applicationName(), mName) << "a new connection";
}

TEST_F(AccessLifeTest, IsThereWhereTheSwitchWasOnBefore) {
    setEnabled(true);
    makeBridge();
    EXPECT_NE(applicationName(), "");
}

TEST_F(AccessLifeTest, AnAddressWhereNobodyAnswersIsNone) {
    setEnabled(true);
    mBridge.emplace("Test effect", mWindow,
                    AccessAddresses{"unix:path=/nonexistent/bus", mSession.address(), {}});
    EXPECT_NE(applicationName(), "");
}

TEST_F(AccessLifeTest, ItsEndIsSeen) {
    open();
    mBridge.reset();
    EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
}

TEST_F(AccessLifeTest, TwoWindowsAreTwoApplications) {
    open();
    TestWindow other;
    AccessBridge second("Other effect", other, mSession.addresses());
    EXPECT_TRUE(reader().eventually([&] {
        second.tick();
        const std::string found = applications();
        return found.find(rootPath()) != found.rfind(rootPath());
    }));
}

TEST_F(AccessLifeTest, FindsTheRegistryAgain) {
    open();
    const auto pid = reader().call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                   "GetConnectionUnixProcessID", "('org.a11y.atspi.Registry',)");
    guint32 registry = 0;
    ASSERT_NE(pid.value, nullptr) << pid.error;
    g_variant_get(pid.value.get(), "(u)", &registry);
    ASSERT_GT(registry, 1U);
    kill(static_cast<pid_t>(registry), SIGKILL);
    EXPECT_TRUE(reader().eventually([&] {
        return get(rootPath(), "org.a11y.atspi.Accessible", "Parent") == "(<('', '/org/a11y/atspi/null')>,)";
    }));
    EXPECT_EQ(applicationName(), mName) << "in the next registry, which the question has started";
}

TEST_F(AccessLifeTest, TheBusGoesAway) {
    open();
    mReader.reset();
    mSession.stop();
    EXPECT_TRUE(eventually([&] {
        mBridge->tick();
        return !mBridge->isActive();
    }));
    mBridge->tick();
    mDesktop.reset();
}

TEST_F(AccessLifeTest, GoesToTheBusThatTheEnvironmentNames) {
    const auto answer = desktop().call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
    const gchar* address = "";
    ASSERT_NE(answer.value, nullptr) << answer.error;
    g_variant_get(answer.value.get(), "(&s)", &address);
    const EnvironmentVariable named("AT_SPI_BUS_ADDRESS", address);
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    mBridge.emplace("Test effect", mWindow, accessAddresses());
    EXPECT_NE(applicationName(), "") << "which counts as switched on";
    mBridge.reset();

    const EnvironmentVariable unnamed("AT_SPI_BUS_ADDRESS", "");
    EXPECT_TRUE(reader().eventually([&] { return applications() == "([],)"; }));
    mBridge.emplace("Test effect", mWindow, accessAddresses(address));
    EXPECT_NE(applicationName(), "") << "the display's root window names it";
}

TEST(AccessAddresses, AreThoseOfTheEnvironment) {
    const EnvironmentVariable bus("AT_SPI_BUS_ADDRESS", "unix:path=/a");
    const EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", "unix:path=/b");
    EXPECT_EQ(accessAddresses("unix:path=/c").bus, "unix:path=/a");
    EXPECT_EQ(accessAddresses("unix:path=/c").session, "unix:path=/b");
    EXPECT_EQ(accessAddresses("unix:path=/c").root, "unix:path=/c");
    EXPECT_EQ(accessAddresses("nonsense").root, "");
    const EnvironmentVariable started("DBUS_SESSION_BUS_ADDRESS", "autolaunch:");
    EXPECT_EQ(accessAddresses().session, "") << "a program would be started";
    const EnvironmentVariable unset("DBUS_SESSION_BUS_ADDRESS", "");
    const TemporaryFolder folder;
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", folder.path().string());
    EXPECT_EQ(accessAddresses().session, "") << "there is no bus";
}

// Made and ended in every state: before it has found the bus, while it registers, and afterwards.
TEST_F(AccessLifeTest, LeavesNothingBehind) {
    open();
    mBridge.reset();
    const auto openAndClose = [&](int times) {
        for (int i = 0; i < times; ++i) {
            makeBridge();
            const auto end =
                std::chrono::steady_clock::now() + std::chrono::milliseconds(i % 5 == 0 ? 20 : i % 3);
            do {
                mBridge->tick();
            } while (i % 10 == 0 ? !mBridge->isActive() : std::chrono::steady_clock::now() < end);
            mBridge.reset();
        }
    };
    openAndClose(50);
    const auto descriptors = openDescriptors();
    const auto bytes = allocatedBytes();
    openAndClose(450);
    EXPECT_TRUE(eventually([&] { return openDescriptors() <= descriptors; }));
    // What the allocator keeps for GLib's thread counts as well, some 200 bytes for each; a bridge has
    // 20,000.
    EXPECT_LT(allocatedBytes() - bytes, 450 * 500);
}

// Without ticks: an event loop that watches the descriptor answers at once.
TEST_F(AccessLifeTest, ItsDescriptorShowsThatSomethingHasArrived) {
    setEnabled(true);
    makeBridge();
    while (!mBridge->isActive()) {
        pollfd watched{mBridge->descriptor(), POLLIN, 0};
        ASSERT_EQ(poll(&watched, 1, 10'000), 1);
        mBridge->dispatch();
    }
    EXPECT_EQ(mWindow.descriptions, 1);
}

} // namespace
} // namespace varno::test
