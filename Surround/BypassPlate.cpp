#include "Surround/BypassPlate.h"

#include "DemoGain_ViewLayout.h"
#include "Surround/BarColours.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/cview.h"

#include <utility>

namespace varno {
namespace {

// Pixels at scale 1.
constexpr int kInset = 4; // from the edges of the free part
constexpr double kTitlePoints = 15.0;
constexpr double kReasonPoints = 11.0;
constexpr double kTitleTop = 4.0;
constexpr double kReasonTop = 22.0;
constexpr double kReasonHeight = 14.0;

class PlatePicture : public VSTGUI::CView {
public:
    PlatePicture(const VSTGUI::CRect& size, std::string reason)
        : CView(size),
          mReason(std::move(reason)) {
        setMouseEnabled(false);
    }

    void draw(VSTGUI::CDrawContext* context) override {
        context->setDrawMode(VSTGUI::kAntiAliasing);
        context->setFillColor(BarColours::kLit);
        context->drawRect(getViewSize(), VSTGUI::kDrawFilled);
        context->setFontColor(BarColours::kInkOnLit);
        drawLine(*context, "BYPASSED", {kTitlePoints, VSTGUI::kBoldFace}, kTitleTop, kReasonTop);
        drawLine(*context, mReason.c_str(), {kReasonPoints, 0}, kReasonTop, kReasonTop + kReasonHeight);
        setDirty(false);
    }

private:
    struct Letters {
        double points;
        int style;
    };

    void drawLine(VSTGUI::CDrawContext& context, const char* text, const Letters& letters, double top,
                  double bottom) const {
        context.setFont(VSTGUI::makeOwned<VSTGUI::CFontDesc>(VSTGUI::kNormalFont->getName(), letters.points,
                                                             letters.style));
        context.drawString(text, VSTGUI::CRect(0.0, top, getWidth(), bottom), VSTGUI::kCenterText);
    }

    std::string mReason;
};

} // namespace

Box BypassPlate::box() {
    constexpr auto kFree = DemoGain_ViewLayout::kFreeArea;
    return {kFree.mLeft + kInset, kFree.mTop + kInset, kFree.mRight - kFree.mLeft - 2 * kInset,
            kFree.mBottom - kFree.mTop - 2 * kInset};
}

BypassPlate::BypassPlate(const SurroundPlace& place, const std::string& reason)
    : mReason(reason),
      mHolder(place.connection, place.frame),
      mFrame(box().width, box().height) {
    mHolder.setArea(place.ofFace(box()));
    place.connection.flush();
    mFrame.get().addView(new PlatePicture(VSTGUI::CRect(0, 0, box().width, box().height), reason));
    mFrame.open(mHolder.id(), place.scale);
}

} // namespace varno
