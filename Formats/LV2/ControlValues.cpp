#include "LV2/ControlValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace varno {

namespace {

// Equal to nothing, so that any value of a port is new.
constexpr float kNeverSeen = std::numeric_limits<float>::quiet_NaN();

} // namespace

ControlValues::ControlValues(const Instance& instance, std::span<const PortInfo> ports)
    : mStepsOfGlide(static_cast<std::int32_t>(
          std::ceil(kGlideSeconds * instance.setup().sampleRateHz / kGlideGrainFrames))) {
    for (const PortInfo& port : ports) {
        if (port.kind == PortKind::kParameter) {
            const ParameterInfo& parameter = instance.parameters()[port.item];
            mControls.push_back({.parameter = port.item,
                                 .canGlide = parameter.steps > kMostStepsOfAChoice,
                                 .fallback = static_cast<float>(parameter.defaultNormalized)});
        }
    }
    mSeen.assign(mControls.size(), kNeverSeen);
    mOutgoing.reserve(mControls.size());
}

void ControlValues::restart() noexcept {
    mIsStarting = true;
    std::ranges::fill(mSeen, kNeverSeen);
}

void ControlValues::read(const float* const* ports) noexcept {
    // Without a branch for each: usually none has changed.
    unsigned moved = 0;
    for (std::size_t i = 0; i < mSeen.size(); ++i) {
        moved |= static_cast<unsigned>(*ports[i] != mSeen[i]);
    }
    if (moved != 0) {
        takeMoved(ports);
    }
}

void ControlValues::takeMoved(const float* const* ports) noexcept {
    for (std::size_t i = 0; i < mSeen.size(); ++i) {
        const float found = *ports[i];
        if (found != mSeen[i]) {
            mSeen[i] = found;
            moveTo(mControls[i], std::isnan(found) && mIsStarting ? mControls[i].fallback : found);
        }
    }
    mIsStarting = false;
}

void ControlValues::moveTo(Control& control, float value) noexcept {
    if (std::isnan(value)) {
        return;
    }
    control.target = std::clamp(value, 0.0F, 1.0F);
    control.from = control.value;
    if (control.canGlide && !mIsStarting) {
        control.stepsLeft = mStepsOfGlide;
        mIsGliding = true;
        return;
    }
    control.stepsLeft = 0;
    control.value = control.target;
    control.isUnsent = true;
    mIsAnyUnsent = true;
}

void ControlValues::step() noexcept {
    mIsGliding = false;
    for (Control& control : mControls) {
        if (control.stepsLeft > 0) {
            --control.stepsLeft;
            const float left = static_cast<float>(control.stepsLeft) / static_cast<float>(mStepsOfGlide);
            control.value = control.target + (control.from - control.target) * left;
            control.isUnsent = true;
            mIsAnyUnsent = true;
            mIsGliding = mIsGliding || control.stepsLeft > 0;
        }
    }
    mFramesToStep = mIsGliding ? kGlideGrainFrames : 0;
}

void ControlValues::giveTo(Instance& instance) noexcept {
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

std::int32_t ControlValues::framesHeld() const noexcept {
    return mIsGliding ? mFramesToStep : std::numeric_limits<std::int32_t>::max();
}

void ControlValues::passed(std::int32_t frames) noexcept {
    if (mIsGliding) {
        mFramesToStep -= frames;
    }
}

} // namespace varno
