#include "GUI/VSTGUI_ContentView.h"

#include "Tests/Support/TestEffect.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/cview.h"
#include "vstgui/lib/events.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

using VSTGUI::CPoint;
using VSTGUI::CRect;
using VSTGUI::DragEventData;
using VSTGUI::DragOperation;

// What reaches a view, with the place of what is dragged.
using Log = std::vector<std::string>;

std::string keysOf(const VSTGUI::Modifiers& modifiers) {
    constexpr std::pair<VSTGUI::ModifierKey, const char*> kNames[] = {
        {VSTGUI::ModifierKey::Shift, " shift"},
        {VSTGUI::ModifierKey::Control, " control"},
        {VSTGUI::ModifierKey::Alt, " alt"},
        {VSTGUI::ModifierKey::Super, " super"},
    };
    std::string text;
    for (const auto& [key, name] : kNames) {
        text += modifiers.has(key) ? name : "";
    }
    return text;
}

class Target : public VSTGUI::DropTargetAdapter, public VSTGUI::NonAtomicReferenceCounted {
public:
    explicit Target(Log& log)
        : mLog(log) {}
    DragOperation onDragEnter(DragEventData data) override { return note("enter", data); }
    DragOperation onDragMove(DragEventData data) override { return note("move", data); }
    void onDragLeave(DragEventData data) override { note("leave", data); }
    bool onDrop(DragEventData data) override { return note("drop", data) == DragOperation::Copy; }

private:
    DragOperation note(const char* what, const DragEventData& data) {
        mLog.push_back(std::string(what) + " " + std::to_string(static_cast<int>(data.pos.x)) + "," +
                       std::to_string(static_cast<int>(data.pos.y)));
        return DragOperation::Copy;
    }
    Log& mLog;
};

// Takes the focus, keys and what is dragged.
class Taker : public VSTGUI::CView {
public:
    Taker(const CRect& size, Log& log)
        : CView(size),
          mLog(log) {
        setWantsFocus(true);
    }
    ~Taker() noexcept override { mLog.emplace_back("gone"); }
    VSTGUI::SharedPointer<VSTGUI::IDropTarget> getDropTarget() override {
        return VSTGUI::makeOwned<Target>(mLog);
    }
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override {
        mLog.push_back("key " + std::to_string(static_cast<int>(event.virt)) + " " +
                       std::to_string(event.character) + keysOf(event.modifiers) +
                       (event.type == VSTGUI::EventType::KeyDown ? " down" : " up"));
        event.consumed = event.virt == VSTGUI::VirtualKey::Return;
    }

private:
    Log& mLog;
};

// What the pass-through adds to a view of one's own.
class OwnView : public VSTGUI_ContentView {
public:
    using VSTGUI_ContentView::VSTGUI_ContentView;
    bool getSize(CRect& outSize) const override {
        ++sizeQuestions;
        return VSTGUI_ContentView::getSize(outSize);
    }
    using VSTGUI_ContentView::getSize;

    mutable int sizeQuestions = 0;
};

class VSTGUI_ContentViewTest : public ::testing::Test {
protected:
    VSTGUI_ContentViewTest() {
        UseVSTGUI({});
        view = VSTGUI::owned(new OwnView(&native, CRect(0, 0, 200, 100), &editor, parameters.Get()));
    }

    struct Editor : VSTGUI::VSTGUIEditorInterface {
        ~Editor() noexcept override = default;
        std::int32_t getKnobMode() const override { return VSTGUI::kRelativCircularMode; }
        void beginEdit(std::int32_t index) override { edits.push_back(index); }
        void endEdit(std::int32_t index) override { edits.push_back(-index); }
        bool beforeSizeChange(const CRect&, const CRect&) override { return allowsSizes; }

        std::vector<std::int32_t> edits;
        bool allowsSizes = true;
    };

    Log log;
    int native = 0; // the address of a native view
    Editor editor;
    ACFPtr<TestEffect> parameters = makeTestEffect();
    VSTGUI::SharedPointer<OwnView> view;
};

TEST_F(VSTGUI_ContentViewTest, CarriesItsFrameAndParameters) {
    EXPECT_EQ(view->getParameters(), parameters.Get());
    ASSERT_NE(view->getFrame(), nullptr);
    EXPECT_EQ(view->getFrame()->getViewSize(), CRect(0, 0, 200, 100));
    EXPECT_EQ(editor.getFrame(), nullptr);
}

