#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cgraphicspath.h"
#include "vstgui/lib/clinestyle.h"

#include <algorithm>

namespace {

// Width of the highlight's ring, in the view's units.
constexpr VSTGUI::CCoord kRingWidth = 2.0;

} // namespace

void DemoGain_AnimKnobVST::draw(VSTGUI::CDrawContext* context) {
    DemoGain_HostGestures::draw(context);
    if (!mIsHighLit) {
        return;
    }
    VSTGUI::CRect ring = getViewSize();
    ring.inset(kRingWidth / 2.0, kRingWidth / 2.0);
    context->setDrawMode(VSTGUI::kAntiAliasing | VSTGUI::kNonIntegralMode);
    context->setLineStyle(VSTGUI::kLineSolid);
    context->setLineWidth(kRingWidth);
    context->setFrameColor(mCoronaColor);
    // CDrawContext::drawEllipse scales the pen along with a unit circle on cairo.
    if (const auto path = VSTGUI::owned(context->createGraphicsPath())) {
        path->addEllipse(ring);
        context->drawGraphicsPath(path, VSTGUI::CDrawContext::kPathStroked);
    }
}

// Only the base's release frees what its press has allocated, and the release ends the edit itself.
void DemoGain_AnimKnobVST::endEdit() {
    if (mIsReleasing || !isEditing()) {
        DemoGain_HostGestures::endEdit();
        return;
    }
    mIsReleasing = true;
    VSTGUI::CPoint nowhere;
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): this class's own would offer it to the host once more
    CAnimKnob::onMouseUp(nowhere, VSTGUI::CButtonState());
    mIsReleasing = false;
}

// The library's press goes on after the edit that it began has ended, and allocates what only a release
// frees.
void DemoGain_AnimKnobVST::DiscardPress() {
    beginEdit();
    endEdit();
}

void DemoGain_KickButtonVST::endEdit() {
    if (isEditing() && getValue() != getMin()) {
        setValue(getMin());
        invalid();
    }
    DemoGain_HostGestures::endEdit();
}

void DemoGain_VuMeterVST::invalid() {
    if (!mShown || *mShown != std::clamp(value, getMin(), getMax())) {
        CVuMeter::invalid();
    }
}

// The first drawing of a value may have been of a part of the meter.
void DemoGain_VuMeterVST::draw(VSTGUI::CDrawContext* context) {
    const float before = getOldValue();
    CVuMeter::draw(context);
    mShown = before == value && getOldValue() == value ? std::optional(value) : std::nullopt;
}
