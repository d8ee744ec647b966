#include "Surround/ControlActions.h"

#include "DemoGain_AlgFields.h"
#include "DemoGain_ParameterTable.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

using FaceLayout::Kind;

// Longer than an editor takes to follow a click; a host's automation may change the value again afterwards.
constexpr std::chrono::milliseconds kFollowTime(250);

constexpr int kCurves = static_cast<int>(kDemoGain_CurveSteps);

bool isOn(double normalized) {
    return normalized > double{kAlgSwitchThreshold};
}

// The middle of a control.
int middleX(const FaceLayout::Control& control) {
    const Box box = FaceLayout::boxOf(control);
    return box.x + box.width / 2;
}

int middleY(const FaceLayout::Control& control) {
    const Box box = FaceLayout::boxOf(control);
    return box.y + box.height / 2;
}

} // namespace

void ControlActions::step(const Control& control, int steps, bool isFine) {
    switch (control.mKind) {
    case Kind::kKnob:
        mInput.wheel(middleX(control), middleY(control), steps, isFine);
        break;
    case Kind::kOnOffButton:
        if (isOn(normalized(control)) != (steps > 0)) {
            press(control);
        }
        break;
    case Kind::kRatioSwitch: {
        const auto present = static_cast<int>(std::lround(normalized(control) * (kCurves - 1)));
        clickCurve(control, std::clamp(present + steps, 0, kCurves - 1));
        break;
    }
    case Kind::kKickButton:
    case Kind::kMeter:
        break;
    }
}

// Several steps may come before the editor has followed the first.
double ControlActions::normalized(const Control& control) const {
    const bool isSent = mSent.control == &control && std::chrono::steady_clock::now() < mSent.until;
    return isSent ? mSent.normalized : mInstance.normalized(control.mID);
}

void ControlActions::clickAt(const Control& control, int x, double leadsTo) {
    mInput.click(x, middleY(control));
    mSent = {&control, leadsTo, std::chrono::steady_clock::now() + kFollowTime};
}

void ControlActions::clickCurve(const Control& control, int curve) {
    const Box box = FaceLayout::boxOf(control);
    clickAt(control, box.x + (2 * curve + 1) * box.width / (2 * kCurves),
            static_cast<double>(curve) / (kCurves - 1));
}

void ControlActions::toEnd(const Control& control, bool isHighest) {
    if (const auto setting = settingOf(control.mID)) {
        mEdited.set(*setting, isHighest ? 1.0F : 0.0F);
    }
}

// As the editor's own gesture: a click with the Alt key.
void ControlActions::reset(const Control& control) {
    if (FaceLayout::isOfParameter(control)) {
        mInput.click(middleX(control), middleY(control), XCB_MOD_MASK_1);
    }
}

void ControlActions::press(const Control& control) {
    if (control.mKind == Kind::kOnOffButton) {
        clickAt(control, middleX(control), isOn(normalized(control)) ? 0.0 : 1.0);
    } else if (control.mKind == Kind::kKickButton) {
        mInput.click(middleX(control), middleY(control));
    }
}

std::string ControlActions::value(const Control& control) const {
    return FaceLayout::isOfParameter(control)
               ? spokenValue(control.mID, mInstance.normalized(control.mID), unitSettings(mInstance))
               : std::string();
}

std::string ControlActions::type(const Control& control, const std::string& text) {
    const TypedValue typed = typedValue(control.mID, text, unitSettings(mInstance));
    const auto setting = settingOf(control.mID);
    if (typed.normalized && setting) {
        mEdited.set(*setting, static_cast<float>(*typed.normalized));
    }
    return typed.refusal;
}

} // namespace varno
