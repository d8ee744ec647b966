// Editors that are opened and closed in any order with instances, modules and windows.
#include "Tests/Integration/Editor/EditorTest.h"

#include "Tests/Support/Signal.h"

#include <cstdlib>

namespace varno::test {
namespace {

class EditorLife : public EditorTest {
protected:
    // Whether an open editor responds to the mouse.
    void expectAlive(EditorWindow& window, Instance& instance) {
        const double before = instance.normalized("HP");
        click(window, "HP");
        EXPECT_EQ(instance.normalized("HP"), 1.0 - before);
        EXPECT_TRUE(shows(window, "HP", before > 0.5 ? 0 : 1));
    }
};

TEST_F(EditorLife, beginsBeforeTheFirstBuffer) {
    const auto instance = makeInstance(module());
    const auto window = show(*instance);
    expectAlive(*window, *instance);
    render(*instance, noise(2, 1000, 1, 0.0));
    expectAlive(*window, *instance);
}

TEST_F(EditorLife, worksWithoutTheHostsEventLoop) {
    const auto instance = makeInstance(module());
    EditorWindow window({client, loop, false}, *instance);
    EXPECT_EQ(loop.countWatches(), 0U);
    EXPECT_EQ(loop.countTimers(), 0U);
    EXPECT_TRUE(shows(window, "HP", 0));
    expectAlive(window, *instance);
}

TEST_F(EditorLife, givesTheHostsEventLoopBack) {
    const auto instance = makeInstance(module());
    const auto window = show(*instance);
    EXPECT_GT(loop.countWatches(), 0U);
    window->close();
    EXPECT_EQ(loop.countWatches(), 0U);
    EXPECT_EQ(loop.countTimers(), 0U);
}

TEST_F(EditorLife, endsWithItsInstance) {
    auto instance = makeInstance(module());
    const auto window = show(*instance);
    window->loseInstance();
    instance.reset();
    EXPECT_EQ(loop.countWatches(), 0U);
    loop.turn();
    window->close();
    EXPECT_EQ(takeViolations(),
              std::vector<std::string>{"lifecycle: the instance ended while its editor was open"});
}

TEST_F(EditorLife, outlivesItsWindow) {
    const auto instance = makeInstance(module());
    const auto window = show(*instance);
    window->destroyWindow();
    for (int i = 0; i < 20; ++i) {
        instance->setNormalized("Gain", 0.05 * i);
        loop.turn();
    }
    window->close();
    takeErrors(); // the editor drew in a destroyed window
    const auto again = show(*instance);
    expectAlive(*again, *instance);
}

TEST_F(EditorLife, needsAWindowThatIsThere) {
    const auto instance = makeInstance(module());
    const auto container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(module()->context()));
    container->setDesktop(&loop);
    constexpr std::uintptr_t kNobodys = 0x00ABCDEF;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the container carries a window's number as a pointer
    container->setView(AAX_eViewContainerType_X11, reinterpret_cast<void*>(kNobodys));
    const auto editor = instance->openEditor(*container);
    ASSERT_NE(editor, nullptr);
    editor->timer();
    instance->setNormalized("Gain", 0.3);
    editor->highlight("Gain", true, AAX_eHighlightColor_Red);
    loop.turn();
    editor->close();
    takeErrors(); // the server was asked for the destroyed window
    const auto window = show(*instance);
    expectAlive(*window, *instance);
}

TEST_F(EditorLife, needsADisplay) {
    const auto instance = makeInstance(module());
    for (const char* name : {"", ":987654"}) {
        setenv("DISPLAY", name, 1);
        const auto window = open(*instance);
        instance->setNormalized("Gain", 0.3);
        window->editor().highlight("Gain", true, AAX_eHighlightColor_Red);
        window->editor().draw({0, 0, 100, 100});
        loop.turn();
    }
    unsetenv("DISPLAY");
    open(*instance)->close();
    setenv("DISPLAY", display().c_str(), 1);
    const auto window = show(*instance);
    expectAlive(*window, *instance);
}

TEST_F(EditorLife, followsARestoredState) {
    std::mt19937 random(20260203);
    const auto instance = makeInstance(module());
    const auto window = show(*instance);
    for (int i = 0; i < 3; ++i) {
        automate(*instance, randomValues(random));
        const StoredChunk state = instance->save();
        const ParameterValues values = valuesOf(*instance);
        automate(*instance, randomValues(random));
        loop.turn();
        instance->restore(state);
        for (const std::string& id : controlsOf(DemoGain_ViewLayout::Kind::kKnob)) {
            EXPECT_TRUE(shows(*window, id, knobPicture(values.at(id))));
        }
    }
}

TEST_F(EditorLife, showsWhatWasSetWhileItWasClosed) {
    const auto instance = makeInstance(module());
    for (const double value : {0.1, 0.9}) {
        instance->setNormalized("Hot", value);
        const auto window = show(*instance);
        EXPECT_TRUE(shows(*window, "Hot", knobPicture(value)));
    }
}

TEST_F(EditorLife, letsGoOfWhatAHandStillHolds) {
    const auto instance = makeInstance(module());
    auto window = show(*instance);
    point(*window, "Gain", pullOf(0.0));
    press();
    ASSERT_EQ(touches(*instance, "Gain"), 1);
    window->close();
    EXPECT_EQ(touches(*instance, "Gain"), 0);
    pointer.release();
    window = show(*instance);
    expectAlive(*window, *instance);
}

TEST_F(EditorLife, movesToAnotherWindow) {
    const auto instance = makeInstance(module());
    const auto first = show(*instance);
    ViewContainer& container = first->container();
    first->editor().setContainer(nullptr);
    EXPECT_TRUE(loop.await([&] { return client.countChildren(first->window()) == 0; }));
    loop.turn();
    first->editor().setContainer(&container);
    EXPECT_TRUE(shows(*first, "HP", 0));
    EXPECT_EQ(client.countChildren(first->window()), 1U);
    expectAlive(*first, *instance);
}

TEST_F(EditorLife, isEnlargedAsTheDesktopWishes) {
    loop.setScale(1.5);
    const auto instance = makeInstance(module());
    const auto window = open(*instance);
    loop.turn();
    EXPECT_EQ(window->editor().size().horz, 1035.0F);
    EXPECT_EQ(window->editor().size().vert, 585.0F);
    const Area area = areaOf("HP");
    const Place middle = area.middle();
    pointer.move({middle.x * 3 / 2, middle.y * 3 / 2});
    loop.turn();
    press();
    release();
    EXPECT_EQ(instance->normalized("HP"), 1.0) << "the mouse hits the enlarged control";
}

TEST_F(EditorLife, ofTwoInstancesIsApart) {
    const auto one = makeInstance(module());
    const auto other = makeInstance(module(), 1);
    const auto oneWindow = show(*one);
    const auto otherWindow = show(*other, {0, viewArea().height});
    expectAlive(*oneWindow, *one);
    EXPECT_EQ(other->normalized("HP"), 0.0);
    EXPECT_TRUE(shows(*otherWindow, "HP", 0));
    expectAlive(*otherWindow, *other);
    setMeter(*one, eMeterTap_GainReductionLeft, 1.0F);
    const Picture dark = otherWindow->picture("METERGR1");
    EXPECT_TRUE(loop.await([&] { return oneWindow->picture("METERGR1") != dark; }));
    awaitDrawing(*otherWindow, *other);
    EXPECT_EQ(otherWindow->picture("METERGR1"), dark);
}

TEST_F(EditorLife, ofTwoInstancesEndsInAnyOrder) {
    for (const bool firstGoesFirst : {true, false}) {
        const auto one = makeInstance(module());
        const auto other = makeInstance(module());
        auto oneWindow = show(*one);
        auto otherWindow = show(*other, {0, viewArea().height});
        auto& gone = firstGoesFirst ? oneWindow : otherWindow;
        auto& left = firstGoesFirst ? otherWindow : oneWindow;
        Instance& leftInstance = firstGoesFirst ? *other : *one;
        const xcb_window_t shell = gone->window();
        gone->editor().close();
        EXPECT_TRUE(loop.await([&] { return client.countChildren(shell) == 0; }));
        gone.reset();
        expectAlive(*left, leftInstance);
    }
}

TEST_F(EditorLife, onOneInstanceFollowEachOther) {
    const auto instance = makeInstance(module());
    for (int i = 0; i < 3; ++i) {
        const auto window = show(*instance, {0, 100 * i});
        EXPECT_THROW(open(*instance), HostError) << "one at a time";
        expectAlive(*window, *instance);
    }
}

} // namespace
} // namespace varno::test
