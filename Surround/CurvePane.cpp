#include "Surround/CurvePane.h"

#include "Surround/BarColours.h"
#include "Surround/BarLayout.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/cgraphicspath.h"
#include "vstgui/lib/cview.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace varno {
namespace {

constexpr int kGridLines = 4; // at every 20 dB, after the first
constexpr double kDotRadius = 4.0;
constexpr double kTextPoints = 10.5;
constexpr double kMargin = 6.0;
constexpr double kAxisText = 26.0; // room for the numbers
constexpr double kLineText = 12.0;
constexpr int kCurvePoints = 160;
constexpr float kMiddle = 0.5F; // of parameters that do not change the curve

double limited(double levelDB) {
    return std::clamp(levelDB, CurvePane::kLowestDB, CurvePane::kHighestDB);
}

} // namespace

// Draws plot and legends, without a bitmap.
class CurvePane::Picture : public VSTGUI::CView {
public:
    explicit Picture(const VSTGUI::CRect& size)
        : CView(size) {
        setMouseEnabled(false);
        show({});
    }

    void show(const CurveState& state) {
        if (mState != state) {
            mState = state;
            invalid();
        }
    }

    void draw(VSTGUI::CDrawContext* context) override {
        context->setDrawMode(VSTGUI::kAntiAliasing);
        context->setFillColor(BarColours::kPlate);
        context->drawRect(getViewSize(), VSTGUI::kDrawFilled);
        context->setFillColor(BarColours::kRecess);
        context->drawRect(plot(), VSTGUI::kDrawFilled);
        context->setFont(VSTGUI::makeOwned<VSTGUI::CFontDesc>(VSTGUI::kNormalFont->getName(), kTextPoints));
        context->setFontColor(BarColours::kHint);
        drawGrid(*context);
        drawCurve(*context);
        drawDot(*context);
        setDirty(false);
    }

private:
    VSTGUI::CRect plot() const {
        VSTGUI::CRect area = getViewSize();
        area.inset(kMargin, kMargin);
        area.left += kAxisText;
        area.right -= kMargin;
        area.bottom -= kLineText;
        return area;
    }
    double xOf(double levelDB) const {
        return plot().left + plot().getWidth() * (limited(levelDB) - kLowestDB) / (kHighestDB - kLowestDB);
    }
    double yOf(double levelDB) const {
        return plot().bottom - plot().getHeight() * (limited(levelDB) - kLowestDB) / (kHighestDB - kLowestDB);
    }

    void drawGrid(VSTGUI::CDrawContext& context) const {
        context.setLineWidth(1.0);
        for (int line = 0; line <= kGridLines; ++line) {
            const double levelDB = kLowestDB + (kHighestDB - kLowestDB) * line / kGridLines;
            const std::string text = std::to_string(std::lround(levelDB));
            context.setFrameColor(BarColours::kGrid);
            context.drawLine({xOf(levelDB), plot().top}, {xOf(levelDB), plot().bottom});
            context.drawLine({plot().left, yOf(levelDB)}, {plot().right, yOf(levelDB)});
            context.drawString(text.c_str(),
                               VSTGUI::CRect(xOf(levelDB) - kAxisText, plot().bottom,
                                             xOf(levelDB) + kAxisText, plot().bottom + kLineText + kMargin),
                               VSTGUI::kCenterText);
            context.drawString(text.c_str(),
                               VSTGUI::CRect(getViewSize().left, yOf(levelDB) - kLineText / 2,
                                             plot().left - 4.0, yOf(levelDB) + kLineText / 2),
                               VSTGUI::kRightText);
        }
        context.setFrameColor(BarColours::kUnity);
        context.drawLine({plot().left, plot().bottom}, {plot().right, plot().top});
        context.drawString("dB behind Gain \u2192 dB after gain reduction",
                           VSTGUI::CRect(plot().left + kMargin, plot().top + 2.0, plot().right,
                                         plot().top + 2.0 + kLineText),
                           VSTGUI::kLeftText);
    }

    void drawCurve(VSTGUI::CDrawContext& context) const {
        const auto curve = DemoGain_ComputeCurve(
            {.mAttack = kMiddle, .mRelease = kMiddle, .mUK = 0.0F, .mRatio = mState.ratio});
        const auto path = VSTGUI::owned(context.createGraphicsPath());
        for (int i = 0; i <= kCurvePoints; ++i) {
            const double levelDB = kLowestDB + (kHighestDB - kLowestDB) * i / kCurvePoints;
            const VSTGUI::CPoint point(xOf(levelDB), yOf(curve.settledLevel(static_cast<float>(levelDB))));
            i == 0 ? path->beginSubpath(point) : path->addLine(point);
        }
        context.setFrameColor(BarColours::kLit);
        context.setLineWidth(2.0);
        context.drawGraphicsPath(path, VSTGUI::CDrawContext::kPathStroked);
    }

    void drawDot(VSTGUI::CDrawContext& context) const {
        if (mState.nowDB) {
            const VSTGUI::CPoint middle(xOf(*mState.nowDB), yOf(*mState.nowDB + mState.reductionDB));
            const auto path = VSTGUI::owned(context.createGraphicsPath());
            path->addEllipse(VSTGUI::CRect(middle.x - kDotRadius, middle.y - kDotRadius,
                                           middle.x + kDotRadius, middle.y + kDotRadius));
            context.setFillColor(BarColours::kName);
            context.drawGraphicsPath(path, VSTGUI::CDrawContext::kPathFilled);
        }
    }

    CurveState mState;
};

CurvePane::CurvePane(XConnection& connection, xcb_window_t parent, const WindowArea& area, double scale)
    : mHolder(connection, parent),
      mFrame(BarLayout::kWidth, kHeight),
      mPicture(new Picture(VSTGUI::CRect(0, 0, BarLayout::kWidth, kHeight))) {
    mHolder.setArea(area);
    connection.flush();
    mFrame.get().addView(mPicture);
    mFrame.open(mHolder.id(), scale);
}

void CurvePane::show(const CurveState& state) {
    mPicture->show(state);
}

} // namespace varno
