#include "Host/Editor.h"

#include "Host/InstanceHost.h"
#include "Tests/Host/FixtureEditor.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureParameters.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using fixture::Fault;
using fixture::FaultScope;
using fixture::FixtureEditor;
using testing::ElementsAre;
using testing::IsEmpty;

class EditorTest : public FixtureTest {
protected:
    EditorTest() { FixtureEditor::takeLog(); }

    ACFPtr<ViewContainer> makeContainer() {
        return ACFPtr<ViewContainer>::Adopt(new ViewContainer(module()->context()));
    }
};

TEST_F(EditorTest, LivesFromInitializeToUninitialize) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    auto editor = instance->openEditor(*container);
    ASSERT_NE(nullptr, editor);
    EXPECT_EQ(container.Get(), editor->container());
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("initialize with data model", "container given"));
    editor.reset();
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("container taken", "uninitialize"));
    EXPECT_EQ(1U, container->references());
}

TEST_F(EditorTest, IsNotifiedOfEveryChangedParameterOnce) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    const auto editor = instance->openEditor(*container);
    FixtureEditor::takeLog();
    instance->requestNormalized("Gain", 0.1);
    instance->requestNormalized("Gain", 0.2);
    instance->requestNormalized("Bypass", 1.0);
    EXPECT_THAT(FixtureEditor::takeLog(), IsEmpty());
    instance->idle();
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("updated Gain", "updated Bypass"));
}

TEST_F(EditorTest, PassesEverythingOn) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    const auto editor = instance->openEditor(*container);
    FixtureEditor::takeLog();
    editor->timer();
    EXPECT_EQ(320.0F, editor->size().horz);
    editor->draw({0.0F, 0.0F, 17.0F, 5.0F});
    editor->highlight("Gain", true, AAX_eHighlightColor_Green);
    editor->notify(9, nullptr, 0);
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("timer, offer refused", "draw width 17",
                                                      "highlight Gain 1 2", "notification 9 of 0 bytes"));
    MouseOffer last;
    container->setMouseHandler([&](const MouseOffer& offer) {
        last = offer;
        return AAX_SUCCESS;
    });
    editor->timer();
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("timer, offer taken"));
    EXPECT_THAT(last.parameters, ElementsAre("Gain"));
    EXPECT_EQ(AAX_eModifiers_Shift, last.modifiers);
}

TEST_F(EditorTest, NotificationsReachDataModelAndEditor) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    const auto editor = instance->openEditor(*container);
    FixtureEditor::takeLog();
    const auto controller = ACFPtr<AAX_IACFController_V2>::Query(&instance->host(), IID_IAAXControllerV2);
    EXPECT_EQ(AAX_SUCCESS, controller->SendNotification(77, "abc", 3));
    EXPECT_EQ(77U, fixture::FixtureParameters::lastNotification());
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("notification 77 of 3 bytes"));
}

TEST_F(EditorTest, AnEffectWithoutEditorIsNothingUnusual) {
    const FaultScope fault(Fault::kMakesNoEditor);
    const auto instance = makeInstance();
    const auto container = makeContainer();
    EXPECT_EQ(nullptr, instance->openEditor(*container));
}

TEST_F(EditorTest, FailsWhenItsInitializationFails) {
    const FaultScope fault(Fault::kEditorInitializationFails);
    const auto instance = makeInstance();
    const auto container = makeContainer();
    EXPECT_EQ("the editor cannot be initialised: result -20011",
              hostErrorOf([&] { instance->openEditor(*container); }));
}

TEST_F(EditorTest, ThereIsOneAtATimeAndItCanBeReopened) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    auto editor = instance->openEditor(*container);
    EXPECT_EQ("an editor of this instance is open already",
              hostErrorOf([&] { instance->openEditor(*container); }));
    editor.reset();
    EXPECT_NE(nullptr, instance->openEditor(*container));
}

TEST_F(EditorTest, TheContainerCanBeRemovedAndSetAgain) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    const auto editor = instance->openEditor(*container);
    FixtureEditor::takeLog();
    editor->setContainer(nullptr);
    EXPECT_EQ(nullptr, editor->container());
    editor->setContainer(container.Get());
    EXPECT_THAT(FixtureEditor::takeLog(), ElementsAre("container taken", "container given"));
}

TEST_F(EditorTest, TheContainersReferencesAreSettledWhenItIsTakenBack) {
    const auto instance = makeInstance();
    const auto first = makeContainer();
    const auto second = makeContainer();
    const auto editor = instance->openEditor(*first);
    editor->setContainer(first.Get());
    editor->setContainer(second.Get());
    EXPECT_EQ(1U, first->references());
    const auto alsoHeld = ACFPtr<ViewContainer>::Retain(second.Get());
    editor->setContainer(nullptr);
    EXPECT_EQ(2U, second->references());
    editor->setContainer(second.Get());
    editor->close();
    EXPECT_EQ(2U, second->references());
}

TEST_F(EditorTest, AClosedEditorDoesNothing) {
    const auto instance = makeInstance();
    const auto container = makeContainer();
    const auto editor = instance->openEditor(*container);
    editor->close();
    FixtureEditor::takeLog();
    editor->timer();
    editor->draw({});
    editor->highlight("Gain", true, AAX_eHighlightColor_Red);
    editor->notify(1, nullptr, 0);
    editor->setContainer(container.Get());
    editor->close();
    EXPECT_THAT(FixtureEditor::takeLog(), IsEmpty());
}

} // namespace
} // namespace varno
