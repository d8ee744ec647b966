#include "LV2/UI/HostPorts.h"

#include "Host/InstanceHost.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

// A plain float, as every control port has it.
constexpr std::uint32_t kFloatProtocol = 0;

} // namespace

HostPorts::HostPorts(Instance& instance, const HostCalls& calls)
    : mInstance(instance),
      mCalls(calls) {
    for (const PortInfo& info : portsOf(instance)) {
        mEnabled = info.kind == PortKind::kEnabled ? mPorts.size() : mEnabled;
        mQuality = info.kind == PortKind::kQuality ? mPorts.size() : mQuality;
        mPorts.push_back({info});
    }
    mInstance.host().automation().addListener(*this);
}

HostPorts::~HostPorts() {
    mInstance.host().automation().removeListener(*this);
}

void HostPorts::arrived(std::uint32_t index, float value) {
    if (index >= mPorts.size() || !std::isfinite(value)) {
        return;
    }
    Port& port = mPorts[index];
    if (port.info.kind == PortKind::kMeter) {
        showMeter(port.info.item, value);
    } else if (port.info.kind == PortKind::kParameter) {
        port.known = value;
        port.arrived = std::clamp(value, 0.0F, 1.0F);
    } else if (port.info.kind == PortKind::kEnabled || port.info.kind == PortKind::kQuality) {
        port.known = value;
    }
}

void HostPorts::apply() {
    for (Port& port : mPorts) {
        if (port.arrived && port.touches == 0) {
            mInstance.setNormalized(port.info.parameterID, double{*port.arrived});
            port.arrived.reset();
        }
    }
}

// Nothing processes, so that the meters' taps belong to this thread.
void HostPorts::showMeter(std::uint32_t tap, float value) {
    MeterBank& meters = mInstance.meters();
    if (tap < meters.ids().size()) {
        meters.taps()[tap] = value;
        meters.afterBuffer(0);
    }
}

void HostPorts::valueRequested(const std::string& id, double normalized) {
    Port* const port = portOf(id);
    const auto value = static_cast<float>(normalized);
    if (port != nullptr && port->known != value) {
        port->arrived.reset();
        write(*port, value);
    }
}

void HostPorts::write(Port& port, float value) const {
    port.known = value;
    if (mCalls.write != nullptr) {
        mCalls.write(mCalls.controller, port.info.index, sizeof value, kFloatProtocol, &value);
    }
}

bool HostPorts::isBypassed() const {
    return mPorts.at(mEnabled).known.value_or(1.0F) <= 0.0F;
}

void HostPorts::setBypassed(bool isBypassed) {
    write(mPorts.at(mEnabled), isBypassed ? 0.0F : 1.0F);
}

std::int32_t HostPorts::quality() const {
    return factorOfPort(mPorts.at(mQuality).known.value_or(1.0F));
}

void HostPorts::setQuality(std::int32_t factor) {
    write(mPorts.at(mQuality), static_cast<float>(factor));
}

void HostPorts::touched(const std::string& id) {
    if (Port* const port = portOf(id); port != nullptr && ++port->touches == 1) {
        reportTouch(*port, true);
    }
}

void HostPorts::released(const std::string& id) {
    if (Port* const port = portOf(id); port != nullptr && --port->touches == 0) {
        reportTouch(*port, false);
    }
}

void HostPorts::reportTouch(const Port& port, bool isTouched) const {
    if (mCalls.touch != nullptr) {
        mCalls.touch->touch(mCalls.touch->handle, port.info.index, isTouched);
    }
}

HostPorts::Port* HostPorts::portOf(const std::string& parameterID) {
    const auto found =
        std::ranges::find_if(mPorts, [&](const Port& port) { return port.info.parameterID == parameterID; });
    return found == mPorts.end() ? nullptr : &*found;
}

} // namespace varno