TEST_F(VSTGUI_ContentViewTest, ItsFrameAsksTheEditorUntilItIsDisconnected) {
    VSTGUI::CFrame& frame = *view->getFrame();
    EXPECT_EQ(frame.getKnobMode(), VSTGUI::kRelativCircularMode);
    frame.beginEdit(3);
    frame.endEdit(3);
    EXPECT_EQ(editor.edits, (std::vector<std::int32_t>{3, -3}));
    editor.allowsSizes = false;
    EXPECT_FALSE(frame.setSize(50, 50));

    view->Disconnect();
    EXPECT_EQ(view->getParameters(), nullptr);
    EXPECT_EQ(view->getNativeView(), nullptr);
    EXPECT_EQ(frame.getKnobMode(), VSTGUI::CFrame::kDefaultKnobMode);
    frame.beginEdit(4);
    frame.endEdit(4);
    EXPECT_EQ(editor.edits.size(), 2U);
    EXPECT_TRUE(frame.setSize(50, 50));
}

TEST_F(VSTGUI_ContentViewTest, TheLastReferenceTakesTheFrameAndItsViews) {
    view->getFrame()->addView(new Taker(CRect(10, 10, 50, 50), log));
    const VSTGUI::SharedPointer<OwnView> other = view;
    view = nullptr;
    EXPECT_EQ(log, Log{});
    const_cast<VSTGUI::SharedPointer<OwnView>&>(other) = nullptr;
    EXPECT_EQ(log, Log{"gone"});
}

TEST_F(VSTGUI_ContentViewTest, SetsTheFramesSize) {
    EXPECT_TRUE(view->setSize(300, 50));
    EXPECT_EQ(view->getFrame()->getViewSize(), CRect(0, 0, 300, 50));
}

// As the frame: it has neither place nor size on the screen before it is opened.
TEST_F(VSTGUI_ContentViewTest, UnopenedHasNoSize) {
    CRect size(1, 2, 3, 4);
    EXPECT_FALSE(view->getSize(size));
    EXPECT_FALSE(view->getSize(&size));
    EXPECT_EQ(size, CRect(1, 2, 3, 4));
    EXPECT_FALSE(view->setPosition(5, 6));
}

TEST_F(VSTGUI_ContentViewTest, HandsDragsToTheContainerAfterAskingForTheSize) {
    view->getFrame()->attached(view->getFrame());
    view->getFrame()->addView(new Taker(CRect(10, 10, 50, 50), log));
    const DragEventData data{nullptr, CPoint(30, 20), {}};
    EXPECT_EQ(view->onDragEnter(data), DragOperation::Copy);
    EXPECT_EQ(std::exchange(log, {}), (Log{"enter 30,20", "move 30,20"}));
    EXPECT_EQ(view->onDragMove(data), DragOperation::Copy);
    EXPECT_EQ(std::exchange(log, {}), Log{"move 30,20"});
    EXPECT_TRUE(view->onDrop(data));
    EXPECT_EQ(std::exchange(log, {}), Log{"drop 30,20"});
    view->onDragEnter(data);
    log.clear();
    view->onDragLeave(data);
    EXPECT_EQ(std::exchange(log, {}), Log{"leave 30,20"});
    EXPECT_EQ(view->sizeQuestions, 5);
    EXPECT_EQ(data.pos, CPoint(30, 20));
}

TEST_F(VSTGUI_ContentViewTest, HandsKeysToTheFrame) {
    view->getFrame()->attached(view->getFrame());
    auto* const taker = new Taker(CRect(10, 10, 50, 50), log);
    view->getFrame()->addView(taker);
    view->getFrame()->onActivate(true);
    view->getFrame()->setFocusView(taker);
    VstKeyCode key{0, VKEY_RETURN, MODIFIER_SHIFT | MODIFIER_CONTROL};
    EXPECT_TRUE(view->platformOnKeyDown(key));
    const std::string virtualKey = std::to_string(static_cast<int>(VSTGUI::VirtualKey::Return));
    EXPECT_EQ(log, Log{"key " + virtualKey + " 0 shift control down"});
    log.clear();
    key = {'x', 0, MODIFIER_ALTERNATE | MODIFIER_COMMAND};
    EXPECT_FALSE(view->platformOnKeyDown(key));
    EXPECT_EQ(log, Log{"key 0 120 alt super down"});
}

} // namespace
} // namespace varno::test
