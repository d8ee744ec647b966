/// Tests of the editor on a screen, with a mouse and with the host's contracts checked.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_EDITORTEST_H
#define VARNO_TESTS_INTEGRATION_EDITOR_EDITORTEST_H

#include "DemoGain_Alg.h"
#include "Tests/Integration/Editor/BundleArt.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/HostLoop.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/XServer.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace varno::test {

/// What float arithmetic may lose of a normalized value.
inline constexpr double kRounding = 1e-6;

/// The bundle that was built, on an X server that all tests of the program share. A test fails if the server
/// has sent an error to any client.
class EditorTest : public HostFixture {
protected:
    EditorTest();
    void TearDown() override;

    /// Opens an editor with its top left corner at that place on the screen.
    std::unique_ptr<EditorWindow> open(Instance& instance, Place onScreen = {});
    /// The same, and waits until it shows its background and its meters rest.
    std::unique_ptr<EditorWindow> show(Instance& instance, Place onScreen = {});

    // The mouse. Each of these returns when the editor has received its events and the host has answered.

    /// To a place within a control.
    void point(const EditorWindow& window, const std::string& id, Place inControl);
    void press(Button button = Button::kLeft);
    void release(Button button = Button::kLeft);
    void hold(const std::set<Modifier>& modifiers);
    /// Moves in several steps from where the pointer was last.
    void drag(const EditorWindow& window, const std::string& id, Place inControl);
    /// Presses and releases in the middle of a control, with these keys held meanwhile.
    void click(const EditorWindow& window, const std::string& id, const std::set<Modifier>& modifiers = {},
               Button button = Button::kLeft);
    /// Turns a knob to a value, as near as whole pixels allow. Returns the value that it must then have.
    float turnKnob(const EditorWindow& window, Instance& instance, const std::string& id, double value);

    // The picture.

    /// Waits until a control shows that picture of its bitmap.
    ::testing::AssertionResult shows(const EditorWindow& window, const std::string& id, int picture);
    /// Waits until the line of text is this.
    ::testing::AssertionResult says(const EditorWindow& window, const std::string& text);
    /// Waits until everything has been drawn that is to be drawn so far. Moves the second meter.
    void awaitDrawing(EditorWindow& window, Instance& instance);

    /// Sets the host's side of a meter, as a processed buffer would.
    static void setMeter(Instance& instance, EMeterTap tap, float value);
    static float meter(const Instance& instance, EMeterTap tap);
    /// Open gestures on a parameter.
    static std::int32_t touches(Instance& instance, const std::string& id);
    /// All gestures since the instance's beginning.
    static std::int64_t allTouches(Instance& instance);

    /// Returns and removes the errors so far.
    std::vector<std::string> takeErrors();
    const BundleArt& art();

    static const std::string& display();

    const XClient client{display()};
    HostLoop loop{client};
    Pointer pointer{client};

private:
    void settle();

    std::optional<XErrors> mErrors;
    std::optional<BundleArt> mArt;
    Place mPointed; ///< On the screen.
};

/// Tests of one editor.
class OneEditorTest : public EditorTest {
protected:
    void TearDown() override;

    std::unique_ptr<Instance> instance = makeInstance(module());
    std::unique_ptr<EditorWindow> window = show(*instance);
};

/// The identifiers of all controls of a kind.
std::vector<std::string> controlsOf(DemoGain_ViewLayout::Kind kind);
/// Names a test by its control.
std::string nameOfControl(const ::testing::TestParamInfo<std::string>& control);

} // namespace varno::test

#endif
