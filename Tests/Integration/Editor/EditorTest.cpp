#include "Tests/Integration/Editor/EditorTest.h"

#include "Host/InstanceHost.h"
#include "Tests/Integration/Editor/BundleArt.h"
#include "Tests/Support/XServer.h"

#include <cairo/cairo.h>
#include <cstdlib>
#include <xcb/res.h>

namespace varno::test {

namespace layout = DemoGain_ViewLayout;

namespace {

// What two ways of blending the same colours may differ by, of 255.
constexpr int kBlendRounding = 2;

// BadCursor for ChangeWindowAttributes.
constexpr const char* kNoSuchCursor = "X error 6 for request 2.0 ";

std::string described(const Picture& expected, const Picture& seen) {
    const std::optional<Area> area = differingArea(expected, seen);
    return "differs by " + std::to_string(largestDifference(expected, seen)) +
           (area ? " within " + std::to_string(area->width) + "x" + std::to_string(area->height) + " at " +
                       std::to_string(area->x) + "," + std::to_string(area->y)
                 : std::string());
}

} // namespace

EditorTest::EditorTest()
    : HostFixture(std::filesystem::path(VARNO_BUNDLE)) {
    setenv("DISPLAY", display().c_str(), 1);
    pointer.move({client.screen().width_in_pixels - 1, client.screen().height_in_pixels - 1});
    mErrors.emplace(display());
}

void EditorTest::TearDown() {
    pointer.releaseAll();
    for (const std::string& error : takeErrors()) {
        ADD_FAILURE() << error;
    }
    HostFixture::TearDown();
}

const std::string& EditorTest::display() {
    static const XServer server;
    return server.display();
}

std::vector<std::string> EditorTest::takeErrors() {
    std::vector<std::string> errors = mErrors->finish();
    mErrors.emplace(display());
    // The drawing library (4.13) keeps the number of its pointer's shape after the end of its connection; the
    // pointer then keeps the host's shape.
    std::erase_if(errors, [](const std::string& error) { return error.starts_with(kNoSuchCursor); });
    // Counting resources queries clients that may have disconnected meanwhile.
    const std::uint8_t counting = xcb_get_extension_data(client.connection(), &xcb_res_id)->major_opcode;
    std::erase_if(errors, [counting](const std::string& error) {
        return error.find("for request " + std::to_string(counting) + ".") != std::string::npos;
    });
    return errors;
}

const BundleArt& EditorTest::art() {
    if (!mArt) {
        mArt.emplace(module()->resourcePath(layout::kBitmaps[0].mFile).parent_path());
    }
    return *mArt;
}

std::unique_ptr<EditorWindow> EditorTest::open(Instance& instance, Place onScreen) {
    return std::make_unique<EditorWindow>(EditorSurroundings{client, loop}, instance, onScreen);
}

std::unique_ptr<EditorWindow> EditorTest::show(Instance& instance, Place onScreen) {
    std::unique_ptr<EditorWindow> window = open(instance, onScreen);
    constexpr Area kCorner{0, 0, 20, 20};
    const Picture expected = art().background(kCorner);
    EXPECT_TRUE(loop.await([&] {
        return largestDifference(expected, window->picture(kCorner)) <= kBlendRounding;
    })) << "the editor does not appear: "
        << described(expected, window->picture(kCorner));
    for (const std::string& meter : controlsOf(layout::Kind::kMeter)) {
        EXPECT_TRUE(shows(*window, meter, 0)) << "does not come to rest";
    }
    return window;
}

void EditorTest::settle() {
    // What the editor asks the server in the first turn, such as further motion, is answered in the second.
    loop.turn();
    loop.turn();
}

void EditorTest::point(const EditorWindow& window, const std::string& id, Place inControl) {
    const Area area = areaOf(id);
    mPointed = window.onScreen(Place{area.x, area.y} + inControl);
    pointer.move(mPointed);
    settle();
}

void EditorTest::press(Button button) {
    pointer.press(button);
    settle();
}

void EditorTest::release(Button button) {
    pointer.release(button);
    settle();
}

void EditorTest::hold(const std::set<Modifier>& modifiers) {
    pointer.hold(modifiers);
    settle();
}

void EditorTest::drag(const EditorWindow& window, const std::string& id, Place inControl) {
    constexpr int kSteps = 4;
    const Area area = areaOf(id);
    const Place from = mPointed;
    const Place to = window.onScreen(Place{area.x, area.y} + inControl);
    for (int i = 1; i <= kSteps; ++i) {
        mPointed = {from.x + (to.x - from.x) * i / kSteps, from.y + (to.y - from.y) * i / kSteps};
        pointer.move(mPointed);
        settle();
    }
}

void EditorTest::click(const EditorWindow& window, const std::string& id, const std::set<Modifier>& modifiers,
                       Button button) {
    // From elsewhere: two clicks on one spot would be a double click.
    pointer.move(window.onScreen({0, 0}));
    settle();
    const Area area = areaOf(id);
    point(window, id, {area.width / 2, area.height / 2});
    hold(modifiers);
    press(button);
    release(button);
    hold({});
}

float EditorTest::turnKnob(const EditorWindow& window, Instance& instance, const std::string& id,
                           double value) {
    const double before = instance.normalized(id);
    const double change = std::round((value - before) * kKnobRange) / kKnobRange;
    point(window, id, pullOf(0.0));
    press();
    drag(window, id, pullOf(change));
    release();
    return static_cast<float>(before + change);
}

::testing::AssertionResult EditorTest::shows(const EditorWindow& window, const std::string& id, int picture) {
    const Picture expected = art().control(controlOf(id), picture);
    if (loop.await([&] { return largestDifference(expected, window.picture(id)) <= kBlendRounding; })) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << id << " does not show its picture " << picture << ": "
                                         << described(expected, window.picture(id));
}

namespace {

// Whether the text of a window is that of a bitmap. From cairo 1.17.4 on, letters in a window may lie between
// pixels, while those in a bitmap lie at whole ones: the same letters then differ little where each pixel is
// the mean of those around it (by 38 of 255 at most), and others a lot (by 85 for a stroke of a pixel's
// width).
bool isSameText(const Picture& bitmap, const Picture& window) {
    if (cairo_version() < CAIRO_VERSION_ENCODE(1, 17, 4)) {
        return largestDifference(bitmap, window) <= kBlendRounding;
    }
    constexpr int kMostWithinAPixel = 60;
    return largestDifference(softened(bitmap), softened(window)) <= kMostWithinAPixel;
}

} // namespace

::testing::AssertionResult EditorTest::says(const EditorWindow& window, const std::string& text) {
    const Picture expected = labelPicture(text);
    if (loop.await([&] { return isSameText(expected, window.picture(statusArea())); })) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "the line does not say \"" << text
                                         << "\": " << described(expected, window.picture(statusArea()));
}

void EditorTest::awaitDrawing(EditorWindow& window, Instance& instance) {
    // A meter is drawn together with everything else that is to be drawn. The server may still have to carry
    // out what was drawn before: only what leaves its rest after that and returns to it has been drawn anew.
    constexpr const char* kMeter = "METERGR2";
    constexpr int kAtRest = 0;
    const float before = meter(instance, eMeterTap_GainReductionRight);
    setMeter(instance, eMeterTap_GainReductionRight, 0.0F);
    EXPECT_TRUE(shows(window, kMeter, kAtRest));
    const Picture rest = window.picture(kMeter);
    setMeter(instance, eMeterTap_GainReductionRight, 1.0F);
    EXPECT_TRUE(loop.await([&] { return window.picture(kMeter) != rest; })) << "no meter moves";
    setMeter(instance, eMeterTap_GainReductionRight, 0.0F);
    EXPECT_TRUE(loop.await([&] { return window.picture(kMeter) == rest; })) << "a meter does not return";
    setMeter(instance, eMeterTap_GainReductionRight, before);
}

float EditorTest::meter(const Instance& instance, EMeterTap tap) {
    return instance.meters().value(instance.meters().indexOf(cDemoGain_MeterID[tap]).value());
}

void EditorTest::setMeter(Instance& instance, EMeterTap tap, float value) {
    instance.meters().taps()[instance.meters().indexOf(cDemoGain_MeterID[tap]).value()] = value;
    instance.meters().afterBuffer(0);
}

std::int32_t EditorTest::touches(Instance& instance, const std::string& id) {
    return instance.host().automation().touches(id);
}

std::int64_t EditorTest::allTouches(Instance& instance) {
    return instance.host().automation().totalTouches();
}

void OneEditorTest::TearDown() {
    window.reset();
    instance.reset();
    EditorTest::TearDown();
}

std::string nameOfControl(const ::testing::TestParamInfo<std::string>& control) {
    return control.param;
}

std::vector<std::string> controlsOf(layout::Kind kind) {
    std::vector<std::string> ids;
    for (const layout::Control& control : layout::kControls) {
        if (control.mKind == kind) {
            ids.emplace_back(control.mID);
        }
    }
    return ids;
}

} // namespace varno::test
