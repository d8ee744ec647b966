// Memory of the editor: allocations that fail while it is created, and what a press leaves.
#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"
#include "Tests/Support/FailingCreation.h"
#include "Tests/Support/TestAllocator.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(EditorCreation, ThatFailsReturnsNullWithOneTraceLine) {
    expectCreationFails(DemoGain_GUI::Create, "DemoGain_GUI::Create", true);
}

TEST(EditorCreation, ThatFailsReturnsNullToAHostThatHasNoMemoryEither) {
    expectCreationFails(DemoGain_GUI::Create, "DemoGain_GUI::Create", false);
}

// Closes the control as its view does, where the host closes the view when it receives the touch.
class ClosingListener : public RecordingListener {
public:
    void controlBeginEdit(VSTGUI::CControl* control) override {
        if (closed != nullptr) {
            control->endEdit();
            closed->Close();
        }
    }

    DemoGain_HostedControl* closed = nullptr; ///< None until set.
};

using KnobMemory = ControlFixture;

TEST_F(KnobMemory, IsFreeAfterAPressWithinWhichTheHostClosesTheView) {
    constexpr int kPictures = 5;
    ClosingListener closing;
    auto* const knob = add(new DemoGain_AnimKnobVST(place(), &closing, kTag, kPictures, place().getHeight(),
                                                    pictures(kPictures), VSTGUI::CPoint(0, 0)));
    press(*knob, VSTGUI::kLButton, at(20, 20));
    release(*knob, VSTGUI::kLButton, at(20, 20));
    closing.take();
    const std::size_t before = liveAllocations();
    closing.closed = knob;
    press(*knob, VSTGUI::kLButton, at(20, 20));
    closing.take();
    EXPECT_EQ(liveAllocations(), before);
}

} // namespace
} // namespace varno::test
