#include "Shared/GlidingValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace varno {

GlidingValues::GlidingValues(const Instance& instance)
    : mStepsOfGlide(static_cast<std::int32_t>(
          std::ceil(kGlideSeconds * instance.setup().sampleRateHz / kGlideGrainFrames))) {
    for (const ParameterInfo& parameter : instance.parameters()) {
        if (!parameter.isMasterBypass) {
            mControls.push_back({.parameter = static_cast<std::size_t>(parameter.index),
                                 .canGlide = parameter.steps > kMostStepsOfAChoice,
                                 .fallback = static_cast<float>(parameter.defaultNormalized)});
        }
    }
    mOutgoing.reserve(mControls.size());
}

void GlidingValues::moveTo(std::size_t control, float value, Move move) noexcept {
    Control& moved = mControls[control];
    moved.target = std::clamp(value, 0.0F, 1.0F);
    moved.from = moved.value;
    if (moved.canGlide && move != Move::kAtOnce) {
        moved.stepsLeft = mStepsOfGlide;
        mIsGliding = true;
        if (move == Move::kGlideFromHere && mFramesToStep > 0) {
            takeStep(moved);
        }
        return;
    }
    moved.stepsLeft = 0;
    moved.value = moved.target;
    moved.isUnsent = true;
    mIsAnyUnsent = true;
}

void GlidingValues::settle() noexcept {
    for (Control& control : mControls) {
        if (control.stepsLeft > 0) {
            control.stepsLeft = 1;
            takeStep(control);
        }
    }
    mIsGliding = false;
    mFramesToStep = 0;
}

void GlidingValues::takeStep(Control& control) noexcept {
    --control.stepsLeft;
    const float left = static_cast<float>(control.stepsLeft) / static_cast<float>(mStepsOfGlide);
    control.value = control.target + (control.from - control.target) * left;
    control.isUnsent = true;
    mIsAnyUnsent = true;
}

void GlidingValues::step() noexcept {
    mIsGliding = false;
    for (Control& control : mControls) {
        if (control.stepsLeft > 0) {
            takeStep(control);
            mIsGliding = mIsGliding || control.stepsLeft > 0;
        }
    }
    mFramesToStep = mIsGliding ? kGlideGrainFrames : 0;
}

void GlidingValues::giveTo(Instance& instance) noexcept {
    if (mIsGliding && mFramesToStep == 0) {
        step();
    }
    if (!mIsAnyUnsent) {
        return;
    }
    mOutgoing.clear();
    for (const Control& control : mControls) {
        if (control.isUnsent) {
            mOutgoing.push_back({control.parameter, control.value});
        }
    }
    // Where the module is busy, the values are given with the next buffer.
    if (instance.setBeforeBuffer(mOutgoing)) {
        mIsAnyUnsent = false;
        for (Control& control : mControls) {
            control.isUnsent = false;
        }
    }
}

std::int32_t GlidingValues::framesHeld() const noexcept {
    return mIsGliding ? mFramesToStep : std::numeric_limits<std::int32_t>::max();
}

void GlidingValues::passed(std::int32_t frames) noexcept {
    if (mIsGliding) {
        mFramesToStep -= frames;
    }
}

} // namespace varno
