/// Controls in a frame without a window, driven through their handlers and by events.
#ifndef VARNO_TESTS_SOURCE_GUI_DEMOGAIN_GUI_VST_CONTROLFIXTURE_H
#define VARNO_TESTS_SOURCE_GUI_DEMOGAIN_GUI_VST_CONTROLFIXTURE_H

#include "Tests/Source/GUI/HostMouse.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/icontrollistener.h"
#include "vstgui/lib/events.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

using Log = std::vector<std::string>;

/// Records what a control reports, as "begin", "value 0.25" and "end".
class RecordingListener : public VSTGUI::IControlListener {
public:
    void valueChanged(VSTGUI::CControl* control) override {
        char text[32];
        std::snprintf(text, sizeof(text), "value %.4g", static_cast<double>(control->getValue()));
        mLog.emplace_back(text);
    }
    void controlBeginEdit(VSTGUI::CControl*) override { mLog.emplace_back("begin"); }
    void controlEndEdit(VSTGUI::CControl*) override { mLog.emplace_back("end"); }

    Log take() { return std::exchange(mLog, {}); }

private:
    Log mLog;
};

class ControlFixture : public ::testing::Test {
protected:
    static constexpr std::int32_t kTag = 7;
    /// Where controls lie, and how large they are.
    static constexpr VSTGUI::CCoord kLeft = 20.0;
    static constexpr VSTGUI::CCoord kTop = 10.0;
    static constexpr VSTGUI::CCoord kSide = 40.0;

    ControlFixture() {
        UseVSTGUI({});
        frame = new VSTGUI::CFrame(VSTGUI::CRect(0, 0, 200, 100), nullptr);
        // As opening does, which needs a window.
        frame->attached(frame);
    }
    ~ControlFixture() override {
        frame->close();
        VSTGUI::CFrame::kDefaultKnobMode = mKnobMode;
    }

    static VSTGUI::CRect place() { return {kLeft, kTop, kLeft + kSide, kTop + kSide}; }
    /// A bitmap of that many pictures one below the other.
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> pictures(int count) {
        return VSTGUI::makeOwned<VSTGUI::CBitmap>(kSide, kSide * count);
    }
    /// Has the frame own and hold it.
    template<class Control>
    Control* add(Control* control) {
        frame->addView(control);
        return control;
    }

    /// A place within the control.
    static VSTGUI::CPoint at(VSTGUI::CCoord x, VSTGUI::CCoord y) { return {kLeft + x, kTop + y}; }

    static VSTGUI::CMouseEventResult press(VSTGUI::CView& control, std::int32_t state, VSTGUI::CPoint where) {
        return control.onMouseDown(where, state);
    }
    static VSTGUI::CMouseEventResult move(VSTGUI::CView& control, std::int32_t state, VSTGUI::CPoint where) {
        return control.onMouseMoved(where, state);
    }
    static VSTGUI::CMouseEventResult release(VSTGUI::CView& control, std::int32_t state,
                                             VSTGUI::CPoint where) {
        return control.onMouseUp(where, state);
    }

    /// Has the frame dispatch an event as its window does; whether it was handled.
    template<class Event>
    bool dispatch(VSTGUI::CPoint where, VSTGUI::MouseButton button, VSTGUI::Modifiers modifiers = {}) {
        Event event;
        event.mousePosition = where;
        event.buttonState.add(button);
        event.modifiers = modifiers;
        frame->dispatchEvent(event);
        return event.consumed;
    }
    bool key(VSTGUI::CView& view, VSTGUI::VirtualKey virtualKey,
             VSTGUI::EventType type = VSTGUI::EventType::KeyDown) {
        VSTGUI::KeyboardEvent event;
        event.type = type;
        event.virt = virtualKey;
        view.dispatchEvent(event);
        return event.consumed;
    }

    VSTGUI::CFrame* frame;
    RecordingListener listener;
    HostMouse host;

private:
    const std::int32_t mKnobMode = VSTGUI::CFrame::kDefaultKnobMode;
};

} // namespace varno::test

#endif
