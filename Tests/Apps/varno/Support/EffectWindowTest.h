/// `varno edit` with the effect's own editor, on an X server of its own.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_EFFECTWINDOWTEST_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_EFFECTWINDOWTEST_H

#include "Surround/BarLayout.h"
#include "Tests/Apps/varno/Support/EditTest.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Picture.h"
#include "Window/Geometry.h"

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace varno::test {

/// The plain size of the view with the bar above it, in pixels.
inline constexpr int kWidth = 690;
inline constexpr int kFaceHeight = 390;
inline constexpr int kHeight = BarLayout::kHeight + kFaceHeight;

class EffectWindowTest : public EditTest {
protected:
    /// Starts the program with the module that it comes with and waits until the view is there.
    std::unique_ptr<Subprocess> editEffect(std::vector<std::string> arguments = {}) const {
        arguments.insert(arguments.begin(), {"--module", VARNO_MODULE_BUNDLE});
        auto program = edit(arguments);
        EXPECT_TRUE(eventually([&] { return showsView(); }));
        return program;
    }

    /// Whether the view is drawn completely: before, it has one colour or still changes. The meters, in the
    /// bar and in the lower third, may move.
    bool showsView() const {
        // Longer than a view takes to be drawn.
        constexpr std::chrono::milliseconds kDrawing(100);
        const auto [width, height] = size();
        const Area still = {0, height / 5, width, height / 2};
        const auto first = picture(still);
        std::this_thread::sleep_for(kDrawing);
        return first.countColours() > 1 && picture(still) == first;
    }
    Picture picture() const { return picture({0, 0, size().width, size().height}); }
    Picture picture(const Area& area) const { return Picture::ofWindow(mPerson, window(), area); }

    WindowSize size() const {
        const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
            mPerson.connection(), xcb_get_geometry(mPerson.connection(), window()), nullptr));
        if (!geometry) {
            ADD_FAILURE() << "the program has no window";
            return {};
        }
        return {geometry->width, geometry->height};
    }

    Pointer mPointer{mPerson};
};

} // namespace varno::test

#endif
