/// Tests of the editor on a screen, with a person's hand on the mouse and the host's contracts watched.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_EDITORTEST_H
#define VARNO_TESTS_INTEGRATION_EDITOR_EDITORTEST_H

#include "DemoGain_Alg.h"
#include "Tests/Integration/Editor/BundleArt.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/HostLoop.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Pointer.h"
#include "Tests/Support/XErrors.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace varno::test {

/// The bundle that was built, on an X server that all tests of the program share. A test fails if the server
/// has sent an error to anybody.
class EditorTest : public HostFixture {
protected:
    EditorTest();
    void TearDown() override;

    /// Opens an editor with its top left corner at that place on the screen.
    std::unique_ptr<EditorWindow> open(Instance& instance, Place onScreen = {});
    /// The same, having waited until it shows its background and its meters rest.
    std::unique_ptr<EditorWindow> show(Instance& instance, Place onScreen = {});

    // A hand. Every step is over when the editor has heard of it and the host has answered.

    /// To a place within a control.
    void point(const EditorWindow& window, const std::string& id, Place inControl);
    void press(Button button = Button::Left);
    void release(Button button = Button::Left);
    void hold(const std::set<Modifier>& modifiers);
    /// Moves a part of the way at a time, which goes by from where the pointer was last.
    void drag(const EditorWindow& window, const std::string& id, Place inControl);
    /// Presses and releases in the middle of a control, with these keys held meanwhile.
    void click(const EditorWindow& window, const std::string& id, const std::set<Modifier>& modifiers = {},
               Button button = Button::Left);
    /// Turns a knob from where it stands to a value, as near as whole pixels come; what it then must have
    /// been set to.
    float turnKnob(const EditorWindow& window, Instance& instance, const std::string& id, double value);

    // What is seen.

    /// Waits until a control shows that picture of its bitmap.
    ::testing::AssertionResult shows(const EditorWindow& window, const std::string& id, int picture);
    /// Waits until the line of text says this.
    ::testing::AssertionResult says(const EditorWindow& window, const std::string& text);
    /// Waits until everything has been drawn that is to be drawn so far. Moves the second meter.
    void awaitDrawing(EditorWindow& window, Instance& instance);

    /// Gives the host's side of a meter a value, as a buffer would.
    static void setMeter(Instance& instance, EMeterTap tap, float value);
    static float meter(const Instance& instance, EMeterTap tap);
    /// Open gestures on a parameter.
    static std::int32_t touches(Instance& instance, const std::string& id);
    /// All gestures since the instance's beginning.
    static std::int64_t allTouches(Instance& instance);

    /// Hands over the errors so far, and forgets them.
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
/// Names a test by the control that it is about.
std::string nameOfControl(const ::testing::TestParamInfo<std::string>& control);

} // namespace varno::test

#endif
