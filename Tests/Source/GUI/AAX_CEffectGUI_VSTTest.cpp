#include "GUI/AAX_CEffectGUI_VST.h"

#include "Tests/Source/GUI/FakeDesktop.h"
#include "Tests/Source/GUI/TestEditor.h"
#include "Tests/Support/FakeHostServices.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/ccolor.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using Calls = std::vector<std::string>;

bool gFrameThrows = false;
Calls* gPools = nullptr; // Where the autorelease pools are recorded, if anywhere.

void notePool(const char* call) {
    if (gPools != nullptr) {
        gPools->emplace_back(call);
    }
}

} // namespace

// The linker's option --wrap makes these names: the product's calls of CFrame::invalidRect, and of
// constructor and destructor of AAX_CAutoreleasePool, which does nothing on this system, come here.
extern "C" void __real__ZN6VSTGUI6CFrame11invalidRectERKNS_5CRectE(VSTGUI::CFrame* frame,
                                                                   const VSTGUI::CRect& rect);
extern "C" void __wrap__ZN6VSTGUI6CFrame11invalidRectERKNS_5CRectE(VSTGUI::CFrame* frame,
                                                                   const VSTGUI::CRect& rect);
extern "C" void __wrap__ZN6VSTGUI6CFrame11invalidRectERKNS_5CRectE(VSTGUI::CFrame* frame,
                                                                   const VSTGUI::CRect& rect) {
    if (gFrameThrows) {
        throw std::runtime_error("frame");
    }
    __real__ZN6VSTGUI6CFrame11invalidRectERKNS_5CRectE(frame, rect);
}
extern "C" void __wrap__ZN20AAX_CAutoreleasePoolC1Ev(void* pool);
extern "C" void __wrap__ZN20AAX_CAutoreleasePoolC1Ev(void* /*pool*/) {
    notePool("pool");
}
extern "C" void __wrap__ZN20AAX_CAutoreleasePoolD1Ev(void* pool);
extern "C" void __wrap__ZN20AAX_CAutoreleasePoolD1Ev(void* /*pool*/) {
    notePool("pool gone");
}

namespace varno::test {
namespace {

// Without a display: no frame can be opened, and everything else works.
class AAX_CEffectGUI_VSTTest : public ::testing::Test {
protected:
    AAX_CEffectGUI_VSTTest() {
        UseVSTGUI({});
        ::setenv("DISPLAY", ":nowhere", 1);
        host.offer(IID_IAAXEffectParametersV1, parameters.Get());
        editor->Initialize(&host);
        editor->calls.clear();
    }

    void give(std::int32_t type, void* pointer) {
        container.type = type;
        container.view = pointer;
        EXPECT_EQ(editor->SetViewContainer(&container), 0);
    }

