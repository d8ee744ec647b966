#include "Surround/BarWidgets.h"

#include "Surround/BarColours.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cgradient.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

using VSTGUI::CColor;
using namespace BarColours;

constexpr double kButtonPoints = 11.5;
constexpr double kLabelPoints = 11.0;
constexpr double kCorner = 3.0;

VSTGUI::SharedPointer<VSTGUI::CFontDesc> fontOf(double points) {
    return VSTGUI::makeOwned<VSTGUI::CFontDesc>(VSTGUI::kNormalFont->getName(), points);
}

void setFace(VSTGUI::CTextButton& button, const CColor& top, const CColor& bottom) {
    const auto plain = VSTGUI::owned(VSTGUI::CGradient::create(0.0, 1.0, top, bottom));
    const auto pressed = VSTGUI::owned(VSTGUI::CGradient::create(0.0, 1.0, bottom, top));
    button.setGradient(plain);
    button.setGradientHighlighted(pressed);
}

} // namespace

VSTGUI::CRect rectOf(const Box& box) {
    return {VSTGUI::CPoint(box.x, box.y), VSTGUI::CPoint(box.width, box.height)};
}

BarButton::BarButton(const BarLayout::ButtonRow& row, VSTGUI::IControlListener& reportsTo)
    : CTextButton(rectOf(row.place), &reportsTo, static_cast<int32_t>(row.button), row.text) {
    setFont(fontOf(kButtonPoints));
    setRoundRadius(kCorner);
    setFrameWidth(1.0);
    setFrameColor(kEdge);
    setFrameColorHighlighted(kEdge);
    showColours();
}

void BarButton::setText(const std::string& text) {
    if (getTitle().getString() != text) {
        setTitle(text.c_str());
        invalid();
    }
}

void BarButton::setOn(bool isOn) {
    if (mIsOn != isOn) {
        mIsOn = isOn;
        showColours();
    }
}

void BarButton::setCanPress(bool canPress) {
    if (mCanPress != canPress) {
        mCanPress = canPress;
        setMouseEnabled(canPress);
        showColours();
    }
}

void BarButton::showColours() {
    setFace(*this, mIsOn ? kLitTop : kKeyTop, mIsOn ? kLit : kKeyBottom);
    const CColor ink = mIsOn ? kInkOnLit : mCanPress ? kName : kPale;
    setTextColor(ink);
    setTextColorHighlighted(ink);
    invalid();
}

BarLabel::BarLabel(const Box& box, Tone tone, VSTGUI::CHoriTxtAlign align)
    : CTextLabel(rectOf(box)) {
    setFont(fontOf(kLabelPoints));
    setFontColor(tone == Tone::kName ? kHint : kName);
    setBackColor(VSTGUI::kTransparentCColor);
    setFrameColor(VSTGUI::kTransparentCColor);
    setHoriAlign(align);
    setTextTruncateMode(kTruncateTail);
    setMouseEnabled(false);
}

void BarLabel::show(const std::string& shown) {
    if (getText().getString() != shown) {
        setText(shown.c_str());
        invalid();
    }
}

LevelMeter::LevelMeter(const Box& box)
    : CView(rectOf(box)) {
    setMouseEnabled(false);
}

int LevelMeter::stepsOf(const std::optional<double>& levelDB) const {
    if (!levelDB) {
        return 0;
    }
    const double share = (*levelDB - BarLayout::kLowestDB) / (BarLayout::kHighestDB - BarLayout::kLowestDB);
    return static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * getWidth()));
}

void LevelMeter::show(const LevelReading& reading) {
    const int level = stepsOf(reading.nowDB);
    const int peak = stepsOf(reading.peakDB);
    if (level != mLevel || peak != mPeak) {
        mLevel = level;
        mPeak = peak;
        invalid();
    }
}

void LevelMeter::draw(VSTGUI::CDrawContext* context) {
    const VSTGUI::CRect all = getViewSize();
    context->setFillColor(kRecess);
    context->drawRect(all, VSTGUI::kDrawFilled);
    const int fullScale = stepsOf(0.0);
    const auto fill = [&](int from, int to, const CColor& colour) {
        if (from < to) {
            VSTGUI::CRect part(all.left + from, all.top + 1, all.left + to, all.bottom - 1);
            context->setFillColor(colour);
            context->drawRect(part, VSTGUI::kDrawFilled);
        }
    };
    fill(0, std::min(mLevel, fullScale), kLit);
    fill(fullScale, mLevel, kTooLoud);
    fill(fullScale, fullScale + 1, kHint);
    if (mPeak > 0) {
        fill(mPeak - 2, mPeak, mPeak > fullScale ? kTooLoud : kName);
    }
    setDirty(false);
}

} // namespace varno
