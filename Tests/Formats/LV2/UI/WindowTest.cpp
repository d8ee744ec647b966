#include "Tests/Formats/LV2/UI/WindowTest.h"

#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/XServer.h"

#include <cstdlib>

namespace varno::test {

namespace {

// What two ways of blending the same colours may differ by, of 255.
constexpr int kRounding = 2;

// Below the bar.
Area shownAreaOf(const std::string& id) {
    Area area = areaOf(id);
    area.y += BarLayout::kHeight;
    return area;
}

} // namespace

WindowTest::WindowTest()
    : art(VARNO_WINDOW_BUNDLE "/resources") {
    setenv("DISPLAY", display().c_str(), 1);
    pointer.move({client.screen().width_in_pixels - 1, client.screen().height_in_pixels - 1});
}

const std::string& WindowTest::display() {
    static const XServer server;
    return server.display();
}

std::unique_ptr<WindowHost> WindowTest::show(const HostManners& manners) {
    auto host = std::make_unique<WindowHost>(client, manners);
    EXPECT_TRUE(host->isOpen());
    EXPECT_TRUE(shows(*host, "METERGR1", 0)) << "the editor does not appear";
    return host;
}

// What the editor asks the server in the first turn, such as further motion, is answered in the second.
void WindowTest::settle(WindowHost& host) {
    host.turn();
    host.turn();
}

void WindowTest::point(WindowHost& host, const std::string& id, Place inControl) {
    const Area area = shownAreaOf(id);
    pointAt(host, Place{area.x, area.y} + inControl);
}

void WindowTest::pointAt(WindowHost& host, Place inWindow) {
    const XReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
        client.connection(),
        xcb_translate_coordinates(client.connection(), host.widget(), client.screen().root, 0, 0), nullptr));
    pointer.move(Place{corner->dst_x, corner->dst_y} + inWindow);
    settle(host);
}

void WindowTest::press(WindowHost& host) {
    pointer.press();
    settle(host);
}

void WindowTest::release(WindowHost& host) {
    pointer.release();
    settle(host);
}

void WindowTest::click(WindowHost& host, const std::string& id) {
    // From elsewhere: two clicks on one spot would be a double click.
    point(host, "METERGR1", {0, 0});
    const Area area = areaOf(id);
    point(host, id, {area.width / 2, area.height / 2});
    press(host);
    release(host);
}

void WindowTest::click(WindowHost& host, BarLayout::Button button) {
    const Box box = BarLayout::row(button).place;
    pointAt(host, {box.x + box.width / 2, box.y + box.height / 2});
    press(host);
    release(host);
}

void WindowTest::turnKnob(WindowHost& host, const std::string& id, double change) {
    constexpr int kSteps = 4;
    point(host, id, pullOf(0.0));
    press(host);
    for (int step = 1; step <= kSteps; ++step) {
        point(host, id, pullOf(change * step / kSteps));
    }
    release(host);
}

::testing::AssertionResult WindowTest::shows(WindowHost& host, const std::string& id, int picture) {
    return shows(host, id, art.control(controlOf(id), picture));
}

::testing::AssertionResult WindowTest::shows(WindowHost& host, const std::string& id,
                                             const Picture& expected) {
    const auto difference = [&] { return largestDifference(expected, host.picture(shownAreaOf(id))); };
    if (await(host, [&] { return difference() <= kRounding; })) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << id << " shows something else, by " << difference() << " of 255";
}

} // namespace varno::test
