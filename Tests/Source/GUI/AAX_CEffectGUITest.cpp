#include "AAX_CEffectGUI.h"

#include "AAX_CString.h"
#include "AAX_Exception.h"
#include "Tests/Source/GUI/TestEditor.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Toolkit/VSTGUI_Library.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace varno::test {
namespace {

using Calls = std::vector<std::string>;

class AAX_CEffectGUITest : public ::testing::Test {
protected:
    AAX_CEffectGUITest() {
        UseVSTGUI({});
        host.offer(IID_IAAXEffectParametersV1, parameters.Get());
    }
    ~AAX_CEffectGUITest() override {
        editor.Reset();
        parameters.Reset();
        EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), mObjectsBefore);
    }

    Calls takeCalls() { return std::exchange(editor->calls, {}); }

private:
    const std::int32_t mObjectsBefore = CACFUnknown::GetActiveObjectCount();

protected:
    FakeHost host;
    TestContainer container;
    ACFPtr<ThreeParameters> parameters = ACFPtr<ThreeParameters>::Retain(new ThreeParameters);
    ACFPtr<TestEditor> editor = makeTestEditor();
};

struct Slots : AAX_CEffectGUI_VST {
    using AAX_CEffectGUI::CreateViewContainer;
    using AAX_CEffectGUI::CreateViewContents;
    using AAX_CEffectGUI::DeleteViewContainer;
    using AAX_CEffectGUI::UpdateAllParameters;
    using AAX_CEffectGUI_VST::CreateEffectView;
};

// Behind the three operations of the component and the ten of the host's interface.
TEST_F(AAX_CEffectGUITest, VirtualSlotsHaveTheirOrder) {
    const std::ptrdiff_t first = slotOf(&AAX_IACFEffectGUI::Initialize);
    EXPECT_EQ(first, 3);
    EXPECT_EQ(slotOf(&AAX_IACFEffectGUI::SetControlHighlightInfo), first + 9);
    EXPECT_EQ(slotOf(&AAX_CEffectGUI::InternalQueryInterface), first + 10);
    EXPECT_EQ(slotOf(&Slots::CreateViewContents), first + 11 + kDestructorSlots);
    EXPECT_EQ(slotOf(&Slots::CreateViewContainer), first + 12 + kDestructorSlots);
    EXPECT_EQ(slotOf(&Slots::DeleteViewContainer), first + 13 + kDestructorSlots);
    EXPECT_EQ(slotOf(&Slots::UpdateAllParameters), first + 14 + kDestructorSlots);
    EXPECT_EQ(slotOf(&Slots::CreateEffectView), first + 15 + kDestructorSlots);
}

TEST_F(AAX_CEffectGUITest, AnswersForTheEditorsInterface) {
    void* answer = nullptr;
    EXPECT_EQ(editor->QueryInterface(IID_IAAXEffectGUIV1, &answer), ACF_OK);
    EXPECT_EQ(answer, static_cast<AAX_IACFEffectGUI*>(editor.Get()));
    static_cast<AAX_IACFEffectGUI*>(answer)->Release();
    EXPECT_EQ(editor->QueryInterface(IID_IAAXEffectParametersV1, &answer), ACF_E_NOINTERFACE);
    EXPECT_EQ(answer, nullptr);
}

