// A host that closes the editor, releases it or gives it another container from within one of the editor's
// own calls, as from a menu that it opens there.
#include "Tests/Integration/Editor/EditorTest.h"

#include <functional>
#include <tuple>

namespace varno::test {
namespace {

using Offered = MouseOffer::Kind;

constexpr const char* kTried[] = {"Gain", "HP", "Ratio", "PR1K"};

// What the host does from within.
enum class Act { kClose, kRelease, kReplace };

class CloseWithin : public OneEditorTest {
protected:
    void TearDown() override {
        window->editor().close();
        spareContainer.Reset();
        OneEditorTest::TearDown();
    }

    // Does this with the editor; afterwards nothing of it is left in the first window.
    void perform(Act act) {
        ++performed;
        switch (act) {
        case Act::kClose:
            window->editor().setContainer(nullptr);
            break;
        case Act::kRelease:
            window->editor().close();
            break;
        case Act::kReplace:
            window->editor().setContainer(spareContainer.Get());
            break;
        }
        EXPECT_EQ(client.countChildren(window->window()), 0U);
    }

    // Answers offers of this kind, and performs the act within the first.
    void actWithin(Offered kind, bool isTaken, Act act) {
        window->answerOffers([=, this](const MouseOffer& offer) {
            if (offer.kind == kind && performed == 0) {
                perform(act);
            }
            return isTaken ? AAX_SUCCESS : AAX_ERROR_UNIMPLEMENTED;
        });
    }

    // A press, a drag and a release.
    void gesture(const std::string& id) {
        const Area area = areaOf(id);
        const Place middle{area.width / 2, area.height / 2};
        point(*window, id, middle);
        press();
        point(*window, id, {middle.x + 1, middle.y});
        release();
    }

    void expectNothingTouched() {
        for (const char* const id : kTried) {
            EXPECT_EQ(touches(*instance, id), 0) << id;
        }
    }

    int performed = 0;

private:
    // Another window of the host's, and a container around it.
    ACFPtr<ViewContainer> makeSpare() {
        auto made = ACFPtr<ViewContainer>::Adopt(new ViewContainer(instance->module().context()));
        made->setDesktop(&loop);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the container carries a window's number as a pointer
        made->setView(AAX_eViewContainerType_X11, reinterpret_cast<void*>(std::uintptr_t{spare.id()}));
        return made;
    }

protected:
    XWindow spare{client, {0, 2 * viewArea().height, viewArea().width, viewArea().height}};
    ACFPtr<ViewContainer> spareContainer = makeSpare();
};

class CloseWithinAnOffer : public CloseWithin,
                           public testing::WithParamInterface<std::tuple<const char*, Offered, bool>> {};

TEST_P(CloseWithinAnOffer, endsTheViewAndNothingElse) {
    const auto [id, kind, isTaken] = GetParam();
    actWithin(kind, isTaken, Act::kClose);
    gesture(id);
    ASSERT_EQ(performed, 1);
    expectNothingTouched();
    // The same editor opens again and works.
    window->answerOffers({});
    window->editor().setContainer(&window->container());
    awaitDrawing(*window, *instance);
    click(*window, "LinkSw");
    EXPECT_EQ(instance->normalized("LinkSw"), 1.0);
}

TEST_P(CloseWithinAnOffer, mayBeTheLastRelease) {
    const auto [id, kind, isTaken] = GetParam();
    actWithin(kind, isTaken, Act::kRelease);
    gesture(id);
    ASSERT_EQ(performed, 1);
    expectNothingTouched();
}

TEST_P(CloseWithinAnOffer, mayOpenAnotherView) {
    const auto [id, kind, isTaken] = GetParam();
    actWithin(kind, isTaken, Act::kReplace);
    gesture(id);
    ASSERT_EQ(performed, 1);
    expectNothingTouched();
    EXPECT_EQ(client.countChildren(spare.id()), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, CloseWithinAnOffer,
                         testing::Combine(testing::ValuesIn(kTried),
                                          testing::Values(Offered::kDown, Offered::kDrag, Offered::kUp),
                                          testing::Bool()));

} // namespace
} // namespace varno::test
