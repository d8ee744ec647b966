// How much of the editor is redrawn.
#include "Tests/Integration/Editor/EditorTest.h"

#include <algorithm>

namespace varno::test {
namespace {

// A colour that the editor does not use.
constexpr std::uint32_t kPaint = 0x00FF00FF;

class Repaint : public OneEditorTest {
protected:
    // Paints over the whole window, which shows what is drawn afterwards.
    void paintOver() {
        awaitDrawing(*window, *instance);
        client.fill(client.children(window->window()).at(0), viewArea(), kPaint);
    }

    // Waits until these areas have been drawn completely; nothing else may be drawn except the meters.
    void expectDrawn(const std::vector<Area>& places) {
        EXPECT_TRUE(loop.await([&] {
            return std::ranges::all_of(
                places, [&](const Area& place) { return !holdsPaint(window->picture(place)); });
        })) << "not all is drawn";
        std::vector<Area> allowed = meters;
        allowed.insert(allowed.end(), places.begin(), places.end());
        const Picture seen = window->picture();
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                const bool isAllowed = std::ranges::any_of(allowed, [&](const Area& place) {
                    return place.holds({x, y, 1, 1});
                });
                ASSERT_TRUE(isAllowed || seen.at({x, y}) == kPaint) << x << "," << y << " is drawn too";
            }
        }
    }

    static bool holdsPaint(const Picture& picture) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.at({x, y}) == kPaint) {
                    return true;
                }
            }
        }
        return false;
    }

    const std::vector<Area> meters = {areaOf("METERGR1"), areaOf("METERGR2")};
};

TEST_F(Repaint, isOfTheMetersAloneWhileTheyMove) {
    for (const float x : {0.1F, 0.3F, 0.9F}) {
        paintOver();
        setMeter(*instance, eMeterTap_GainReductionLeft, x);
        setMeter(*instance, eMeterTap_GainReductionRight, 1.0F - x);
        expectDrawn(meters);
    }
}

TEST_F(Repaint, isOfWhatChangesBesides) {
    for (const char* id : {"Gain", "HP", "Ratio"}) {
        paintOver();
        instance->setNormalized(id, instance->normalized(id) > 0.6 ? 0.0 : 1.0);
        expectDrawn({areaOf(id)});
    }
}

TEST_F(Repaint, isOfTheLineAndTheKnobUnderAHand) {
    point(*window, "Hot", pullOf(0.0));
    press();
    paintOver();
    point(*window, "Hot", pullOf(0.1));
    expectDrawn({areaOf("Hot"), statusArea()});
    release();
}

TEST_F(Repaint, isOfWhatTheHostAsksFor) {
    paintOver();
    window->editor().draw({40.0F, 300.0F, 60.0F, 50.0F});
    expectDrawn({{300, 40, 60, 50}});
}

} // namespace
} // namespace varno::test
