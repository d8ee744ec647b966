#include "HostAutomation.h"

#include <utility>

namespace varno {

namespace {

std::string named(AAX_CParamID paramID) {
    std::string text = "parameter ";
    text += paramID == nullptr ? "null" : paramID;
    return text;
}

} // namespace

HostAutomation::HostAutomation(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

void HostAutomation::report(Contract contract, const std::string& text) const {
    mState.context->monitor->report(contract, text);
}

bool HostAutomation::requireRegistered(AAX_CParamID paramID, const char* operation) const {
    mState.gate.check(operation);
    if (paramID != nullptr && mRegistered.count(paramID) > 0) {
        return true;
    }
    report(Contract::Parameters,
           std::string(operation) + " of " + named(paramID) + ", which is not registered");
    return false;
}

bool HostAutomation::requireNormalized(AAX_CParamID paramID, double value, const char* operation) const {
    if (value >= 0.0 && value <= 1.0) {
        return true;
    }
    report(Contract::Parameters, std::string(operation) + " of " + named(paramID) + " with " +
                                     std::to_string(value) + ", expected 0 to 1");
    return false;
}

AAX_Result HostAutomation::RegisterParameter(AAX_CParamID paramID) {
    mState.gate.check("RegisterParameter");
    if (paramID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mRegistered.insert(paramID);
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::UnregisterParameter(AAX_CParamID paramID) {
    if (!requireRegistered(paramID, "UnregisterParameter")) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    mRegistered.erase(paramID);
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) {
    if (!requireRegistered(paramID, "PostSetValueRequest")) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (!requireNormalized(paramID, normalizedValue, "PostSetValueRequest")) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    request({paramID, normalizedValue});
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostCurrentValue(AAX_CParamID paramID, double normalizedValue) {
    if (!requireRegistered(paramID, "PostCurrentValue")) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (!requireNormalized(paramID, normalizedValue, "PostCurrentValue")) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mCurrentValues[paramID] = normalizedValue;
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostTouchRequest(AAX_CParamID paramID) {
    if (!requireRegistered(paramID, "PostTouchRequest")) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    ++mTouches[paramID];
    ++mTotalTouches;
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostReleaseRequest(AAX_CParamID paramID) {
    if (!requireRegistered(paramID, "PostReleaseRequest")) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    const auto found = mTouches.find(paramID);
    if (found == mTouches.end()) {
        report(Contract::Touch, named(paramID) + " released without a touch");
        return AAX_SUCCESS;
    }
    if (--found->second == 0) {
        mTouches.erase(found);
    }
    return AAX_SUCCESS;
}

std::vector<ValueRequest> HostAutomation::takeRequests() {
    return std::exchange(mRequests, {});
}

std::optional<double> HostAutomation::currentValue(const std::string& id) const {
    const auto found = mCurrentValues.find(id);
    return found == mCurrentValues.end() ? std::nullopt : std::optional<double>(found->second);
}

int32_t HostAutomation::touches(const std::string& id) const {
    const auto found = mTouches.find(id);
    return found == mTouches.end() ? 0 : found->second;
}

void HostAutomation::reportOpenTouches() const {
    for (const auto& [id, count] : mTouches) {
        report(Contract::Touch, named(id.c_str()) + " touched " + std::to_string(count) +
                                    " times more than released at the end of the instance");
    }
}

} // namespace varno
