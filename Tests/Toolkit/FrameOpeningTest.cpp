#include "Toolkit/FrameOpening.h"

#include "Tests/Source/GUI/FakeDesktop.h"
#include "Tests/Source/GUI/TestEditor.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/XServer.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/ccolor.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

namespace varno::test {
namespace {

constexpr int kWidth = 120;
constexpr int kHeight = 80;
constexpr std::uint32_t kRed = 0x00FF0000;

// The window as a container's pointer: the number in its place.
void* pointerTo(std::uintptr_t window) {
    return std::bit_cast<void*>(window);
}

// Editors with a red view in windows of an X server's.
class FrameOpeningTest : public ::testing::Test {
protected:
    FrameOpeningTest() {
        UseVSTGUI({});
        ::setenv("DISPLAY", server->display().c_str(), 1);
    }
    // One server for all: VSTGUI queries the numbers of its atoms from the first one and keeps them while the
    // program runs.
    static void SetUpTestSuite() { server = std::make_unique<XServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    // An editor and its window, which is created first and destroyed last.
    struct Place {
        explicit Place(const XClient& xClient, int x = 10)
            : client(xClient),
              window(client.makeWindow({x, 10, 2 * kWidth, 2 * kHeight})) {
            container.type = AAX_eViewContainerType_X11;
            container.view = pointerTo(window);
            editor->Initialize(&host);
            editor->makeView = [](TestEditor& own, void* native) {
                auto* const view =
                    new VSTGUI_ContentView(native, VSTGUI::CRect(0, 0, kWidth, kHeight), &own, nullptr);
                view->getFrame()->setBackgroundColor(VSTGUI::kRedCColor);
                own.ShowView(view);
            };
        }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place() {
            editor.Reset();
            // The server may have ended, which is no fault here.
            xcb_destroy_window(client.connection(), window);
            xcb_flush(client.connection());
        }

        void open() { ASSERT_EQ(editor->SetViewContainer(&container), 0); }
        void close() { ASSERT_EQ(editor->SetViewContainer(nullptr), 0); }
        bool isRed(test::Place where) const {
            return Picture::ofWindow(client, window, {where.x, where.y, 1, 1}).at({0, 0}) == kRed;
        }
        // Drives the editor by the host's timer until the view has drawn itself up to its last pixel.
        bool isDrawn(int width = kWidth, int height = kHeight) const {
            return eventually([&] {
                editor->TimerWakeup();
                return client.countChildren(window) == 1 && isRed({width - 1, height - 1});
            });
        }

        const XClient& client;
        xcb_window_t window;
        FakeHost host;
        TestContainer container;
        ACFPtr<TestEditor> editor = makeTestEditor();
    };

    static std::unique_ptr<XServer> server;
    XClient client{server->display()};
};

std::unique_ptr<XServer> FrameOpeningTest::server;

TEST_F(FrameOpeningTest, DrawsInTheHostsWindow) {
    Place place(client);
    place.open();
    EXPECT_EQ(client.countChildren(place.window), 1U) << "not known to other clients at once";
    ASSERT_TRUE(place.isDrawn());
    EXPECT_FALSE(place.isRed({kWidth, kHeight - 1}));
    AAX_Point size;
    place.editor->GetViewSize(&size);
    EXPECT_EQ(size.horz, static_cast<float>(kWidth));
    EXPECT_EQ(size.vert, static_cast<float>(kHeight));
    VSTGUI::CRect told;
    EXPECT_TRUE(place.editor->GetView()->getSize(told));
    EXPECT_EQ(told.getWidth(), kWidth);
    EXPECT_TRUE(place.editor->GetView()->getSize(&told));
    place.editor->GetView()->getFrame()->setVisible(false);
    EXPECT_FALSE(place.editor->GetView()->getSize(&told));
    EXPECT_TRUE(place.editor->GetView()->getSize(told));
    place.editor->GetView()->getFrame()->setVisible(true);
    place.editor->GetView()->getFrame()->setAlphaValue(0.0F);
    EXPECT_FALSE(place.editor->GetView()->getSize(&told));
    place.close();
    EXPECT_TRUE(eventually([&] { return client.countChildren(place.window) == 0; }));
}

// Each time the last frame closes, VSTGUI closes its connection, and a new one may have the address of an old
// one.
TEST_F(FrameOpeningTest, MovesWithinTheHostsWindow) {
    Place place(client);
    place.open();
    ASSERT_TRUE(place.isDrawn());
    EXPECT_TRUE(place.editor->GetView()->setPosition(30, 20));
    EXPECT_TRUE(eventually([&] {
        place.editor->TimerWakeup();
        return place.isRed({kWidth + 29, kHeight + 19}) && !place.isRed({29, 30}) && !place.isRed({40, 19});
    }));
}

TEST_F(FrameOpeningTest, OpensAgainAndAgain) {
    constexpr int kRounds = 20;
    Place place(client);
    client.synchronise();
    // A client of an earlier test whose end the server has not noticed yet may be among them.
    const auto before = countResources(client);
    for (int round = 0; round < kRounds; ++round) {
        place.open();
        ASSERT_TRUE(place.isDrawn()) << "round " << round;
        place.close();
    }
    EXPECT_TRUE(eventually([&] { return isNoMore(countResources(client), before); }));
}

TEST_F(FrameOpeningTest, TwoEditorsShareTheLoop) {
    constexpr int kRounds = 5;
    Place one(client);
    Place other(client, 300);
    for (int round = 0; round < kRounds; ++round) {
        one.open();
        ASSERT_TRUE(one.isDrawn());
        other.open();
        // Driven by the other's timer alone.
        ASSERT_TRUE(eventually([&] {
            one.editor->TimerWakeup();
            return other.isRed({kWidth - 1, kHeight - 1});
        }));
        one.close();
        client.synchronise();
        EXPECT_EQ(client.countChildren(one.window), 0U);
        AAX_Rect all{0.0F, 0.0F, kWidth, kHeight};
        other.editor->Draw(&all);
        ASSERT_TRUE(other.isDrawn());
        one.open();
        ASSERT_TRUE(one.isDrawn());
        other.close();
        ASSERT_TRUE(one.isDrawn());
        one.close();
    }
}

TEST_F(FrameOpeningTest, IsAsLargeAsTheDesktopWishes) {
    FakeDesktop desktop;
    desktop.scale = 1.5;
    Place place(client);
    place.container.offer(IID_IVarnoDesktopV1, &desktop);
    place.open();
    AAX_Point size;
    place.editor->GetViewSize(&size);
    EXPECT_EQ(size.horz, 180.0F);
    EXPECT_EQ(size.vert, 120.0F);
    ASSERT_TRUE(place.isDrawn(180, 120));
    EXPECT_FALSE(place.isRed({180, 119}));
    place.close();
    EXPECT_EQ(desktop.references(), 0);
}

TEST_F(FrameOpeningTest, WorksOnTheDesktopsEventLoopAlone) {
    FakeDesktop desktop;
    Place place(client);
    place.container.offer(IID_IVarnoDesktopV1, &desktop);
    place.open();
    ASSERT_EQ(desktop.descriptors().size(), 1U);
    ASSERT_EQ(desktop.periods(), std::vector<std::uint32_t>{16});
    EXPECT_TRUE(eventually([&] {
        desktop.wakeDescriptor(*desktop.descriptors().begin());
        desktop.wakeTimers();
        return place.isRed({kWidth - 1, kHeight - 1});
    }));
    place.close();
    EXPECT_TRUE(desktop.descriptors().empty());
    EXPECT_TRUE(desktop.periods().empty());
    EXPECT_FALSE(desktop.sawClosedDescriptor);
}

// Draws its own colour, and counts.
class Patch : public VSTGUI::CView {
public:
    Patch(const VSTGUI::CRect& size, int& draws)
        : CView(size),
          mDraws(draws) {}
    void draw(VSTGUI::CDrawContext* context) override {
        ++mDraws;
        CView::draw(context);
    }

private:
    int& mDraws;
};

TEST_F(FrameOpeningTest, DrawsThePartThatTheHostAsksFor) {
    FakeDesktop desktop;
    desktop.scale = 2.0;
    Place place(client);
    place.container.offer(IID_IVarnoDesktopV1, &desktop);
    place.open();
    int left = 0;
    int right = 0;
    VSTGUI::CFrame& frame = *place.editor->GetView()->getFrame();
    frame.addView(new Patch(VSTGUI::CRect(0, 0, 20, 20), left));
    frame.addView(new Patch(VSTGUI::CRect(80, 0, 100, 20), right));
    ASSERT_TRUE(place.isDrawn(2 * kWidth, 2 * kHeight));
    ASSERT_TRUE(eventually([&] {
        place.editor->TimerWakeup();
        return left > 0 && right > 0;
    }));
    left = 0;
    right = 0;
    // In pixels of the enlarged view.
    AAX_Rect part{10.0F, 170.0F, 20.0F, 20.0F};
    EXPECT_EQ(place.editor->Draw(&part), 0);
    EXPECT_TRUE(eventually([&] {
        place.editor->TimerWakeup();
        return right > 0;
    }));
    EXPECT_EQ(left, 0);
    place.close();
}

TEST_F(FrameOpeningTest, OpensNothingInWindowsThatAreNotThere) {
    Place place(client);
    const auto isOpen = [&](std::int32_t type, std::uintptr_t view) {
        place.container.type = type;
        place.container.view = pointerTo(view);
        EXPECT_EQ(place.editor->SetViewContainer(&place.container), 0);
        const bool isAttached = place.editor->GetView()->getFrame()->isAttached();
        EXPECT_EQ(place.editor->TimerWakeup(), 0);
        EXPECT_EQ(place.editor->SetViewContainer(nullptr), 0);
        return isAttached;
    };
    const std::uintptr_t number = place.window;
    EXPECT_FALSE(isOpen(AAX_eViewContainerType_X11, 0xABCDEF));
    EXPECT_FALSE(isOpen(AAX_eViewContainerType_X11, number + (std::uintptr_t{1} << 40)));
    EXPECT_FALSE(isOpen(AAX_eViewContainerType_Cocoa, number));
    EXPECT_TRUE(isOpen(AAX_eViewContainerType_X11, number));
    for (const char* display : {":nowhere", ":9999", ""}) {
        ::setenv("DISPLAY", display, 1);
        EXPECT_FALSE(isOpen(AAX_eViewContainerType_X11, number));
    }
    client.synchronise();
    EXPECT_EQ(client.countChildren(place.window), 0U);
}

TEST_F(FrameOpeningTest, TheBasesEmptyViewOpensHarmlessly) {
    Place place(client);
    place.editor->makeView = nullptr;
    place.open();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(place.editor->TimerWakeup(), 0);
    }
    place.close();
}

TEST_F(FrameOpeningTest, SurvivesTheHostsWindow) {
    Place place(client);
    place.open();
    ASSERT_TRUE(place.isDrawn());
    client.destroyWindow(place.window);
    client.synchronise();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(place.editor->TimerWakeup(), 0);
    }
    place.close();
    place.window = client.makeWindow({10, 10, 2 * kWidth, 2 * kHeight});
    place.container.view = pointerTo(place.window);
    place.open();
    EXPECT_TRUE(place.isDrawn());
    place.close();
}

TEST_F(FrameOpeningTest, SurvivesTheDisplay) {
    XServer mortal;
    ::setenv("DISPLAY", mortal.display().c_str(), 1);
    const XClient mortalClient(mortal.display());
    Place place(mortalClient);
    place.open();
    ASSERT_TRUE(place.editor->GetView()->getFrame()->isAttached());
    mortal.stop();
    AAX_Rect all{0.0F, 0.0F, kWidth, kHeight};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(place.editor->Draw(&all), 0);
        EXPECT_EQ(place.editor->TimerWakeup(), 0);
    }
    place.close();
    place.open();
    EXPECT_FALSE(place.editor->GetView()->getFrame()->isAttached());

    ::setenv("DISPLAY", server->display().c_str(), 1);
    Place next(client);
    next.open();
    // The library keeps the names of one server for the life of the process: whether it draws on another is
    // chance.
    EXPECT_TRUE(next.editor->GetView()->getFrame()->isAttached());
    next.close();
}

TEST_F(FrameOpeningTest, CausesNoErrorsAtTheServer) {
    XErrors errors(server->display());
    {
        Place place(client);
        place.open();
        ASSERT_TRUE(place.isDrawn());
        place.close();
    }
    EXPECT_EQ(errors.finish(), std::vector<std::string>{});
}

} // namespace
} // namespace varno::test