TEST_F(AAX_CEffectGUITest, WithoutAHostThereIsOnlyAController) {
    EXPECT_EQ(editor->GetController(), nullptr);
    EXPECT_EQ(editor->Initialize(nullptr), -20011);
    EXPECT_NE(editor->GetController(), nullptr);
    EXPECT_EQ(editor->GetEffectParameters(), nullptr);
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(AAX_CEffectGUITest, HoldsTheHostsServicesUntilUninitialize) {
    EXPECT_EQ(editor->Initialize(&host), 0);
    EXPECT_EQ(takeCalls(), Calls{"contents"});
    EXPECT_EQ(editor->GetEffectParameters(), parameters.Get());
    EXPECT_NE(editor->GetController(), nullptr);

    EXPECT_EQ(editor->Uninitialize(), 0);
    EXPECT_EQ(takeCalls(), Calls{});
    EXPECT_EQ(editor->GetEffectParameters(), nullptr);
    EXPECT_EQ(editor->GetController(), nullptr);
    EXPECT_EQ(host.references(), 0);
}

// A host whose objects throw while they are released.
class HostThrowingOnRelease : public FakeHost {
public:
    HostThrowingOnRelease() {
        for (const acfIID& offered : {IID_IAAXControllerV1, IID_IAAXControllerV2, IID_IAAXTransportV1}) {
            offer(offered, this);
        }
    }
    std::uint32_t Release() override {
        FakeHost::Release();
        throw std::runtime_error("host");
    }
};

TEST_F(AAX_CEffectGUITest, ReleasesAllOfAHostThatThrowsMeanwhile) {
    HostThrowingOnRelease throwing;
    throwing.offer(IID_IAAXEffectParametersV1, parameters.Get());
    EXPECT_EQ(editor->Initialize(&throwing), 0);
    EXPECT_EQ(throwing.references(), 3);
    const ListeningHost listening;
    EXPECT_EQ(editor->Uninitialize(), AAX_ERROR_UNKNOWN_EXCEPTION);
    ASSERT_EQ(listening.lines().size(), 1U);
    EXPECT_EQ(listening.lines()[0].text, "AAX_CEffectGUI::Uninitialize exception caught: host");
    EXPECT_EQ(throwing.references(), 0);
    EXPECT_EQ(editor->GetEffectParameters(), nullptr);
    EXPECT_EQ(editor->GetController(), nullptr);
}

TEST_F(AAX_CEffectGUITest, GoesOnWithoutParameters) {
    host.offer(IID_IAAXEffectParametersV1, nullptr);
    EXPECT_EQ(editor->Initialize(&host), 0);
    EXPECT_EQ(editor->GetEffectParameters(), nullptr);
    takeCalls();
    EXPECT_EQ(editor->SetViewContainer(&container), 0);
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(AAX_CEffectGUITest, AsksOneIndexTooManyForTheParameters) {
    editor->Initialize(&host);
    takeCalls();
    editor->UpdateAllParameters();
    EXPECT_EQ(parameters->queries, (std::vector<std::int32_t>{0, 1, 2, 3}));
    EXPECT_EQ(takeCalls(), (Calls{"updated A", "updated B", "updated C"}));

    parameters->queries.clear();
    parameters->count = 0;
    editor->UpdateAllParameters();
    EXPECT_EQ(parameters->queries, std::vector<std::int32_t>{0});
    EXPECT_EQ(takeCalls(), Calls{"updated A"});
}

TEST_F(AAX_CEffectGUITest, AsksForNoParameterWithoutACount) {
    editor->Initialize(&host);
    takeCalls();
    parameters->count = -1;
    editor->UpdateAllParameters();
    parameters->count = 3;
    parameters->countResult = AAX_ERROR_UNIMPLEMENTED;
    editor->UpdateAllParameters();
    EXPECT_EQ(parameters->queries, std::vector<std::int32_t>{});
    EXPECT_EQ(takeCalls(), Calls{});
}

TEST_F(AAX_CEffectGUITest, AContainerIsSetAndRemoved) {
    editor->Initialize(&host);
    takeCalls();
    EXPECT_EQ(editor->GetViewContainer(), nullptr);
    EXPECT_EQ(editor->GetViewContainerType(), 0);
    EXPECT_EQ(editor->GetViewContainerPtr(), nullptr);

    int nativeView = 0;
    container.view = &nativeView;
    container.type = 77;
    EXPECT_EQ(editor->SetViewContainer(&container), 0);
    EXPECT_NE(editor->GetViewContainer(), nullptr);
    EXPECT_EQ(editor->GetViewContainerType(), 77);
    EXPECT_EQ(editor->GetViewContainerPtr(), &nativeView);
    EXPECT_EQ(takeCalls(), (Calls{"updated A", "updated B", "updated C"}));

    EXPECT_EQ(editor->SetViewContainer(nullptr), 0);
    EXPECT_EQ(editor->GetViewContainer(), nullptr);
    EXPECT_EQ(takeCalls(), Calls{"delete"});
}

TEST_F(AAX_CEffectGUITest, RemovingNoContainerOnlyDeletesTheView) {
    EXPECT_EQ(editor->SetViewContainer(nullptr), 0);
    EXPECT_EQ(takeCalls(), Calls{"delete without container"});
    EXPECT_EQ(editor->GetView(), nullptr);
}

TEST_F(AAX_CEffectGUITest, UninitializeTakesTheContainerFirst) {
    editor->Initialize(&host);
    editor->SetViewContainer(&container);
    takeCalls();
    EXPECT_EQ(editor->Uninitialize(), 0);
    EXPECT_EQ(takeCalls(), Calls{"delete"});
    EXPECT_TRUE(editor->hadParametersAtDelete) << "the view uses them to its end";
    EXPECT_EQ(editor->GetViewContainer(), nullptr);
}

TEST_F(AAX_CEffectGUITest, MayBeReleasedWithEverythingStillHeld) {
    editor->Initialize(&host);
    container.type = AAX_eViewContainerType_Cocoa;
    container.view = &container;
    editor->SetViewContainer(&container);
    ASSERT_NE(editor->GetView(), nullptr);
    editor.Reset();
    parameters.Reset();
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), 0);
}

