#include "CLAP/Window/WindowValues.h"

#include "Host/InstanceHost.h"

namespace varno {

namespace {

using Mark = ValueExchange::Change;

} // namespace

WindowValues::WindowValues(Instance& instance, const ParameterList& parameters, ValueExchange& values,
                           const HostCalls& host)
    : mInstance(instance),
      mParameters(parameters),
      mValues(values),
      mHost(host),
      mTouches(parameters.size()) {
    mInstance.host().automation().addListener(*this);
}

WindowValues::~WindowValues() {
    mInstance.host().automation().removeListener(*this);
}

bool WindowValues::isBypassed() const {
    return isOn(mValues.value(mParameters.bypass()));
}

void WindowValues::setBypassed(bool isBypassed) {
    change(mParameters.bypass(), isBypassed ? 1.0F : 0.0F);
}

void WindowValues::setQuality(std::int32_t factor) {
    change(mParameters.quality(), normalizedQuality(factor));
}

void WindowValues::change(std::size_t parameter, float value) {
    if (mValues.value(parameter) != value) {
        mValues.take(parameter, Mark::kForWindow);
        mValues.set(parameter, value, Mark::kForAudio | Mark::kForHost);
        mHost.requestFlush();
    }
}

void WindowValues::valueRequested(const std::string& id, double normalized) {
    if (const auto parameter = mParameters.indexOf(std::string_view(id))) {
        change(*parameter, static_cast<float>(normalized));
    }
}

void WindowValues::touched(const std::string& id) {
    const auto parameter = mParameters.indexOf(std::string_view(id));
    if (parameter && ++mTouches[*parameter] == 1) {
        mValues.mark(*parameter, Mark::kTouched | Mark::kHeld);
        mHost.requestFlush();
    }
}

void WindowValues::released(const std::string& id) {
    const auto parameter = mParameters.indexOf(std::string_view(id));
    if (parameter && --mTouches[*parameter] == 0) {
        mValues.letGo(*parameter);
        mHost.requestFlush();
    }
}

} // namespace varno
