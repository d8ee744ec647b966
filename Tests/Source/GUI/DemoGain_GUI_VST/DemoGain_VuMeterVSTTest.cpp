#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"

#include "vstgui/lib/coffscreencontext.h"

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
