#include "ParameterDial.h"

#include "ParameterValue.h"

#include <algorithm>
#include <cmath>

namespace varno {

ParameterDial::ParameterDial(Instance& instance)
    : mInstance(instance) {
    if (chosen().isMasterBypass) {
        choose(1);
    }
}

void ParameterDial::choose(int by) {
    const auto count = static_cast<int>(mInstance.parameters().size());
    const auto move = [&](int step) {
        mChosen = static_cast<std::size_t>((static_cast<int>(mChosen) + step % count + count) % count);
    };
    move(by);
    if (chosen().isMasterBypass) {
        move(by < 0 ? -1 : 1);
    }
}

void ParameterDial::turn(int steps) {
    const int last = chosen().steps - 1;
    if (last < 1) {
        return;
    }
    const auto step = static_cast<int>(std::lround(mInstance.normalized(chosen().id) * last)) + steps;
    set(normalizedOfStep(std::clamp(step, 0, last), chosen().steps));
}

void ParameterDial::reset() {
    set(chosen().defaultNormalized);
}

void ParameterDial::set(double normalized) {
    mInstance.setNormalized(chosen().id, normalized);
}

const ParameterInfo* ParameterDial::bypass() const {
    const auto found = std::ranges::find(mInstance.parameters(), true, &ParameterInfo::isMasterBypass);
    return found == mInstance.parameters().end() ? nullptr : &*found;
}

bool ParameterDial::isBypassed() const {
    const auto* parameter = bypass();
    return parameter != nullptr && mInstance.normalized(parameter->id) >= 0.5;
}

void ParameterDial::toggleBypass() {
    if (const auto* parameter = bypass()) {
        mInstance.setNormalized(parameter->id, isBypassed() ? 0.0 : 1.0);
    }
}

std::string ParameterDial::text() const {
    return chosen().name + ' ' + mInstance.text(chosen().id);
}

} // namespace varno
