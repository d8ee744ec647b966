#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"

#include "vstgui/lib/coffscreencontext.h"

#include <algorithm>

namespace varno::test {
namespace {

constexpr std::int32_t kSteps = 16;

class DemoGain_VuMeterVSTTest : public ControlFixture {
protected:
    template<class Meter>
    VSTGUI::SharedPointer<Meter> make() {
        return VSTGUI::makeOwned<Meter>(place(), pictures(1), pictures(1), kSteps,
                                        VSTGUI::CVuMeter::kHorizontal);
    }
};

TEST_F(DemoGain_VuMeterVSTTest, KeepsAValueBeyondItsBoundsUntilItIsDrawn) {
    const auto library = make<VSTGUI::CVuMeter>();
    library->setValue(-0.0051F);
    EXPECT_EQ(library->getValue(), 0.0F);

    const auto meter = make<DemoGain_VuMeterVST>();
    meter->setValue(-0.0051F);
    EXPECT_EQ(meter->getValue(), -0.0051F);
    const auto context = VSTGUI::COffscreenContext::create(VSTGUI::CPoint(100, 100));
    context->beginDraw();
    meter->draw(context);
    context->endDraw();
    EXPECT_EQ(meter->getValue(), 0.0F);
}

// The view requests it on every tick. The display falls a tenth of its scale with each drawing.
TEST_F(DemoGain_VuMeterVSTTest, IsDrawnAgainOnlyWhereItWouldLookDifferent) {
    const auto meter = make<DemoGain_VuMeterVST>();
    const auto context = VSTGUI::COffscreenContext::create(VSTGUI::CPoint(100, 100));
    const auto drawingsOf = [&](float value) {
        int drawings = 0;
        for (int tick = 0; tick < 30; ++tick) {
            meter->setValue(value);
            meter->setDirty(true);
            meter->invalid(); // takes the mark away where it requests a drawing
            if (!meter->CView::isDirty()) {
                context->beginDraw();
                meter->draw(context);
                context->endDraw();
                ++drawings;
            }
        }
        EXPECT_EQ(meter->getOldValue(), std::clamp(value, 0.0F, 1.0F));
        return drawings;
    };
    EXPECT_EQ(drawingsOf(0.75F), 2); // from 0
    EXPECT_EQ(drawingsOf(0.75F), 0);
    EXPECT_EQ(drawingsOf(0.875F), 2);
    EXPECT_EQ(drawingsOf(-0.0051F), 2 + 8); // drawn as 0
    EXPECT_EQ(drawingsOf(-0.01F), 0);
    EXPECT_EQ(drawingsOf(1.5F), 2);
}

TEST_F(DemoGain_VuMeterVSTTest, LeavesTheMouseAlone) {
    const auto meter = make<DemoGain_VuMeterVST>();
    meter->SetViewContainer(&host);
    meter->SetParamID("METERGR1");
    for (const std::int32_t state : {+VSTGUI::kLButton, VSTGUI::kLButton | VSTGUI::kAlt}) {
        press(*meter, state, at(4, 4));
        move(*meter, state, at(5, 4));
        release(*meter, state, at(5, 4));
    }
    EXPECT_EQ(host.takeOffers(), Log{});
    EXPECT_FALSE(meter->isEditing());
}

} // namespace
} // namespace varno::test
