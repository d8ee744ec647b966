#include "GUI/DesktopLink.h"

#include "Tests/Source/GUI/FakeDesktop.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace varno::test {
namespace {

class DesktopLinkTest : public ::testing::Test {
protected:
    DesktopLinkTest() { container.offer(IID_IVarnoDesktopV1, &desktop); }

    FakeHost container;
    FakeDesktop desktop;
    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
};

TEST_F(DesktopLinkTest, ReturnsTheDesktopsScale) {
    const DesktopLink link(&container);
    for (const double scale : {0.5, 1.0, 1.5}) {
        desktop.scale = scale;
        EXPECT_EQ(link.scale(), scale);
    }
    for (const double senseless :
         {0.0, -2.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        desktop.scale = senseless;
        EXPECT_EQ(link.scale(), 1.0);
    }
    desktop.scale = 2.0;
    desktop.result = AAX_ERROR_NULL_OBJECT;
    EXPECT_EQ(link.scale(), 1.0);
}

TEST_F(DesktopLinkTest, TurnsTheDesktopsKnobModeIntoTheLibrarys) {
    constexpr std::int32_t kLibrarysOwn = -1;
    const DesktopLink link(&container);
    EXPECT_EQ(link.knobMode(), kLibrarysOwn);
    desktop.knobMode = AAX_eKnobMode_Line;
    EXPECT_EQ(link.knobMode(), VSTGUI::kLinearMode);
    desktop.knobMode = 7; // of a later version
    EXPECT_EQ(link.knobMode(), kLibrarysOwn);
    desktop.knobMode = AAX_eKnobMode_Line;
    desktop.result = AAX_ERROR_NULL_OBJECT;
    EXPECT_EQ(link.knobMode(), kLibrarysOwn);
}

TEST_F(DesktopLinkTest, WithoutADesktopEverythingIsHarmless) {
    container.offer(IID_IVarnoDesktopV1, nullptr);
    DesktopLink link(&container);
    EXPECT_EQ(link.scale(), 1.0);
    EXPECT_EQ(link.knobMode(), -1);
    link.connect(loop);
    link.disconnect();
    EXPECT_EQ(loop.use_count(), 1);
}

TEST_F(DesktopLinkTest, HasTheDesktopDriveTheLoop) {
    int ticks = 0;
    const Registration early = loop->addDescriptor(40, [&] { ++ticks; });
    DesktopLink link(&container);
    link.connect(loop);
    EXPECT_EQ(desktop.descriptors(), (std::set<std::int32_t>{40}));
    EXPECT_EQ(desktop.periods(), (std::vector<std::uint32_t>{16}));
    desktop.wakeDescriptor(40);
    EXPECT_EQ(ticks, 1);
    desktop.wakeTimers();
    EXPECT_EQ(ticks, 2);

    Registration late = loop->addDescriptor(41, [] {});
    EXPECT_EQ(desktop.descriptors(), (std::set<std::int32_t>{40, 41}));
    late.reset();
    EXPECT_EQ(desktop.descriptors(), (std::set<std::int32_t>{40}));
}

TEST_F(DesktopLinkTest, ReleasesEverything) {
    const Registration descriptor = loop->addDescriptor(40, [] {});
    {
        DesktopLink link(&container);
        link.connect(loop);
        link.disconnect();
        EXPECT_TRUE(desktop.descriptors().empty());
        EXPECT_TRUE(desktop.periods().empty());
        EXPECT_EQ(loop.use_count(), 1);
        link.disconnect();
        link.connect(loop);
        EXPECT_FALSE(desktop.descriptors().empty());
    }
    EXPECT_TRUE(desktop.descriptors().empty());
    EXPECT_TRUE(desktop.periods().empty());
    EXPECT_EQ(desktop.references(), 0);
    EXPECT_EQ(loop.use_count(), 1);
}

TEST_F(DesktopLinkTest, EachLinkHasWatchesOfItsOwn) {
    const Registration descriptor = loop->addDescriptor(40, [] {});
    DesktopLink one(&container);
    one.connect(loop);
    {
        DesktopLink other(&container);
        other.connect(loop);
        EXPECT_EQ(desktop.periods().size(), 2U);
    }
    EXPECT_EQ(desktop.descriptors(), (std::set<std::int32_t>{40}));
    EXPECT_EQ(desktop.periods().size(), 1U);
}

TEST_F(DesktopLinkTest, MayEndWithinItsOwnTick) {
    auto link = std::make_unique<DesktopLink>(&container);
    const Registration ending = loop->addDescriptor(40, [&] { link.reset(); });
    link->connect(loop);
    desktop.wakeDescriptor(40);
    EXPECT_EQ(link, nullptr);
    EXPECT_TRUE(desktop.descriptors().empty());
}

TEST_F(DesktopLinkTest, LetsNoExceptionIntoTheHostsEventLoop) {
    const Registration throwing = loop->addDescriptor(40, [] { throw 1; });
    DesktopLink link(&container);
    link.connect(loop);
    EXPECT_NO_THROW(desktop.wakeDescriptor(40));
}

} // namespace
} // namespace varno::test