TEST_F(AAX_CEffectGUITest, LetsNoExceptionEscape) {
    editor->Initialize(&host);
    container.type = AAX_eViewContainerType_Cocoa;
    container.view = &container;
    const ListeningHost listening;
    editor->makeView = [](TestEditor&, void*) { throw AAX::Exception::ResultError(AAX_ERROR_INVALID_PATH); };
    EXPECT_EQ(editor->SetViewContainer(&container), AAX_ERROR_INVALID_PATH);
    editor->makeView = [](TestEditor&, void*) { throw std::runtime_error("no view"); };
    EXPECT_EQ(editor->SetViewContainer(&container), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(editor->SetViewContainer(nullptr), 0);
    ASSERT_EQ(listening.lines().size(), 2U);
    EXPECT_EQ(listening.lines()[0].text,
              "AAX_CEffectGUI::SetViewContainer exception caught: AAX_ERROR_INVALID_PATH (-20040)");
    EXPECT_EQ(listening.lines()[1].text, "AAX_CEffectGUI::SetViewContainer exception caught: no view");
}

// The base's own answers, of an editor that adds nothing.
class BareEditor final : public AAX_CEffectGUI {
public:
    ~BareEditor() override { Uninitialize(); }

    bool failsAtItsContents = false;

protected:
    void CreateViewContents() override {
        if (failsAtItsContents) {
            throw std::runtime_error("no contents");
        }
    }
    void CreateViewContainer() override {}
    void DeleteViewContainer() override {}
};

TEST_F(AAX_CEffectGUITest, LetsNoExceptionEscapeFromInitialize) {
    const ListeningHost listening;
    const auto bare = ACFPtr<BareEditor>::Retain(new BareEditor);
    bare->failsAtItsContents = true;
    EXPECT_EQ(bare->Initialize(&host), AAX_ERROR_UNKNOWN_EXCEPTION);
    ASSERT_EQ(listening.lines().size(), 1U);
    EXPECT_EQ(listening.lines()[0].text, "AAX_CEffectGUI::Initialize exception caught: no contents");
}

TEST_F(AAX_CEffectGUITest, AnswersWithoutAnyViewOfItsOwn) {
    const auto bare = ACFPtr<BareEditor>::Retain(new BareEditor);
    EXPECT_EQ(bare->NotificationReceived(1, nullptr, 0), 0);
    AAX_Point size{3.0F, 4.0F};
    EXPECT_EQ(bare->GetViewSize(&size), 0);
    EXPECT_EQ(size.vert, 3.0F);
    EXPECT_EQ(size.horz, 4.0F);
    EXPECT_EQ(bare->Draw(nullptr), 0);
    EXPECT_EQ(bare->TimerWakeup(), 0);
    EXPECT_EQ(bare->ParameterUpdated("A"), 0);
    AAX_CString label("as before");
    EXPECT_EQ(bare->GetCustomLabel(AAX_EPlugInStrings{}, &label), -20004);
    EXPECT_STREQ(label.Get(), "as before");
    EXPECT_EQ(bare->SetControlHighlightInfo("A", 1, AAX_EHighlightColor{}), 0);
}

} // namespace
} // namespace varno::test