    FakeHost host;
    TestContainer container;
    FakeDesktop desktop;
    ACFPtr<ThreeParameters> parameters = ACFPtr<ThreeParameters>::Retain(new ThreeParameters);
    ACFPtr<TestEditor> editor = makeTestEditor();
    int nativeView = 0;
};

TEST_F(AAX_CEffectGUI_VSTTest, BeforeAnyViewEveryCallIsHarmless) {
    AAX_Point size{3.0F, 4.0F};
    EXPECT_EQ(editor->GetViewSize(&size), 0);
    EXPECT_EQ(size.vert, 3.0F);
    EXPECT_EQ(size.horz, 4.0F);
    EXPECT_EQ(editor->GetViewSize(nullptr), 0);
    AAX_Rect rect;
    EXPECT_EQ(editor->Draw(&rect), 0);
    EXPECT_EQ(editor->Draw(nullptr), 0);
    EXPECT_EQ(editor->TimerWakeup(), 0);
}

TEST_F(AAX_CEffectGUI_VSTTest, ServesNativeViewsOfItsTypesOnly) {
    give(AAX_eViewContainerType_None, &nativeView);
    give(2, &nativeView);
    give(AAX_eViewContainerType_Cocoa, nullptr);
    give(AAX_eViewContainerType_X11, nullptr);
    EXPECT_EQ(editor->GetView(), nullptr);
    EXPECT_EQ(std::count(editor->calls.begin(), editor->calls.end(), "view"), 0);

    give(AAX_eViewContainerType_Cocoa, &nativeView);
    EXPECT_NE(editor->GetView(), nullptr);
    give(AAX_eViewContainerType_X11, &nativeView);
    EXPECT_NE(editor->GetView(), nullptr);
    EXPECT_EQ(std::count(editor->calls.begin(), editor->calls.end(), "view"), 2);
}

TEST_F(AAX_CEffectGUI_VSTTest, ParametersFollowTheView) {
    give(AAX_eViewContainerType_X11, &nativeView);
    EXPECT_EQ(editor->calls, (Calls{"view", "updated A", "updated B", "updated C"}));
}

TEST_F(AAX_CEffectGUI_VSTTest, TheBasesViewIsEmptyAndGrey) {
    give(AAX_eViewContainerType_Cocoa, &nativeView);
    ASSERT_NE(editor->GetView(), nullptr);
    EXPECT_EQ(editor->GetView()->getParameters(), parameters.Get());
    EXPECT_EQ(editor->GetView()->getFrame()->getBackgroundColor(), VSTGUI::kGreyCColor);
    EXPECT_EQ(editor->getFrame(), nullptr);
    AAX_Point size{3.0F, 4.0F};
    editor->GetViewSize(&size);
    EXPECT_EQ(size.vert, 0.0F);
    EXPECT_EQ(size.horz, 0.0F);
}

TEST_F(AAX_CEffectGUI_VSTTest, ReportsTheFramesSize) {
    editor->makeView = [](TestEditor& own, void* native) {
        own.ShowView(new VSTGUI_ContentView(native, VSTGUI::CRect(10, 20, 310, 170), &own, nullptr));
    };
    give(AAX_eViewContainerType_X11, &nativeView);
    AAX_Point size;
    EXPECT_EQ(editor->GetViewSize(&size), 0);
    EXPECT_EQ(size.horz, 300.0F);
    EXPECT_EQ(size.vert, 150.0F);
}

TEST_F(AAX_CEffectGUI_VSTTest, AViewThatCannotBeOpenedIsHarmless) {
    container.offer(IID_IVarnoDesktopV1, &desktop);
    desktop.scale = 2.0;
    give(AAX_eViewContainerType_X11, &nativeView);
    ASSERT_NE(editor->GetView(), nullptr);
    EXPECT_FALSE(editor->GetView()->getFrame()->isAttached());
    AAX_Rect rect{0.0F, 0.0F, 10.0F, 10.0F};
    EXPECT_EQ(editor->Draw(&rect), 0);
    EXPECT_EQ(editor->TimerWakeup(), 0);
    EXPECT_TRUE(desktop.periods().empty());
    EXPECT_EQ(editor->SetViewContainer(nullptr), 0);
    EXPECT_EQ(editor->GetView(), nullptr);
    EXPECT_EQ(desktop.references(), 0);
}

// Records when it is destroyed.
class MortalView : public VSTGUI_ContentView {
public:
    MortalView(void* native, VSTGUI::VSTGUIEditorInterface* editor, Calls& calls)
        : VSTGUI_ContentView(native, VSTGUI::CRect(0, 0, 10, 10), editor, nullptr),
          mCalls(calls) {}

protected:
    ~MortalView() noexcept override { mCalls.emplace_back("view gone"); }

private:
    Calls& mCalls;
};

TEST_F(AAX_CEffectGUI_VSTTest, TheViewGoesWithItsContainer) {
    editor->makeView = [](TestEditor& own, void* native) {
        own.ShowView(new MortalView(native, &own, own.calls));
    };
    give(AAX_eViewContainerType_X11, &nativeView);
    editor->calls.clear();
    editor->SetViewContainer(nullptr);
    EXPECT_EQ(editor->calls, (Calls{"delete", "view gone"}));
    EXPECT_EQ(editor->GetView(), nullptr);
}

// On macOS the frame's end leaves objects to the pool that is there.
TEST_F(AAX_CEffectGUI_VSTTest, TheViewIsReleasedWithinAnAutoreleasePool) {
    editor->makeView = [](TestEditor& own, void* native) {
        own.ShowView(new MortalView(native, &own, own.calls));
    };
    for (const bool byContainer : {true, false}) {
        give(AAX_eViewContainerType_X11, &nativeView);
        editor->calls.clear();
        gPools = &editor->calls;
        byContainer ? editor->SetViewContainer(nullptr) : editor->Uninitialize();
        gPools = nullptr;
        EXPECT_EQ(editor->calls, (Calls{"delete", "pool", "view gone", "pool gone"}));
    }
}

// A container that throws when it is asked for what its desktop offers.
class ThrowingContainer : public TestContainer {
public:
    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        if (iid == IID_IVarnoDesktopV1) {
            throw std::runtime_error("desktop");
        }
        return TestContainer::QueryInterface(iid, outObject);
    }
};

TEST_F(AAX_CEffectGUI_VSTTest, LetsNoExceptionEscapeAndNamesItsClass) {
    const ListeningHost listening;
    ThrowingContainer throwing;
    EXPECT_EQ(editor->SetViewContainer(&throwing), AAX_ERROR_UNKNOWN_EXCEPTION);

    give(AAX_eViewContainerType_X11, &nativeView);
    AAX_Rect rect{0.0F, 0.0F, 10.0F, 10.0F};
    gFrameThrows = true;
    EXPECT_EQ(editor->Draw(&rect), AAX_ERROR_UNKNOWN_EXCEPTION);
    gFrameThrows = false;
    const auto timer =
        RunLoop::shared()->addTimer(std::chrono::milliseconds(0), [] { throw std::runtime_error("timer"); });
    EXPECT_EQ(editor->TimerWakeup(), AAX_ERROR_UNKNOWN_EXCEPTION);

    Calls lines;
    for (const auto& line : listening.lines()) {
        lines.push_back(line.text);
    }
    EXPECT_EQ(lines, (Calls{"AAX_CEffectGUI_VST::SetViewContainer exception caught: desktop",
                            "AAX_CEffectGUI_VST::Draw exception caught: frame",
                            "AAX_CEffectGUI_VST::TimerWakeup exception caught: timer"}));
}

TEST_F(AAX_CEffectGUI_VSTTest, AnotherContainerClosesTheViewInTheFirst) {
    editor->makeView = [](TestEditor& own, void* native) {
        own.ShowView(new MortalView(native, &own, own.calls));
    };
    give(AAX_eViewContainerType_X11, &nativeView);
    editor->calls.clear();
    TestContainer other;
    other.type = AAX_eViewContainerType_None;
    editor->SetViewContainer(&other);
    EXPECT_EQ(editor->calls, (Calls{"view gone", "updated A", "updated B", "updated C"}));
    EXPECT_EQ(editor->GetView(), nullptr);
}

} // namespace
} // namespace varno::test
