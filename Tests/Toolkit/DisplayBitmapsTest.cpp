#include "Toolkit/DisplayBitmaps.h"

#include "Platform/RunLoop.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/XServer.h"
#include "Toolkit/WidgetFrame.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/platform/iplatformbitmap.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace varno::test {
namespace {

constexpr int kSide = 40;

// Two rows of different colours.
VSTGUI::SharedPointer<VSTGUI::CBitmap> makeBitmap() {
    const auto bitmap = VSTGUI::makeOwned<VSTGUI::CBitmap>(1.0, 2.0);
    const auto pixels = VSTGUI::owned(VSTGUI::CBitmapPixelAccess::create(bitmap));
    pixels->setColor(VSTGUI::kRedCColor);
    pixels->setPosition(0, 1);
    pixels->setColor(VSTGUI::kBlueCColor);
    return bitmap;
}

// Shows the second row of a bitmap everywhere.
class BitmapView : public VSTGUI::CView {
public:
    explicit BitmapView(VSTGUI::CBitmap& bitmap)
        : CView(VSTGUI::CRect(0, 0, 1, 1)),
          mBitmap(bitmap) {}
    void draw(VSTGUI::CDrawContext* context) override {
        context->drawBitmap(&displayBitmap(mBitmap), getViewSize(), VSTGUI::CPoint(0, 1), 1.0F);
        setDirty(false);
    }

private:
    VSTGUI::CBitmap& mBitmap;
};

class DisplayBitmapsTest : public ::testing::Test {
protected:
    DisplayBitmapsTest() { ::setenv("DISPLAY", server->display().c_str(), 1); }
    // One for all: the library keeps the numbers of the first one's atoms.
    static void SetUpTestSuite() { server = std::make_unique<XServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    static std::unique_ptr<XServer> server;
    XClient mClient{server->display()};
    XWindow mWindow{mClient, {10, 10, kSide, kSide}};
};

std::unique_ptr<XServer> DisplayBitmapsTest::server;

TEST_F(DisplayBitmapsTest, AreCopiesWhileAFrameIsOpen) {
    std::optional<WidgetFrame> frame(std::in_place, kSide, kSide);
    const auto bitmap = makeBitmap();
    EXPECT_EQ(&displayBitmap(*bitmap), bitmap.get());
    EXPECT_EQ(bitmap->getNbReference(), 1);
    ASSERT_TRUE(frame->open(mWindow.id(), 1.0));
    auto& copy = displayBitmap(*bitmap);
    EXPECT_NE(&copy, bitmap.get());
    EXPECT_EQ(copy.getSize(), bitmap->getSize());
    EXPECT_EQ(&displayBitmap(*bitmap), &copy);
    EXPECT_NE(&displayBitmap(*makeBitmap()), &copy);
    frame.reset();
    EXPECT_EQ(&displayBitmap(*bitmap), bitmap.get());
    EXPECT_EQ(bitmap->getNbReference(), 1);
}

TEST_F(DisplayBitmapsTest, AreDrawnAsTheirOriginals) {
    const auto bitmap = makeBitmap();
    // Again in another connection.
    for (int opening = 0; opening < 2; ++opening) {
        WidgetFrame frame(kSide, kSide);
        frame.get().addView(new BitmapView(*bitmap));
        ASSERT_TRUE(frame.open(mWindow.id(), 1.0));
        EXPECT_TRUE(eventually([&] {
            RunLoop::shared()->tick();
            return Picture::ofWindow(mClient, mWindow.id(), {0, 0, 1, 1}).at({0, 0}) == 0x0000FF;
        }));
    }
}

TEST_F(DisplayBitmapsTest, WithoutContentStayAsTheyAre) {
    WidgetFrame frame(kSide, kSide);
    ASSERT_TRUE(frame.open(mWindow.id(), 1.0));
    const auto bitmap = VSTGUI::makeOwned<VSTGUI::CBitmap>(VSTGUI::PlatformBitmapPtr());
    EXPECT_EQ(&displayBitmap(*bitmap), bitmap.get());
    // More rows than a pixmap may have.
    const auto strip = VSTGUI::makeOwned<VSTGUI::CBitmap>(1.0, 40'000.0);
    EXPECT_EQ(&displayBitmap(*strip), strip.get());
}

} // namespace
} // namespace varno::test
